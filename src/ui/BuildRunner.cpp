#include "ui/BuildRunner.h"

#include "ui/WindowHost.h"

#include <QThread>

namespace qmr {

BuildRunner::BuildRunner(WindowHost& host) : m_host(host) {}

BuildRunner::~BuildRunner() {
    if (!m_thread) return;
    m_host.requestCancel();
    m_thread->wait();
}

bool BuildRunner::start(std::function<void(BuildHost&)> work, std::function<void()> done) {
    if (m_busy) return false;
    m_host.clearCancel();
    setBusy(true);
    m_thread = QThread::create([this, work = std::move(work)] { work(m_host); });
    connect(m_thread, &QThread::finished, this, [this, done = std::move(done)] {
        m_thread->deleteLater();
        m_thread = nullptr;
        setBusy(false);
        if (done) done();
    });
    m_thread->start();
    return true;
}

bool BuildRunner::enterBusy() {
    if (m_busy) return false;
    setBusy(true);
    return true;
}

void BuildRunner::leaveBusy() {
    setBusy(false);
}

void BuildRunner::setBusy(bool busy) {
    if (m_busy == busy) return;
    m_busy = busy;
    Q_EMIT busyChanged(busy);
}

} // namespace qmr
