#pragma once

#include "host/BuildHost.h"
#include "catalogue/Catalogue.h"
#include "ebook/ContentPage.h"
#include "ebook/EbookOptions.h"
#include "ebook/ForumFile.h"
#include "website/PageChrome.h"

#include <QString>

namespace qmr {

// What the table-of-contents walk keeps while it runs.
struct WalkState {
    int TreeDepth = 0;
    QString FirstFolderTitle;
    QString FirstPage;
};

// One e-book build: the scrapbook folder (ending in "/"), its loaded catalogue, the options,
// the page chrome and the files the walk writes beside the table of contents. The build driver
// makes one and hands it to every stage.
struct EbookContext {
    EbookContext(BuildHost& buildHost) : host(buildHost) {}

    BuildHost& host;
    QString folder;
    Catalogue catalogue;
    EbookOptions options;
    PageChrome chrome;
    ContentPage content;
    ForumFile forum;
    WalkState walk;
    // Where the compiled book goes: the application folder + "chm/" + name + ".chm".
    QString outputPath;
};

} // namespace qmr
