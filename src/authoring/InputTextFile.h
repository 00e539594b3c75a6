#pragma once

#include <QString>
#include <QStringList>

namespace qmr {

// Reads a text file that the user prepared (File-Source.TXT, data.txt) in the local code page.
// A line ends at CR LF, CR or LF, so a file saved on any system reads the same; a line end at
// the very end gives no further empty line. False, with the reason, when it cannot be read.
bool ReadLocalInputLines(const QString& path, QStringList& lines, QString* error = nullptr);

} // namespace qmr
