#pragma once

#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

namespace qmr::test {

// Readers of compiled help files that this project did not write, run as programs: chmlib's
// enum_chmLib and extract_chmLib, 7-Zip, and a small program over libmspack's decompressor.

// False when the program is not installed (the test then skips).
bool ProgramAvailable(const QString& program);

// Names of the files in a book ("/index.html", "/#SYSTEM", ...), as each reader lists them.
QStringList ChmLibListing(const QString& book);
QStringList SevenZipListing(const QString& book);

// True when `7z t` finds the book whole.
bool SevenZipTests(const QString& book);

// Extracts every file of the book into `folder`; true when the reader reports no error.
bool ExtractWithChmLib(const QString& book, const QString& folder);
bool ExtractWithSevenZip(const QString& book, const QString& folder);
// libmspack's reader also looks each file up through the directory's index, as viewers do.
bool ExtractWithMspack(const QString& book, const QString& folder);

// The entries of a book's #SYSTEM file: code, then data.
std::vector<std::pair<int, QByteArray>> SystemEntries(const QByteArray& system);

} // namespace qmr::test
