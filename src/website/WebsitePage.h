#pragma once

#include "website/PageChrome.h"

#include <QString>

namespace qmr {

class PageWriter;

// The advert block as the pages write it: one line, empty when adverts are off.
QString AdvertLine(const PageChrome& chrome);

// Opens a gallery or photo page two folders below the scrapbook and writes what every such
// page begins with: the head (Big5), the title and navigation bars, the centred division and
// the advert block.
void OpenWebsitePage(PageWriter& page, const PageChrome& chrome, const QString& path,
                     const QString& title);

} // namespace qmr
