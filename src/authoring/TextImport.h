#pragma once

#include "authoring/AuthoringContext.h"

#include <QString>
#include <QStringList>

namespace qmr {

// The outcome of importing "data.txt" as a scrapbook.
struct ImportResult {
    bool ok = false;
    QString problem;         // on failure: the file, the line and what to do
    QString scrapbookFolder; // the folder of data.txt, ending in "/"
    int pagesWritten = 0;    // one a separator line
    int catalogued = 0;      // the catalogue lists one entry fewer than the pages
};

// Turns base + "data.txt", entries separated by lines beginning "*****", into one page an
// entry under base + "data/<id>/" and a catalogue base + "scrapbook.rdf" that files the entries
// in folders of ten under one top folder. Each entry is logged as "n=>title". The whole text is
// checked before the first page is written. `base` is the folder, with or without its "/".
ImportResult ImportTextToScrapbook(const AuthoringContext& context, const QString& base);

// Writes base + "data/<id>/index.html": the entry's title, links to the previous and next
// entries, and one line a body line. `bodyLines` holds lines 0..bodyCount; line 0 is the empty
// line every entry page starts with.
bool WriteTextEntryPage(const PageChrome& chrome, const QString& base, const QString& id,
                        const QString& title, const QStringList& bodyLines, const QString& prevId,
                        const QString& nextId, QString* error = nullptr);

} // namespace qmr
