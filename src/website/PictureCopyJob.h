#pragma once

#include <QList>
#include <QSize>
#include <QString>
#include <QStringList>

namespace qmr {

class PixelBudget;

// The copies to make of one picture: one target file for each box, from one decode.
struct PictureCopyJob {
    QString source;
    QList<QSize> boxes;
    QStringList targets;
};

// Reads the picture, checks its header, decodes it once and writes each copy whole. Runs on a
// worker thread: it touches nothing but its own files. Empty when done, else why the picture
// was skipped.
QString CopyPicture(const PictureCopyJob& job, PixelBudget& budget);

} // namespace qmr
