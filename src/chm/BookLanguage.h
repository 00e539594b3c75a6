#pragma once

#include <QString>

namespace qmr::chm {

// The Windows ANSI code page of a language identifier, as the converter names it:
// 0x404 Chinese (Traditional) "windows-950", 0x804 Chinese (Simplified) "windows-936",
// 0x411 Japanese "windows-932", 0x412 Korean "windows-949", 0x409 English "windows-1252", ...
// A book's titles and keywords are stored in it.
QString CodePageOfLanguage(quint32 languageId);

// The language of a project without a Language= line on a system whose code page is
// `codePageName` (any name the converter knows): a language written in that code page, as a
// Windows compiler takes the system's; English (0x409) for windows-1252 and unknown names.
quint32 LanguageOfCodePage(const QString& codePageName);

// True for the languages whose text has no blanks between words (Chinese, Japanese, Korean
// counted in, as the readers' search treats them).
bool IsEastAsianLanguage(quint32 languageId);

} // namespace qmr::chm
