#pragma once

#include <QString>
#include <QStringList>

namespace qmr {

// The names of the files directly in `folder` that end in `suffix` (".jpg", ".wmv"), compared
// in any case as the file systems of the original platform match "*.jpg", in name order.
QStringList FilesEndingIn(const QString& folder, const QString& suffix);

} // namespace qmr
