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
// they open is closed, and every picture they name is written where the page's base address
// points, except one the user put there.
TEST(ContentPage, MarkersChooseTheSkinLogitechFirst) {
    const QByteArray entries = entryLines(Golden("ebook/content-NoPIC1.html"));
    for (const bool logitech : {true, false}) {
        EbookFixture s;
        if (!logitech) {
            s.catalogue.items[14].comment.clear();
            s.start();
        }
        const QString own = logitech ? u"logo.jpg"_s : u"logo.gif"_s;
        s.folder.write(own, "the user's own");
        s.writeSitemaps();
        // The fixture's items 20240101000015 and 20240101000014 carry the markers.
        const QString path =
            s.path(logitech ? "data/20240101000015/index.html" : "data/20240101000014/index.html");
        EXPECT_EQ(s.build->content.pagePath(), path);
        const QByteArray page = test::ReadBytes(path);
        EXPECT_TRUE(page.contains(entries));
        EXPECT_TRUE(page.contains(logitech ? "<div id=\"D5title\"> Content View</div>"
                                           : "Content View</b></font></td>"));
        const QString text = LocalCodePage::decode(page);
        static const QRegularExpression named(u"(?:src|background)=\"([^\"/:]+\\.(?:gif|jpg))\""_s);
        for (const auto& match : named.globalMatch(text))
            EXPECT_TRUE(QFile::exists(s.path(match.captured(1))))
                << match.captured(1).toStdString();
        EXPECT_EQ(test::ReadBytes(s.path(own)), "the user's own");
        for (const QString& tag : {u"table"_s, u"tr"_s, u"td"_s, u"tbody"_s})
            EXPECT_EQ(text.count(u"<"_s + tag + u">"_s) + text.count(u"<"_s + tag + u" "_s),
                      text.count(u"</"_s + tag + u">"_s))
                << tag.toStdString();
    }
}

// What the golden pages do not reach: an entry without a link is a bold title, and a forum line
// for a local file or an empty address is the title alone, not indented.
TEST(ContentPage, EntryWithoutALinkAndForumLines) {
    const Catalogue catalogue = test::CatalogueBuilder().item("n", "note", "Bold").build();
    test::TempFolder folder;
    const PageChrome chrome = test::EbookTestChrome();
    ContentPage content;
    content.ChooseContentTemplate(chrome, catalogue, folder.path(), u"ROOT_CONTENT"_s, u"c.html"_s);
    QString link;
    content.ContentItemEntry(catalogue, 2, 0, link, u"3"_s, 7, false, nullptr);
    ASSERT_TRUE(content.CloseContentPage());
    EXPECT_TRUE(test::ReadBytes(folder.path() + u"c.html"_s)
                    .contains("<font size=\"3\">\r\n<b>Bold...</b></font><br>\r\n"));
    EXPECT_EQ(ForumLine(3, u"T"_s, u"data/1/index.html"_s),
              u"      [url=data/1/index.html]T[/url]");
    EXPECT_EQ(ForumLine(2, u"T"_s, u"FiLe:x"_s), u"T");
    EXPECT_EQ(ForumLine(2, u"T"_s, u"   "_s), u"T");
}

} // namespace
} // namespace qmr
