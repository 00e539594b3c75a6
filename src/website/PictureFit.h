#pragma once

#include <QSize>

namespace qmr {

// The size of a picture shrunk to fit inside `box`, keeping its aspect ratio (each side
// rounded to the nearest pixel, never below one); a picture that already fits keeps its size.
// 3000x2000 in 640x480 gives 640x427.
QSize FitInside(QSize picture, QSize box);

} // namespace qmr
