#pragma once

#include "catalogue/Catalogue.h"
#include "website/PageChrome.h"

#include <QList>
#include <QString>

namespace qmr {

class BuildHost;

// An item that gets a photo page and a gallery cell: a capture (saved page, image, site,
// marked page or file) whose folder holds its index.dat.
bool QualifiesForPhotoPage(const QString& scrapbookFolder, const CatalogueItem& item);

// The qualifying items in catalogue order. An item whose identifier cannot name a folder is
// left out with a log line.
QList<const CatalogueItem*> PhotoPageItems(BuildHost& host, const Catalogue& catalogue,
                                           const QString& scrapbookFolder);

// The gallery pages: "PhotoIcons001.html", "PhotoIcons002.html", ... in "data/qmr/".
QString GalleryPageName(int page);

// The row of page numbers over and under each gallery page, as one line; the current page's
// number is larger.
QString PageNumberBar(int pageCount, int currentPage);

// Writes the gallery pages of `items` into scrapbookFolder + "data/qmr/", forty icons a page
// in rows of eight. A count that fills its last page exactly gets one more, empty, page.
bool BuildGallery(const PageChrome& chrome, const QList<const CatalogueItem*>& items,
                  const QString& scrapbookFolder, bool linkToSourceURL, QString* error = nullptr);

} // namespace qmr
