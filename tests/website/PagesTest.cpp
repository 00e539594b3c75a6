#include "website/FolderPages.h"
#include "website/GalleryPages.h"

#include "platform/LocalCodePage.h"
#include "support/Golden.h"
#include "support/RecordingHost.h"
#include "support/TempFolder.h"
#include "website/IconCells.h"
#include "website/ListPage.h"
#include "website/PageFragments.h"
#include "website/PageWriter.h"
#include "website/PhotoPage.h"
#include "website/VideoPage.h"
#include "website/WebsiteSample.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

using test::Golden;
using test::ReadBytes;
using test::SameText;
using test::SampleChrome;
using test::TempFolder;

// The list page lists the placed items that are not folders, and each folder gets a UTF-8 page
// of what its list places, made in memory: no scratch or temporary file stays behind.
TEST(ListAndFolderPages, AsTheGoldenFilesShow) {
    TempFolder root;
    const Catalogue catalogue = test::SampleCatalogue();
    const CatalogueWalk walk(catalogue);
    const QString pages = root.path() + u"data/qmr/"_s;
    const QString path = pages + u"temp.html"_s;
    QString error;
    ASSERT_TRUE(WriteListPage(SampleChrome(), catalogue, walk, false, path, &error))
        << error.toStdString();
    EXPECT_TRUE(SameText(Golden(u"website/list-page.html"_s), ReadBytes(path)));
    EXPECT_EQ(FindItemById(catalogue, u"20080101000000"_s), -1);
    ASSERT_TRUE(WriteFolderPages(SampleChrome(), catalogue, walk, root.path(), &error))
        << error.toStdString();
    EXPECT_TRUE(SameText(Golden(u"website/folder-travel.html"_s),
                         ReadBytes(pages + u"20080101000001.html"_s)));
    EXPECT_TRUE(SameText(Golden(u"website/folder-japan.html"_s),
                         ReadBytes(pages + u"20080101000002.html"_s)));
    EXPECT_EQ(QDir(pages).entryList(QDir::Files, QDir::Name),
              (QStringList{"20080101000001.html", "20080101000002.html", "temp.html"}));

    // "Link To Source URL" shows every row as a bookmark linked to its source (none for a note),
    // titles cut at fifty characters.
    ASSERT_TRUE(WriteListPage(SampleChrome(), catalogue, walk, true, path));
    const QString page = LocalCodePage::decode(ReadBytes(path));
    const QString bookmark = QStringLiteral(
        "<img border=\"0\" src=\"images-D(2007-0426-225435).jpg\" width=\"20\" height=\"20\">");
    EXPECT_EQ(page.count(bookmark), 7);
    EXPECT_TRUE(page.contains(u"<a href=\"http://example.com/a?x=1&amp;y=2\">"_s + bookmark +
                              test::kTitle50 + u"</a>"_s));
    EXPECT_TRUE(
        page.contains(u"<a href=\"\">"_s + bookmark + test::kTitle51.left(50) + u"...</a>"_s));

    // Places that cannot be written give the reason.
    EXPECT_FALSE(WriteListPage(SampleChrome(), catalogue, walk, false,
                               path + u"/under-a-file.html"_s, &error));
    EXPECT_FALSE(error.isEmpty());
    TempFolder blocked;
    blocked.write(u"data/qmr"_s, "a file where the folder should be");
    EXPECT_FALSE(WriteFolderPages(SampleChrome(), catalogue, walk, blocked.path(), &error));
    EXPECT_TRUE(error.contains(u"20080101000001.html"_s)) << error.toStdString();
}

// The golden pages check every fragment whole, the advert block too (the empty photo page has
// adverts on), and the page writer's lines and deep footer (the gallery's and photo pages); the
// redirect page is checked byte for byte by the converted scrapbook's golden files. These are
// the cases they do not reach: an empty scrapbook name, no escaping, failures.
TEST(PageFragments, WhatTheGoldenPagesDoNotReach) {
    PageChrome chrome = SampleChrome();
    chrome.scrapbookName.clear();
    EXPECT_TRUE(
        HtmlHead(chrome, u"<i>T&</i>"_s, u"BIG5"_s).contains(u"<title><i>T&</i>-()</title>"_s));
    EXPECT_TRUE(HtmlFooter(chrome, QString())
                    .startsWith(QStringLiteral("\u3000<hr><div align=\"center\"><a "
                                               "href=\"index.html\"><font size=\"3\" >[]</font>")));
    TempFolder folder;
    QString error;
    EXPECT_FALSE(WriteRedirectIndex(chrome, folder.path() + u"missing/"_s, u"a.pdf"_s, &error));
    EXPECT_TRUE(error.contains(u"missing"_s)) << error.toStdString();
    EXPECT_FALSE(PageWriter(chrome).ClosePageWithFooter(&error)); // no page open

    const QString page = folder.path() + u"data/qmr/PlayAllVideos.html"_s;
    ASSERT_TRUE(WriteVideoPage(SampleChrome(), page, u"Play All Videos on this Scrapbook"_s,
                               u"WMV_Play_List.wpl"_s, &error))
        << error.toStdString();
    EXPECT_TRUE(SameText(Golden(u"website/video-page.html"_s), ReadBytes(page)));
}

