#pragma once

#include "catalogue/Catalogue.h"
#include "catalogue/CatalogueWalk.h"
#include "ebook/ContentPage.h"
#include "ebook/EbookOptions.h"
#include "ebook/ForumFile.h"
#include "host/BuildHost.h"
#include "website/PageChrome.h"

#include <QString>

namespace qmr {

// One e-book build: the scrapbook folder (ending in "/"), its loaded catalogue and the walk of
// its tree (both read, never changed, by every stage), the options, the page chrome and the
// files written beside the table of contents.
struct EbookContext {
    EbookContext(BuildHost& buildHost, const Catalogue& loaded, const CatalogueWalk& tree)
        : host(buildHost), catalogue(loaded), walk(tree) {}

    BuildHost& host;
    const Catalogue& catalogue;
    const CatalogueWalk& walk;
    QString folder;
    EbookOptions options;
    PageChrome chrome;
    ContentPage content;
    ForumFile forum;
    // Where the compiled book goes: the application folder + "chm/" + name + ".chm".
    QString outputPath;
};

} // namespace qmr
