#include "website/WebsiteCommands.h"

#include "platform/FileTimes.h"
#include "support/Golden.h"
#include "support/RecordingHost.h"
#include "website/MediaPlaylists.h"
#include "website/PictureTestSupport.h"
#include "website/SiteFiles.h"
#include "website/WebsiteSample.h"

#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

using test::ReadBytes;
using test::RecordingHost;
using test::TempFolder;

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
        test::MakePicture(photos + QLatin1String(name), {"-size", "90x60", "gradient:red-blue"});
    test::MakePicture(book + u"data/20240101000003/a.jpg"_s, {"-size", "30x20", "xc:teal"});
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

// The question comes first, word for word; Cancel leaves everything as it was.
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
    EXPECT_EQ(host.questions,
              QStringList(u"The Procedure will Delete and ReCreate the Pages in this scrapook, If "
                          "the page type=File and include a WMV file.You can't Undo after this "
                          "procedure!! "_s));
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
    const auto media = [](const char* address) {
        return QByteArray("            <media src=\"") + address + "\" />\r\n";
    };
    const QString qmr = book + u"data/qmr/"_s;
    EXPECT_EQ(ReadBytes(qmr + u"WMV_Play_List_local.wpl"_s),
              head + media("../20240101000001/clip-D(2008-0309-142530).wmv") +
                  media("../20240101000002/x-D(2008-1309-142530).wmv") + tail);
    EXPECT_EQ(
        ReadBytes(qmr + u"WMV_Play_List.wpl"_s),
        head + media("https://site.example/book/data/20240101000001/clip-D(2008-0309-142530).wmv") +
            media("https://site.example/book/data/20240101000002/x-D(2008-1309-142530).wmv") +
            tail);
    EXPECT_EQ(ReadBytes(qmr + u"WMV_Play__PIC_List_local.wpl"_s),
              head + media("../20240101000003/640x480/a.jpg") +
                  media("../20240101000003/640x480/b.jpg") + tail);
    EXPECT_EQ(ReadBytes(qmr + u"WMV_Play_PIC_List.wpl"_s),
              head + media("https://site.example/book/data/20240101000003/640x480/a.jpg") +
                  media("https://site.example/book/data/20240101000003/640x480/b.jpg") + tail);

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

} // namespace
} // namespace qmr
