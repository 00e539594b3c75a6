#pragma once

#include "chm/CompileLog.h"
#include "chm/HelpProject.h"
#include "chm/InternalFiles.h"

namespace qmr::chm {

// Makes `project` name a page the book holds as the one it opens on (#SYSTEM and the windows'
// default topic and home): the default topic as found on disk (`found`, empty when it is not
// there); else the first page of the contents file that is a topic, else the first topic. A
// book whose default topic names no file opens on an error, so a default topic that is
// missing is a warning naming the project and the page, and the windows that name it take
// the same page instead. A project that names no default topic gets one with a note.
void SettleDefaultTopic(HelpProject& project, const QString& found, const BookContents& book,
                        CompileLog& log);

} // namespace qmr::chm
