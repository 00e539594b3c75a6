#include "ebook/ContentPage.h"

#include "ebook/ForumFile.h"
#include "ebook/SitemapTestSupport.h"

#include <QFileInfo>

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::CrLfLines;
using test::FixtureId;
using test::Golden;
using test::SameBytes;
using test::SameLines;
using test::SitemapBuild;

// The entry lines of the plain page: after its four head lines, up to its closing "<hr>".
QList<QByteArray> EntryLines(const QList<QByteArray>& page) {
    const qsizetype closing = page.indexOf(QByteArray("<hr>\r\n"));
    return page.mid(4, closing - 4);
}

TEST(ContentPage, PlainPageOfTheFixtureLinksSavedCopiesInACompiledBook) {
    SitemapBuild s;
    s.loadFixture();
    s.build.options.makeChmFile = true;
    s.writeSitemaps(QStringLiteral("ROOT_CONTENT"));
    EXPECT_EQ(s.build.content.chosenTemplate(), ContentPage::Template::NoPIC1);
    EXPECT_EQ(s.build.content.pagePath(), s.path("index.html"));
    EXPECT_TRUE(SameBytes(Golden("content-NoPIC1.html"), s.read("index.html")));
}

TEST(ContentPage, PlainPageAndForumLinkWebSourcesWhenAsked) {
    SitemapBuild s;
    s.loadFixture();
    s.build.options.makeChmFile = false;
    s.build.options.linkToSourceURL = true;
    s.writeSitemaps(QStringLiteral("ROOT_CONTENT"));
    EXPECT_TRUE(SameBytes(Golden("content-NoPIC1-sources.html"), s.read("index.html")));
    EXPECT_TRUE(SameBytes(Golden("forum-sources.txt"), s.read("forum.txt")));
}

// Every table, row and cell a skin opens is closed again.
void ExpectBalanced(const QString& page) {
    for (const char* tag : {"table", "tr", "td", "tbody"}) {
        const QString name = QLatin1String(tag);
        EXPECT_EQ(page.count(QStringLiteral("<") + name + QStringLiteral(">")) +
                      page.count(QStringLiteral("<") + name + QStringLiteral(" ")),
                  page.count(QStringLiteral("</") + name + QStringLiteral(">")))
            << tag;
    }
}

// A page whose images are missing still shows its colours: every tag with a background image
// also has a background colour.
void ExpectColouredBackgrounds(const QString& page) {
    for (qsizetype at = page.indexOf(QStringLiteral("background=")); at >= 0;
         at = page.indexOf(QStringLiteral("background="), at + 1)) {
        const qsizetype open = page.lastIndexOf(QLatin1Char('<'), at);
        const QString tag = page.mid(open, page.indexOf(QLatin1Char('>'), at) - open);
        EXPECT_TRUE(tag.contains(QStringLiteral("bgcolor="))) << tag.toStdString();
    }
}

TEST(ContentPage, LogitechMarkerWinsAndItsSkinFramesTheSameEntries) {
    SitemapBuild s;
    s.loadFixture();
    s.writeSitemaps();
    EXPECT_EQ(s.build.content.chosenTemplate(), ContentPage::Template::Logitech);
    const QString path = s.path("data/") + FixtureId(15) + QStringLiteral("/index.html");
    EXPECT_EQ(s.build.content.pagePath(), path);

    const QList<QByteArray> page = CrLfLines(test::ReadBytes(path));
    const QList<QByteArray> plain = CrLfLines(Golden("content-NoPIC1.html"));
    ASSERT_FALSE(page.isEmpty());
    EXPECT_EQ(page.first(), plain.first()); // the same page head
    EXPECT_EQ(page.last(), plain.last());   // and footer
    const qsizetype first = page.indexOf(QByteArray("<div id=\"D5title\"> Content View</div>\r\n"));
    ASSERT_GT(first, 0);
    const QList<QByteArray> entries = EntryLines(plain);
    const qsizetype start = page.indexOf(entries.first(), first);
    ASSERT_GT(start, first);
    EXPECT_TRUE(SameLines(entries, page.mid(start, entries.size())));
    EXPECT_TRUE(SameLines({"</tbody></table>\r\n", "</div>\r\n", plain.last()}, page.last(3)));

    const QString text = LocalCodePage::decode(test::ReadBytes(path));
    for (const char* image : {"d5_a.gif", "d5_b.gif", "strip_bg5_333333.gif", "strip5_a_util.jpg",
                              "spacer.gif", "grey_table_background_line.gif"})
        EXPECT_TRUE(text.contains(QLatin1String(image))) << image;
    EXPECT_TRUE(text.contains(QStringLiteral("<a href=\"https://maker.example/\"><img border=\"0\" "
                                             "src=\"logo.jpg\" width=\"61\" height=\"52\"")));
    ExpectColouredBackgrounds(text);
    ExpectBalanced(text);
}

