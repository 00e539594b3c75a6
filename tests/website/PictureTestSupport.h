#pragma once

#include "support/TempFolder.h"

#include <QByteArray>
#include <QProcess>
#include <QSize>
#include <QStringList>

#include <gtest/gtest.h>

namespace qmr::test {

// ImageMagick draws the test pictures and reads the copies back: a reader that shares no code
// with the one that made them.
inline QByteArray Magick(const QStringList& arguments) {
    QProcess convert;
    convert.start(QStringLiteral("convert"), arguments);
    const bool finished = convert.waitForFinished(60000);
    EXPECT_TRUE(finished && convert.exitCode() == 0)
        << "convert " << arguments.join(u' ').toStdString() << ": "
        << convert.readAllStandardError().toStdString();
    return convert.readAllStandardOutput();
}

// Draws a picture: `drawing` is ImageMagick's own description of it, the format comes from the
// name unless `format` says otherwise ("BMP3", "PNG32", ...).
inline QString MakePicture(const QString& path, QStringList drawing,
                           const QString& format = QString()) {
    drawing << QStringLiteral("-strip") << (format.isEmpty() ? path : format + u':' + path);
    Magick(drawing);
    return path;
}

inline QSize PictureSize(const QString& path) {
    QProcess identify;
    identify.start(QStringLiteral("identify"), {QStringLiteral("-ping"), QStringLiteral("-format"),
                                                QStringLiteral("%w %h"), path});
    identify.waitForFinished(60000);
    const QList<QByteArray> size = identify.readAllStandardOutput().split(' ');
    return size.size() == 2 ? QSize(size[0].toInt(), size[1].toInt()) : QSize();
}

// The red, green and blue of one pixel, each 0 to 255.
inline QList<int> Pixel(const QString& path, int x, int y) {
    const QByteArray text =
        Magick({path, QStringLiteral("-crop"), QStringLiteral("1x1+%1+%2").arg(x).arg(y),
                QStringLiteral("-depth"), QStringLiteral("8"), QStringLiteral("-format"),
                QStringLiteral("%[pixel:p]"), QStringLiteral("info:")});
    // "srgb(r,g,b)", or a colour name where the colour has one ("white").
    if (text == "white") return {255, 255, 255};
    QList<int> colour;
    for (const QByteArray& part : text.mid(text.indexOf('(') + 1).chopped(1).split(','))
        colour.append(part.toInt());
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
