#include "platform/FileTimes.h"

#include <QFile>
#include <QTimeZone>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace qmr {

int StandardTimeBiasMinutes() {
#ifdef Q_OS_WIN
    TIME_ZONE_INFORMATION info{};
    GetTimeZoneInformation(&info);
    return int(info.Bias + info.StandardBias);
#else
    const QTimeZone zone = QTimeZone::systemTimeZone();
    return -zone.standardTimeOffset(QDateTime::currentDateTimeUtc()) / 60;
#endif
}

bool SetLastWriteTime(const QString& path, const QDateTime& utc) {
    QFile file(path);
    if (!file.exists() || !file.open(QIODevice::ReadWrite)) return false;
    return file.setFileTime(utc, QFileDevice::FileModificationTime);
}

} // namespace qmr
