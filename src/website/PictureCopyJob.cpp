#include "website/PictureCopyJob.h"

#include "website/PictureCodec.h"
#include "website/PixelBudget.h"
#include "website/WholeFile.h"

#include <QFile>

namespace qmr {
namespace {

// JPEGs decode at 1/2, 1/4 or 1/8 scale; the screen copy's longer side decides how far, and
// both copies come from that one decode, whichever of them is asked for, so a copy has the
// same bytes whichever command made it.
constexpr int kDecodeAtLeast = 640;

} // namespace

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
