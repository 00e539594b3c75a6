#pragma once

#include <QString>

namespace qmr {

// The title in an item's "index.dat" (UTF-8 lines "name<TAB>value", the title line directly
// before the chars line): the text between "title" and "chars", trimmed. Empty when the file
// holds neither.
QString ReadIndexDatTitle(const QString& path);

} // namespace qmr
