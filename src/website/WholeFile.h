#pragma once

#include <QByteArray>
#include <QString>

namespace qmr {

// Writes `bytes` under a temporary name beside `path` and renames it over `path`, so that the
// file is either whole or not there, even when there was none before. False with the reason
// otherwise.
bool WriteWholeFile(const QString& path, const QByteArray& bytes, QString* problem);

} // namespace qmr
