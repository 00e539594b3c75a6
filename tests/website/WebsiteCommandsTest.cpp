#include "website/WebsiteCommands.h"
#include "website/PictureCopies.h"

#include "platform/FileTimes.h"
#include "support/Programs.h"
#include "support/RecordingHost.h"
#include "support/TempFolder.h"
#include "website/MediaPlaylists.h"
#include "website/ParallelJobs.h"
#include "website/PictureSources.h"
#include "website/SiteFiles.h"
#include "website/SkinPictures.h"
#include "website/WebsiteSample.h"

#include <QByteArray>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QSize>
#include <QStringList>

#include <algorithm>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

using test::ReadBytes;
using test::RecordingHost;
using test::RunProgram;
using test::RunResult;
using test::TempFolder;

// ImageMagick draws the test pictures and reads the copies back: a reader that shares no code
// with the one that made them.
// Debian's own convert is named in full: a wrapper of the same name may come first on the path.
QByteArray Magick(const QStringList& arguments) {
    const QString installed = QStringLiteral("/usr/bin/convert");
    const RunResult run =
        RunProgram(QFile::exists(installed) ? installed : QStringLiteral("convert"), arguments);
    EXPECT_EQ(run.exitCode, 0) << "convert " << arguments.join(u' ').toStdString() << ": "
                               << run.err.toStdString();
    return run.outBytes;
}

// Draws a picture: `drawing` is ImageMagick's own description of it, the format comes from the
// name unless `format` says otherwise ("BMP3", "PNG32", ...).
QString MakePicture(const QString& path, QStringList drawing, const QString& format = QString()) {
    drawing << QStringLiteral("-strip") << (format.isEmpty() ? path : format + u':' + path);
    Magick(drawing);
    return path;
}

