#pragma once

#include "catalogue/Catalogue.h"
#include "catalogue/LocalTextFile.h"
#include "website/PageChrome.h"

#include <QString>

namespace qmr {

class ForumFile;

// The content page ("Content View"): the whole tree of the scrapbook as one page, written
// entry by entry while the table of contents is walked, over the saved page of the item that
// carries a marker comment. The marker picks the skin.
class ContentPage {
  public:
    enum class Template { NoPIC1, Kiosk, Logitech };

    // Chooses the template and page path from the marker comments (none in "ROOT_CONTENT"
    // mode, which writes folder + rootContentName) and writes the header. Without a marked
    // item there is no page and every later call writes nothing.
    void ChooseContentTemplate(const PageChrome& chrome, const Catalogue& catalogue,
                               const QString& folder, const QString& contentMode = QString(),
                               const QString& rootContentName = QStringLiteral("index.html"));
    // The page keeps the chrome until it is closed, so a temporary one is refused.
    void ChooseContentTemplate(PageChrome&&, const Catalogue&, const QString&,
                               const QString& = QString(), const QString& = QString()) = delete;

    // One entry at `depth` (0 for the top level). `link` is chosen by `mode` and the link check
    // box (`savedCopyBox`): an empty link on a folder becomes "./data/qmr/" + id + ".html" and
    // is handed back. Writes the matching forum line too.
    void ContentItemEntry(const Catalogue& catalogue, int depth, int itemIndex, QString& link,
                          const QString& fontSize, int mode, bool savedCopyBox, ForumFile* forum);

    // Writes the closing lines of the template and the page; false with the reason when it
    // cannot be written.
    bool CloseContentPage(QString* error = nullptr);

    const QString& pagePath() const { return m_pagePath; }

  private:
    const PageChrome* m_chrome = nullptr;
    Template m_template = Template::NoPIC1;
    QString m_pagePath;
    LocalTextFile m_file;
};

} // namespace qmr
