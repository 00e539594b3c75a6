#pragma once

#include "library/Settings.h"

#include <QString>

namespace qmr {

// The options an e-book build reads: the scrapbook's properties, the e-book language and the
// window's two page options.
struct EbookOptions {
    EbookLanguage language = EbookLanguage::None;
    bool linkToSourceURL = false;
    bool makeChmFile = true;
    bool googleAD = false;
    // Keep each saved page as ORG.html before anything changes it.
    bool index2org = false;
    // Rebuild each saved page from org.html with its folder's item list appended.
    bool appendFolderPage = false;
    QString homePageFilename = QStringLiteral("index.html");
};

} // namespace qmr
