#pragma once

#include "chm/CompileLog.h"
#include "chm/HelpProject.h"

#include <QStringList>

namespace qmr::chm {

// The files a book packs, relative to the project folder with "/" and the spelling on disk,
// each once, in this order: the [FILES] entries, the contents and index files, the default
// topic, then every file their HTML and CSS reference (and the "Local" pages of .hhc and .hhk
// sitemaps), followed breadth first, each file scanned once. References are resolved against
// the folder of the file that holds them; where no name matches exactly, one differing only
// in case is taken. A [FILES] entry that does not exist is an error naming the project and
// line, and so is a missing contents or index file; a missing default topic is a warning. A
// reference that names no file is a warning naming the file that holds it, once per missing
// target. References that leave the project folder, absolute paths and addresses with a
// scheme (http:, mailto:, javascript:, data:, ...) are never followed. `jobs` threads read
// the pages (0: as many as there are cores); the list and the log are the same for any number.
// Pages are HTML files by their extension (.html, .htm, .xhtml, .xht, .shtml), style sheets
// .css files.
QStringList GatherBookFiles(const HelpProject& project, CompileLog& log, int jobs = 0);

} // namespace qmr::chm
