#include "website/PictureCopies.h"

#include "website/ParallelJobs.h"

#include "support/RecordingHost.h"
#include "website/PictureSources.h"
#include "website/PictureTestSupport.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>

#include <algorithm>

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

// Shrunk into the box (never enlarged) with the picture's shape kept to within a pixel.
void expectFitted(QSize size, QSize picture, QSize box, const char* name) {
    const double scale = std::min(
        {1.0, double(box.width()) / picture.width(), double(box.height()) / picture.height()});
    EXPECT_NEAR(size.width(), picture.width() * scale, 1.0) << name;
    EXPECT_NEAR(size.height(), picture.height() * scale, 1.0) << name;
    EXPECT_TRUE(size.width() <= box.width() && size.height() <= box.height()) << name;
}

// Every kind of picture, in any case of extension, gets both copies fitted to their boxes;
// transparency turns white, an EXIF-turned photo comes out upright, and the item icon is the
// first picture's small copy.
TEST(PictureCopies, EveryKindOfPictureGetsBothCopies) {
    Scrapbook book;
    const QString half = QStringLiteral("rectangle 0,0 149,499");
    const struct {
        const char* name;
        QStringList drawing;
        const char* format;
        QSize size;
    } cases[] = {
        {"photo.JPG", {"-size", "3000x2000", "xc:orange", "-draw", half}, "", {3000, 2000}},
        {"b.Png", {"-size", "300x500", "xc:none", "-draw", half}, "PNG32", {300, 500}},
        {"c.gif", {"-size", "640x480", "gradient:red-green"}, "", {640, 480}},
        {"d.BMP", {"-size", "101x76", "gradient:"}, "", {101, 76}},
        {"d3.bmp", {"-size", "333x222", "gradient:"}, "BMP3", {333, 222}},
        {"e.pbm", {"-size", "333x222", "pattern:checkerboard"}, "", {333, 222}},
        {"e2.pbm", {"-size", "33x22", "gradient:", "-compress", "none"}, "PGM", {33, 22}},
        {"f.jpeg", {"-size", "800x600", "gradient:"}, "PJPEG", {800, 600}},
        {"g.WebP", {"-size", "1000x100", "gradient:"}, "", {1000, 100}},
        {"g2.webp", {"-size", "90x900", "xc:none", "-draw", half}, "", {90, 900}},
        {"tiny.jpg", {"-size", "50x40", "xc:teal"}, "", {50, 40}},
    };
    for (const auto& c : cases)
        book.picture(c.name, c.drawing, QString::fromLatin1(c.format));
    // Stored on its side: red left, blue right; upright it is red above blue.
    const QByteArray sideways = test::Magick(
        {"-size", "300x200", "xc:blue", "-fill", "red", "-draw", "rectangle 0,0 149,199", "JPG:-"});
    book.root.write(kItem + "turned.jpg", test::WithOrientation(sideways, 6));
    // The program's own pictures, and the website folder's, never get copies.
    book.picture("qmr_logo.jpg", {"-size", "10x10", "xc:red"});
    book.root.write("data/qmr/logo.jpg", ReadBytes(book.item() + "tiny.jpg"));

    RecordingHost host;
    const PictureCopyReport report = MakePictureCopies(host, book.root.path());
    EXPECT_EQ(report.made, 12) << host.log.join(u'\n').toStdString();
    EXPECT_EQ(report.skipped, 0);
    const auto screens = test::PictureSizes(book.item() + kScreenCopyFolder);
    const auto icons = test::PictureSizes(book.item() + kIconCopyFolder);
    for (const auto& c : cases) {
        const QString copy = CopyName(QString::fromLatin1(c.name));
        expectFitted(screens.value(copy), c.size, QSize(640, 480), c.name);
        expectFitted(icons.value(copy), c.size, QSize(100, 75), c.name);
    }
    EXPECT_EQ(screens.size(), 12);
    EXPECT_FALSE(screens.contains("qmr_logo.jpg"));
    EXPECT_FALSE(QDir(book.root.path() + "data/qmr/" + kScreenCopyFolder).exists());
    EXPECT_EQ(screens.value("turned.jpg"), QSize(200, 300));
    EXPECT_EQ(icons.value("turned.jpg"), QSize(50, 75));
    const auto red = [](QList<int> c) { return c[0] > 200 && c[1] < 60 && c[2] < 60; };
    const auto blue = [](QList<int> c) { return c[0] < 60 && c[1] < 60 && c[2] > 200; };
    EXPECT_TRUE(red(test::Pixel(book.screen("turned.jpg"), 100, 50)));
    EXPECT_TRUE(blue(test::Pixel(book.screen("turned.jpg"), 100, 250)));
    EXPECT_EQ(test::Pixel(book.screen("b.Png.jpg"), 250, 240), QList<int>({255, 255, 255}));

    // "b.Png" comes first when case is ignored.
    EXPECT_EQ(ReadBytes(book.icon(kItemIconName)), ReadBytes(book.icon("b.Png.jpg")));
    EXPECT_EQ(host.log.last().toStdString(), "Picture copies: 12 made, 0 up to date, 0 skipped");
}

