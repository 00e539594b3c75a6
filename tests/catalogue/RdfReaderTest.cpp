#include "catalogue/RdfReader.h"

#include "catalogue/IndexDat.h"
#include "catalogue/TextFiles.h"
#include "support/TempFolder.h"

#include <QDir>

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::ReadBytes;
using test::TempFolder;

// A catalogue in ScrapBook's own layout, with the cases the reader must get right.
const QByteArray kCatalogue =
    "<?xml version=\"1.0\"?>\n"                                                           // 0
    "<RDF:RDF xmlns:NS1=\"http://amb.vis.ne.jp/mozilla/scrapbook-rdf#\"\n"                // 1
    "         xmlns:RDF=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">\n"               // 2
    "  <RDF:Seq RDF:about=\"urn:scrapbook:root\">\n"                                      // 3
    "    <RDF:li RDF:resource=\"urn:scrapbook:item20080309000000\"/>\n"                   // 4
    "  </RDF:Seq>\n"                                                                      // 5
    "  <RDF:Description RDF:about=\"urn:scrapbook:item20080309000000\"\n"                 // 6
    "                   NS1:id=\"20080309000000\"\n"                                      // 7
    "                   NS1:type=\"folder\"\n"                                            // 8
    "                   NS1:title=\"\xE5\x8F\xB0\xE7\x81\xA3 &amp; Tea\"\n"               // 9
    "                   NS1:chars=\"\"\n"                                                 // 10
    "                   NS1:icon=\"\"\n"                                                  // 11
    "                   NS1:source=\"\"\n"                                                // 12
    "                   NS1:comment=\"x\" />\n"                                           // 13
    "  <RDF:Description RDF:about=\"urn:scrapbook:item20080309000001\" NS1:id=\"lost\"\n" // 14
    "                   NS1:title=\"a \"b\" c\"\n"                                        // 15
    "                   NS1:source=\"http://e.com/?q=&quot;x&quot;\"\n"                   // 16
    "                   NS1:type=\"separator\"\n"                                         // 17
    "                   NS1:comment=\"My Page\" />\n"                                     // 18
    "</RDF:RDF>\n";                                                                       // 19

QString writeScrapbook(const TempFolder& folder, const QByteArray& rdf) {
    folder.write(QStringLiteral("scrapbook.rdf"), rdf);
    return folder.path();
}

InputError loadFailure(const QByteArray& rdf, const CatalogueLimits& limits = {}) {
    TempFolder folder;
    Catalogue catalogue;
    InputError error;
    EXPECT_FALSE(RecodeAndLoadCatalogue(writeScrapbook(folder, rdf), catalogue, &error, limits));
    EXPECT_EQ(catalogue.itemCount, 0);
    EXPECT_TRUE(catalogue.items.isEmpty());
    return error;
}

QByteArray descriptions(int count) {
    QByteArray rdf;
    for (int i = 0; i < count; ++i)
        rdf += "<RDF:Description\nNS1:id=\"1\" />\n";
    return rdf;
}

TEST(RdfReader, LoadsTheItemTableAsTheLinesStand) {
    TempFolder folder;
    Catalogue catalogue;
    InputError error;
    ASSERT_TRUE(RecodeAndLoadCatalogue(writeScrapbook(folder, kCatalogue), catalogue, &error))
        << error.text().toStdString();
    // 20 lines and the empty one after the final line feed; lineCount is the last index.
    EXPECT_EQ(catalogue.lineCount, 20);
    EXPECT_EQ(catalogue.lines.at(7), QStringLiteral("NS1:id=\"20080309000000\""));
    EXPECT_EQ(catalogue.lines.at(20), QString());
    ASSERT_EQ(catalogue.itemCount, 2);

    const CatalogueItem& folderItem = catalogue.items.at(0);
    EXPECT_EQ(folderItem.id, QStringLiteral("20080309000000"));
    EXPECT_EQ(folderItem.type, QStringLiteral("folder"));
    EXPECT_EQ(folderItem.title, QStringLiteral("台灣 &amp; Tea")); // entities are kept
    EXPECT_EQ(folderItem.comment, QStringLiteral("x"));            // the last quote ends it
    EXPECT_FALSE(folderItem.placed);
    EXPECT_TRUE(folderItem.parentId.isEmpty());

    const CatalogueItem& second = catalogue.items.at(1);
    EXPECT_EQ(second.id, QString()); // written on the Description line: not seen
    EXPECT_EQ(second.title, QStringLiteral("a \"b\" c"));
    EXPECT_EQ(second.source, QStringLiteral("http://e.com/?q=&quot;x&quot;"));
    EXPECT_EQ(second.type, QStringLiteral("separator"));

    EXPECT_EQ(catalogue.NodeTitleToIndex(QStringLiteral(" A \"B\" C ")), 1);
    EXPECT_EQ(catalogue.NodeCommentToIndex(QStringLiteral(" my page ")), 1);
    EXPECT_EQ(catalogue.NodeCommentToIndex(QStringLiteral("X")), 0);
    EXPECT_EQ(catalogue.NodeTitleToIndex(QStringLiteral("nothing")), -1);

    // The working copy is the Big5 text with carriage returns; the catalogue is untouched.
    const QByteArray txt = ReadBytes(folder.path() + QStringLiteral("scrapbook.txt"));
    EXPECT_TRUE(txt.contains("NS1:title=\"\xA5\x78\xC6\x57 &amp; Tea\"\r"));
    EXPECT_TRUE(txt.endsWith("</RDF:RDF>\r\r\n"));
    EXPECT_EQ(ReadBytes(folder.path() + QStringLiteral("scrapbook.rdf")), kCatalogue);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files),
              (QStringList{"scrapbook.rdf", "scrapbook.txt"}));
}

