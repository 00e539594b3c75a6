#include "catalogue/RdfReader.h"

#include "catalogue/TextFiles.h"
#include "support/TempFolder.h"

#include <QDir>

#include <random>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

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

// Writes the catalogue into `folder` and loads it.
bool load(const TempFolder& folder, const QByteArray& rdf, Catalogue& catalogue,
          InputError* error = nullptr, const CatalogueLimits& limits = {}) {
    folder.write(u"scrapbook.rdf"_s, rdf);
    return RecodeAndLoadCatalogue(folder.path(), catalogue, error, limits);
}

// A refused load leaves no items behind.
InputError loadFailure(const QByteArray& rdf, const CatalogueLimits& limits = {}) {
    TempFolder folder;
    Catalogue catalogue;
    InputError error;
    EXPECT_FALSE(load(folder, rdf, catalogue, &error, limits));
    EXPECT_EQ(catalogue.itemCount, 0);
    EXPECT_TRUE(catalogue.items.isEmpty());
    return error;
}

QByteArray descriptions(int count) {
    return QByteArray("<RDF:Description\nNS1:id=\"1\" />\n").repeated(count);
}

TEST(RdfReader, LoadsTheItemTableAsTheLinesStand) {
    TempFolder folder;
    Catalogue catalogue;
    InputError error;
    ASSERT_TRUE(load(folder, kCatalogue, catalogue, &error)) << error.text().toStdString();
    // 20 lines and the empty one after the final line feed; lineCount is the last index.
    EXPECT_EQ(catalogue.lineCount, 20);
    ASSERT_EQ(catalogue.itemCount, 2);

    const CatalogueItem& folderItem = catalogue.items.at(0);
    EXPECT_EQ(folderItem.id, u"20080309000000"_s);
    EXPECT_EQ(folderItem.title, u"台灣 &amp; Tea"_s); // entities are kept
    EXPECT_EQ(folderItem.comment, u"x"_s);            // the last quote ends it

    const CatalogueItem& second = catalogue.items.at(1);
    EXPECT_EQ(second.id, QString()); // written on the Description line: not seen
    EXPECT_EQ(second.title, u"a \"b\" c"_s);
    EXPECT_EQ(second.source, u"http://e.com/?q=&quot;x&quot;"_s);

    // The working copy is the Big5 text with carriage returns; the catalogue is untouched.
    const QByteArray txt = ReadBytes(folder.path() + u"scrapbook.txt"_s);
    EXPECT_TRUE(txt.contains("NS1:title=\"\xA5\x78\xC6\x57 &amp; Tea\"\r"));
    EXPECT_TRUE(txt.endsWith("</RDF:RDF>\r\r\n"));
    EXPECT_EQ(ReadBytes(folder.path() + u"scrapbook.rdf"_s), kCatalogue);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files),
              (QStringList{"scrapbook.rdf", "scrapbook.txt"}));

    // CR LF line ends read the same, with empty lines between; a byte-order mark is not text.
    ASSERT_TRUE(
        load(folder, "\xEF\xBB\xBF" + QByteArray(kCatalogue).replace("\n", "\r\n"), catalogue));
    EXPECT_EQ(catalogue.lineCount, 40);
    EXPECT_EQ(catalogue.lines.at(0), u"<?xml version=\"1.0\"?>"_s);
    EXPECT_EQ(catalogue.items.at(0).title, u"台灣 &amp; Tea"_s);
    // Kinds follow the type exactly; an item without a type is a saved page.
    ASSERT_TRUE(
        load(folder, "<RDF:Description\nNS1:type=\"Folder\"\n<RDF:Description\n", catalogue));
    EXPECT_EQ(catalogue.items.at(0).kind, ItemKind::Unknown);
    EXPECT_EQ(catalogue.items.at(1).kind, ItemKind::Page);
    ASSERT_TRUE(load(folder, "", catalogue));
    EXPECT_EQ(catalogue.lineCount, 0); // the one empty line the recoding ends with
}

TEST(RdfReader, RefusesBrokenCataloguesNamingFileAndLine) {
    const struct {
        QByteArray rdf;
        int line;
        const char* problem;
    } cases[] = {
        {"<RDF:Description\n  NS1:title=\"no end\n", 2,
         "scrapbook.rdf: line 2: the value of NS1:title has no closing double quote"},
        {"<RDF:RDF>\nNS1:id=\"1\"\n<RDF:Description\n", 2, "before the first <RDF:Description"},
        {"<RDF:RDF>\n\n<x \xC3\x28/>\n", 3, "not valid UTF-8"},
        {"a\n\xE0\x80\x80\n", 2, "not valid UTF-8"}, // an overlong form
        {"\xED\xA0\x80", 1, "not valid UTF-8"},      // a surrogate
        {"ok\n\xE5\x8F", 2, "not valid UTF-8"},      // cut short at the end
        {QByteArray("GIF89a\n\n\x00\x01", 10), 3, "binary"},
    };
    for (const auto& c : cases) {
        const InputError error = loadFailure(c.rdf);
        EXPECT_EQ(error.line, c.line) << c.problem;
        EXPECT_TRUE(error.text().contains(QString::fromUtf8(c.problem)))
            << error.text().toStdString();
    }

    TempFolder empty;
    Catalogue catalogue;
    InputError missing;
    EXPECT_FALSE(RecodeAndLoadCatalogue(empty.path(), catalogue, &missing));
    EXPECT_TRUE(missing.text().contains(u"scrapbook.rdf"_s));
    EXPECT_FALSE(LoadAllRdfNodes(empty.path(), catalogue, &missing));
    EXPECT_TRUE(missing.text().contains(u"scrapbook.txt"_s));
    EXPECT_EQ(QDir(empty.path()).entryList(QDir::Files), QStringList()); // nothing written
}

