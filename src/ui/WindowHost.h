#pragma once

#include "host/BuildHost.h"
#include "website/WebsiteStatus.h"

#include <QObject>
#include <QPointer>

#include <atomic>

class QWidget;

namespace qmr {

class DesktopServices;

// The window's side of the build host. A build runs on a thread of its own, so every call may
// come from there: log lines, progress, documents and what a website build shows in the status
// bar and the caption are passed to the window's thread, and a message or question waits there
// for the user's answer. Called on the window's thread, the same calls act at once.
class WindowHost : public QObject, public BuildHost, public WebsiteStatus {
    Q_OBJECT
  public:
    WindowHost(DesktopServices& desktop, QWidget* window);

    void add2loglist(const QString& line) override;
    void messageBox(const QString& text) override;
    bool askOkCancel(const QString& text) override;
    // On the window's thread: lets it repaint and take input. A build thread needs nothing.
    void yield() override;
    void openDocument(const QString& pathOrUrl) override;
    void progress(qint64 value, qint64 total) override;
    bool cancelled() const override { return m_cancel.load(); }

    void showScrapbookFolder(const QString& folder) override;
    void showScrapbookName(const QString& name) override;
    void showBuildFrame() override;

    // The user asked the running build to stop; a new build starts with this cleared.
    void requestCancel() { m_cancel = true; }
    void clearCancel() { m_cancel = false; }

    DesktopServices& desktop() { return m_desktop; }

  Q_SIGNALS:
    void logLine(const QString& line);
    // The window's own thread is about to take events in the middle of its work.
    void yielding();
    void scrapbookFolderShown(const QString& folder);
    void scrapbookNameShown(const QString& name);
    void buildFrameWanted();
    void progressChanged(qint64 value, qint64 total);

  private:
    bool onWindowThread() const;
    // Runs `call` on the window's thread, waiting for it when `wait` is true.
    void onWindow(const std::function<void()>& call, bool wait);
    DesktopServices& m_desktop;
    QPointer<QWidget> m_window;
    std::atomic<bool> m_cancel{false};
};

} // namespace qmr
