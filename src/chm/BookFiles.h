#pragma once

#include "chm/CompileLog.h"
#include "chm/HelpProject.h"
#include "chm/Sitemap.h"

#include <QByteArrayView>
#include <QStringList>

#include <memory>

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
// A page or style sheet that cannot be read is a warning: the files only it uses are missed.
// Pages are HTML files by their extension (.html, .htm, .xhtml, .xht, .shtml), style sheets
// .css files.
QStringList GatherBookFiles(const HelpProject& project, CompileLog& log, int jobs = 0);

// True for the files whose references the gathering follows: pages, style sheets, sitemaps.
bool MayUseOtherFiles(const QString& path);

// What one file of the book uses: the files its references name (on disk, in the order they
// stand) and the warnings about references that name no file.
struct FileReferences {
    QStringList found;
    CompileLog log;
};

// The gathering of GatherBookFiles a file at a time, for a caller that reads each file once and
// does more with it: start() gives the files every book packs first; each file's references,
// found by scan() on any thread, are handed back in list order to take(), which gives the
// files new to the book, to be appended to the list and scanned in their turn.
class BookFileGatherer {
  public:
    BookFileGatherer(const HelpProject& project, CompileLog& log);
    ~BookFileGatherer();
    BookFileGatherer(const BookFileGatherer&) = delete;
    BookFileGatherer& operator=(const BookFileGatherer&) = delete;

    // The [FILES] entries, then the contents and index files and the default topic; errors
    // for listed files that are not there go to the log.
    QStringList start();
    // The default topic as found on disk; empty when the project names none or it is missing.
    const QString& defaultTopic() const { return m_defaultTopic; }

    // The contents and index files as the caller has read them (after start(), before any
    // scan): their references are taken from these, and their bytes are not needed.
    void useReadSitemaps(const Sitemap& contents, const Sitemap& index);
    // False for files whose references are known without their bytes.
    bool needsContent(const QString& path) const;

    // What `bytes`, the content of the book's file `path`, uses. Any number of threads may
    // scan at once.
    FileReferences scan(const QString& path, QByteArrayView bytes);
    // The same, reading the file; a file that cannot be read is a warning.
    FileReferences scanFile(const QString& path);

    // Takes the next file's references; returns the files they add to the book.
    QStringList take(const FileReferences& references);

  private:
    struct Data;
    std::unique_ptr<Data> m_data;
    QString m_defaultTopic;
};

} // namespace qmr::chm
