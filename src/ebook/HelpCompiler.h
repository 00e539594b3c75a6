#pragma once

#include "host/BuildHost.h"
#include "library/Settings.h"

#include <QString>

namespace qmr {

struct CompileResult {
    bool ok = false;
    double seconds = 0;
    QString problem;        // why the book is not good, for the log and the exit code
    bool cancelled = false; // the user stopped the compiler; no book was kept
};

// Compiles `projectPath` into `outputPath`, logging "Creating ebook now...N" every 500 ms and
// writing the compiler's messages into the project folder's ErrorLog.log. An empty compiler
// command line means the compiler built into Quillmere; any other runs that program in the
// project's folder, and the book it leaves is judged itself: present, not empty, a compiled
// help file, and no "Can't find" error in its output. Asks the host between the steps whether
// to stop: a stopped compiler's unfinished book is not kept.
CompileResult RunHelpCompiler(BuildHost& host, const HelpTools& tools, const QString& projectPath,
                              const QString& outputPath);

// Deletes the file when it exists.
void CheckAndDeleteFile(const QString& path);

// Opens the compiled book when it exists, with the configured viewer or else through the host;
// does nothing otherwise.
void ViewChm(BuildHost& host, const HelpTools& tools, const QString& outputPath);

} // namespace qmr
