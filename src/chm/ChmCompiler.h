#pragma once

#include "chm/CompileLog.h"
#include "chm/Lzx.h"

#include <QDateTime>
#include <QString>

#include <functional>

namespace qmr::chm {

struct CompileOptions {
    QString outputPath; // the book to write; the project's "Compiled file=" when empty
    int jobs = 0;       // threads reading pages and compressing; 0: one a core
    LzxSettings lzx;
    QDateTime compiledAt; // recorded in the book; now when not valid
    // Asked between files; true stops the compile and writes no book.
    std::function<bool()> cancelled;
    // After each file packed: how many of how many.
    std::function<void(int done, int total)> progress;
    quint32 defaultLanguageId = 0x409; // for a project without a Language= line
};

// Compiles an HTML Help project into a book: reads the project, gathers the files it packs,
// takes each HTML page's title and text, numbers the topics, makes the internal files and (with
// "Full-text search=Yes") the full-text index, and writes the book. A problem is a line in
// `log` naming the file; with an error (a [FILES] entry that does not exist, an unreadable
// project, an unwritable book) no book is written and an old one is left as it was. True when
// the book was written.
bool CompileHelpProject(const QString& projectPath, const CompileOptions& options, CompileLog& log);

} // namespace qmr::chm
