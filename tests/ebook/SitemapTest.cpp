#include "ebook/Sitemap.h"

#include "ebook/EbookFixture.h"
#include "support/CatalogueBuilder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

using test::EbookFixture;
using test::Golden;
using test::SameText;

QByteArray ebookGolden(const char* name) {
    return Golden(u"ebook/"_s + QLatin1String(name));
}

// A file's lines (each with its line end) from line `from` on.
QByteArray linesFrom(const QByteArray& text, int from) {
    qsizetype at = 0;
    for (int i = 0; i < from && at >= 0; ++i)
        at = text.indexOf('\n', at) + 1;
    return text.mid(at);
}

// The other languages change the heads only (the golden heads are files of their own); no
// language at all is language 1.
TEST(Sitemap, TableOfContentsAndIndexAsTheGoldenFilesShow) {
    const QByteArray toc = ebookGolden("Index-lang1.hhc");
    const QByteArray index = ebookGolden("Index-lang1.hhk");
    const struct {
        EbookLanguage language;
        bool linkToSourceURL;
        QByteArray toc, index;
    } cases[] = {
        {EbookLanguage::English, false, toc, index},
        {EbookLanguage::None, false, toc, index},
        {EbookLanguage::English, true, ebookGolden("Index-link.hhc"),
         ebookGolden("Index-link.hhk")},
        {EbookLanguage::ChineseTraditional, false,
         ebookGolden("Index-lang2-head.hhc") + linesFrom(toc, 12),
         ebookGolden("Index-lang2-head.hhk") + linesFrom(index, 11)},
        {EbookLanguage::ChineseSimplified, false,
         ebookGolden("Index-lang3-head.hhc") + linesFrom(toc, 12),
         ebookGolden("Index-lang3-head.hhk") + linesFrom(index, 11)},
    };
    for (const auto& c : cases) {
        EbookFixture s;
        s.build->options.language = c.language;
        s.build->options.linkToSourceURL = c.linkToSourceURL;
        s.writeSitemaps();
        EXPECT_TRUE(SameText(c.toc, s.read("Index.hhc")));
        EXPECT_TRUE(SameText(c.index, s.read("Index.hhk")));
        EXPECT_TRUE(s.host.log.isEmpty()) << s.host.log.join(u'\n').toStdString();
    }
    EbookFixture empty("<RDF:Seq RDF:about=\"urn:scrapbook:root\">\n</RDF:Seq>\n");
    empty.writeSitemaps();
    EXPECT_TRUE(SameText(ebookGolden("Index-empty.hhc"), empty.read("Index.hhc")));
    EXPECT_TRUE(SameText(ebookGolden("Index-empty.hhk"), empty.read("Index.hhk")));
}

TEST(Sitemap, WhatTheWalkLeavesOutIsLoggedAndEndlessListsStopTheBuild) {
    // A lists itself and B; B lists A again: both would open for ever.
    test::CatalogueBuilder b;
    b.list(u"root"_s, {"../up", "A", "../up", "p"})
        .list(u"A"_s, {"A", "B"})
        .list(u"B"_s, {"A", "p"})
        .item(u"../up"_s, QString())
        .item(u"A"_s, u"folder"_s)
        .item(u"B"_s, u"folder"_s)
        .item(u"p"_s, QString());
    EbookFixture s(b.build());
    s.writeSitemaps();
    EXPECT_EQ(s.host.log, (QStringList{"Skipped item ../up: its identifier cannot name a folder",
                                       "Skipped folder A: it is listed inside itself"}));
    EXPECT_EQ(s.read("Index.hhc").count("value=\"Tp\""), 2); // under B and at the top

    // An untitled page stays in the table of contents but gives no index keyword: an empty
    // keyword can crash a compiler's binary index.
    EbookFixture untitled(test::CatalogueBuilder()
                              .list(u"root"_s, {"u", "n"})
                              .item("u", "", u""_s)
                              .item("n", "")
                              .build());
    untitled.writeSitemaps();
    EXPECT_TRUE(untitled.read("Index.hhc").contains("data/u/index.html"));
    EXPECT_FALSE(untitled.read("Index.hhk").contains("data/u/index.html"));
    EXPECT_TRUE(untitled.read("Index.hhk").contains("data/n/index.html"));

    // Each folder lists the next one twice: 2^40 entries if nothing stopped them.
    EbookFixture endless(test::CatalogueBuilder().chain(40, 2).build());
    QString error;
    EXPECT_FALSE(HHC(*endless.build, endless.path("Index.hhc"), &error));
    EXPECT_TRUE(error.startsWith(u"The table of contents stops after"_s));
    EXPECT_FALSE(QFile::exists(endless.path("Index.hhc"))); // nothing half-written is left
}

} // namespace
} // namespace qmr
