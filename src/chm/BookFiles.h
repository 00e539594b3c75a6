#pragma once

#include "chm/CompileLog.h"
#include "chm/HelpProject.h"

#include <QStringList>

namespace qmr::chm {

// The files a book packs, relative to the project folder with "/" and the spelling on disk,
// each once, in this order: the [FILES] entries, the contents and index files, the default
// topic, then every file their HTML and CSS reference, followed recursively. A [FILES] entry
// that does not exist is an error; a reference that names no file is a warning naming the page
// that holds it. References that leave the project folder, and addresses with a scheme
// (http:, mailto:, javascript:, ...), are never followed. `jobs` threads read the pages
// (0: as many as there are cores).
QStringList GatherBookFiles(const HelpProject& project, CompileLog& log, int jobs = 0);

} // namespace qmr::chm
