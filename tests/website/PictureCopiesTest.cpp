#include "website/PictureCopies.h"

#include "support/RecordingHost.h"
#include "website/PictureFit.h"
#include "website/PictureSources.h"
#include "website/PictureTestSupport.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::MakePicture;
using test::PictureSize;
using test::ReadBytes;
using test::RecordingHost;
using test::TempFolder;

const QString kItem = QStringLiteral("data/20240101120000/");

// A scrapbook with one item folder; pictures are drawn into it by the tests.
struct Scrapbook {
    TempFolder root;
    QString item() const { return root.path() + kItem; }
    QString picture(const QString& name, const QStringList& drawing,
                    const QString& format = QString()) const {
        QDir().mkpath(item());
        return MakePicture(item() + name, drawing, format);
    }
    QString icon(const QString& name) const { return item() + kIconCopyFolder + name; }
    QString screen(const QString& name) const { return item() + kScreenCopyFolder + name; }
};

PictureCopyReport makeCopies(const Scrapbook& book, RecordingHost& host,
                             PictureCopyOptions options = {}) {
    return MakePictureCopies(host, book.root.path(), options);
}

// Inside the box, the picture's shape kept to within a pixel, never larger than the picture.
void expectFitted(const QString& copy, QSize picture, QSize box) {
    const QSize size = PictureSize(copy);
    SCOPED_TRACE(copy.toStdString());
    EXPECT_LE(size.width(), qMin(box.width(), picture.width()));
    EXPECT_LE(size.height(), qMin(box.height(), picture.height()));
    EXPECT_TRUE(size.width() == qMin(box.width(), picture.width()) ||
                size.height() == qMin(box.height(), picture.height()));
    EXPECT_NEAR(double(size.width()) * picture.height() / picture.width(), size.height(), 1.0);
}

TEST(PictureFit, ShrinksIntoTheBoxKeepingTheShapeAndNeverEnlarges) {
    EXPECT_EQ(FitInside(QSize(3000, 2000), QSize(640, 480)), QSize(640, 427));
    EXPECT_EQ(FitInside(QSize(3000, 2000), QSize(100, 75)), QSize(100, 67));
    EXPECT_EQ(FitInside(QSize(2000, 3000), QSize(640, 480)), QSize(320, 480));
    EXPECT_EQ(FitInside(QSize(4000, 3000), QSize(100, 75)), QSize(100, 75));
    EXPECT_EQ(FitInside(QSize(50, 40), QSize(100, 75)), QSize(50, 40));
    EXPECT_EQ(FitInside(QSize(640, 480), QSize(640, 480)), QSize(640, 480));
    EXPECT_EQ(FitInside(QSize(20000, 3), QSize(100, 75)), QSize(100, 1));
}

TEST(PictureSources, PicturesByExtensionNamesOfCopiesAndNameOrder) {
    for (const char* name :
         {"a.jpg", "a.JPG", "a.Jpeg", "a.png", "a.GIF", "a.bmp", "a.PBM", "a.webp", "a.WebP"})
        EXPECT_TRUE(IsPictureSource(QString::fromLatin1(name))) << name;
    for (const char* name : {"qmr_icon.jpg", "QMR.png", "a.svg", "a.ico", "jpg", "a.jpg.txt"})
        EXPECT_FALSE(IsPictureSource(QString::fromLatin1(name))) << name;
    EXPECT_EQ(CopyName(QStringLiteral("a.JPG")), QStringLiteral("a.JPG"));
    EXPECT_EQ(CopyName(QStringLiteral("a.png")), QStringLiteral("a.png.jpg"));
    EXPECT_EQ(CopyName(QStringLiteral("a.jpeg")), QStringLiteral("a.jpeg.jpg"));

    TempFolder root;
    for (const char* name : {"data/2/b.png", "data/2/A.gif", "data/2/a.gif", "data/2/c.txt",
                             "data/2/100x75/z.jpg", "data/1/x.jpg", "data/qmr/y.jpg"})
        root.write(QString::fromLatin1(name), "x");
    EXPECT_EQ(ItemFolders(root.path()),
              QStringList({root.path() + "data/1/", root.path() + "data/2/"}));
    QStringList names;
    for (const QFileInfo& file : PictureSourcesIn(root.path() + "data/2/"))
        names.append(file.fileName());
    EXPECT_EQ(names, QStringList({"A.gif", "a.gif", "b.png"}));
}

