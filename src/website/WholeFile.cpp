#include "website/WholeFile.h"

#include "platform/FileReplace.h"
#include "platform/PathSeparators.h"

#include <QCoreApplication>
#include <QFile>

namespace qmr {

// The temporary name ends in ".tmp", so that a copy left half-written by a crash is never
// taken for a picture.
bool WriteWholeFile(const QString& path, const QByteArray& bytes, QString* problem) {
    const QString temporary =
        path + QStringLiteral(".%1.tmp").arg(QCoreApplication::applicationPid());
    QFile file(temporary);
    const bool written = file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
                         file.write(bytes) == bytes.size() && file.flush();
    const QString reason = file.errorString();
    file.close();
    if (written && ReplaceFile(temporary, path)) return true;
    QFile::remove(temporary);
    *problem =
        QStringLiteral("cannot write %1: %2")
            .arg(ToNativePath(path), written ? QStringLiteral("it cannot be renamed") : reason);
    return false;
}

} // namespace qmr
