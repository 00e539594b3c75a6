#pragma once

#include "catalogue/Catalogue.h"

#include <QString>

namespace qmr {

// The kind whose icon an item shows: its type compared in lower case, as every page has always
// chosen its icons.
ItemKind IconKindOf(const CatalogueItem& item);

// The 20 by 20 icon file of a kind: the page icon for saved pages, notes, sites, files, images
// and marked pages; the bookmark and folder icons; none for any other kind.
QString TypeIconFile(ItemKind kind);

// `<img border="0" src="` + prefix + icon file + `" width="20" height="20">`
QString TypeIconTag(ItemKind kind, const QString& prefix = QString());

} // namespace qmr
