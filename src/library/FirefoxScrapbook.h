#pragma once

#include <QString>

namespace qmr {

// The profile folder of Firefox's default profile as profiles.ini names it, with "/" between
// its parts: the one profile's Path when there is one section, else the Path of the first
// profile marked Default=1. With none marked it is the last Default value read (usually
// empty); a missing file gives an empty path.
QString DefaultProfilePath(const QString& profilesIniPath);

// The ScrapBook folder of the default profile below `firefoxFolder` (ending in "/"): the
// profile path is always taken as relative to the Firefox folder. Ends in "/".
QString FirefoxScrapbookFolder(const QString& firefoxFolder);

// The same below this machine's Firefox folder: the ScrapBook system folder, which holds the
// browser extension's own scrapbook and its multibook.txt.
QString FindFirefoxScrapbookFolder();

} // namespace qmr
