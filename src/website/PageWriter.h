#pragma once

#include "catalogue/LocalTextFile.h"
#include "website/PageChrome.h"

#include <QString>

namespace qmr {

// Writes one website page at a time, line by line in the local code page, and ends it with
// the footer of a page two folders below the scrapbook root.
class PageWriter {
  public:
    explicit PageWriter(const PageChrome& chrome) : m_chrome(chrome) {}

    void OpenPage(const QString& path);
    void WritePageLine(const QString& text);
    // Writes HtmlFooter("./../../") and the file; false with the reason when it cannot.
    bool ClosePageWithFooter(QString* error = nullptr);

  private:
    const PageChrome& m_chrome;
    LocalTextFile m_file;
};

} // namespace qmr
