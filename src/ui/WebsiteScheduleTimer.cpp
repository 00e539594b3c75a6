#include "ui/WebsiteScheduleTimer.h"

#include <QTimer>

namespace qmr {

WebsiteScheduleTimer::WebsiteScheduleTimer(QObject* parent) : QObject(parent) {
    m_timer = new QTimer(this);
    m_timer->setSingleShot(true);
    m_timer->setTimerType(Qt::VeryCoarseTimer);
    connect(m_timer, &QTimer::timeout, this, [this] {
        Q_EMIT due();
        arm();
    });
}

void WebsiteScheduleTimer::setSchedule(const WebsiteSchedule& schedule) {
    m_schedule = schedule;
    arm();
}

bool WebsiteScheduleTimer::armed() const {
    return m_timer->isActive();
}

QDateTime WebsiteScheduleTimer::nextRun(const QTime& time, const QDateTime& now) {
    QDateTime next(now.date(), time);
    if (next <= now) next = next.addDays(1);
    return next;
}

void WebsiteScheduleTimer::arm() {
    m_timer->stop();
    if (!m_schedule.enabled) return;
    const QDateTime now = QDateTime::currentDateTime();
    m_timer->start(std::chrono::milliseconds(now.msecsTo(nextRun(m_schedule.time, now))));
}

} // namespace qmr
