#include "website/SkinPictures.h"

#include "website/WholeFile.h"

#include <QFile>

namespace qmr {

QStringList KioskSkinPictures() {
    return {QStringLiteral("logo.gif"),     QStringLiteral("topbg_right.gif"),
            QStringLiteral("topbg.gif"),    QStringLiteral("foot-bg.gif"),
            QStringLiteral("right-bg.gif"), QStringLiteral("right-1.gif")};
}

QStringList LogitechSkinPictures() {
    return {QStringLiteral("logo.jpg"),
            QStringLiteral("strip_bg5_333333.gif"),
            QStringLiteral("strip5_a_util.jpg"),
            QStringLiteral("spacer.gif"),
            QStringLiteral("d5_a.gif"),
            QStringLiteral("d5_b.gif"),
            QStringLiteral("grey_table_background_line.gif")};
}

bool WriteSkinPictures(const QString& folder, const QStringList& names, QString* error) {
    for (const EmbeddedFile& picture : SkinPictureFiles()) {
        if (!names.contains(picture.name)) continue;
        const QString path = folder + picture.name;
        // Written whole under another name first: a half-written picture would never be
        // replaced, since one that is there is always kept.
        QString problem;
        if (QFile::exists(path) || WriteWholeFile(path, picture.bytes, &problem)) continue;
        if (error) *error = problem;
        return false;
    }
    return true;
}

} // namespace qmr
