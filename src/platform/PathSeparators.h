#pragma once

#include <QChar>
#include <QString>

namespace qmr {

// True for a character that separates folders in a path on this platform ("/" everywhere,
// "\" too on Windows). Paths inside the program use "/".
bool IsPathSeparator(QChar c);

// A path as it is written into a generated file: with the platform's own separator.
QString ToNativePath(const QString& path);

} // namespace qmr
