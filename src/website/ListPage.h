#pragma once

#include "catalogue/Catalogue.h"
#include "catalogue/CatalogueWalk.h"
#include "website/PageChrome.h"

#include <QString>

namespace qmr {

// The position of the item with that identifier, searching from position 1 upward (position 0
// is never matched); -1 when there is none.
int FindItemById(const Catalogue& catalogue, const QString& id);

// Writes the list page (UTF-8 labelled, written in the local code page) to `path`: one row per
// item the walk placed that is not a folder, with the folder that placed it last.
// `asRead`, when given, receives the page as it reads back, for its UTF-8 copy.
bool WriteListPage(const PageChrome& chrome, const Catalogue& catalogue, const CatalogueWalk& walk,
                   bool linkToSourceURL, const QString& path, QString* error = nullptr,
                   QString* asRead = nullptr);

} // namespace qmr
