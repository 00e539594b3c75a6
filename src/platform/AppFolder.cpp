#include "platform/AppFolder.h"

#include <QCoreApplication>
#include <QDir>

namespace qmr {
namespace {

QString withSlash(QString path) {
    path = QDir::fromNativeSeparators(path.trimmed());
    if (!path.endsWith(QLatin1Char('/'))) path += QLatin1Char('/');
    return path;
}

} // namespace

void SetApplicationFolderOverride(const QString& folder) {
    qputenv("QUILLMERE_HOME", QDir(folder).absolutePath().toLocal8Bit());
}

QString ApplicationFolder() {
    const QString home = qEnvironmentVariable("QUILLMERE_HOME");
    if (!home.trimmed().isEmpty()) return withSlash(QDir(home).absolutePath());
#ifdef Q_OS_WIN
    if (QCoreApplication::instance()) return withSlash(QCoreApplication::applicationDirPath());
#endif
    QString data = qEnvironmentVariable("XDG_DATA_HOME");
    if (data.trimmed().isEmpty()) data = QDir::homePath() + QStringLiteral("/.local/share");
    return withSlash(data) + QStringLiteral("quillmere/");
}

QString GlobalIniPath() {
    return ApplicationFolder() + QStringLiteral("Quillmere.ini");
}

} // namespace qmr
