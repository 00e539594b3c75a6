#pragma once

#include "catalogue/Catalogue.h"
#include "website/PageChrome.h"

#include <QString>

namespace qmr {

// The position of the item with that identifier, searching from position 1 upward (position 0
// is never matched); -1 when there is none.
int FindItemById(const Catalogue& catalogue, const QString& id);

// The head of a folder page's body: title bar, navigation bar, the path "parent > folder" and
// the opening of the item list. Each piece is a line ended by CR LF. Made while the table of
// contents is written, once the folder's parentId is known.
QString FolderPathHeader(const PageChrome& chrome, const Catalogue& catalogue, int folderIndex);

// One line of a folder page's body (ended by CR LF): type icon, link and title.
QString FolderItemLine(const CatalogueItem& item, const QString& link);

// Writes the list page (UTF-8 labelled, written in the local code page) to `path`: one row per
// placed item that is not a folder.
bool WriteListPage(const PageChrome& chrome, const Catalogue& catalogue, bool linkToSourceURL,
                   const QString& path, QString* error = nullptr);

// Writes root + "data/qmr/" + id + ".html" for every folder item from its gathered body
// (CatalogueItem::folderBody), through the scratch file "data/qmr/tmp.html", as UTF-8 with a
// byte-order mark.
bool WriteFolderPages(const PageChrome& chrome, const Catalogue& catalogue, const QString& root,
                      QString* error = nullptr);

} // namespace qmr
