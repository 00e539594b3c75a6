#pragma once

#include "library/Settings.h"

#include <QDateTime>
#include <QObject>

class QTimer;

namespace qmr {

// Tells once a day, at the schedule's time, that every website is due to be built, while the
// schedule is on.
class WebsiteScheduleTimer : public QObject {
    Q_OBJECT
  public:
    explicit WebsiteScheduleTimer(QObject* parent = nullptr);

    void setSchedule(const WebsiteSchedule& schedule);
    bool armed() const;
    // When the next build is due after `now`: today at the time, or tomorrow once it has passed.
    static QDateTime nextRun(const QTime& time, const QDateTime& now);

  Q_SIGNALS:
    void due();

  private:
    void arm();
    WebsiteSchedule m_schedule;
    QTimer* m_timer = nullptr;
};

} // namespace qmr