TEST(ContentPage, KioskMarkerAloneChoosesTheKioskSkin) {
    SitemapBuild s;
    s.loadFixture();
    s.build.catalogue.items[14].comment.clear(); // no Logitech marker
    s.writeSitemaps();
    EXPECT_EQ(s.build.content.chosenTemplate(), ContentPage::Template::Kiosk);
    const QString path = s.path("data/") + FixtureId(14) + QStringLiteral("/index.html");
    const QList<QByteArray> page = CrLfLines(test::ReadBytes(path));
    const QList<QByteArray> entries = EntryLines(CrLfLines(Golden("content-NoPIC1.html")));
    const qsizetype start = page.indexOf(entries.first());
    ASSERT_GT(start, 0);
    EXPECT_TRUE(SameLines(entries, page.mid(start, entries.size())));
    ASSERT_GE(page.size(), 2);
    EXPECT_EQ(page.at(page.size() - 2), QByteArray("<a name=\"#bottom\"></a>\r\n"));

    const QString text = LocalCodePage::decode(test::ReadBytes(path));
    EXPECT_TRUE(text.contains(QStringLiteral("<a href=\"https://quillmere.example/\"><img "
                                             "border=\"0\" src=\"logo.gif\" width=\"114\" "
                                             "height=\"116\"")));
    EXPECT_TRUE(text.contains(QStringLiteral("<font size=\"6\" color=\"#FFFFFF\"><b>Toc Test")));
    EXPECT_TRUE(text.contains(QStringLiteral("height=\"28\" background=\"topbg.gif\"")));
    EXPECT_TRUE(text.contains(QStringLiteral("width=\"90%\" align=\"center\"")));
    for (const char* image : {"topbg_right.gif", "foot-bg.gif", "right-bg.gif", "right-1.gif"})
        EXPECT_TRUE(text.contains(QLatin1String(image))) << image;
    EXPECT_TRUE(text.contains(QStringLiteral("Content View</b></font></td>")));
    ExpectColouredBackgrounds(text);
    ExpectBalanced(text);
}

TEST(ContentPage, OnlyAnExactMarkerOnASafeItemMakesAPage) {
    for (const char* comment :
         {"quillmere_content_kiosk", " Quillmere_Content_kiosk", "Quillmere_Content_kiosk!"}) {
        SitemapBuild s;
        s.loadFixture();
        s.build.catalogue.items[13].comment = QLatin1String(comment);
        s.build.catalogue.items[14].comment.clear();
        s.writeSitemaps();
        EXPECT_TRUE(s.build.content.pagePath().isEmpty()) << comment;
        // The forum post is written all the same.
        EXPECT_FALSE(s.read("forum.txt").isEmpty());
    }

    SitemapBuild unsafe;
    unsafe.loadFixture();
    unsafe.build.catalogue.items[14].id = QStringLiteral("../../outside");
    unsafe.writeSitemaps();
    EXPECT_TRUE(unsafe.build.content.pagePath().isEmpty());
    EXPECT_FALSE(QFileInfo::exists(unsafe.path("outside/index.html")));
}

TEST(ContentPage, EntryLinkModes) {
    Catalogue catalogue;
    auto add = [&](const char* id, const char* type, const char* source) {
        CatalogueItem item;
        item.id = QLatin1String(id);
        item.type = QLatin1String(type);
        item.title = QStringLiteral("T");
        item.source = QLatin1String(source);
        catalogue.items << item;
    };
    add("f", "folder", "");
    add("p", "", "  http://web.example/  ");
    add("m", "", "https://mail.google.com/x");
    add("q", "folder", "file:///c:/x");
    catalogue.itemCount = int(catalogue.items.size());

    ContentPage content; // no page: links are still chosen and handed back
    auto linkFor = [&](int index, int mode, bool box, QString link = QString()) {
        content.ContentItemEntry(catalogue, 0, index, link, QStringLiteral("2"), mode, box,
                                 nullptr);
        return link;
    };
    EXPECT_EQ(linkFor(0, 2, true), u"./data/qmr/f.html");
    EXPECT_EQ(linkFor(0, 2, false, QStringLiteral("kept.html")), u"kept.html");
    EXPECT_EQ(linkFor(1, 1, false), u"http://web.example/");
    EXPECT_EQ(linkFor(1, 1, true), u"data/p/index.html");
    EXPECT_EQ(linkFor(1, 0, false), u"data/p/index.html");
    EXPECT_EQ(linkFor(2, 1, false), u"data/m/index.html");
    EXPECT_EQ(linkFor(3, 1, false), u"data/qmr/q.html");
    EXPECT_EQ(linkFor(99, 1, false, QStringLiteral("x")), u"x"); // beyond the table: nothing
}

TEST(ContentPage, EntryWithoutLinkIsBold) {
    Catalogue catalogue;
    CatalogueItem note;
    note.id = QStringLiteral("n");
    note.type = QStringLiteral("note");
    note.title = QStringLiteral("Bold");
    catalogue.items << note;
    catalogue.itemCount = 1;

    test::TempFolder folder;
    const PageChrome chrome = test::SitemapTestChrome();
    ContentPage content;
    content.ChooseContentTemplate(chrome, catalogue, folder.path(), QStringLiteral("ROOT_CONTENT"),
                                  QStringLiteral("c.html"));
    QString link;
    content.ContentItemEntry(catalogue, 2, 0, link, QStringLiteral("3"), 7, false, nullptr);
    ASSERT_TRUE(content.CloseContentPage());
    const QList<QByteArray> page =
        CrLfLines(test::ReadBytes(folder.path() + QStringLiteral("c.html")));
    EXPECT_TRUE(SameLines({QByteArray("&nbsp;").repeated(10) + "\r\n",
                           "<img border=\"0\" src=\"data/qmr/images-D(2007-0418-162822).jpg\" "
                           "width=\"20\" height=\"20\">\r\n",
                           "<font size=\"3\">\r\n", "<b>Bold...</b></font><br>\r\n"},
                          page.mid(4, 4)));
}

} // namespace
} // namespace qmr