TEST(RdfReader, SmallCatalogues) {
    TempFolder folder;
    Catalogue catalogue;
    ASSERT_TRUE(RecodeAndLoadCatalogue(
        writeScrapbook(folder, "<RDF:Seq RDF:about=\"urn:scrapbook:root\">\n</RDF:Seq>\n"),
        catalogue));
    EXPECT_EQ(catalogue.itemCount, 0);
    EXPECT_EQ(catalogue.lineCount, 2);
    ASSERT_TRUE(RecodeAndLoadCatalogue(writeScrapbook(folder, ""), catalogue));
    EXPECT_EQ(catalogue.itemCount, 0);
    EXPECT_EQ(catalogue.lineCount, 0); // the one empty line the recoding ends with
    // Two items with one title: the lower index wins; a value that is empty in quotes.
    ASSERT_TRUE(RecodeAndLoadCatalogue(
        writeScrapbook(folder, "<RDF:Description\nNS1:title=\"My Page\"\nNS1:icon=\"\"\n"
                               "<RDF:Description\nNS1:title=\"my page\"\n"),
        catalogue));
    EXPECT_EQ(catalogue.NodeTitleToIndex(QStringLiteral(" my page ")), 0);
    EXPECT_EQ(catalogue.items.at(0).icon, QString());
    // A catalogue saved with CR LF line ends reads the same (with empty lines between).
    ASSERT_TRUE(RecodeAndLoadCatalogue(
        writeScrapbook(folder, QByteArray(kCatalogue).replace("\n", "\r\n")), catalogue));
    EXPECT_EQ(catalogue.itemCount, 2);
    EXPECT_EQ(catalogue.items.at(0).title, QStringLiteral("台灣 &amp; Tea"));
}

TEST(RdfReader, RefusesBrokenCataloguesNamingFileAndLine) {
    const InputError quote = loadFailure("<RDF:Description\n  NS1:title=\"no end\n");
    EXPECT_EQ(quote.line, 2);
    EXPECT_TRUE(quote.file.endsWith(QStringLiteral("/scrapbook.rdf")));
    EXPECT_TRUE(quote.text().contains(QStringLiteral(
        "scrapbook.rdf: line 2: the value of NS1:title has no closing double quote")))
        << quote.text().toStdString();

    const InputError early = loadFailure("<RDF:RDF>\nNS1:id=\"1\"\n<RDF:Description\n");
    EXPECT_EQ(early.line, 2);
    EXPECT_TRUE(early.problem.contains(QStringLiteral("before the first <RDF:Description")));

    const InputError utf8 = loadFailure("<RDF:RDF>\n\n<x \xC3\x28/>\n");
    EXPECT_EQ(utf8.line, 3);
    EXPECT_TRUE(utf8.problem.contains(QStringLiteral("not valid UTF-8")));
    EXPECT_EQ(loadFailure("a\n\xE0\x80\x80\n").line, 2); // an overlong form
    EXPECT_EQ(loadFailure("\xED\xA0\x80").line, 1);      // a surrogate
    EXPECT_EQ(loadFailure("ok\n\xE5\x8F").line, 2);      // cut short at the end

    const InputError binary = loadFailure(QByteArray("GIF89a\n\n\x00\x01", 10));
    EXPECT_EQ(binary.line, 3);
    EXPECT_TRUE(binary.problem.contains(QStringLiteral("binary")));

    TempFolder empty;
    Catalogue catalogue;
    InputError missing;
    EXPECT_FALSE(RecodeAndLoadCatalogue(empty.path(), catalogue, &missing));
    EXPECT_TRUE(missing.text().contains(QStringLiteral("scrapbook.rdf")));
    EXPECT_FALSE(LoadAllRdfNodes(empty.path(), catalogue, &missing));
    EXPECT_TRUE(missing.text().contains(QStringLiteral("scrapbook.txt")));
    // Nothing but the working copy was written.
    EXPECT_EQ(QDir(empty.path()).entryList(QDir::Files), QStringList());
}

