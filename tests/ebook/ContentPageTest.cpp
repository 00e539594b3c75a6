#include "ebook/ContentPage.h"

#include "ebook/EbookFixture.h"
#include "ebook/ForumFile.h"
#include "platform/LocalCodePage.h"
#include "support/CatalogueBuilder.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

using test::EbookFixture;
using test::FixtureId;
using test::Golden;
using test::SameText;

// The entry lines of the plain page: after its four head lines, up to its closing "<hr>".
QByteArray entryLines(const QByteArray& page) {
    qsizetype start = 0;
    for (int i = 0; i < 4; ++i)
        start = page.indexOf('\n', start) + 1;
    return page.mid(start, page.indexOf("<hr>\r\n") - start);
}

TEST(ContentPage, PlainPageAndForumLinkSavedCopiesOrWebSources) {
    EbookFixture compiled;
    compiled.build->options.makeChmFile = true;
    compiled.writeSitemaps(u"ROOT_CONTENT"_s);
    EXPECT_EQ(compiled.build->content.pagePath(), compiled.path("index.html"));
    EXPECT_TRUE(SameText(Golden("ebook/content-NoPIC1.html"), compiled.read("index.html")));

    EbookFixture sources;
    sources.build->options.makeChmFile = false;
    sources.build->options.linkToSourceURL = true;
    sources.writeSitemaps(u"ROOT_CONTENT"_s);
    EXPECT_TRUE(SameText(Golden("ebook/content-NoPIC1-sources.html"), sources.read("index.html")));
    EXPECT_TRUE(SameText(Golden("ebook/forum-sources.txt"), sources.read("forum.txt")));
}

// The decorated skins frame the same entries over the marked item's saved page; every table
// they open is closed, and every background image has a colour beneath it.
TEST(ContentPage, MarkersChooseTheSkinLogitechFirst) {
    const QByteArray entries = entryLines(Golden("ebook/content-NoPIC1.html"));
    struct Case {
        bool logitechMarker;
        int markedItem;
        QStringList parts;
    };
    for (const Case& c :
         {Case{true,
               15,
               {"<div id=\"D5title\"> Content View</div>", "d5_a.gif", "d5_b.gif",
                "strip_bg5_333333.gif", "strip5_a_util.jpg", "spacer.gif",
                "grey_table_background_line.gif",
                "<a href=\"https://maker.example/\"><img border=\"0\" src=\"logo.jpg\" "
                "width=\"61\" height=\"52\"",
                "</tbody></table>\r\n</div>\r\n"}},
          Case{false,
               14,
               {"<a href=\"https://quillmere.example/\"><img border=\"0\" "
                "src=\"logo.gif\" width=\"114\" height=\"116\"",
                "<font size=\"6\" color=\"#FFFFFF\"><b>Toc Test",
                "height=\"28\" background=\"topbg.gif\"", "topbg_right.gif", "foot-bg.gif",
                "right-bg.gif", "right-1.gif", "Content View</b></font></td>",
                "<a name=\"#bottom\"></a>\r\n"}}}) {
        EbookFixture s;
        if (!c.logitechMarker) {
            s.catalogue.items[14].comment.clear();
            s.start();
        }
        // A picture the user put where the skin's pictures go stays as it was.
        const QString own = c.logitechMarker ? u"logo.jpg"_s : u"logo.gif"_s;
        s.folder.write(own, "the user's own");
        s.writeSitemaps();
        const QString path = s.path(u"data/"_s + FixtureId(c.markedItem) + u"/index.html"_s);
        EXPECT_EQ(s.build->content.pagePath(), path);
        const QByteArray page = test::ReadBytes(path);
        EXPECT_TRUE(page.contains(entries));
        const QString text = LocalCodePage::decode(page);
        // Every picture the skin names is where its base address points.
        static const QRegularExpression named(u"(?:src|background)=\"([^\"/:]+\\.(?:gif|jpg))\""_s);
        for (const auto& match : named.globalMatch(text))
            EXPECT_TRUE(QFile::exists(s.path(match.captured(1))))
                << match.captured(1).toStdString();
        EXPECT_EQ(test::ReadBytes(s.path(own)), "the user's own");
        for (const QString& part : c.parts)
            EXPECT_TRUE(text.contains(part)) << part.toStdString();
        for (const char* tag : {"table", "tr", "td", "tbody"})
            EXPECT_EQ(text.count(u"<%1>"_s.arg(QLatin1String(tag))) +
                          text.count(u"<%1 "_s.arg(QLatin1String(tag))),
                      text.count(u"</%1>"_s.arg(QLatin1String(tag))))
                << tag;
        for (qsizetype at = text.indexOf(u"background="_s); at >= 0;
             at = text.indexOf(u"background="_s, at + 1)) {
            const qsizetype open = text.lastIndexOf(QLatin1Char('<'), at);
            EXPECT_TRUE(
                text.mid(open, text.indexOf(QLatin1Char('>'), at) - open).contains(u"bgcolor="_s));
        }
    }

    // Only an exact marker on an item whose identifier names a folder makes a page; the forum
    // post is written all the same.
    for (const char* comment : {"quillmere_content_kiosk", " Quillmere_Content_kiosk"}) {
        EbookFixture s;
        s.catalogue.items[13].comment = QLatin1String(comment);
        s.catalogue.items[14].comment.clear();
        s.start();
        s.writeSitemaps();
        EXPECT_TRUE(s.build->content.pagePath().isEmpty()) << comment;
        EXPECT_FALSE(s.read("forum.txt").isEmpty());
    }
    EbookFixture unsafe;
    unsafe.catalogue.items[14].id = u"../../outside"_s;
    unsafe.start();
    unsafe.writeSitemaps();
    EXPECT_TRUE(unsafe.build->content.pagePath().isEmpty());
    EXPECT_FALSE(QFileInfo::exists(unsafe.path("outside/index.html")));
}