// Every kind of picture, in any case of extension, gets both copies fitted to their boxes;
// transparency turns white, an EXIF-turned photo comes out upright, and the item icon is the
// first picture's small copy.
TEST(PictureCopies, EveryKindOfPictureGetsBothCopies) {
    Scrapbook book;
    struct Case {
        const char* name;
        QStringList drawing;
        const char* format;
        QSize size;
    };
    const QString half = QStringLiteral("rectangle 0,0 149,499");
    const Case cases[] = {
        {"photo.JPG", {"-size", "3000x2000", "xc:orange", "-draw", half}, "", {3000, 2000}},
        {"b.Png",
         {"-size", "300x500", "xc:none", "-fill", "red", "-draw", half},
         "PNG32",
         {300, 500}},
        {"c.gif", {"-size", "640x480", "gradient:red-green"}, "", {640, 480}},
        {"d.BMP", {"-size", "101x76", "gradient:white-black"}, "", {101, 76}},
        {"d3.bmp", {"-size", "333x222", "gradient:yellow-blue"}, "BMP3", {333, 222}},
        {"e.pbm", {"-size", "333x222", "pattern:checkerboard"}, "", {333, 222}},
        {"f.jpeg", {"-size", "800x600", "gradient:green-white"}, "", {800, 600}},
        {"g.WebP", {"-size", "1000x100", "gradient:purple-pink"}, "", {1000, 100}},
        {"tiny.jpg", {"-size", "50x40", "xc:teal"}, "", {50, 40}},
    };
    for (const Case& c : cases)
        book.picture(c.name, c.drawing, QString::fromLatin1(c.format));
    // Stored on its side: red left, blue right; upright it is red above blue.
    const QByteArray sideways = test::Magick(
        {"-size", "300x200", "xc:blue", "-fill", "red", "-draw", "rectangle 0,0 149,199", "JPG:-"});
    QFile turned(book.item() + "turned.jpg");
    ASSERT_TRUE(turned.open(QIODevice::WriteOnly));
    turned.write(test::WithOrientation(sideways, 6));
    turned.close();
    book.picture("qmr_logo.jpg", {"-size", "10x10", "xc:red"}); // the program's own: never copied

    RecordingHost host;
    const PictureCopyReport report = makeCopies(book, host);
    EXPECT_EQ(report.made, 10) << host.log.join(u'\n').toStdString();
    EXPECT_EQ(report.skipped, 0);
    for (const Case& c : cases) {
        const QString copy = CopyName(QString::fromLatin1(c.name));
        expectFitted(book.screen(copy), c.size, QSize(640, 480));
        expectFitted(book.icon(copy), c.size, QSize(100, 75));
    }
    EXPECT_EQ(PictureSize(book.screen("photo.JPG")), QSize(640, 427));
    EXPECT_EQ(PictureSize(book.icon("photo.JPG")), QSize(100, 67));
    EXPECT_EQ(PictureSize(book.screen("tiny.jpg")), QSize(50, 40));
    EXPECT_TRUE(QFile::exists(book.screen("b.Png.jpg")));
    EXPECT_FALSE(QFile::exists(book.screen("qmr_logo.jpg")));

    EXPECT_EQ(PictureSize(book.screen("turned.jpg")), QSize(200, 300));
    EXPECT_EQ(PictureSize(book.icon("turned.jpg")), QSize(50, 75));
    const auto red = [](QList<int> c) { return c[0] > 200 && c[1] < 60 && c[2] < 60; };
    const auto blue = [](QList<int> c) { return c[0] < 60 && c[1] < 60 && c[2] > 200; };
    EXPECT_TRUE(red(test::Pixel(book.screen("turned.jpg"), 100, 50)));
    EXPECT_TRUE(blue(test::Pixel(book.screen("turned.jpg"), 100, 250)));
    EXPECT_EQ(test::Pixel(book.screen("b.Png.jpg"), 250, 240), QList<int>({255, 255, 255}));

    // "b.Png" comes first when case is ignored.
    EXPECT_EQ(ReadBytes(book.icon(kItemIconName)), ReadBytes(book.icon("b.Png.jpg")));
    EXPECT_EQ(host.log.last().toStdString(), "Picture copies: 10 made, 0 up to date, 0 skipped");
}

} // namespace
} // namespace qmr
