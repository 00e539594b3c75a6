#include "ebook/Sitemap.h"

#include "catalogue/LocalTextFile.h"
#include "ebook/SitemapTestSupport.h"
#include "website/ListPage.h"

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::CrLfLines;
using test::FixtureId;
using test::Golden;
using test::SameBytes;
using test::SameLines;
using test::SitemapBuild;

// The lines of a file after its first `count`.
QList<QByteArray> After(const QList<QByteArray>& lines, qsizetype count) {
    return lines.mid(count);
}

TEST(Sitemap, WritesTheTableOfContentsAndIndexOfTheFixture) {
    SitemapBuild s;
    s.loadFixture();
    s.build.options.language = EbookLanguage::English;
    s.writeSitemaps();
    EXPECT_TRUE(SameBytes(Golden("Index-lang1.hhc"), s.read("Index.hhc")));
    EXPECT_TRUE(SameBytes(Golden("Index-lang1.hhk"), s.read("Index.hhk")));
    EXPECT_TRUE(s.host.log.isEmpty()) << s.host.log.join(u'\n').toStdString();
}

TEST(Sitemap, LanguageSelectsTheHeaderLinesOnly) {
    const QList<QByteArray> tocBody = After(CrLfLines(Golden("Index-lang1.hhc")), 12);
    const QList<QByteArray> indexBody = After(CrLfLines(Golden("Index-lang1.hhk")), 11);
    struct Case {
        EbookLanguage language;
        const char* tocHead;
        const char* indexHead;
    };
    for (const Case& c :
         {Case{EbookLanguage::ChineseTraditional, "Index-lang2-head.hhc", "Index-lang2-head.hhk"},
          Case{EbookLanguage::ChineseSimplified, "Index-lang3-head.hhc", "Index-lang3-head.hhk"}}) {
        SitemapBuild s;
        s.loadFixture();
        s.build.options.language = c.language;
        s.writeSitemaps();
        const QList<QByteArray> toc = CrLfLines(s.read("Index.hhc"));
        const QList<QByteArray> tocHead = CrLfLines(Golden(c.tocHead));
        EXPECT_TRUE(SameLines(tocHead, toc.first(std::min(toc.size(), tocHead.size()))))
            << c.tocHead;
        EXPECT_TRUE(SameLines(tocBody, After(toc, tocHead.size()))) << c.tocHead;

        const QList<QByteArray> index = CrLfLines(s.read("Index.hhk"));
        const QList<QByteArray> indexHead = CrLfLines(Golden(c.indexHead));
        EXPECT_TRUE(SameLines(indexHead, index.first(std::min(index.size(), indexHead.size()))))
            << c.indexHead;
        EXPECT_TRUE(SameLines(indexBody, After(index, indexHead.size()))) << c.indexHead;
    }

    // Without a language the files are those of language 1.
    SitemapBuild none;
    none.loadFixture();
    none.build.options.language = EbookLanguage::None;
    none.writeSitemaps();
    EXPECT_TRUE(SameBytes(Golden("Index-lang1.hhc"), none.read("Index.hhc")));
    EXPECT_TRUE(SameBytes(Golden("Index-lang1.hhk"), none.read("Index.hhk")));
}

TEST(Sitemap, LinkToSourceUrlPointsPagesAtTheirSources) {
    SitemapBuild s;
    s.loadFixture();
    s.build.options.language = EbookLanguage::English;
    s.build.options.linkToSourceURL = true;
    s.writeSitemaps();
    EXPECT_TRUE(SameBytes(Golden("Index-link.hhc"), s.read("Index.hhc")));
    EXPECT_TRUE(SameBytes(Golden("Index-link.hhk"), s.read("Index.hhk")));
}

