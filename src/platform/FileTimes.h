#pragma once

#include <QDateTime>
#include <QString>

namespace qmr {

// The local zone's standard bias in minutes: universal time = local time + bias (so a zone
// eight hours east of universal time has -480). The daylight-saving shift is never included.
int StandardTimeBiasMinutes();

// Sets only the last-write time of an existing file; creation and access times are kept.
// Returns false when the file cannot be opened or stamped.
bool SetLastWriteTime(const QString& path, const QDateTime& utc);

} // namespace qmr
