#pragma once

#include "catalogue/Catalogue.h"
#include "catalogue/CatalogueWalk.h"
#include "website/PageChrome.h"

#include <QString>

namespace qmr {

// The head of a folder page's body: title bar, navigation bar, the path "parent > folder" and
// the opening of the item list, each piece a line ended by CR LF. `parentId` is the folder's
// parent as the walk placed it.
QString FolderPathHeader(const PageChrome& chrome, const Catalogue& catalogue, int folderIndex,
                         const QString& parentId);

// One line of a folder page's body (ended by CR LF): type icon, link and title.
QString FolderItemLine(const CatalogueItem& item, const QString& link);

// Writes root + "data/qmr/" + id + ".html" for every folder item, as UTF-8 with a byte-order
// mark: its path header and one line per item its list names, from the last time the walk
// entered it. A folder the walk never entered gets a page with an empty body.
bool WriteFolderPages(const PageChrome& chrome, const Catalogue& catalogue,
                      const CatalogueWalk& walk, const QString& root, QString* error = nullptr);

} // namespace qmr