TEST(Sitemap, EmptyCatalogueGivesHeadersAndFootersOnly) {
    SitemapBuild s;
    s.load("<?xml version=\"1.0\"?>\n"
           "<RDF:RDF xmlns:NS1=\"http://amb.vis.ne.jp/mozilla/scrapbook-rdf#\"\n"
           "         xmlns:RDF=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">\n"
           "  <RDF:Seq RDF:about=\"urn:scrapbook:root\">\n"
           "  </RDF:Seq>\n"
           "</RDF:RDF>\n");
    ASSERT_EQ(s.build.catalogue.itemCount, 0);
    s.writeSitemaps();
    EXPECT_TRUE(SameBytes(Golden("Index-empty.hhc"), s.read("Index.hhc")));
    EXPECT_TRUE(SameBytes(Golden("Index-empty.hhk"), s.read("Index.hhk")));
    EXPECT_TRUE(s.build.walk.FirstFolderTitle.isEmpty());
    EXPECT_TRUE(s.build.walk.FirstPage.isEmpty());
}

TEST(Sitemap, WalkMarksPlacedItemsAndGathersFolderPages) {
    SitemapBuild s;
    s.loadFixture();
    s.writeSitemaps();
    const Catalogue& catalogue = s.build.catalogue;
    auto item = [&](int n) -> const CatalogueItem& { return catalogue.items.at(n - 1); };
    ASSERT_EQ(catalogue.itemCount, 19);

    // The page under the private folder and the orphan are in neither file.
    for (int n : {7, 17}) {
        EXPECT_FALSE(item(n).placed) << n;
        EXPECT_TRUE(item(n).parentId.isEmpty()) << n;
    }
    for (int n : {1, 2, 3, 4, 5, 6, 8, 9, 10, 11, 12, 13, 14, 15, 16, 18, 19})
        EXPECT_TRUE(item(n).placed) << n;
    EXPECT_EQ(item(6).parentId, u"root"); // the private folder itself is listed
    EXPECT_EQ(item(8).parentId, FixtureId(1));
    EXPECT_EQ(item(12).parentId, FixtureId(11));
    EXPECT_EQ(item(10).parentId, u"root"); // listed twice: the later list wins

    EXPECT_EQ(s.build.walk.FirstFolderTitle, u"Travel");
    EXPECT_EQ(s.build.walk.FirstPage, QStringLiteral("./data/qmr/%1.html").arg(FixtureId(1)));
    EXPECT_EQ(s.build.walk.TreeDepth, 1); // the root's level is never left

    // Each folder page: its path, then its children with their links; a note is not listed.
    auto line = [&](int n, const QString& link) { return FolderItemLine(item(n), link); };
    auto page = [&](int n) { return QStringLiteral("../%1/index.html").arg(FixtureId(n)); };
    auto folderPage = [&](int n) { return QStringLiteral("../qmr/%1.html").arg(FixtureId(n)); };
    EXPECT_EQ(item(1).folderBody, FolderPathHeader(s.build.chrome, catalogue, 0) +
                                      line(8, page(8)) + line(9, folderPage(9)) +
                                      line(10, page(10)) + line(16, page(16)));
    EXPECT_EQ(item(9).folderBody, FolderPathHeader(s.build.chrome, catalogue, 8) +
                                      line(11, folderPage(11)) + line(18, page(18)) +
                                      line(19, page(19)));
    EXPECT_EQ(item(11).folderBody, FolderPathHeader(s.build.chrome, catalogue, 10) +
                                       line(12, page(12)) + line(13, page(13)));
    EXPECT_TRUE(item(6).folderBody.isEmpty()); // private: never opened
    EXPECT_TRUE(item(11).folderBody.contains(QStringLiteral("Asia</a>&gt;")));
}

// A catalogue built in memory: the lines as the reader would keep them, and the items.
struct MemoryCatalogue {
    QStringList lines;
    QList<CatalogueItem> items;

    void list(const QString& name, const QStringList& children) {
        lines << QStringLiteral("<RDF:Seq RDF:about=\"urn:scrapbook:%1\">").arg(name);
        for (const QString& child : children)
            lines << QStringLiteral("<RDF:li RDF:resource=\"urn:scrapbook:item%1\"/>").arg(child);
        lines << QStringLiteral("</RDF:Seq>");
    }
    void item(const QString& id, const QString& type, const QString& comment = QString()) {
        CatalogueItem added;
        added.id = id;
        added.type = type;
        added.title = QStringLiteral("T") + id;
        added.comment = comment;
        items << added;
    }
    void into(Catalogue& catalogue) const {
        catalogue.lines = lines;
        catalogue.lineCount = int(lines.size()) - 1;
        catalogue.items = items;
        catalogue.itemCount = int(items.size());
    }
};

