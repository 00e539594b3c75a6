#pragma once

#include <QObject>

#include <functional>

class QThread;

namespace qmr {

class WindowHost;
class BuildHost;

// Runs one long piece of work at a time on a thread of its own, so that the window repaints
// and answers while it runs, and tells the window when it is busy: while it is, the commands
// that would start other work are disabled, and a second start is refused.
class BuildRunner : public QObject {
    Q_OBJECT
  public:
    explicit BuildRunner(WindowHost& host);
    ~BuildRunner() override; // asks running work to stop and waits for it

    bool busy() const { return m_busy; }
    // Starts `work` with the window's host unless something is running; `done` then runs on
    // the window's thread after the work's last log line. False when busy.
    bool start(std::function<void(BuildHost&)> work, std::function<void()> done = {});
    // Marks work that runs on the window's own thread (loading the list), so that nothing else
    // starts meanwhile. Returns false when already busy.
    bool enterBusy();
    void leaveBusy();

  Q_SIGNALS:
    void busyChanged(bool busy);

  private:
    void setBusy(bool busy);
    WindowHost& m_host;
    QThread* m_thread = nullptr;
    bool m_busy = false;
};

} // namespace qmr
