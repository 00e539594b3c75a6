#include "support/TempFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

namespace qmr::test {

TempFolder::TempFolder() = default;

QString TempFolder::path() const {
    return m_dir.path() + QLatin1Char('/');
}

QString TempFolder::write(const QString& relative, const QByteArray& bytes) const {
    const QString full = path() + relative;
    QDir().mkpath(QFileInfo(full).absolutePath());
    QFile file(full);
    if (file.open(QIODevice::WriteOnly)) file.write(bytes);
    return full;
}

QByteArray ReadBytes(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void CopyTree(const QString& from, const QString& to) {
    QDir().mkpath(to);
    const QDir source(from);
    for (const QString& name : source.entryList(QDir::Files | QDir::Hidden))
        QFile::copy(from + QLatin1Char('/') + name, to + QLatin1Char('/') + name);
    for (const QString& name : source.entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot))
        CopyTree(from + QLatin1Char('/') + name, to + QLatin1Char('/') + name);
}

QString WithNuls(const char* text) {
    return QString::fromUtf8(text).replace(QLatin1Char('|'), QChar(0));
}

RunResult RunQuillmereProgram(const QStringList& arguments, const QStringList& extraEnvironment) {
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const QString& pair : extraEnvironment) {
        const qsizetype eq = pair.indexOf(QLatin1Char('='));
        env.insert(pair.left(eq), pair.mid(eq + 1));
    }
    process.setProcessEnvironment(env);
    process.start(QStringLiteral(QMR_QUILLMERE_EXE), arguments);
    RunResult result;
    if (!process.waitForFinished(120000)) return result;
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.out = QString::fromUtf8(process.readAllStandardOutput());
    result.err = QString::fromUtf8(process.readAllStandardError());
    return result;
}

} // namespace qmr::test
