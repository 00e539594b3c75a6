#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace qmr {

// Whole-file recodings between the UTF-8 files of ScrapBook and the local code page, and the
// small path and copy helpers the builders share. Paths use "/"; folders end in "/".

// UTF-8 text (a leading byte-order mark dropped) with every line feed turned into a carriage
// return, in the local code page, followed by one CR LF. `asRead`, when given, receives the
// text those bytes read back as.
QByteArray Utf8ToLocalText(const QByteArray& utf8, QString* asRead = nullptr);

// Reads `sourcePath` as UTF-8, turns every line feed into a carriage return (one for one),
// and writes the text to `targetPath` in the local code page followed by one CR LF.
bool ConvertUtf8ToLocalText(const QString& sourcePath, const QString& targetPath,
                            QString* error = nullptr);

// What a text becomes when written in the local code page and saved again as UTF-8: its lines
// (characters the code page lacks turned into "?") each followed by CR LF, as UTF-8 after a
// byte-order mark.
QByteArray LocalTextAsUtf8(const QString& text);

// A text as read back from a file in the local code page, as ConvertLocalTextToUtf8 writes it:
// its lines each followed by CR LF, as UTF-8 after a byte-order mark.
QByteArray LocalLinesAsUtf8(const QString& asRead);

// Reads `sourcePath` line by line in the local code page, joins the lines each followed by
// CR LF and writes them to `targetPath` as UTF-8 with a byte-order mark, replacing it.
bool ConvertLocalTextToUtf8(const QString& sourcePath, const QString& targetPath,
                            QString* error = nullptr);

// The whole file as UTF-8 text, without a leading byte-order mark; bad bytes read as U+FFFD.
// A file that cannot be read gives an empty text and `ok` false.
QString ReadUtf8File(const QString& path, bool* ok = nullptr);

// Splits text at CR, CR LF or the end (a lone LF stays inside its line), as a line reader of
// local text files sees it. A line end at the very end gives no further empty line.
QStringList SplitLocalLines(const QString& text);

// Trims blanks and appends "/" unless the path already ends in a separator.
QString AddBackslash(const QString& path);
// Trims blanks and drops one trailing separator.
QString RemoveBackslash(const QString& path);
// The name after the last separator, once a trailing one is removed.
QString GetLastFolderName(const QString& path);

// The file's length in bytes; -1 when it cannot be opened.
qint64 GetFileLength(const QString& path);

enum CopyStatus : int { CopyDone = 0, CopySourceMissing = 1, CopyFailed = 2 };
// Copies `source` over `target` (keeping its last-write time); CopySourceMissing without
// touching anything when there is no file at `source`.
int CopyFileIfExists(const QString& source, const QString& target);

// Writes `bytes` to a temporary file beside `path` and renames it over `path`, so a failure
// never leaves a half-written file where a whole one stood.
bool WriteFileAtomically(const QString& path, const QByteArray& bytes, QString* error = nullptr);

// The UTF-8 byte-order mark.
inline constexpr char kUtf8Bom[] = "\xEF\xBB\xBF";

} // namespace qmr
