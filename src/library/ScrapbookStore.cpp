#include "library/ScrapbookStore.h"

#include "platform/LocalCodePage.h"
#include "platform/PathSeparators.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace qmr {
namespace {

const QString kStoreName = QStringLiteral("ScrapBookStore.txt");

bool endsWithLineBreak(const QByteArray& bytes) {
    return bytes.isEmpty() || bytes.endsWith('\n') || bytes.endsWith('\r');
}

QStringList splitLines(const QByteArray& bytes) {
    static const QRegularExpression lineEnd(QStringLiteral("\r\n|\r|\n"));
    QStringList lines = LocalCodePage::decode(bytes).split(lineEnd);
    if (lines.last().isEmpty()) lines.removeLast(); // the end of the last line, not a line
    return lines;
}

} // namespace

QString ScrapbookStorePath(const QString& applicationFolder) {
    const QString exact = applicationFolder + kStoreName;
    if (QFileInfo(exact).isFile()) return exact;
    const QStringList other = QDir(applicationFolder).entryList({kStoreName}, QDir::Files);
    return other.isEmpty() ? exact : applicationFolder + other.first();
}

bool ReadScrapbookStore(const QString& storePath, QStringList& lines) {
    lines.clear();
    QFile file(storePath);
    if (!file.open(QIODevice::ReadOnly)) return false;
    lines = splitLines(file.readAll());
    return true;
}

bool SplitStoreEntry(const QString& line, StoreEntry& entry) {
    const qsizetype star = line.indexOf(QLatin1Char('*'));
    if (star < 0) return false;
    entry.name = line.left(star).trimmed();
    entry.folder = line.mid(star + 1).trimmed();
    return true;
}

InputError StoreLineError(const QString& storePath, int lineNumber, const QString& line) {
    InputError error;
    error.file = storePath;
    error.line = lineNumber;
    error.problem = QStringLiteral("\"%1\" has no \"*\" between the scrapbook's name and its "
                                   "folder")
                        .arg(line.trimmed());
    error.advice = QStringLiteral("Write the line as name*folder, for example Recipes*%1")
                       .arg(ToNativePath(QStringLiteral("/home/me/Books/Recipes/")));
    return error;
}

StoreAddResult AddToScrapbookStore(const QString& storePath, const QString& name,
                                   const QString& folder, QString* error) {
    QFile file(storePath);
    if (!file.open(QIODevice::ReadOnly)) {
        if (error)
            *error = QStringLiteral("%1 does not exist, so %2 was not added to it. Create it (it "
                                    "may be empty) to keep a list of your scrapbooks")
                         .arg(ToNativePath(storePath), ToNativePath(folder));
        return StoreAddResult::NoStoreFile;
    }
    const QByteArray bytes = file.readAll();
    file.close();
    const QString nativeFolder = ToNativePath(folder);
    for (const QString& line : splitLines(bytes)) {
        if (line.toUpper().contains(nativeFolder.toUpper())) {
            if (error)
                *error = QStringLiteral("%1 already lists %2")
                             .arg(ToNativePath(storePath), nativeFolder);
            return StoreAddResult::AlreadyIn;
        }
    }
    // A last line that an editor left without its line end keeps it: the new line starts anew.
    QByteArray line = endsWithLineBreak(bytes) ? QByteArray() : QByteArray("\r\n");
    line += LocalCodePage::encode(QString(name + QLatin1Char('*') + nativeFolder)) + "\r\n";
    if (!file.open(QIODevice::Append) || file.write(line) != line.size() || !file.flush()) {
        if (error)
            *error = QStringLiteral("cannot add to %1: %2. Make the file writable")
                         .arg(ToNativePath(storePath), file.errorString());
        return StoreAddResult::WriteFailed;
    }
    return StoreAddResult::Added;
}

} // namespace qmr
