#pragma once

#include <QString>

namespace qmr {

// What a website build changes in the main window besides its log: the window shows these
// where the user sees them, the command line prints them or ignores them. Each does nothing
// unless overridden.
class WebsiteStatus {
  public:
    virtual ~WebsiteStatus() = default;
    // The scrapbook a build works on, in status panel 2 (its text and its tool tip).
    virtual void showScrapbookFolder(const QString& folder) { Q_UNUSED(folder); }
    // The scrapbook's name in the caption label over the list.
    virtual void showScrapbookName(const QString& name) { Q_UNUSED(name); }
    // The build frame in place of the scrapbook list, before a whole website is built.
    virtual void showBuildFrame() {}
};

} // namespace qmr