// The sizes of the pictures in `folder` by name, read in one go.
QMap<QString, QSize> PictureSizes(const QString& folder) {
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

QSize PictureSize(const QString& path) {
    const qsizetype slash = path.lastIndexOf(u'/');
    return PictureSizes(path.left(slash + 1)).value(path.mid(slash + 1));
}

// The red, green and blue of one pixel, each 0 to 255.
QList<int> Pixel(const QString& path, int x, int y) {
    const QString at = QStringLiteral("%[fx:int(255*p{%1,%2}.").arg(x).arg(y);
    QList<int> colour;
    for (const QByteArray& value :
         Magick({path, "-format", at + "r)] " + at + "g)] " + at + "b)]", "info:"}).split(' '))
        colour.append(value.toInt());
    return colour;
}

// A JPEG with an EXIF block whose orientation tag says how to turn it upright (6: a quarter
// turn clockwise), as a camera held on its side writes it.
QByteArray WithOrientation(const QByteArray& jpeg, int orientation) {
    // The EXIF name, a big-endian TIFF header, and one directory holding one short.
    QByteArray exif("Exif\0\0MM\0\x2A\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01"
                    "\0\0\0\0\0\0\0\0",
                    32);
    exif[25] = char(orientation);
    QByteArray segment("\xFF\xE1\0\0", 4);
    segment[3] = char(exif.size() + 2);
    return jpeg.left(2) + segment + exif + jpeg.mid(2);
}

struct Item {
    const char* id;
    const char* type;
    const char* title;
    const char* source = "";
};

// A scrapbook on disk in ScrapBook's own layout, every item listed at the top and given its
// folder with an index.dat (folders too: one may hold pictures).
QString writeScrapbook(const TempFolder& temp, const QString& name, const QList<Item>& items) {
    QByteArray rdf = "<?xml version=\"1.0\"?>\n<RDF:RDF xmlns:NS1=\"http://amb.vis.ne.jp/mozilla/"
                     "scrapbook-rdf#\" xmlns:NC=\"http://home.netscape.com/NC-rdf#\" "
                     "xmlns:RDF=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">\n"
                     "<RDF:Seq RDF:about=\"urn:scrapbook:root\">\n";
    for (const Item& item : items)
        rdf += QByteArray("<RDF:li RDF:resource=\"urn:scrapbook:item") + item.id + "\"/>\n";
    rdf += "</RDF:Seq>\n";
    for (const Item& item : items) {
        rdf += QByteArray("<RDF:Description RDF:about=\"urn:scrapbook:item") + item.id +
               "\"\nNS1:id=\"" + item.id + "\"\nNS1:type=\"" + item.type + "\"\nNS1:title=\"" +
               item.title + "\"\nNS1:chars=\"UTF-8\"\nNS1:icon=\"\"\nNS1:source=\"" + item.source +
               "\"\nNS1:comment=\"\" />\n";
        temp.write(name + u"/data/"_s + QLatin1String(item.id) + u"/index.dat"_s, "id");
    }
    temp.write(name + u"/scrapbook.rdf"_s, rdf + "</RDF:RDF>\n");
    return temp.path() + name + u'/';
}

WebsiteRequest requestFor(const QString& folder) {
    WebsiteRequest request;
    request.folder = folder;
    request.chrome = test::SampleChrome();
    request.jobs = 2;
    return request;
}

class RecordingStatus : public WebsiteStatus {
  public:
    void showScrapbookFolder(const QString& folder) override { shown << folder; }
    void showScrapbookName(const QString& name) override { shown << name; }
    void showBuildFrame() override { shown << u"build frame"_s; }
    QStringList shown;
};

TEST(WebsiteCommands, EveryCommandAsksForAScrapbookFirst) {
    RecordingHost host;
    const WebsiteRequest none;
    for (const auto command : {CreateIcons, CreateIcons640x480, CreatePhotoPages, CreateHomePage,
                               BuildWebsite, MakeVideoPages, CreateMediaPlayerLists}) {
        const WebsiteResult result = command(host, none);
        EXPECT_TRUE(!result.ok && result.badInput);
    }
    EXPECT_EQ(host.messages, QStringList(7, u"Please select a scrapbook in the list first!"_s));
    EXPECT_TRUE(host.questions.isEmpty() && host.log.isEmpty());
}

// Each menu step alone, then the whole build: copies of every kind of picture (a cut-short one
// logged and skipped), a photo page for each qualifying item and none for a folder holding
// pictures, the gallery opened, and the icon and stylesheet the pages link.
TEST(WebsiteCommands, StepsAndTheWholeWebsite) {
    TempFolder temp;
    const QString book = writeScrapbook(temp, u"book"_s,
                                        {{"20240101000001", "image", "Photos"},
                                         {"20240101000002", "", "No pictures"},
                                         {"20240101000003", "folder", "A folder with pictures"}});
    const QString photos = book + u"data/20240101000001/"_s;
    for (const char* name : {"a.jpg", "b.png", "c.gif", "d.bmp", "e.pbm"})
        MakePicture(photos + QLatin1String(name), {"-size", "90x60", "gradient:red-blue"});
    MakePicture(book + u"data/20240101000003/a.jpg"_s, {"-size", "30x20", "xc:teal"});
    temp.write(u"book/data/20240101000001/cut.jpg"_s, ReadBytes(photos + u"a.jpg"_s).left(300));
    RecordingHost host;
    const WebsiteRequest request = requestFor(book);
    ASSERT_TRUE(CreateIcons640x480(host, request).ok);
    EXPECT_TRUE(QFile::exists(photos + u"640x480/e.pbm.jpg"_s));
    EXPECT_FALSE(QFile::exists(photos + u"100x75"_s));

    RecordingStatus status;
    host.log.clear();
    ASSERT_TRUE(menu_Build_Website_All(host, status, request).ok)
        << host.log.join(u'\n').toStdString();
    EXPECT_EQ(status.shown, QStringList(u"build frame"_s));
    EXPECT_TRUE(host.log.first().contains(u"cut.jpg"_s)) << host.log.first().toStdString();
    EXPECT_EQ(host.log.mid(1), (QStringList{u"Picture copies: 6 made, 0 up to date, 1 skipped"_s,
                                            u"Loading all pages..."_s,
                                            u"My TravelsBuild all things for this Website ok!"_s}));
    EXPECT_EQ(host.opened, QStringList(book + u"data/qmr/PhotoIcons001.html"_s));
    EXPECT_EQ(ReadBytes(photos + u"Photo.html"_s).count("<a name=\"PIC("), 5);
    EXPECT_FALSE(QFile::exists(book + u"data/20240101000003/Photo.html"_s));
    EXPECT_TRUE(QFile::exists(book + u"data/20240101000003/100x75/qmr_icon.jpg"_s));
    EXPECT_EQ(ReadBytes(book + u"data/20240101000002/100x75/qmr_icon.jpg"_s),
              SiteFiles().at(1).bytes);
}

// Every scrapbook of the list, each announced; one that fails is named and the rest go on.
TEST(WebsiteCommands, AllWebsitesOfTheList) {
    TempFolder temp;
    RecordingHost host;
    AppSettings settings(host, temp.path() + u"Quillmere.ini"_s);
    RecordingStatus status;
    EXPECT_EQ(BuildAllWebsites(host, status, {}, settings, {}).built, 0);
    EXPECT_EQ(host.log, QStringList(u"Build all things for all Websites ok!"_s));

    const QString alpha = writeScrapbook(
        temp, u"alpha"_s, {{"20240101000001", "site", "Street", "http://a.example/"}});
    temp.write(u"alpha/ScrapbookPrj.ini"_s, "[Build]\r\nLinkToSourceURL=1\r\n");
    const QString beta = temp.write(u"beta/scrapbook.rdf"_s, "\xFF not UTF-8").chopped(13);
    const QList<ScrapbookRow> rows = {{{}, u"  Alpha  "_s, {}, {}, alpha},
                                      {{}, u"Beta"_s, {}, {}, beta}};
    host.log.clear();
    const AllWebsitesResult all = BuildAllWebsites(host, status, rows, settings, {});
    EXPECT_EQ(all.built, 1);
    EXPECT_EQ(all.failed, QStringList(u"Beta"_s));
    EXPECT_EQ(status.shown, (QStringList{alpha, u"  Alpha  "_s, beta, u"Beta"_s}));
    EXPECT_EQ(host.log.first(), u"Start Build:1/2...Alpha"_s);
    EXPECT_TRUE(host.log.contains(u"AlphaBuild all things for this Website ok!"_s));
    EXPECT_TRUE(host.log.contains(u"Start Build:2/2...Beta"_s));
    EXPECT_EQ(host.log.last(), u"Built 1 of 2 websites; these failed: Beta"_s);
    EXPECT_TRUE(ReadBytes(alpha + u"data/qmr/PhotoIcons001.html"_s)
                    .contains("<a href=\"http://a.example/\">"));
}

// The question comes first; Cancel leaves everything as it was.
TEST(VideoCommands, VideoPagesAfterTheQuestion) {
    TempFolder temp;
    const QString book = writeScrapbook(temp, u"book"_s,
                                        {{"20240101000001", "File", "Two clips"},
                                         {"20240101000002", "", "A page with a clip"},
                                         {"20240101000003", "file", "No clip"}});
    for (const char* name :
         {"20240101000001/b.WMV", "20240101000001/a.wmv", "20240101000002/c.wmv"})
        temp.write(u"book/data/"_s + QLatin1String(name), "clip");
    RecordingHost host;
    host.answer = false;
    EXPECT_FALSE(MakeVideoPages(host, requestFor(book)).ok);
    EXPECT_EQ(host.questions, QStringList(kVideoPagesWarning));
    EXPECT_TRUE(host.log.isEmpty() && host.messages.isEmpty());
    host.answer = true;
    ASSERT_TRUE(MakeVideoPages(host, requestFor(book)).ok);
    EXPECT_EQ(host.messages, QStringList(u"Create Video Page ok!"_s));
    EXPECT_TRUE(ReadBytes(book + u"data/20240101000001/org.html"_s)
                    .contains("<title>Two clips-(My Travels)</title>"));
    EXPECT_FALSE(QFile::exists(book + u"data/20240101000002/org.html"_s));
    EXPECT_FALSE(QFile::exists(book + u"data/20240101000003/org.html"_s));
}

// Both playlists in both forms with their fixed head, and the clips stamped with the times
// their names hold; a name whose fields form no date is logged and keeps its time.
TEST(VideoCommands, PlaylistsAndClipTimes) {
    TempFolder temp;
    const QString book = writeScrapbook(temp, u"book"_s,
                                        {{"20240101000001", "file", "Dated"},
                                         {"20240101000002", "file", "Undated"},
                                         {"20240101000003", "image", "Pictures"}});
    const QString dated =
        temp.write(u"book/data/20240101000001/clip-D(2008-0309-142530).wmv"_s, "c");
    const QString undated =
        temp.write(u"book/data/20240101000002/x-D(2008-1309-142530).wmv"_s, "c");
    const QDateTime before = QFileInfo(undated).lastModified();
    for (const char* name : {"b.jpg", "a.jpg", "qmr_icon.jpg"})
        temp.write(u"book/data/20240101000003/640x480/"_s + QLatin1String(name), "");
    RecordingHost host;
    WebsiteRequest request = requestFor(book);
    request.chrome.addresses.videoSiteBase = u"https://site.example/book/data/"_s;
    const WebsiteResult result = CreateMediaPlayerLists(host, request);
    ASSERT_TRUE(result.ok);
    EXPECT_EQ(result.undatedClips, 1);
    EXPECT_EQ(host.messages, QStringList(u"Create windows Media Player List ok!"_s));
    EXPECT_TRUE(host.log.last().startsWith(u"Clip time not set: the name of "_s + undated));

    const QByteArray head =
        "<?wpl version=\"1.0\"?>\r\n<smil>\r\n    <head>\r\n        <meta name=\"Generator\" "
        "content=\"Microsoft Windows Media Player -- 11.0.5721.5145\"/>\r\n        <meta "
        "name=\"AverageRating\" content=\"0\"/>\r\n        <meta name=\"TotalDuration\" "
        "content=\"389\"/>\r\n        <meta name=\"ItemCount\" content=\"13\"/>\r\n        "
        "<title>WMV-Play-List</title>\r\n    </head>\r\n    <body>\r\n        <seq>\r\n";
    const QByteArray tail = "        </seq>\r\n    </body>\r\n</smil>\r\n";
    // Each list with its clips or pictures below the book's data folder, then below the site.
    const auto playlist = [&](const QString& base, const QStringList& files) {
        QByteArray media;
        for (const QString& file : files)
            media += "            <media src=\"" + (base + file).toUtf8() + "\" />\r\n";
        return head + media + tail;
    };
    const QStringList clips = {u"20240101000001/clip-D(2008-0309-142530).wmv"_s,
                               u"20240101000002/x-D(2008-1309-142530).wmv"_s};
    const QStringList pictures = {u"20240101000003/640x480/a.jpg"_s,
                                  u"20240101000003/640x480/b.jpg"_s};
    const QString qmr = book + u"data/qmr/"_s;
    const QString site = u"https://site.example/book/data/"_s;
    EXPECT_EQ(ReadBytes(qmr + u"WMV_Play_List_local.wpl"_s), playlist(u"../"_s, clips));
    EXPECT_EQ(ReadBytes(qmr + u"WMV_Play_List.wpl"_s), playlist(site, clips));
    EXPECT_EQ(ReadBytes(qmr + u"WMV_Play__PIC_List_local.wpl"_s), playlist(u"../"_s, pictures));
    EXPECT_EQ(ReadBytes(qmr + u"WMV_Play_PIC_List.wpl"_s), playlist(site, pictures));

    const QDateTime stamped(QDate(2008, 3, 9), QTime(14, 25, 30), Qt::UTC);
    EXPECT_EQ(QFileInfo(dated).lastModified().toUTC(),
              stamped.addSecs(StandardTimeBiasMinutes() * 60));
    EXPECT_EQ(QFileInfo(undated).lastModified(), before);
    EXPECT_EQ(ClipNameTime(u"a-d(2008-0229-235959).wmv"_s),
              QDateTime(QDate(2008, 2, 29), QTime(23, 59, 59)));
    for (const char* name :
         {"a-D(2009-0229-000000).wmv", "a-D(2008-03", "a-D(2008-0309-1425xx)", "a.wmv"})
        EXPECT_FALSE(ClipNameTime(QLatin1String(name))) << name;
}

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
    const QByteArray sideways = Magick(
        {"-size", "300x200", "xc:blue", "-fill", "red", "-draw", "rectangle 0,0 149,199", "JPG:-"});
    book.root.write(kItem + "turned.jpg", WithOrientation(sideways, 6));
    book.picture("qmr_logo.jpg", {"-size", "10x10", "xc:red"});
    book.root.write("data/qmr/logo.jpg", ReadBytes(book.item() + "tiny.jpg"));
    Scrapbook twin;
    test::CopyTree(book.root.path() + "data", twin.root.path() + "data");

    RecordingHost host;
    const PictureCopyReport report = MakePictureCopies(host, book.root.path(), {true, true, 1});
    EXPECT_EQ(report.made, 12) << host.log.join(u'\n').toStdString();
    const auto screens = PictureSizes(book.item() + kScreenCopyFolder);
    const auto icons = PictureSizes(book.item() + kIconCopyFolder);
    for (const auto& c : cases) {
        const QString copy = CopyName(QString::fromLatin1(c.name));
        expectFitted(screens.value(copy), c.size, QSize(640, 480), c.name);
        expectFitted(icons.value(copy), c.size, QSize(100, 75), c.name);
    }
    EXPECT_EQ(screens.size(), 12);
    EXPECT_FALSE(QDir(book.root.path() + "data/qmr/" + kScreenCopyFolder).exists());
    EXPECT_EQ(screens.value("turned.jpg"), QSize(200, 300));
    EXPECT_EQ(icons.value("turned.jpg"), QSize(50, 75));
    const QList<int> top = Pixel(book.screen("turned.jpg"), 100, 50);
    const QList<int> bottom = Pixel(book.screen("turned.jpg"), 100, 250);
    EXPECT_TRUE(top[0] > 200 && top[1] < 60 && top[2] < 60) << "red above";
    EXPECT_TRUE(bottom[0] < 60 && bottom[1] < 60 && bottom[2] > 200) << "blue below";
    EXPECT_EQ(Pixel(book.screen("b.Png.jpg"), 250, 240), QList<int>({255, 255, 255}));
    // "b.Png" comes first when case is ignored.
    EXPECT_EQ(ReadBytes(book.icon(kItemIconName)), ReadBytes(book.icon("b.Png.jpg")));

    EXPECT_EQ(MakePictureCopies(host, twin.root.path(), {true, true, 2}).made, 12);
    for (const QString& folder : {kIconCopyFolder, kScreenCopyFolder})
        EXPECT_TRUE(book.copies(folder) == twin.copies(folder)) << folder.toStdString();
}

