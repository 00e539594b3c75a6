#include "catalogue/RdfReader.h"

#include "support/TempFolder.h"

#include <random>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

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