QStringList pageLines(const QString& path) {
    return LocalCodePage::decode(ReadBytes(path)).split(u"\r\n"_s);
}

int countLines(const QStringList& lines, const QString& start) {
    return int(std::count_if(lines.begin(), lines.end(),
                             [&](const QString& line) { return line.startsWith(start); }));
}

CatalogueItem itemOf(const QString& id, const QString& title) {
    CatalogueItem item;
    item.id = id;
    item.title = title;
    return item;
}

const QString kCell = u"          <table border=\"0\" width=\"100\" id=\"table17\""_s;

// Titles of 36 and 37 characters (one holding "D("), a clip's dated title, a web source: the
// gallery's captions and links; folders, notes, bookmarks, an item without index.dat and an
// identifier that leaves its folder get no cell.
TEST(GalleryPages, GoldenPageAndTheItemsThatQualify) {
    TempFolder root;
    const Catalogue catalogue =
        test::CatalogueBuilder()
            .item("20070418162822", "image", "Taipei-101 at night, seen from a bus",
                  "http://photos.example/a.jpg")
            .item("20080309142530", "", "Harbour-D(2008-0309) walk, long way!!")
            .item("20080310000000", "file", "clip-D(2008-0309-142530)", "file:///C:/clip.wmv")
            .item("20080311000000", "site", "Old street", "http://example.com/street")
            .item("20080312000000", "folder", "Folder with pictures")
            .item("20080313000000", "note", "A note")
            .item("20080314000000", "marked", "No index.dat")
            .item("20080315000000", "bookmark", "A bookmark", "http://example.com/")
            .item("..", "", "Unsafe")
            .build();
    for (const char* id : {"20070418162822", "20080309142530", "20080310000000", "20080311000000",
                           "20080312000000", "20080313000000", "20080315000000", ".."})
        root.write(u"data/%1/index.dat"_s.arg(QLatin1String(id)), "id");
    root.write(u"data/20080314000000/index.html"_s, "<html>");
    test::RecordingHost host;
    const QList<const CatalogueItem*> items = PhotoPageItems(host, catalogue, root.path());
    ASSERT_EQ(items.size(), 4);
    EXPECT_EQ(host.log, QStringList(u"Skipped item \"..\": its identifier cannot name a folder"_s));

    QString error;
    ASSERT_TRUE(BuildGallery(test::SampleChrome(), items, root.path(), false, &error))
        << error.toStdString();
    const QString page = root.path() + u"data/qmr/PhotoIcons001.html"_s;
    EXPECT_TRUE(SameText(Golden(u"website/gallery.html"_s), ReadBytes(page)));

    // "Link To Source URL" links web sources; a local file's item keeps its photo page.
    ASSERT_TRUE(BuildGallery(test::SampleChrome(), items, root.path(), true));
    const QByteArray linked = ReadBytes(page);
    for (const char* link :
         {"\"http://photos.example/a.jpg\">", "\"./../20080309142530/photo.html\">",
          "\"./../20080310000000/photo.html\">", "\"http://example.com/street\">"})
        EXPECT_EQ(linked.count(QByteArray("<a href=") + link), 2) << link;
}

// Forty icons a page in five rows of eight; a count that fills its last row or page exactly
// still gets the row, or the page, after it.
TEST(GalleryPages, FortyToAPageAndTheEmptyOneAfterAFullPage) {
    struct Case {
        int items;
        QList<int> rows, cells; // per page
    };
    for (const Case& c : {Case{0, {1}, {0}}, Case{1, {1}, {1}}, Case{39, {5}, {39}},
                          Case{40, {5, 1}, {40, 0}}, Case{41, {5, 1}, {40, 1}}}) {
        TempFolder root;
        test::CatalogueBuilder builder;
        for (int i = 0; i < c.items; ++i)
            builder.item(u"200801010000%1"_s.arg(i, 2, 10, QLatin1Char('0')), "image");
        const Catalogue catalogue = builder.build();
        QList<const CatalogueItem*> items;
        for (const CatalogueItem& item : catalogue.items)
            items.append(&item);
        ASSERT_TRUE(BuildGallery(test::SampleChrome(), items, root.path(), false, nullptr));
        for (int p = 1; p <= c.rows.size() + 1; ++p) {
            const QString path = root.path() + u"data/qmr/"_s + GalleryPageName(p);
            ASSERT_EQ(QFile::exists(path), p <= c.rows.size()) << c.items << " items, page " << p;
            if (p > c.rows.size()) continue;
            const QStringList lines = pageLines(path);
            EXPECT_EQ(countLines(lines, u"<tr>"_s), c.rows.at(p - 1)) << c.items << " page " << p;
            EXPECT_EQ(countLines(lines, kCell), c.cells.at(p - 1)) << c.items << " page " << p;
        }
    }
    EXPECT_TRUE(PageNumberBar(2, 2).contains(
        u"<a href=\"PhotoIcons001.html\">  <font color=\"#FFFFFF\">&nbsp; 1</font></a>"
        "<a href=\"PhotoIcons002.html\">  <font color=\"#FFFFFF\" size=5 >&nbsp; 2</font></a>"_s));
}

