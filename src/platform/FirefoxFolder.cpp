#include "platform/FirefoxFolder.h"

#include <QDir>

namespace qmr {

QString FirefoxFolder() {
#if defined(Q_OS_WIN)
    const QString base = QDir::fromNativeSeparators(qEnvironmentVariable("USERPROFILE")) +
                         QStringLiteral("/Application Data/Mozilla/Firefox/");
#elif defined(Q_OS_MACOS)
    const QString base = QDir::homePath() + QStringLiteral("/Library/Application Support/Firefox/");
#else
    const QString base = QDir::homePath() + QStringLiteral("/.mozilla/firefox/");
#endif
    return base;
}

} // namespace qmr