TEST(Sitemap, BadIdentifiersAndSelfListedFoldersAreSkippedWithALogLine) {
    MemoryCatalogue m;
    m.list(QStringLiteral("root"), {QStringLiteral("../up"), QStringLiteral("A"),
                                    QStringLiteral("../up"), QStringLiteral("p")});
    // A lists itself and B; B lists A again: both would open for ever.
    m.list(QStringLiteral("itemA"), {QStringLiteral("A"), QStringLiteral("B")});
    m.list(QStringLiteral("itemB"), {QStringLiteral("A"), QStringLiteral("p")});
    m.item(QStringLiteral("../up"), QString());
    m.item(QStringLiteral("A"), QStringLiteral("folder"));
    m.item(QStringLiteral("B"), QStringLiteral("folder"));
    m.item(QStringLiteral("p"), QString());

    SitemapBuild s;
    m.into(s.build.catalogue);
    s.writeSitemaps();
    EXPECT_EQ(s.host.log, QStringList({QStringLiteral("Skipped item ../up: its identifier "
                                                      "cannot name a folder"),
                                       QStringLiteral("Skipped folder A: it is listed inside "
                                                      "itself")}));
    EXPECT_FALSE(s.build.catalogue.items.at(0).placed);
    const QString toc = LocalCodePage::decode(s.read("Index.hhc"));
    EXPECT_FALSE(toc.contains(QStringLiteral("../up")));
    EXPECT_EQ(toc.count(QStringLiteral("value=\"TA\"")), 1);
    EXPECT_EQ(toc.count(QStringLiteral("value=\"TB\"")), 1);
    EXPECT_EQ(toc.count(QStringLiteral("value=\"Tp\"")), 2); // under B and at the top
    EXPECT_EQ(toc.count(QStringLiteral("   <UL>\r\n")), toc.count(QStringLiteral("      </UL>")));
    EXPECT_EQ(s.build.catalogue.items.at(3).parentId, u"root");
}

TEST(Sitemap, ListsThatMultiplyWithoutEndStopTheBuild) {
    // Each folder lists the next one twice: 2^40 entries if nothing stopped them.
    MemoryCatalogue m;
    m.list(QStringLiteral("root"), {QStringLiteral("f0")});
    for (int i = 0; i < 40; ++i) {
        const QString next = QStringLiteral("f%1").arg(i + 1);
        m.list(QStringLiteral("itemf%1").arg(i), {next, next});
        m.item(QStringLiteral("f%1").arg(i), QStringLiteral("folder"));
    }
    SitemapBuild s;
    m.into(s.build.catalogue);
    QString error;
    EXPECT_FALSE(HHC(s.build, s.path("Index.hhc"), &error));
    EXPECT_TRUE(error.startsWith(QStringLiteral("The table of contents stops after")))
        << error.toStdString();
    EXPECT_TRUE(s.read("Index.hhc").isEmpty()); // nothing half-written is left
}

TEST(Sitemap, DeepNestingNeitherOverflowsNorLosesTheDepth) {
    constexpr int kDepth = 3000;
    // Identifiers of one length, so that no key begins another.
    auto id = [](int i) { return QStringLiteral("d%1").arg(i, 6, 10, QLatin1Char('0')); };
    MemoryCatalogue m;
    m.list(QStringLiteral("root"), {id(0)});
    for (int i = 0; i < kDepth; ++i) {
        m.list(QStringLiteral("item") + id(i), {id(i + 1)});
        m.item(id(i), QStringLiteral("folder"));
    }
    m.item(id(kDepth), QStringLiteral("note"));
    SitemapBuild s;
    m.into(s.build.catalogue);
    LocalTextFile file(s.path("part.hhc"));
    QString error;
    ASSERT_TRUE(WalkCatalogueTree(s.build, file, QStringLiteral("root"), &error))
        << error.toStdString();
    EXPECT_EQ(s.build.walk.TreeDepth, 1);
    EXPECT_TRUE(s.build.catalogue.items.last().placed);
    EXPECT_EQ(s.build.catalogue.items.last().parentId, id(kDepth - 1));
}

} // namespace
} // namespace qmr
