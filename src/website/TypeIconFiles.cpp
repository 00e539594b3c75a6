#include "website/TypeIconFiles.h"

#include "catalogue/TextFiles.h"

#include <QDir>
#include <QFile>

namespace qmr {

bool WriteTypeIcons(const QString& qmrFolder, QString* error) {
    QDir().mkpath(qmrFolder);
    for (const EmbeddedFile& icon : TypeIconFiles()) {
        const QString path = qmrFolder + icon.name;
        if (!QFile::exists(path) && !WriteFileAtomically(path, icon.bytes, error)) return false;
    }
    return true;
}

} // namespace qmr
