#include "website/PictureHeader.h"

#include "website/PictureTestSupport.h"

#include <QMap>

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::Magick;

// A 300 by 200 picture in `format`, drawn once.
QByteArray drawn(const char* format) {
    static QMap<QString, QByteArray> drawings;
    const QString name = QString::fromLatin1(format);
    if (!drawings.contains(name))
        drawings[name] = Magick({"-size", "300x200", "gradient:", "-strip", name + ":-"});
    return drawings[name];
}

void setLittle(QByteArray& bytes, int at, int size, quint32 value) {
    for (int i = 0; i < size; ++i)
        bytes[at + i] = char(value >> (8 * i));
}

// A header that asks for an absurd size is refused, in every format; so is a file that stops
// before the pixels its header promises, and a file that is no picture at all.
TEST(PictureHeader, RefusesAbsurdSizesCutShortFilesAndStrangers) {
    QByteArray jpeg = drawn("JPG");
    const qsizetype frame = jpeg.indexOf("\xFF\xC0");
    jpeg.replace(frame + 5, 4, QByteArray("\x75\x30\x75\x30", 4));
    QByteArray gif = drawn("GIF");
    setLittle(gif, 6, 2, 30000);
    QByteArray bmp = drawn("BMP3");
    setLittle(bmp, 18, 4, 30000);
    QByteArray webp = drawn("WEBP");
    setLittle(webp, 26, 2, 0x3FFF);
    setLittle(webp, 28, 2, 0x3FFF);
    const QByteArray pbm = QByteArray("P4\n# big\n30000 30000\n") + QByteArray(100, '\0');
    for (const QByteArray& forged : {jpeg, gif, bmp, webp, pbm}) {
        QString problem;
        EXPECT_FALSE(ReadPictureHeader(forged, &problem));
        EXPECT_TRUE(problem.startsWith("the header says ")) << problem.toStdString();
    }

    const QByteArray cut[] = {drawn("BMP3").chopped(500), drawn("PPM").chopped(1),
                              drawn("WEBP").chopped(10), drawn("JPG").left(20),
                              drawn("GIF").left(12)};
    for (const QByteArray& bytes : cut) {
        QString problem;
        EXPECT_FALSE(ReadPictureHeader(bytes, &problem));
        EXPECT_EQ(problem.toStdString(), "the file is cut short");
    }

    QString problem;
    EXPECT_FALSE(ReadPictureHeader("<svg xmlns=\"http://www.w3.org/2000/svg\"/>", &problem));
    EXPECT_TRUE(problem.startsWith("it is not a JPEG"));
    EXPECT_FALSE(ReadPictureHeader(QByteArray("\xFF\xD8\xFF\xDA\0\x02", 6), &problem));
    EXPECT_EQ(problem.toStdString(), "there is no frame header");
}

} // namespace
} // namespace qmr
