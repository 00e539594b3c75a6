#pragma once

#include "support/Programs.h"
#include "support/TempFolder.h"

#include <QByteArray>
#include <QFile>
#include <QMap>
#include <QSize>
#include <QStringList>

#include <gtest/gtest.h>

namespace qmr::test {

// ImageMagick draws the test pictures and reads the copies back: a reader that shares no code
// with the one that made them.
// Debian's own convert is named in full: a wrapper of the same name may come first on the path.
inline QByteArray Magick(const QStringList& arguments) {
    const QString installed = QStringLiteral("/usr/bin/convert");
    const RunResult run =
        RunProgram(QFile::exists(installed) ? installed : QStringLiteral("convert"), arguments);
    EXPECT_EQ(run.exitCode, 0) << "convert " << arguments.join(u' ').toStdString() << ": "
                               << run.err.toStdString();
    return run.outBytes;
}

// Draws a picture: `drawing` is ImageMagick's own description of it, the format comes from the
// name unless `format` says otherwise ("BMP3", "PNG32", ...).
inline QString MakePicture(const QString& path, QStringList drawing,
                           const QString& format = QString()) {
    drawing << QStringLiteral("-strip") << (format.isEmpty() ? path : format + u':' + path);
    Magick(drawing);
    return path;
}

// The sizes of the pictures in `folder` by name, read in one go.
inline QMap<QString, QSize> PictureSizes(const QString& folder) {
    const RunResult identify =
        RunProgram(QStringLiteral("sh"),
                   {QStringLiteral("-c"), QStringLiteral("identify -ping -format '%f %w %h\\n' *")},
                   {}, folder);
    QMap<QString, QSize> sizes;
    for (const QByteArray& line : identify.outBytes.split('\n')) {
        const QList<QByteArray> parts = line.split(' ');
        if (parts.size() == 3)
            sizes.insert(QString::fromUtf8(parts[0]), QSize(parts[1].toInt(), parts[2].toInt()));
    }
    return sizes;
}

inline QSize PictureSize(const QString& path) {
    const qsizetype slash = path.lastIndexOf(u'/');
    return PictureSizes(path.left(slash + 1)).value(path.mid(slash + 1));
}

// The red, green and blue of one pixel, each 0 to 255.
inline QList<int> Pixel(const QString& path, int x, int y) {
    const QString at = QStringLiteral("%[fx:int(255*p{%1,%2}.").arg(x).arg(y);
    QList<int> colour;
    for (const QByteArray& value :
         Magick({path, "-format", at + "r)] " + at + "g)] " + at + "b)]", "info:"}).split(' '))
        colour.append(value.toInt());
    return colour;
}

// A JPEG with an EXIF block whose orientation tag says how to turn it upright (6: a quarter
// turn clockwise), as a camera held on its side writes it.
inline QByteArray WithOrientation(const QByteArray& jpeg, int orientation) {
    // The EXIF name, a big-endian TIFF header, and one directory holding one short.
    QByteArray exif("Exif\0\0MM\0\x2A\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01"
                    "\0\0\0\0\0\0\0\0",
                    32);
    exif[25] = char(orientation);
    QByteArray segment("\xFF\xE1\0\0", 4);
    segment[3] = char(exif.size() + 2);
    return jpeg.left(2) + segment + exif + jpeg.mid(2);
}

} // namespace qmr::test
