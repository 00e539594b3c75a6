#include "website/PictureHeader.h"

#include "website/PictureTestSupport.h"

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::Magick;

QByteArray drawn(const char* format, QStringList options = {}) {
    options.prepend("-size");
    options.insert(1, "300x200");
    return Magick(options << "gradient:red-blue"
                          << "-strip" << QString::fromLatin1(format) + ":-");
}

void setLittle(QByteArray& bytes, int at, int size, quint32 value) {
    for (int i = 0; i < size; ++i)
        bytes[at + i] = char(value >> (8 * i));
}

// Each format's size is read from its own header, wherever the format keeps it.
TEST(PictureHeader, ReadsTheSizeOfEveryKind) {
    const struct {
        const char* format;
        QStringList options;
        PictureFormat expected;
    } cases[] = {
        {"JPG", {}, PictureFormat::Jpeg},
        {"PJPEG", {}, PictureFormat::Jpeg},
        {"PNG", {}, PictureFormat::Png},
        {"GIF", {}, PictureFormat::Gif},
        {"BMP", {}, PictureFormat::Bmp},
        {"BMP2", {}, PictureFormat::Bmp},
        {"PBM", {}, PictureFormat::PortableBitmap},
        {"PGM", {"-compress", "none"}, PictureFormat::PortableBitmap},
        {"PPM", {}, PictureFormat::PortableBitmap},
        {"WEBP", {}, PictureFormat::Webp},
        {"WEBP", {"-define", "webp:lossless=true"}, PictureFormat::Webp},
        {"WEBP", {"-alpha", "set"}, PictureFormat::Webp},
    };
    for (const auto& c : cases) {
        QString problem;
        const auto header = ReadPictureHeader(drawn(c.format, c.options), &problem);
        ASSERT_TRUE(header) << c.format << ": " << problem.toStdString();
        EXPECT_EQ(header->format, c.expected) << c.format;
        EXPECT_EQ(header->width, 300) << c.format;
        EXPECT_EQ(header->height, 200) << c.format;
    }
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
                              drawn("WEBP").chopped(10), drawn("JPG").left(100),
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
