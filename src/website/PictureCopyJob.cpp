#include "website/PictureCopyJob.h"

#include "platform/FileReplace.h"
#include "platform/PathSeparators.h"
#include "website/PictureCodec.h"
#include "website/PixelBudget.h"

#include <QCoreApplication>
#include <QFile>

namespace qmr {
namespace {

// JPEGs decode at 1/2, 1/4 or 1/8 scale; the screen copy's longer side decides how far, and
// both copies come from that one decode, whichever of them is asked for, so a copy has the
// same bytes whichever command made it.
constexpr int kDecodeAtLeast = 640;

} // namespace

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

QString CopyPicture(const PictureCopyJob& job, PixelBudget& budget) {
    QFile file(job.source);
    if (!file.open(QIODevice::ReadOnly)) return file.errorString();
    const QByteArray bytes = file.readAll();
    file.close();

    QString problem;
    const std::optional<PictureHeader> header = ReadPictureHeader(bytes, &problem);
    if (!header) return problem;
    QList<QByteArray> copies;
    {
        const PixelBudget::Share share(budget, qint64(header->width) * header->height);
        if (!MakeJpegCopies(bytes, *header, job.boxes, kDecodeAtLeast, &copies, &problem))
            return problem;
    }
    for (qsizetype i = 0; i < copies.size(); ++i)
        if (!WriteWholeFile(job.targets.at(i), copies.at(i), &problem)) return problem;
    return QString();
}

} // namespace qmr