// Copies named as the picture-copy maker names them, the item icon and other files among
// them, and clips of both kinds beside them.
TEST(PhotoPage, GoldenPagesWithPicturesAndClipsAndWithNone) {
    TempFolder root;
    const QString item = root.path() + u"data/20080320101010/"_s;
    for (const char* name : {"UPPER.JPG", "sixteen-char.jpg", "seventeen-chr.jpg", "b-D(0309).jpg"})
        for (const char* folder : {"100x75/", "640x480/"})
            root.write(u"data/20080320101010/"_s + QLatin1String(folder) + QLatin1String(name), "");
    for (const char* name : {"100x75/qmr_icon.jpg", "100x75/notes.txt", "clip.WMV", "old.avi",
                             "readme.txt", "index.html"})
        root.write(u"data/20080320101010/"_s + QLatin1String(name), "kept");
    QString error;
    ASSERT_TRUE(BuildPhotoPage(test::SampleChrome(), item,
                               itemOf(u"20080320101010"_s, u"Harbour walk"_s), &error))
        << error.toStdString();
    const QByteArray page = ReadBytes(item + u"Photo.html"_s);
    EXPECT_TRUE(SameText(Golden(u"website/photo-pictures.html"_s), page));
    EXPECT_EQ(ReadBytes(item + u"photo.html"_s), page);
    EXPECT_EQ(ReadBytes(item + u"index.html"_s), "kept");

    // No pictures: one row of empty cells; adverts on; the empty place of index.html is taken.
    PageChrome chrome = test::SampleChrome();
    chrome.advertising = true;
    const QString empty = root.path() + u"data/20080321000000/"_s;
    QDir().mkpath(empty);
    ASSERT_TRUE(
        BuildPhotoPage(chrome, empty, itemOf(u"20080321000000"_s, test::kBig5Title), &error));
    EXPECT_TRUE(
        SameText(Golden(u"website/photo-empty.html"_s), ReadBytes(empty + u"Photo.html"_s)));
    EXPECT_EQ(ReadBytes(empty + u"index.html"_s), ReadBytes(empty + u"Photo.html"_s));
}

// A page holds 800 pictures and only the last part of an item with more stays; more than
// 10,000 stop the build with the folder named. (The golden photo page shows the links from the
// first picture back to the last and on from the last to the first.)
TEST(PhotoPage, OnlyTheLastPartOf800StaysAndTenThousandStop) {
    for (const int count : {800, 801}) {
        TempFolder root;
        for (int i = 0; i < count; ++i)
            for (const char* folder : {"100x75/", "640x480/"})
                root.write(QLatin1String(folder) + u"p%1.jpg"_s.arg(i, 4, 10, QLatin1Char('0')),
                           "");
        ASSERT_TRUE(
            BuildPhotoPage(test::SampleChrome(), root.path(), itemOf(u"1"_s, u"t"_s), nullptr));
        const QStringList lines = pageLines(root.path() + u"Photo.html"_s);
        EXPECT_EQ(countLines(lines, u"<tr>"_s), 1) << count;
        EXPECT_EQ(countLines(lines, kCell), count - 800) << count;
        EXPECT_EQ(lines.filter(u"<a name=\"PIC(800)\">801/801</a>"_s).size(), count - 800);
    }

    TempFolder big;
    for (int i = 0; i <= kMostPicturesListed; ++i)
        QFile(big.path() + u"%1.jpg"_s.arg(i)).open(QIODevice::WriteOnly);
    QString error;
    EXPECT_FALSE(PictureList(big.path(), &error));
    EXPECT_TRUE(error.contains(u"10001 pictures"_s) && error.contains(big.path().chopped(1)))
        << error.toStdString();
}

} // namespace
} // namespace qmr