QByteArray cutShort(const QString& path) {
    const QByteArray bytes = ReadBytes(path);
    return bytes.left(bytes.size() / 2);
}

// A picture that cannot be read is logged with its path and skipped; the others are made. Each
// check happens before the decoder runs where it can: a forged size is refused by the header.
TEST(PictureCopies, BrokenCutShortAndOversizedPicturesAreLoggedAndSkipped) {
    Scrapbook book;
    book.picture("good.png", {"-size", "120x90", "gradient:red-blue"});
    const QString jpeg = book.picture("cut.jpg", {"-size", "400x300", "gradient:red-blue"});
    test::TempFolder scratch;
    const QString png = MakePicture(scratch.path() + "p.png", {"-size", "400x300", "plasma:"});
    const QString gif = MakePicture(scratch.path() + "g.gif", {"-size", "400x300", "plasma:"});
    book.root.write(kItem + "cut.jpg", cutShort(jpeg));
    book.root.write(kItem + "cut.png", cutShort(png));
    book.root.write(kItem + "cut.gif", cutShort(gif));
    book.root.write(kItem + "noise.bmp", QByteArray(4000, 'x'));
    QByteArray huge = ReadBytes(png);
    huge.replace(16, 8, QByteArray("\0\0\x75\x30\0\0\x75\x30", 8)); // 30000 by 30000
    book.root.write(kItem + "huge.png", huge);

    RecordingHost host;
    const PictureCopyReport report = MakePictureCopies(host, book.root.path());
    EXPECT_EQ(report.made, 1);
    EXPECT_EQ(report.skipped, 5);
    const QString log = host.log.join(u'\n');
    for (const char* name : {"cut.jpg", "cut.png", "cut.gif", "noise.bmp", "huge.png"}) {
        EXPECT_TRUE(log.contains(
            QStringLiteral("Skipped picture %1").arg(QDir::toNativeSeparators(book.item() + name))))
            << name << "\n"
            << log.toStdString();
        EXPECT_FALSE(QFile::exists(book.screen(CopyName(QString::fromLatin1(name))))) << name;
    }
    EXPECT_TRUE(log.contains("cut.jpg: the file is cut short")) << log.toStdString();
    EXPECT_TRUE(log.contains("huge.png: the header says 30000 by 30000 pixels"));
    EXPECT_TRUE(log.contains("noise.bmp: the header gives no size") ||
                log.contains("noise.bmp: it is not a"));
    EXPECT_EQ(PictureSize(book.icon("good.png.jpg")), QSize(100, 75));
    // The first picture cannot be read, so the icon is the first small copy there is.
    EXPECT_EQ(ReadBytes(book.icon(kItemIconName)), ReadBytes(book.icon("good.png.jpg")));
    const QStringList left = QDir(book.item() + kScreenCopyFolder).entryList(QDir::Files);
    EXPECT_EQ(left, QStringList({"good.png.jpg"})) << "no temporary file is left behind";
}

