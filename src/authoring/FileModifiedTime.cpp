#include "authoring/FileModifiedTime.h"

#include "platform/FileTimes.h"

#include <QDateTime>
#include <QTimeZone>

namespace qmr {

bool SetFileModifiedTime(const QString& path, int year, int month, int day, int hour, int minute,
                         int second, int biasMinutes) {
    const QDateTime local(QDate(year, month, day), QTime(hour, minute, second), Qt::UTC);
    if (!local.isValid()) return false;
    return SetLastWriteTime(path, local.addSecs(qint64(biasMinutes) * 60));
}

void SetFileModifiedTime(const QString& path, int year, int month, int day, int hour, int minute,
                         int second) {
    SetFileModifiedTime(path, year, month, day, hour, minute, second, StandardTimeBiasMinutes());
}

} // namespace qmr
