#include "website/PictureFit.h"

#include <algorithm>

namespace qmr {
namespace {

// a * b / c rounded half up, in 64 bits so that no real picture can overflow it.
int scaled(qint64 a, qint64 b, qint64 c) {
    return int(std::max<qint64>(1, (2 * a * b + c) / (2 * c)));
}

} // namespace

QSize FitInside(QSize picture, QSize box) {
    const qint64 w = picture.width();
    const qint64 h = picture.height();
    if (w <= box.width() && h <= box.height()) return picture;
    // Wider than the box's shape: the width fills it; otherwise the height does.
    if (w * box.height() >= h * box.width()) return QSize(box.width(), scaled(h, box.width(), w));
    return QSize(scaled(w, box.height(), h), box.height());
}

} // namespace qmr
