#pragma once

#include "ebook/HelpCompiler.h"

namespace qmr {

// Compiles the project with the compiler built into Quillmere, on a worker thread, while the
// calling thread logs "Creating ebook now...N" every 500 ms, shows the files packed so far as
// progress, lets the window repaint, and passes a request to stop on. The compiler's messages
// (one line per problem, naming the file) go to the project folder's ErrorLog.log. The book is
// written under a temporary name and renamed when whole, so a failed compile leaves an old book
// as it was.
CompileResult RunBuiltInCompiler(BuildHost& host, const QString& projectPath,
                                 const QString& outputPath);

} // namespace qmr
