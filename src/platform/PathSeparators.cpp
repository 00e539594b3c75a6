#include "platform/PathSeparators.h"

#include <QDir>

namespace qmr {

bool IsPathSeparator(QChar c) {
#ifdef Q_OS_WIN
    return c == QLatin1Char('/') || c == QLatin1Char('\\');
#else
    return c == QLatin1Char('/');
#endif
}

QString ToNativePath(const QString& path) {
    return QDir::toNativeSeparators(path);
}

} // namespace qmr
