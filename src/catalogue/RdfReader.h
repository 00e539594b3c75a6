#pragma once

#include "catalogue/Catalogue.h"
#include "host/InputError.h"

#include <QByteArray>
#include <QString>

namespace qmr {

// Makes the working copy scrapbook.txt of a scrapbook.rdf: the same text in the local code
// page with every line feed turned into a carriage return, then one CR LF. Refuses, naming
// the line, a catalogue that is not UTF-8 text (invalid UTF-8, NUL bytes).
// `workingText`, when given, receives the text as the working copy reads back, so that the
// load that follows need not read and decode it again.
bool ConvertCatalogueToText(const QString& rdfPath, const QString& txtPath,
                            InputError* error = nullptr, QString* workingText = nullptr);

// Reads folder + "scrapbook.txt" into `catalogue` (replacing what it held). The reader is
// line-based: it relies on the layout in which ScrapBook writes its catalogue, one attribute a
// line after each "<RDF:Description" line. On failure `catalogue` is left empty and `error`
// says why.
bool LoadAllRdfNodes(const QString& folder, Catalogue& catalogue, InputError* error = nullptr,
                     const CatalogueLimits& limits = {});

// The same load from the working copy's text, as ConvertCatalogueToText has just made it.
bool LoadCatalogueWorkingCopy(const QString& folder, const QString& workingText,
                              Catalogue& catalogue, InputError* error = nullptr,
                              const CatalogueLimits& limits = {});

// Both steps for a scrapbook folder: recode scrapbook.rdf, then load the working copy. The
// working copy is made in `workingFolder` when one is given (for a scrapbook that cannot be
// written to), else in the scrapbook folder itself.
bool RecodeAndLoadCatalogue(const QString& folder, Catalogue& catalogue,
                            InputError* error = nullptr, const CatalogueLimits& limits = {},
                            const QString& workingFolder = QString());

// The 1-based position of the last double quote in `text`; 0 when there is none.
int GetEndValue(const QString& text);

} // namespace qmr