TEST(RdfReader, LineAndItemLimitsNameTheSettingThatRaisesThem) {
    CatalogueLimits small;
    small.maxLines = 10;
    small.maxItems = 3;
    small.settingsFile = QStringLiteral("/app/Quillmere.ini");
    // Nine lines and the empty last one: exactly at the limit.
    TempFolder folder;
    Catalogue catalogue;
    ASSERT_TRUE(RecodeAndLoadCatalogue(
        writeScrapbook(folder, QByteArray(9, 'x').replace("x", "a\n")), catalogue, nullptr, small));
    EXPECT_EQ(catalogue.lineCount, 9);

    const InputError lines = loadFailure(QByteArray(10, 'x').replace("x", "a\n"), small);
    EXPECT_EQ(lines.line, 11);
    EXPECT_TRUE(lines.text().contains(QStringLiteral("more than 10 lines")));
    EXPECT_TRUE(
        lines.text().contains(QStringLiteral("[Limits] CatalogueLines in /app/Quillmere.ini")));

    small.maxLines = 100;
    ASSERT_TRUE(
        RecodeAndLoadCatalogue(writeScrapbook(folder, descriptions(3)), catalogue, nullptr, small));
    EXPECT_EQ(catalogue.itemCount, 3);
    const InputError items = loadFailure(descriptions(4), small);
    EXPECT_EQ(items.line, 7); // the fourth <RDF:Description line
    EXPECT_TRUE(items.text().contains(QStringLiteral("more than 3 items")));
    EXPECT_TRUE(items.text().contains(QStringLiteral("[Limits] CatalogueItems")));
}

TEST(RdfReader, DefaultLimitsAreTheCataloguesOwn) {
    // 80,000 lines and the empty last one load; one more line does not.
    TempFolder folder;
    Catalogue catalogue;
    QByteArray rdf = descriptions(20001);
    rdf += QByteArray(80000 - 40002, 'x').replace("x", "a\n");
    ASSERT_TRUE(RecodeAndLoadCatalogue(writeScrapbook(folder, rdf), catalogue));
    EXPECT_EQ(catalogue.lineCount, 80000);
    EXPECT_EQ(catalogue.itemCount, 20001);
    EXPECT_EQ(loadFailure(rdf + "a\n").line, 80002);
    EXPECT_EQ(loadFailure(descriptions(20002)).line, 40003);
}

TEST(RdfReader, GetEndValueFindsTheLastQuote) {
    EXPECT_EQ(GetEndValue(QStringLiteral("abc\"")), 4);
    EXPECT_EQ(GetEndValue(QStringLiteral("a\"b\" />")), 4);
    EXPECT_EQ(GetEndValue(QStringLiteral("abc")), 0);
}

TEST(IndexDat, TitleIsTheTextBetweenTitleAndChars) {
    TempFolder folder;
    const QString dat = folder.write(QStringLiteral("index.dat"),
                                     "id\t20080309000000\ntype\t\ntitle\t \xE5\x8F\xB0\xE7\x81\xA3 "
                                     "& \"tea\" \nchars\tUTF-8\nicon\t\n");
    EXPECT_EQ(ReadIndexDatTitle(dat), QStringLiteral("台灣 & \"tea\""));
    EXPECT_EQ(ReadIndexDatTitle(folder.write(QStringLiteral("x.dat"), "id\t1\ntitle\tA\n")),
              QString());
    EXPECT_EQ(ReadIndexDatTitle(folder.write(QStringLiteral("y.dat"), "chars\tx\ntitle\tA\n")),
              QString());
    EXPECT_EQ(ReadIndexDatTitle(folder.path() + QStringLiteral("none.dat")), QString());
}

} // namespace
} // namespace qmr
