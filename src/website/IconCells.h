#pragma once

#include "catalogue/Catalogue.h"

#include <QString>
#include <QStringList>

namespace qmr {

class PageWriter;

// The caption under an icon: the name up to its first "D(" (the date a clip or photo was
// named with), or, for a name longer than the cell holds, its first characters and "...".
// Gallery captions (item titles, 36 characters) show every "-" as a blank; photo captions
// (file names, 16 characters) keep only 13 before the "...".
QString GalleryCaption(const QString& title);
QString PhotoCaption(const QString& fileName);

// One gallery cell, as one line: the item's icon over its caption and the date its identifier
// holds, both linked to its photo page, or to its web source when `linkToSourceURL` is on.
QString GalleryIconCell(const CatalogueItem& item, bool linkToSourceURL);

// One cell of a photo page's icons, as one line: the small copy, linked to the large one
// further down the same page.
QString PhotoIconCell(const QString& fileName, int index);

// Writes one table row of eight cells for the positions `start` to `start` + 7; a position
// past `count` gets an empty cell.
void IconRow(PageWriter& page, int start, const QStringList& cells, int count);

// Icon rows of eight cells, as the gallery and photo pages lay them out.
inline constexpr int kCellsPerRow = 8;

} // namespace qmr
