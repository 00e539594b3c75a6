#pragma once

#include <QString>

namespace qmr {

// Stamps the last-write time of an existing file from local calendar fields, converted to
// universal time with the zone's standard bias only (never the daylight one), so a time stamped
// in summer and one stamped in winter differ by exactly their calendar difference.
// A missing file is left alone without a message.
void SetFileModifiedTime(const QString& path, int year, int month, int day, int hour, int minute,
                         int second);

// The same with the bias given, in minutes (universal time = local time + bias).
bool SetFileModifiedTime(const QString& path, int year, int month, int day, int hour, int minute,
                         int second, int biasMinutes);

} // namespace qmr
