#include "chm/Sitemap.h"

#include "platform/CodePage.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace qmr::chm {
namespace {

QByteArray Golden(const char* name) {
    return test::ReadBytes(QStringLiteral(QMR_GOLDEN_DIR "/ebook/") + QLatin1String(name));
}

// "level name -> local" for each entry, to compare whole files at a glance.
QStringList Outline(const Sitemap& sitemap) {
    QStringList lines;
    for (const SitemapEntry& e : sitemap.entries)
        lines.append(QStringLiteral("%1 %2 -> %3").arg(e.level).arg(e.name(), e.local()));
    return lines;
}

// The build's table of contents wraps each page in a list of its own and nests folders; its
// index wraps every entry in a list inside one outer list: both give the levels a reader shows.
TEST(Sitemap, ReadsTheLevelsOfTheBuildsFiles) {
    const CodePage big5(QStringLiteral("Big5"));
    const Sitemap toc = ReadSitemap(Golden("Index-lang1.hhc"), big5);
    const QStringList outline = Outline(toc);
    ASSERT_GE(outline.size(), 8);
    EXPECT_EQ(outline.mid(0, 6),
              QStringList({"1 Travel -> ", "2 Mountain trail -> data/20240101000008/index.html",
                           "2 Asia -> ", QString::fromUtf8("3 台灣 -> "),
                           "4 Marked mail -> data/20240101000012/index.html",
                           "4 Report -> data/20240101000013/index.html"}));
    EXPECT_TRUE(outline[6].startsWith(u"3 A title of exactly eighty"));
    EXPECT_EQ(toc.entries[0].value(u"imagenumber"), u"1");
    EXPECT_EQ(toc.properties.size(), 3);
    EXPECT_EQ(toc.properties[0].name, u"Window Styles");

    const Sitemap index = ReadSitemap(Golden("Index-lang1.hhk"), big5);
    ASSERT_GE(index.entries.size(), 3);
    for (const SitemapEntry& entry : index.entries)
        EXPECT_EQ(entry.level, 1) << entry.name().toStdString();
    EXPECT_EQ(index.entries[1].name(), u"Search & find");
    EXPECT_EQ(index.entries[1].local(), u"https://search.example.org/?q=a&b=c");
    EXPECT_EQ(index.entries[2].name(), u"Notes \"draft\"");
}

// The file's own charset wins over the code page handed in; Big5 and GB2312 titles decode.
TEST(Sitemap, DecodesTheCharsetTheFileDeclares) {
    const CodePage latin(QStringLiteral("windows-1252"));
    const QByteArray entry = "<UL><LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"";
    const Sitemap traditional =
        ReadSitemap(Golden("Index-lang2-head.hhc") + entry + "\xA4\xA4\xA4\xE5\">", latin);
    ASSERT_EQ(traditional.entries.size(), 1);
    EXPECT_EQ(traditional.entries[0].name(), QString::fromUtf8("中文"));
    EXPECT_EQ(traditional.properties[1].value, QString::fromUtf8("新細明體,10,136"));
    const Sitemap simplified =
        ReadSitemap(Golden("Index-lang3-head.hhk") + entry + "\xD6\xD0\xCE\xC4\">", latin);
    ASSERT_EQ(simplified.entries.size(), 1);
    EXPECT_EQ(simplified.entries[0].name(), QString::fromUtf8("中文"));
}

// Hand-written sitemaps: lower case, unclosed <LI>, no </OBJECT>, comments, unquoted values,
// references in values, repeated parameters, an object of another type.
TEST(Sitemap, ToleratesLooseMarkup) {
    const QByteArray hhk = "<ul><!-- <li><object type=\"text/sitemap\"> -->\n"
                           "<li><object type=text/sitemap><param name=name value=\"A &amp; B\">"
                           "<param name=Local value=a.htm><param name=Local value=b.htm>\n"
                           "<ul><li><OBJECT TYPE=\"Text/Sitemap\"><param name=\"Name\" "
                           "value=\"&#20013;&lt;\"></ul>"
                           "<li><object type=\"application/x-oleobject\"><param name=Name "
                           "value=x></object><li><object type=\"text/sitemap\">"
                           "<param name=Name value='C'>";
    const Sitemap sitemap = ReadSitemap(hhk, CodePage(QStringLiteral("windows-1252")));
    EXPECT_EQ(Outline(sitemap), QStringList({QString::fromUtf8("1 A & B -> a.htm"),
                                             QString::fromUtf8("2 中< -> "), "1 C -> "}));
    EXPECT_EQ(sitemap.entries[0].params.size(), 3);
}

} // namespace
} // namespace qmr::chm
