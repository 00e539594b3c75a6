#include "website/FolderFiles.h"

#include "website/PictureSources.h"

#include <QDir>

#include <algorithm>

namespace qmr {

QStringList FilesEndingIn(const QString& folder, const QString& suffix) {
    QStringList names;
    const QStringList all = QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::NoSort);
    for (const QString& name : all)
        if (name.endsWith(suffix, Qt::CaseInsensitive)) names.append(name);
    std::sort(names.begin(), names.end(), FileNameOrder);
    return names;
}

} // namespace qmr
