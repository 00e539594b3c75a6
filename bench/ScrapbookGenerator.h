#pragma once

#include <QString>
#include <QtGlobal>

namespace qmr {

// What a synthetic scrapbook should hold. `items` counts every item, folders included, so a
// scrapbook of 100 items with 10 folders has 90 other items. Folders nest at most `maxDepth`
// levels below the root list. The same options always give the same bytes, on every platform.
struct GeneratorOptions {
    int items = 0;
    int folders = 0;
    int maxDepth = 4;
    // Also write data/<id>/index.html and index.dat for every item that has a saved copy
    // (all but folders, bookmarks and separators).
    bool itemFolders = false;
    quint32 seed = 1;
    // Titles mix Latin words and Traditional Chinese ones (all held by Big5); off, titles are
    // plain ASCII.
    bool cjkTitles = true;
};

// Writes folder + "scrapbook.rdf" in the layout ScrapBook itself writes: UTF-8, LF line ends,
// one attribute a line after each "<RDF:Description" line, each folder's "RDF:Seq" just before
// its description and the root list in the middle. `folder` ends in "/" and is created when
// missing. Returns false, with a reason in `error`, when the options make no scrapbook
// (fewer than one item, more folders than items) or a file cannot be written.
bool GenerateScrapbook(const QString& folder, const GeneratorOptions& options,
                       QString* error = nullptr);

// The number of lines (each ended by LF) of the scrapbook.rdf that GenerateScrapbook writes
// for `options`: 8 a description, one list entry an item, two lines a folder's list and the
// root list, 5 lines of head and tail.
qint64 CatalogueLineCount(const GeneratorOptions& options);

// The largest scrapbook, about one folder to every ten items, whose working copy
// (scrapbook.txt) the reader sees as at most `lines` lines. The working copy reads as one line
// more than scrapbook.rdf has, so a budget of 80001 gives a catalogue of exactly 80000 lines.
// Budgets below 17 lines give the smallest scrapbook: one item, no folder.
GeneratorOptions ForLineBudget(qint64 lines);

// The lines the reader counts in the working copy made from a GenerateScrapbook catalogue.
inline qint64 WorkingCopyLineCount(const GeneratorOptions& options) {
    return CatalogueLineCount(options) + 1;
}

} // namespace qmr
