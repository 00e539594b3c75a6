#pragma once

#include "website/PictureHeader.h"

#include <QByteArray>
#include <QList>
#include <QSize>
#include <QString>

namespace qmr {

// The one place that talks to the picture library: bytes of a picture in, JPEG copies out.

// Decodes `bytes` once (upright by their EXIF orientation, JPEGs at the smallest scale whose
// longer side still reaches `decodeAtLeast`) and encodes one JPEG for each box, fitted inside
// it and never enlarged, transparency laid over white. False with the reason when the picture
// cannot be read: the decoder refuses it, or it is cut short. Safe to call from several
// threads at once.
bool MakeJpegCopies(const QByteArray& bytes, const PictureHeader& header, const QList<QSize>& boxes,
                    int decodeAtLeast, QList<QByteArray>* copies, QString* problem);

} // namespace qmr
