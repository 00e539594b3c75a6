#pragma once

#include "catalogue/Catalogue.h"
#include "catalogue/CatalogueWalk.h"
#include "host/BuildHost.h"

#include <QString>
#include <QStringList>

namespace qmr {

// Keeps every saved page as "org.html" beside it, once: an existing one is never replaced.
// Both stop between pages when the host is told to stop; each page is either done or untouched.
void Index2ORG(BuildHost& host, const Catalogue& catalogue, const QString& folder);

// Rebuilds every saved page from its "org.html" (made from the page the first time), with
// `appendedLines` and its folder's page (data/qmr/<parent>.html) appended when adverts are on.
// Building twice therefore never appends twice. False, with the reason, when a page could not
// be written or the lines to append are more than 1,000.
bool AppendFolderPage(BuildHost& host, const Catalogue& catalogue, const CatalogueWalk& walk,
                      const QString& folder, bool googleAD, const QStringList& midAdvertLines,
                      QString* error);

} // namespace qmr
