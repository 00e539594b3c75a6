#include "ui/WindowHost.h"

#include "ui/DesktopServices.h"

#include <QCoreApplication>
#include <QThread>
#include <QWidget>

namespace qmr {

WindowHost::WindowHost(DesktopServices& desktop, QWidget* window)
    : m_desktop(desktop), m_window(window) {}

bool WindowHost::onWindowThread() const {
    return QThread::currentThread() == thread();
}

void WindowHost::onWindow(const std::function<void()>& call, bool wait) {
    if (onWindowThread()) {
        call();
        return;
    }
    QMetaObject::invokeMethod(this, call,
                              wait ? Qt::BlockingQueuedConnection : Qt::QueuedConnection);
}

void WindowHost::add2loglist(const QString& line) {
    onWindow([this, line] { Q_EMIT logLine(line); }, false);
}

void WindowHost::messageBox(const QString& text) {
    onWindow([this, text] { m_desktop.information(m_window, text); }, true);
}

bool WindowHost::askOkCancel(const QString& text) {
    bool answer = false;
    onWindow([this, text, &answer] { answer = m_desktop.askOkCancel(m_window, text); }, true);
    return answer;
}

void WindowHost::yield() {
    if (!onWindowThread()) return;
    Q_EMIT yielding();
    QCoreApplication::processEvents();
}

void WindowHost::openDocument(const QString& pathOrUrl) {
    onWindow(
        [this, pathOrUrl] {
            if (!m_desktop.openDocument(pathOrUrl))
                Q_EMIT logLine(QStringLiteral("Cannot open ") + pathOrUrl);
        },
        false);
}

void WindowHost::showScrapbookFolder(const QString& folder) {
    onWindow([this, folder] { Q_EMIT scrapbookFolderShown(folder); }, false);
}

void WindowHost::showScrapbookName(const QString& name) {
    onWindow([this, name] { Q_EMIT scrapbookNameShown(name); }, false);
}

void WindowHost::showBuildFrame() {
    onWindow([this] { Q_EMIT buildFrameWanted(); }, false);
}

void WindowHost::progress(qint64 value, qint64 total) {
    onWindow([this, value, total] { Q_EMIT progressChanged(value, total); }, false);
}

} // namespace qmr
