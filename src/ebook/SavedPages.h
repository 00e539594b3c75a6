#pragma once

#include "host/BuildHost.h"
#include "catalogue/Catalogue.h"

#include <QString>
#include <QStringList>

namespace qmr {

// True for the item types that have a saved page of their own.
bool HasSavedPage(const QString& type);

// Keeps every saved page as "ORG.html" beside it, once: an existing ORG.html is never replaced.
void Index2ORG(BuildHost& host, const Catalogue& catalogue, const QString& folder);

// Rebuilds every saved page from its "org.html" (made from the page the first time), with
// `appendedLines` and its folder's page (data/qmr/<parent>.html) appended when adverts are on.
// Building twice therefore never appends twice. False, with the reason, when a page could not
// be written or the lines to append are more than 1,000.
bool AppendFolderPage(BuildHost& host, const Catalogue& catalogue, const QString& folder,
                      bool googleAD, const QStringList& midAdvertLines, QString* error);

// Sets each item's parentId from the folders' lists, read by the same rules as the table-of-
// contents walk reads them: the top-level list is "root", and of two lists that name an item
// the later folder in the catalogue wins.
void AssignParentsFromLists(Catalogue& catalogue);

} // namespace qmr