TEST(ContentPage, EntryLinksAndLines) {
    const Catalogue catalogue = test::CatalogueBuilder()
                                    .item("f", "folder")
                                    .item("p", "", "T", "  http://web.example/  ")
                                    .item("m", "", "T", "https://mail.google.com/x")
                                    .item("q", "folder", "T", "file:///c:/x")
                                    .item("b", "bookmark", "T", " https://bookmark.example/ ")
                                    .item("n", "note", "Bold")
                                    .build();
    ContentPage content; // no page: links are still chosen and handed back
    auto linkFor = [&](int index, int mode, bool box, QString link = QString()) {
        content.ContentItemEntry(catalogue, 0, index, link, u"2"_s, mode, box, nullptr);
        return link;
    };
    EXPECT_EQ(linkFor(0, 2, true), u"./data/qmr/f.html");
    EXPECT_EQ(linkFor(0, 2, false, u"kept.html"_s), u"kept.html");
    EXPECT_EQ(linkFor(1, 1, false), u"http://web.example/");
    EXPECT_EQ(linkFor(1, 1, true), u"data/p/index.html");
    EXPECT_EQ(linkFor(1, 0, false), u"data/p/index.html");
    EXPECT_EQ(linkFor(2, 1, false), u"data/m/index.html");
    EXPECT_EQ(linkFor(3, 1, false), u"data/qmr/q.html");
    // A bookmark has no saved copy: its address, whatever the mode and the box.
    EXPECT_EQ(linkFor(4, 0, true), u"https://bookmark.example/");
    EXPECT_EQ(linkFor(99, 1, false, u"x"_s), u"x"); // beyond the table: nothing

    // Without a link the title is bold; depth 2 indents by ten blanks.
    test::TempFolder folder;
    const PageChrome chrome = test::EbookTestChrome();
    content.ChooseContentTemplate(chrome, catalogue, folder.path(), u"ROOT_CONTENT"_s, u"c.html"_s);
    QString link;
    content.ContentItemEntry(catalogue, 2, 5, link, u"3"_s, 7, false, nullptr);
    ASSERT_TRUE(content.CloseContentPage());
    EXPECT_TRUE(
        test::ReadBytes(folder.path() + u"c.html"_s)
            .contains(QByteArray("&nbsp;").repeated(10) +
                      "\r\n<img border=\"0\" src=\"data/qmr/images-D(2007-0418-162822).jpg\" "
                      "width=\"20\" height=\"20\">\r\n<font size=\"3\">\r\n"
                      "<b>Bold...</b></font><br>\r\n"));

    // Forum lines: indented two blanks a level; a local file or no address gives the title.
    EXPECT_EQ(ForumLine(3, u"T"_s, u"data/1/index.html"_s),
              u"      [url=data/1/index.html]T[/url]");
    EXPECT_EQ(ForumLine(2, u"T"_s, u"FiLe:x"_s), u"T");
    EXPECT_EQ(ForumLine(2, u"T"_s, u"   "_s), u"T");
}

} // namespace
} // namespace qmr
