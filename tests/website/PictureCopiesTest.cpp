#include "website/PictureCopies.h"

#include "support/RecordingHost.h"
#include "website/ParallelJobs.h"
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
    // The copies of one kind by name, as bytes.
    QMap<QString, QByteArray> copies(const QString& folder) const {
        QMap<QString, QByteArray> bytes;
        for (const QString& name : QDir(item() + folder).entryList(QDir::Files))
            bytes.insert(name, ReadBytes(item() + folder + name));
        return bytes;
    }
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
// transparency turns white, an EXIF-turned photo comes out upright, the item icon is the first
// picture's small copy, and the program's own pictures get none. The workers share nothing
// that could change a copy: one and two give the same bytes.
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
    book.picture("qmr_logo.jpg", {"-size", "10x10", "xc:red"});
    book.root.write("data/qmr/logo.jpg", ReadBytes(book.item() + "tiny.jpg"));
    Scrapbook twin;
    test::CopyTree(book.root.path() + "data", twin.root.path() + "data");

    RecordingHost host;
    const PictureCopyReport report = MakePictureCopies(host, book.root.path(), {true, true, 1});
    EXPECT_EQ(report.made, 12) << host.log.join(u'\n').toStdString();
    EXPECT_EQ(host.log.last().toStdString(), "Picture copies: 12 made, 0 up to date, 0 skipped");
    const auto screens = test::PictureSizes(book.item() + kScreenCopyFolder);
    const auto icons = test::PictureSizes(book.item() + kIconCopyFolder);
    for (const auto& c : cases) {
        const QString copy = CopyName(QString::fromLatin1(c.name));
        expectFitted(screens.value(copy), c.size, QSize(640, 480), c.name);
        expectFitted(icons.value(copy), c.size, QSize(100, 75), c.name);
    }
    EXPECT_EQ(screens.size(), 12);
    EXPECT_FALSE(QDir(book.root.path() + "data/qmr/" + kScreenCopyFolder).exists());
    EXPECT_EQ(screens.value("turned.jpg"), QSize(200, 300));
    EXPECT_EQ(icons.value("turned.jpg"), QSize(50, 75));
    const QList<int> top = test::Pixel(book.screen("turned.jpg"), 100, 50);
    const QList<int> bottom = test::Pixel(book.screen("turned.jpg"), 100, 250);
    EXPECT_TRUE(top[0] > 200 && top[1] < 60 && top[2] < 60) << "red above";
    EXPECT_TRUE(bottom[0] < 60 && bottom[1] < 60 && bottom[2] > 200) << "blue below";
    EXPECT_EQ(test::Pixel(book.screen("b.Png.jpg"), 250, 240), QList<int>({255, 255, 255}));
    // "b.Png" comes first when case is ignored.
    EXPECT_EQ(ReadBytes(book.icon(kItemIconName)), ReadBytes(book.icon("b.Png.jpg")));

    EXPECT_EQ(MakePictureCopies(host, twin.root.path(), {true, true, 2}).made, 12);
    for (const QString& folder : {kIconCopyFolder, kScreenCopyFolder})
        EXPECT_TRUE(book.copies(folder) == twin.copies(folder)) << folder.toStdString();
}

// A picture that cannot be read is logged with its path and skipped; the others are made, and
// no temporary file is left. A forged size is refused by the header before the decoder runs.
TEST(PictureCopies, BrokenCutShortAndOversizedPicturesAreLoggedAndSkipped) {
    Scrapbook book;
    book.picture("good.png", {"-size", "120x90", "gradient:red-blue"});
    TempFolder scratch;
    for (const char* name : {"cut.jpg", "cut.png", "cut.gif"}) {
        const QString whole = MakePicture(scratch.path() + name, {"-size", "400x300", "plasma:"});
        book.root.write(kItem + name, ReadBytes(whole).chopped(ReadBytes(whole).size() / 2));
    }
    book.root.write(kItem + "noise.bmp", QByteArray(4000, 'x'));
    QByteArray huge = ReadBytes(scratch.path() + "cut.png");
    huge.replace(16, 8, QByteArray("\0\0\x75\x30\0\0\x75\x30", 8)); // 30000 by 30000
    book.root.write(kItem + "huge.png", huge);

    RecordingHost host;
    const PictureCopyReport report = MakePictureCopies(host, book.root.path());
    EXPECT_EQ(report.made, 1);
    EXPECT_EQ(report.skipped, 5);
    const QString log = host.log.join(u'\n');
    for (const char* name : {"cut.jpg", "cut.png", "cut.gif", "noise.bmp", "huge.png"})
        EXPECT_TRUE(log.contains(
            QStringLiteral("Skipped picture %1").arg(QDir::toNativeSeparators(book.item() + name))))
            << log.toStdString();
    EXPECT_TRUE(log.contains("cut.jpg: the file is cut short")) << log.toStdString();
    EXPECT_TRUE(log.contains("huge.png: the header says 30000 by 30000 pixels"));
    // The first picture cannot be read, so the icon is the first small copy there is.
    EXPECT_EQ(ReadBytes(book.icon(kItemIconName)), ReadBytes(book.icon("good.png.jpg")));
    EXPECT_EQ(QDir(book.item() + kScreenCopyFolder).entryList(QDir::Files),
              QStringList({"good.png.jpg"}));
}

// A copy newer than its picture is kept: an unchanged scrapbook makes nothing. The menu's two
// commands each make their own folder, and a later full build keeps what they made.
TEST(PictureCopies, CopiesNewerThanThePictureAreKept) {
    Scrapbook book;
    const QString a = book.picture("a.jpg", {"-size", "800x600", "gradient:red-blue"});
    book.picture("b.gif", {"-size", "200x100", "gradient:red-blue"});
    RecordingHost host;
    EXPECT_EQ(MakePictureCopies(host, book.root.path(), {true, false, 0}).made, 2);
    EXPECT_TRUE(QFile::exists(book.icon(kItemIconName)));
    EXPECT_FALSE(QDir(book.item() + kScreenCopyFolder).exists());
    const QDateTime iconTime = QFileInfo(book.icon("a.jpg")).lastModified();
    EXPECT_EQ(MakePictureCopies(host, book.root.path(), {false, true, 0}).made, 2);
    EXPECT_EQ(QFileInfo(book.icon("a.jpg")).lastModified(), iconTime);
    EXPECT_EQ(PictureSize(book.screen("a.jpg")), QSize(640, 480));
    EXPECT_EQ(MakePictureCopies(host, book.root.path()).upToDate, 2);
    EXPECT_EQ(host.log.last().toStdString(), "Picture copies: 0 made, 2 up to date, 0 skipped");

    // A picture changed after its copies gets new ones, and the icon follows.
    QFile changed(a);
    ASSERT_TRUE(changed.open(QIODevice::ReadWrite));
    changed.setFileTime(QDateTime::currentDateTime().addSecs(60),
                        QFileDevice::FileModificationTime);
    changed.close();
    const PictureCopyReport report = MakePictureCopies(host, book.root.path());
    EXPECT_EQ(report.made, 1);
    EXPECT_EQ(report.upToDate, 1);
    EXPECT_GE(QFileInfo(book.icon(kItemIconName)).lastModified(),
              QFileInfo(book.icon("a.jpg")).lastModified());
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