// A copy newer than its picture is kept: an unchanged scrapbook makes nothing. The menu's two
// commands each make their own folder, and a later full build keeps what they made.
TEST(PictureCopies, CopiesNewerThanThePictureAreKept) {
    Scrapbook book;
    const QString a = book.picture("a.jpg", {"-size", "800x600", "gradient:red-blue"});
    book.picture("b.gif", {"-size", "200x100", "gradient:red-blue"});
    RecordingHost host;
    PictureCopyReport report = MakePictureCopies(host, book.root.path(), {true, false, 0});
    EXPECT_EQ(report.made, 2);
    EXPECT_TRUE(QFile::exists(book.icon(kItemIconName)));
    EXPECT_FALSE(QDir(book.item() + kScreenCopyFolder).exists());

    const QDateTime iconTime = QFileInfo(book.icon("a.jpg")).lastModified();
    report = MakePictureCopies(host, book.root.path(), {false, true, 0});
    EXPECT_EQ(report.made, 2);
    EXPECT_EQ(QFileInfo(book.icon("a.jpg")).lastModified(), iconTime);
    EXPECT_EQ(PictureSize(book.screen("a.jpg")), QSize(640, 480));

    report = MakePictureCopies(host, book.root.path());
    EXPECT_EQ(report.made, 0);
    EXPECT_EQ(report.upToDate, 2);
    EXPECT_EQ(host.log.last().toStdString(), "Picture copies: 0 made, 2 up to date, 0 skipped");

    // A picture changed after its copies gets new ones, and the icon follows.
    QFile changed(a);
    ASSERT_TRUE(changed.open(QIODevice::ReadWrite));
    changed.setFileTime(QDateTime::currentDateTime().addSecs(60),
                        QFileDevice::FileModificationTime);
    changed.close();
    report = MakePictureCopies(host, book.root.path());
    EXPECT_EQ(report.made, 1);
    EXPECT_EQ(report.upToDate, 1);
    EXPECT_GE(QFileInfo(book.icon(kItemIconName)).lastModified(),
              QFileInfo(book.icon("a.jpg")).lastModified());
}

QMap<QString, QByteArray> copiesIn(const QString& folder) {
    QMap<QString, QByteArray> copies;
    for (const QString& name : QDir(folder).entryList(QDir::Files))
        copies.insert(name, ReadBytes(folder + name));
    return copies;
}

// The workers share nothing that could change a copy: one and two give the same bytes.
TEST(PictureCopies, OneAndTwoWorkersMakeTheSameBytes) {
    Scrapbook one;
    Scrapbook two;
    for (int i = 0; i < 6; ++i) {
        const QString name = QStringLiteral("p%1.jpg").arg(i);
        one.picture(name, {"-seed", QString::number(i), "-size",
                           QStringLiteral("%1x300").arg(400 + 50 * i), "gradient:red-blue",
                           "-attenuate", "0.3", "+noise", "Gaussian"});
        two.root.write(kItem + name, ReadBytes(one.item() + name));
    }
    RecordingHost host;
    EXPECT_EQ(MakePictureCopies(host, one.root.path(), {true, true, 1}).made, 6);
    EXPECT_EQ(MakePictureCopies(host, two.root.path(), {true, true, 2}).made, 6);
    for (const QString& folder : {kIconCopyFolder, kScreenCopyFolder}) {
        const auto made = copiesIn(one.item() + folder);
        EXPECT_EQ(made.size(), folder == kIconCopyFolder ? 7 : 6);
        EXPECT_TRUE(made == copiesIn(two.item() + folder)) << folder.toStdString();
    }
}

// A host that asks to stop once the first picture is done.
class StoppingHost : public RecordingHost {
  public:
    void progress(qint64 value, qint64 total) override {
        steps.append(QStringLiteral("%1/%2").arg(value).arg(total));
    }
    bool cancelled() const override { return !steps.isEmpty(); }
    QStringList steps;
};

// Once the user cancels, no picture starts beyond the few a worker may run ahead.
TEST(PictureCopies, StopsBetweenPicturesWhenCancelled) {
    Scrapbook book;
    for (int i = 0; i < 12; ++i)
        book.picture(QStringLiteral("p%1.png").arg(i, 2, 10, QLatin1Char('0')),
                     {"-size", "30x20", "xc:red"});
    StoppingHost host;
    const PictureCopyReport report = MakePictureCopies(host, book.root.path(), {true, true, 1});
    EXPECT_TRUE(report.cancelled);
    EXPECT_EQ(host.steps.first().toStdString(), "1/12");
    EXPECT_LE(report.made, kAheadPerWorker);
    EXPECT_TRUE(host.log.last().startsWith("Picture copies stopped: "));
}

} // namespace
} // namespace qmr
