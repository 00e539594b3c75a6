#pragma once

#include <QString>

namespace qmr {

// Addresses that the generated pages link to. The defaults stand here, in one place;
// Quillmere.ini [Site] overrides each (ProjectHomePage, MakerSite, AdScript, AdPublisherId,
// VideoSiteBase).
struct SiteAddresses {
    QString projectHomePage = QStringLiteral("https://quillmere.org/");
    QString makerSite = QStringLiteral("https://quillmere.org/");
    QString adScript = QStringLiteral("https://pagead2.googlesyndication.com/pagead/show_ads.js");
    QString adPublisherId = QStringLiteral("pub-0000000000000000");
    // The published copy of a scrapbook's "data/" folder, for the website playlists.
    QString videoSiteBase = QStringLiteral("https://quillmere.org/scrapbook/data/");
};

// What every generated page's frame depends on: the scrapbook's display name, the addresses
// above, and whether the advert block is written (the GoogleAD and Make Chm file options both
// on).
struct PageChrome {
    QString scrapbookName;
    SiteAddresses addresses;
    bool advertising = false;
};

} // namespace qmr
