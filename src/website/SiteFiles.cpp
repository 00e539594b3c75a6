#include "website/SiteFiles.h"

#include "website/PictureSources.h"
#include "website/WholeFile.h"

#include <QDir>
#include <QFile>

namespace qmr {
namespace {

QByteArray siteFile(const QString& name) {
    for (const EmbeddedFile& file : SiteFiles())
        if (file.name == name) return file.bytes;
    return QByteArray();
}

// Written whole under another name first: a file that is there is always kept, so a
// half-written one would stay.
bool writeUnlessThere(const QString& path, const QString& name, QString* error) {
    if (QFile::exists(path)) return true;
    QDir().mkpath(QFileInfo(path).path());
    QString problem;
    if (WriteWholeFile(path, siteFile(name), &problem)) return true;
    if (error) *error = problem;
    return false;
}

} // namespace

bool WriteSiteStylesheet(const QString& folder, QString* error) {
    return writeUnlessThere(folder + QStringLiteral("index.css"), QStringLiteral("index.css"),
                            error);
}

bool WriteNoPictureIcon(const QString& itemFolder, QString* error) {
    return writeUnlessThere(itemFolder + kIconCopyFolder + kItemIconName,
                            QStringLiteral("no-picture.jpg"), error);
}

} // namespace qmr