// A 300 by 200 picture in `format`.
QByteArray drawn(const char* format) {
    return Magick({"-size", "300x200", "gradient:", "-strip", QLatin1String(format) + u":-"_s});
}

void setLittle(QByteArray& bytes, int at, int size, quint32 value) {
    for (int i = 0; i < size; ++i)
        bytes[at + i] = char(value >> (8 * i));
}

// A picture that cannot be read is logged with its path and the reason and skipped; the others
// are made, and no temporary file is left. The header refuses an absurd size in every format
// before the decoder runs, and so a file that stops before the pixels it promises, or that is
// no picture at all.
TEST(PictureCopies, BrokenPicturesAreLoggedWithTheReasonAndSkipped) {
    Scrapbook book;
    book.picture("good.png", {"-size", "120x90", "gradient:red-blue"});
    TempFolder scratch;
    const auto half = [&](const char* name) {
        const QByteArray whole =
            ReadBytes(MakePicture(scratch.path() + name, {"-size", "400x300", "plasma:"}));
        return whole.left(whole.size() / 2);
    };
    QByteArray jpeg = drawn("JPG");
    jpeg.replace(jpeg.indexOf("\xFF\xC0") + 5, 4, QByteArray("\x75\x30\x75\x30", 4));
    QByteArray png = drawn("PNG");
    png.replace(16, 8, QByteArray("\0\0\x75\x30\0\0\x75\x30", 8)); // 30000 by 30000
    QByteArray gif = drawn("GIF");
    setLittle(gif, 6, 2, 30000);
    QByteArray bmp = drawn("BMP3");
    setLittle(bmp, 18, 4, 30000);
    QByteArray webp = drawn("WEBP");
    setLittle(webp, 26, 2, 0x3FFF);
    setLittle(webp, 28, 2, 0x3FFF);
    const QString says = u"the header says "_s, cut = u"the file is cut short"_s;
    const struct {
        const char* name;
        QByteArray bytes;
        QString reason;
    } cases[] = {
        {"cut.jpg", half("cut.jpg"), cut},
        {"cut.png", half("cut.png"), {}},
        {"cut.gif", half("cut.gif"), {}},
        {"short.bmp", drawn("BMP3").chopped(500), cut},
        {"short.pbm", drawn("PPM").chopped(1), cut},
        {"short.webp", drawn("WEBP").chopped(10), cut},
        {"short.jpg", drawn("JPG").left(20), cut},
        {"short.gif", drawn("GIF").left(12), cut},
        {"huge.png", png, u"the header says 30000 by 30000 pixels"_s},
        {"huge.jpg", jpeg, says},
        {"huge.gif", gif, says},
        {"huge.bmp", bmp, says},
        {"huge.webp", webp, says},
        {"huge.pbm", QByteArray("P4\n# big\n30000 30000\n") + QByteArray(100, '\0'), says},
        {"noise.bmp", QByteArray(4000, 'x'), u"it is not a JPEG"_s},
        {"noframe.jpg", QByteArray("\xFF\xD8\xFF\xDA\0\x02", 6), u"there is no frame header"_s},
    };
    for (const auto& c : cases)
        book.root.write(kItem + c.name, c.bytes);

    RecordingHost host;
    const PictureCopyReport report = MakePictureCopies(host, book.root.path());
    EXPECT_EQ(report.made, 1);
    EXPECT_EQ(report.skipped, int(std::size(cases)));
    const QString log = host.log.join(u'\n');
    for (const auto& c : cases)
        EXPECT_TRUE(log.contains(u"Skipped picture %1: %2"_s.arg(
            QDir::toNativeSeparators(book.item() + c.name), c.reason)))
            << c.name << "\n"
            << log.toStdString();
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

// Each built-in picture is a real picture; the type icons are the 20 by 20 their tags give them.
TEST(SkinPictures, EveryPictureDecodes) {
    test::TempFolder folder;
    for (const QList<EmbeddedFile>* files : {&SkinPictureFiles(), &TypeIconFiles()})
        for (const EmbeddedFile& picture : *files) {
            const QSize size = PictureSize(folder.write(picture.name, picture.bytes));
            EXPECT_TRUE(size.isValid()) << picture.name.toStdString();
            EXPECT_TRUE(files != &TypeIconFiles() || size == QSize(20, 20))
                << picture.name.toStdString();
        }
}

} // namespace
} // namespace qmr
