#pragma once

#include "catalogue/Catalogue.h"
#include "host/BuildHost.h"
#include "library/ScrapbookList.h"
#include "library/Settings.h"
#include "website/PageChrome.h"
#include "website/WebsiteStatus.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace qmr {

// What one website command works on: the current scrapbook and the options in force for it.
struct WebsiteRequest {
    QString folder;    // the selected scrapbook, ending in "/"; empty when none is selected
    PageChrome chrome; // its display name, the site addresses, whether adverts are written
    bool linkToSourceURL = false;
    CatalogueLimits limits;
    int jobs = 0; // picture-copy workers; 0 for one a core
};

struct WebsiteResult {
    bool ok = false;
    QString problem;       // why not, when not ok (already in the log)
    bool badInput = false; // the problem lies in the scrapbook or the selection
    int undatedClips = 0;  // clips whose names hold "-D(" but no date (each logged)
};

// The commands of the website menu, each on the request's scrapbook. Each asks for a
// selected scrapbook first ("Please select a scrapbook in the list first!"), reports through
// `host`, yields between items and stops between them when cancelled.

// "Create Icons": the 100 by 75 copies and the item icons. "Create Icons640x480": the 640 by
// 480 copies.
WebsiteResult CreateIcons(BuildHost& host, const WebsiteRequest& request);
WebsiteResult CreateIcons640x480(BuildHost& host, const WebsiteRequest& request);
// "Create Photo Page": the photo page of every qualifying item.
WebsiteResult CreatePhotoPages(BuildHost& host, const WebsiteRequest& request);
// "Create Home Page": the gallery pages, then the first of them in the user's browser.
WebsiteResult CreateHomePage(BuildHost& host, const WebsiteRequest& request);

// The whole website in order: both kinds of picture copy from one decode of each picture,
// the photo pages, the gallery (opened in the browser), then the log line
// name + "Build all things for this Website ok!".
WebsiteResult BuildWebsite(BuildHost& host, const WebsiteRequest& request);
// "Build a website with All functions": the build frame comes up and the window repaints
// before the build starts.
WebsiteResult menu_Build_Website_All(BuildHost& host, WebsiteStatus& status,
                                     const WebsiteRequest& request);

// The question "Make Video on Html Page" asks before it replaces any page, as it has always
// read.
extern const QString kVideoPagesWarning;

// "Make Video on Html Page": once the user answers OK, writes a player page "org.html" into
// the folder of every video item, playing its first clip; then "Create Video Page ok!".
WebsiteResult MakeVideoPages(BuildHost& host, const WebsiteRequest& request);

// "Create Windows Media Player List for Video": the video playlist, local then website (so
// the clips are stamped with their recording times first), then the picture playlist in both
// forms; then "Create windows Media Player List ok!".
WebsiteResult CreateMediaPlayerLists(BuildHost& host, const WebsiteRequest& request);

// What holds for every scrapbook of a run over the list.
struct WebsiteOptions {
    SiteAddresses addresses;
    CatalogueLimits limits;
    bool googleAD = false; // the property page's GoogleAD box, which is not stored
    int jobs = 0;
    // Runs before each scrapbook's build, when given (the command line writes the pages the
    // site links there); a result that is not ok stands for that scrapbook's build.
    std::function<WebsiteResult(const WebsiteRequest&)> prepare;
};

// The request for one scrapbook: its properties are loaded from its ScrapbookPrj.ini through
// `settings` (as selecting its row loads them). It is shown under `name`, trimmed; an empty
// `name` gives the name its settings hold, else the folder's own name.
WebsiteRequest WebsiteRequestFor(AppSettings& settings, const QString& folder, const QString& name,
                                 const WebsiteOptions& options);

struct AllWebsitesResult {
    int built = 0;
    QStringList failed; // the names of the scrapbooks whose build failed
    bool cancelled = false;
};

// "Build all websites with all functions": the website of every scrapbook of the list, first
// to last, each announced in the status bar, the caption and the log ("Start Build:2/7...
// Travel"); then "Build all things for all Websites ok!". A scrapbook whose build fails is
// logged and the run goes on with the next.
AllWebsitesResult BuildAllWebsites(BuildHost& host, WebsiteStatus& status,
                                   const QList<ScrapbookRow>& rows, AppSettings& settings,
                                   const WebsiteOptions& options);

} // namespace qmr
