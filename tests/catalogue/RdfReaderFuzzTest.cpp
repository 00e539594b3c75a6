#include "catalogue/RdfReader.h"

#include "support/Fuzzing.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::XorShift;

const char* const kPieces[] = {
    "<RDF:Description RDF:about=\"urn:scrapbook:item1\"\n",
    "NS1:id=\"20080309000000\"\n",
    "NS1:title=\"\xE5\x8F\xB0\"\n",
    "NS1:type=\"folder\"\n",
    "NS1:comment=\"x\" />\n",
    "NS1:source=\"",
    "\"",
    "\n",
    "\r\n",
    "\r",
    "  ",
    "<RDF:Seq RDF:about=\"urn:scrapbook:root\">\n",
    "<RDF:li RDF:resource=\"urn:scrapbook:item1\"/>\n",
    "</RDF:Seq>\n",
    "\xC3",
    "\xFF",
    "\x00",
    "\xF0\x9F\x98\x80",
    "&quot;",
    "NS1:chars=\"UTF-8\"\n",
    "NS1:icon=\n",
};

QByteArray randomCatalogue(XorShift& rng) {
    QByteArray rdf;
    const uint32_t pieces = rng.below(60);
    for (uint32_t i = 0; i < pieces; ++i) {
        if (rng.below(8) == 0) {
            rdf += char(rng.below(256)); // now and then a raw byte
        } else {
            const char* piece = kPieces[rng.below(std::size(kPieces))];
            rdf += piece[0] ? QByteArray(piece) : QByteArray(1, '\0');
        }
    }
    return rdf;
}

// Random catalogues either load or are refused with a message; the reader never crashes, and
// a refused load leaves no items behind. Run longer with QMR_FUZZ_ITERATIONS=200000.
TEST(RdfReaderFuzz, RandomCataloguesLoadOrAreRefusedCleanly) {
    test::TempFolder folder;
    CatalogueLimits limits;
    limits.maxLines = 40;
    limits.maxItems = 6;
    const int count = test::FuzzIterations(4000);
    for (int seed = 0; seed < count; ++seed) {
        XorShift rng{uint64_t(seed)};
        const QByteArray rdf = randomCatalogue(rng);
        folder.write(QStringLiteral("scrapbook.rdf"), rdf);
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
