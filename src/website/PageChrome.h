#pragma once

#include "library/Settings.h"

#include <QString>

namespace qmr {

// What every generated page's frame depends on: the scrapbook's display name, the addresses
// above, and whether the advert block is written (the GoogleAD and Make Chm file options both
// on).
struct PageChrome {
    QString scrapbookName;
    SiteAddresses addresses;
    bool advertising = false;
};

} // namespace qmr
