#pragma once

#include <QString>
#include <QtGlobal>

namespace qmr::bench {

// What a generated HTML Help project holds.
struct BookProjectOptions {
    int pages = 2000;
    // A Traditional Chinese book (Big5, language 0x404) in which every third page is Chinese
    // text saved as Big5; otherwise an English book (windows-1252, 0x409) of English pages.
    bool big5 = false;
    // "Full-text search=Yes", as the e-book build writes it; No to compare the books without.
    bool fullTextSearch = true;
    // Pages open their text with a bare <body> rather than <body class="article">: chmcmd's
    // full-text index takes no text after a <body> with attributes, and only then holds what
    // ours does.
    bool plainBody = false;
    quint32 seed = 1;
};

// What was written.
struct BookProjectSize {
    int files = 0;
    qint64 bytes = 0; // of the files the book packs
};

// Writes, into `folder` (ending in "/"), a project shaped as the e-book build writes one:
// Index.hhp with every line it writes (full-text search, binary index, the window, [FILES]
// listing each item's files), Index.hhc with the pages in nested folders, Index.hhk with a
// keyword a page each in its own list, and for each page an item folder data/<14 digits>/ with
// index.html (a saved page of 9 to 13 KB: head, style, script, navigation, article text with
// inline markup and links, lists and tables, footer) and its index.css. The same options always
// give the same bytes. False, with `error` set, when a file cannot be written.
bool WriteBookProject(const QString& folder, const BookProjectOptions& options,
                      BookProjectSize* size, QString* error);

} // namespace qmr::bench
