#pragma once

#include "chm/InternalFiles.h"
#include "chm/StringTable.h"

namespace qmr::chm {

// #IDXHDR: the table of contents' site properties (image list, colours, font, window styles,
// frame and window name) and the number of topics, 4 KB.
QByteArray MakeIndexHeader(const BookContents& book, const QString& codePage, StringTable& strings);

// #WINDOWS: the project's [WINDOWS] definitions as readers' window-type records, their texts
// in #STRINGS.
QByteArray MakeWindows(const HelpProject& project, const QString& codePage, StringTable& strings);

// #SYSTEM: the project's options readers open the book with: contents and index file, default
// topic, title, language, default window and font, the compiled-file name, which indexes the book
// carries, when it was compiled, and a copy of #IDXHDR.
QByteArray MakeSystem(const BookContents& book, const QString& codePage, bool keywordLinks,
                      const QByteArray& indexHeader);

} // namespace qmr::chm
