#pragma once

#include "host/BuildHost.h"
#include "library/Settings.h"
#include "website/WebsiteCommands.h"

#include <QString>

namespace qmr {

// Every website page links, besides its own kind, the content view (the scrapbook's own
// "index.html"), the list view and the video page, and the list page links
// "data/qmr/root.html" as the folder of the top-level items. Writes what of these is not
// there yet, so that no link of the site is dead:
// - the list, folder and video pages, by the e-book build without compiling (as
//   "quillmere ebook --no-compile" does), and the website video playlist the video page plays;
// - "index.html", opening the content page: `homePageFilename` when it names another page
//   that is there, else the page of the item marked for the content view, else the list page;
// - "data/qmr/root.html", opening the scrapbook's "index.html";
// - the stylesheet "index.css" that the scrapbook's own pages, the content page and those in
//   "data/qmr/" link.
// Pages already there are left as they are.
WebsiteResult WriteMissingLinkedPages(BuildHost& host, const WebsiteRequest& request,
                                      EbookLanguage language, const QString& homePageFilename);

} // namespace qmr
