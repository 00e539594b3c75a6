#pragma once

#include "chm/HelpProject.h"
#include "chm/Sitemap.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

namespace qmr::chm {

// A page of the book that readers can show: the topics of #TOPICS, numbered by their position.
struct BookTopic {
    QString path;  // in the book, with its leading "/": "/data/20240101000000/index.html"
    QString title; // the page's <title>, empty when it has none
};

// What the internal files are made from.
struct BookContents {
    const HelpProject* project = nullptr;
    QList<BookTopic> topics;     // every HTML page packed, in packing order
    Sitemap contents;            // the project's contents file as read; empty when it names none
    Sitemap index;               // the project's index file as read; empty when it names none
    bool fullTextSearch = false; // a $FIftiMain is packed beside them
    // When the book was compiled, as #SYSTEM and #IDXHDR record it; now when not valid. Given,
    // the same contents always make the same bytes.
    QDateTime compiledAt;
};

// One file the compiler makes itself rather than packing from the project folder.
struct InternalFile {
    QString path; // "/#SYSTEM", "/$WWKeywordLinks/BTree", ...
    QByteArray bytes;
    bool compressed = true; // packed in the LZX section; false: the uncompressed section
};

// #SYSTEM, #WINDOWS, #STRINGS, #TOPICS, #URLTBL, #URLSTR, #IDXHDR (#ITBITS is the writer's:
// ChmWriter adds it) and, when the
// project asks for a binary index and names an index file, $WWKeywordLinks/ (BTree, Data, Map,
// Property). Titles and keywords are stored as readers expect them for the book's language.
QList<InternalFile> MakeInternalFiles(const BookContents& book);

} // namespace qmr::chm
