#pragma once

#include "website/PageChrome.h"

#include <QString>

namespace qmr {

// The site addresses, each overridden by Quillmere.ini [Site] ProjectHomePage, MakerSite,
// AdScript, AdPublisherId or VideoSiteBase when set there.
SiteAddresses ReadSiteAddresses(const QString& globalIniPath);

} // namespace qmr