TEST(RdfReader, LineAndItemLimitsNameTheSettingThatRaisesThem) {
    CatalogueLimits small;
    small.maxLines = 10;
    small.maxItems = 3;
    small.settingsFile = u"/app/Quillmere.ini"_s;
    // Nine lines and the empty last one: exactly at the limit.
    TempFolder folder;
    Catalogue catalogue;
    ASSERT_TRUE(load(folder, QByteArray("a\n").repeated(9), catalogue, nullptr, small));
    EXPECT_EQ(catalogue.lineCount, 9);
    const InputError lines = loadFailure(QByteArray("a\n").repeated(10), small);
    EXPECT_EQ(lines.line, 11);
    EXPECT_TRUE(lines.text().contains(u"more than 10 lines"_s));
    EXPECT_TRUE(lines.text().contains(u"[Limits] CatalogueLines in /app/Quillmere.ini"_s));

    small.maxLines = 100;
    ASSERT_TRUE(load(folder, descriptions(3), catalogue, nullptr, small));
    EXPECT_EQ(catalogue.itemCount, 3);
    const InputError items = loadFailure(descriptions(4), small);
    EXPECT_EQ(items.line, 7); // the fourth <RDF:Description line
    EXPECT_TRUE(items.text().contains(u"more than 3 items"_s));
    EXPECT_TRUE(items.text().contains(u"[Limits] CatalogueItems"_s));

    // The defaults: 80,000 lines and the empty last one load; one more line does not.
    const QByteArray full = descriptions(20001) + QByteArray("a\n").repeated(80000 - 40002);
    ASSERT_TRUE(load(folder, full, catalogue));
    EXPECT_EQ(catalogue.lineCount, 80000);
    EXPECT_EQ(catalogue.itemCount, 20001);
    EXPECT_EQ(loadFailure(full + "a\n").line, 80002);
    EXPECT_EQ(loadFailure(descriptions(20002)).line, 40003);
}

// Pieces of ScrapBook's own catalogue, line ends of every kind, and bytes that break UTF-8 (a
// NUL among them), separated by "|".
constexpr char kJoinedPieces[] =
    "<RDF:Description RDF:about=\"urn:scrapbook:item1\"\n|NS1:id=\"20080309000000\"\n|"
    "NS1:title=\"\xE5\x8F\xB0\"\n|NS1:type=\"folder\"\n|NS1:comment=\"x\" />\n|NS1:source=\"|\"|"
    "\n|\r\n|\r|  |<RDF:Seq RDF:about=\"urn:scrapbook:root\">\n|"
    "<RDF:li RDF:resource=\"urn:scrapbook:item1\"/>\n|</RDF:Seq>\n|\xC3|\xFF|\0|\xF0\x9F\x98\x80|"
    "&quot;|NS1:chars=\"UTF-8\"\n|NS1:icon=\n";
const QByteArrayList kPieces = QByteArray(kJoinedPieces, sizeof kJoinedPieces - 1).split('|');

// The pieces at random, now and then a random byte; the same seed gives the same catalogue.
QByteArray randomCatalogue(std::mt19937& random) {
    QByteArray rdf;
    for (int i = int(random() % 60); i > 0; --i) {
        if (random() % 8 == 0)
            rdf += char(random() % 256);
        else
            rdf += kPieces.at(random() % kPieces.size());
    }
    return rdf;
}

// Random catalogues either load within the limits or are refused with a message naming a line
// of the file, leaving no items behind; the reader never crashes. Run longer with
// QMR_FUZZ_ITERATIONS=200000.
TEST(RdfReaderFuzz, RandomCataloguesLoadOrAreRefusedCleanly) {
    test::TempFolder folder;
    CatalogueLimits limits;
    limits.maxLines = 40;
    limits.maxItems = 6;
    bool set = false;
    const int wanted = qEnvironmentVariableIntValue("QMR_FUZZ_ITERATIONS", &set);
    for (int seed = 0; seed < (set && wanted > 0 ? wanted : 4000); ++seed) {
        std::mt19937 random(seed);
        const QByteArray rdf = randomCatalogue(random);
        folder.write(u"scrapbook.rdf"_s, rdf);
        Catalogue catalogue;
        InputError error;
        if (RecodeAndLoadCatalogue(folder.path(), catalogue, &error, limits)) {
            ASSERT_LE(catalogue.lineCount, limits.maxLines - 1) << "seed " << seed;
            ASSERT_EQ(catalogue.items.size(), catalogue.itemCount) << "seed " << seed;
            ASSERT_LE(catalogue.itemCount, limits.maxItems) << "seed " << seed;
        } else {
            ASSERT_FALSE(error.text().isEmpty()) << "seed " << seed;
            ASSERT_GE(error.line, 0) << "seed " << seed;
            ASSERT_LE(error.line, rdf.count('\n') + rdf.count('\r') + 2) << "seed " << seed;
            ASSERT_EQ(catalogue.itemCount, 0) << "seed " << seed;
        }
    }
}

} // namespace
} // namespace qmr
