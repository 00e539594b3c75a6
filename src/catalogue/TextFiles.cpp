#include "catalogue/TextFiles.h"

#include "platform/FileReplace.h"
#include "platform/LocalCodePage.h"
#include "platform/PathSeparators.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace qmr {
namespace {

bool readAll(const QString& path, QByteArray& bytes, QString* error) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (error)
            *error =
                QStringLiteral("cannot read %1: %2").arg(ToNativePath(path), file.errorString());
        return false;
    }
    bytes = file.readAll();
    return true;
}

QString decodeUtf8(QByteArray bytes) {
    if (bytes.startsWith(kUtf8Bom)) bytes.remove(0, 3);
    return QString::fromUtf8(bytes);
}

} // namespace

// A file that stands already is replaced through a temporary file beside it, renamed over it,
// so a failure never leaves half a file where a whole one stood; a new file is written in
// place (and removed again when the write fails); a file that already holds these very bytes
// is left alone. Nothing waits for the disk: a build writes thousands of pages, and a sync for
// each would cost seconds.
bool WriteFileAtomically(const QString& path, const QByteArray& bytes, QString* error) {
    const QFileInfo old(path);
    const bool replacing = old.exists();
    // A read-only file is the user's way of keeping it as it is: renaming over it would work
    // (the folder is writable) but must not.
    if (replacing && !old.permission(QFileDevice::WriteOwner)) {
        if (error)
            *error = QStringLiteral("cannot write %1: it is read-only").arg(ToNativePath(path));
        return false;
    }
    if (replacing && old.isFile() && old.size() == bytes.size()) {
        QFile current(path);
        if (current.open(QIODevice::ReadOnly) && current.readAll() == bytes) return true;
    }
    const QString target =
        replacing ? path + QStringLiteral(".%1.tmp").arg(QCoreApplication::applicationPid()) : path;
    QFile file(target);
    const bool written = file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
                         file.write(bytes) == bytes.size() && file.flush();
    const QString reason = file.errorString();
    file.close();
    if (written && !replacing) return true;
    if (written) {
        QFile::setPermissions(target, old.permissions());
        if (ReplaceFile(target, path)) return true;
    }
    if (file.exists()) QFile::remove(target);
    if (error)
        *error = QStringLiteral("cannot write %1: %2")
                     .arg(ToNativePath(path),
                          written ? QStringLiteral("it cannot be replaced") : reason);
    return false;
}

QString ReadUtf8File(const QString& path, bool* ok) {
    QByteArray bytes;
    const bool read = readAll(path, bytes, nullptr);
    if (ok) *ok = read;
    return read ? decodeUtf8(bytes) : QString();
}

QByteArray Utf8ToLocalText(const QByteArray& utf8, QString* asRead) {
    QString text = decodeUtf8(utf8);
    // A plain loop the compiler widens; the catalogue is megabytes long.
    char16_t* chars = reinterpret_cast<char16_t*>(text.data());
    for (qsizetype i = 0, n = text.size(); i < n; ++i)
        chars[i] = chars[i] == u'\n' ? u'\r' : chars[i];
    text += QStringLiteral("\r\n");
    return LocalCodePage::encode(text, asRead);
}

bool ConvertUtf8ToLocalText(const QString& sourcePath, const QString& targetPath, QString* error) {
    QByteArray bytes;
    if (!readAll(sourcePath, bytes, error)) return false;
    return WriteFileAtomically(targetPath, Utf8ToLocalText(bytes), error);
}

QStringList SplitLocalLines(const QString& text) {
    QStringList lines;
    qsizetype start = 0;
    const qsizetype n = text.size();
    while (start < n) {
        qsizetype cr = text.indexOf(QLatin1Char('\r'), start);
        if (cr < 0) {
            lines.append(text.mid(start));
            break;
        }
        lines.append(text.mid(start, cr - start));
        start = cr + 1;
        if (start < n && text.at(start) == QLatin1Char('\n')) ++start;
    }
    return lines;
}

// The lines of a text as read from the local code page (ended by CR, CR LF or the end; a lone
// LF stays inside its line), each followed by CR LF, in UTF-8 after a byte-order mark. One
// pass, as the page builders convert thousands of pages.
QByteArray LocalLinesAsUtf8(const QString& text) {
    // A text whose every line already ends in CR LF stays as it is.
    bool asItStands = text.isEmpty() || text.endsWith(QLatin1String("\r\n"));
    for (qsizetype i = text.indexOf(u'\r'); asItStands && i >= 0; i = text.indexOf(u'\r', i + 2))
        asItStands = i + 1 < text.size() && text.at(i + 1) == u'\n';
    if (asItStands) return QByteArray(kUtf8Bom) + text.toUtf8();
    QString joined;
    joined.reserve(text.size() + text.size() / 16 + 2);
    const qsizetype n = text.size();
    qsizetype lineStart = 0;
    for (qsizetype i = 0; i < n; ++i) {
        if (text.at(i) != QLatin1Char('\r')) continue;
        joined.append(QStringView(text).sliced(lineStart, i - lineStart));
        joined.append(QLatin1String("\r\n"));
        if (i + 1 < n && text.at(i + 1) == QLatin1Char('\n')) ++i;
        lineStart = i + 1;
    }
    if (lineStart < n) {
        joined.append(QStringView(text).sliced(lineStart));
        joined.append(QLatin1String("\r\n"));
    }
    return QByteArray(kUtf8Bom) + joined.toUtf8();
}

QByteArray LocalTextAsUtf8(const QString& text) {
    QString asRead;
    LocalCodePage::encode(text, &asRead);
    return LocalLinesAsUtf8(asRead);
}

bool ConvertLocalTextToUtf8(const QString& sourcePath, const QString& targetPath, QString* error) {
    QByteArray bytes;
    if (!readAll(sourcePath, bytes, error)) return false;
    return WriteFileAtomically(targetPath, LocalLinesAsUtf8(LocalCodePage::decode(bytes)), error);
}

QString AddBackslash(const QString& path) {
    QString p = path.trimmed();
    if (p.isEmpty() || !IsPathSeparator(p.back())) p += QLatin1Char('/');
    return p;
}

QString RemoveBackslash(const QString& path) {
    QString p = path.trimmed();
    if (!p.isEmpty() && IsPathSeparator(p.back())) p.chop(1);
    return p;
}

QString GetLastFolderName(const QString& path) {
    const QString p = RemoveBackslash(path);
    for (qsizetype i = p.size() - 1; i >= 0; --i)
        if (IsPathSeparator(p.at(i))) return p.mid(i + 1);
    return p;
}

qint64 GetFileLength(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return -1;
    return file.size();
}

int CopyFileIfExists(const QString& source, const QString& target) {
    const QFileInfo info(source);
    if (!info.isFile()) return CopySourceMissing;
    QFile in(source);
    QSaveFile out(target);
    if (!in.open(QIODevice::ReadOnly) || !out.open(QIODevice::WriteOnly)) return CopyFailed;
    while (!in.atEnd()) {
        const QByteArray chunk = in.read(1 << 20);
        if (chunk.isEmpty() && in.error() != QFile::NoError) return CopyFailed;
        if (out.write(chunk) != chunk.size()) return CopyFailed;
    }
    if (!out.commit()) return CopyFailed;
    QFile stamped(target);
    if (stamped.open(QIODevice::ReadWrite))
        stamped.setFileTime(info.lastModified(), QFileDevice::FileModificationTime);
    return CopyDone;
}

} // namespace qmr
