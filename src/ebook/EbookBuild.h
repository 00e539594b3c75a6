#pragma once

#include "ebook/EbookOptions.h"
#include "ebook/HelpCompiler.h"
#include "host/BuildHost.h"
#include "library/Session.h"
#include "website/PageChrome.h"

#include <QString>

namespace qmr {

// What one "Make Ebook" run needs from whoever starts it.
struct EbookRequest {
    QString folder; // the selected scrapbook, ending in "/"; empty when none is selected
    EbookOptions options;
    PageChrome chrome; // the scrapbook's display name and the site addresses
    HelpTools tools;
    CatalogueLimits limits;
    bool view = true;
};

struct EbookResult {
    bool ok = false;        // everything asked for was made
    QString chmPath;        // the compiled book, empty when none was compiled
    QString contentPage;    // the content page written, empty when no item is marked for one
    QString problem;        // why not, when not ok
    bool badInput = false;  // the problem lies in the scrapbook (its catalogue), not the build
    bool cancelled = false; // the user stopped the build
};

// A build of the session's current scrapbook with the session's live options and settings;
// the saved pages are left as they are (the window's two page options are its own).
EbookRequest EbookRequestFor(Session& session);

// The whole e-book build of one scrapbook, from the saved pages to the viewer.
EbookResult StartCreateChmEbook(BuildHost& host, const EbookRequest& request);

} // namespace qmr
