#include "catalogue/RdfReader.h"
#include "catalogue/CatalogueWalk.h"

#include "catalogue/PathSafety.h"
#include "catalogue/TextFiles.h"
#include "support/CatalogueBuilder.h"
#include "support/Fuzzing.h"
#include "support/TempFolder.h"

#include <QDir>
#include <QFile>
#include <QSet>

#include <random>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

using test::CatalogueBuilder;
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
    for (int seed = 0, count = test::FuzzIterations(4000); seed < count; ++seed) {
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

TEST(TextFiles, RecodesBetweenUtf8AndTheLocalCodePage) {
    TempFolder folder;
    // The working copy's bytes are checked where the reader makes it; here, a missing source.
    const QString local = folder.path() + u"scrapbook.txt"_s;
    QString error;
    EXPECT_FALSE(ConvertUtf8ToLocalText(folder.path() + u"none"_s, local, &error));
    EXPECT_TRUE(error.contains(u"none"_s));

    // To UTF-8 after a byte-order mark: lines end in CR LF, the last one too; a lone line feed
    // stays inside its line.
    const QString source = folder.write(u"temp.html"_s, "<p>\xA5\x78</p>\r\nx\ry\nz");
    const QString target = folder.write(u"list.html"_s, "an older, longer page to be replaced");
    ASSERT_TRUE(ConvertLocalTextToUtf8(source, target));
    EXPECT_EQ(ReadBytes(target), QByteArray("\xEF\xBB\xBF<p>\xE5\x8F\xB0</p>\r\nx\r\ny\nz\r\n"));
    ASSERT_TRUE(ConvertLocalTextToUtf8(folder.write(u"empty.html"_s, ""), target));
    EXPECT_EQ(ReadBytes(target), QByteArray("\xEF\xBB\xBF"));
}

TEST(TextFiles, AtomicWriteKeepsTheOldFileWhenItCannotWrite) {
    TempFolder folder;
    const QString path = folder.write(u"Index.hhc"_s, "whole");
    ASSERT_TRUE(WriteFileAtomically(path, "new whole"));
    EXPECT_EQ(ReadBytes(path), QByteArray("new whole"));
    // A read-only file stays as it was, even though its folder could take a new one.
    QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadUser);
    QString error;
    EXPECT_FALSE(WriteFileAtomically(path, "replaced", &error));
    EXPECT_TRUE(error.contains(u"read-only"_s)) << error.toStdString();
    EXPECT_EQ(ReadBytes(path), QByteArray("new whole"));
    EXPECT_FALSE(WriteFileAtomically(folder.path() + u"none/x"_s, "x", &error));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"Index.hhc"});
}

// The walk as it reads most plainly: recursive, every folder reading every line of the
// catalogue with a flag that a list line beginning with the folder's key sets and "</RDF:Seq>"
// clears, the first item of an identifier standing for it, the depth a plain counter.
struct PlainWalk {
    explicit PlainWalk(const Catalogue& catalogue) : c(catalogue) {}
    const Catalogue& c;
    std::vector<WalkStep> steps;
    std::vector<int> parent = std::vector<int>(c.items.size(), -2);
    QStringList log;
    QSet<int> open, reported;
    qint64 entries = 0, limit = 16 * (qint64(c.lineCount) + 1) + 1024;
    int depth = 0;

    int first(const QString& id) const {
        for (int i = 0; i < c.itemCount; ++i)
            if (c.items.at(i).id == id) return i;
        return -1;
    }
    void report(int item, const QString& line) {
        if (!reported.contains(item)) log << line;
        reported.insert(item);
    }
    bool walk(const QString& name, int folder) {
        ++depth;
        if (folder >= 0) {
            if (c.items.at(folder).isPrivate()) return true; // the depth stays one higher
            steps.push_back({WalkStep::Kind::Enter, folder, parent[folder], depth - 2});
            open.insert(folder);
        }
        const QString key =
            u"<RDF:Seq RDF:about=\"urn:scrapbook:"_s + (folder < 0 ? name : u"item"_s + name);
        const QString child = u"<RDF:li RDF:resource=\"urn:scrapbook:item"_s;
        bool inside = false;
        for (const QString& line : c.lines) {
            if (line.startsWith(key)) inside = true;
            if (line.startsWith(u"</RDF:Seq>"_s)) inside = false;
            const int item = inside && line.startsWith(child) && line.size() >= child.size() + 3
                                 ? first(line.mid(child.size()).chopped(3))
                                 : -1;
            if (item >= 0 && (++entries > limit || !place(folder, item))) return false;
        }
        if (folder >= 0) {
            steps.push_back({WalkStep::Kind::Leave, folder, -1, depth - 2});
            open.remove(folder);
            --depth;
        }
        return true;
    }
    bool place(int folder, int item) {
        const CatalogueItem& it = c.items.at(item);
        const bool opens = it.isFolder() && !it.isPrivate();
        if (!IsSafePathComponent(it.id)) {
            report(item, u"Skipped item %1: its identifier cannot name a folder"_s.arg(it.id));
            return true;
        }
        if (opens && (open.contains(item) || it.id == u"root")) {
            report(item, u"Skipped folder %1: it is listed inside itself"_s.arg(it.id));
            return true;
        }
        steps.push_back({WalkStep::Kind::Place, item, folder, depth - 1});
        parent[item] = folder;
        return !opens || walk(it.id, first(it.id));
    }
};

// Catalogues nobody would write by hand: lists that never close, closes without lists, child
// lines outside any list or cut short, identifiers that begin other identifiers, the same
// identifier twice, folders in several lists and inside themselves, unsafe identifiers, and
// now and then a chain of folders that list the next one twice, twelve deep.
Catalogue RandomCatalogue(std::mt19937& random, bool doubling) {
    const QStringList ids = {
        "1",    "12",  "123", "2", "20240101000001", "202401010000011", "20240101000002",
        "root", "a/b", ""};
    const QStringList types = {"folder",    "folder", "folder", "",       "bookmark", "note",
                               "separator", "image",  "site",   "marked", "file"};
    const QStringList comments = {"", "", "", "Private", "not private at all"};
    auto pick = [&](const QStringList& from) { return from.at(int(random() % from.size())); };
    CatalogueBuilder b;
    for (int i = 4 + int(random() % 16); i > 0; --i)
        b.item(pick(ids), pick(types), {}, {}, pick(comments));
    for (int i = 5 + int(random() % 70); i > 0; --i) {
        const int kind = int(random() % 100);
        if (kind < 20)
            b.line(u"<RDF:Seq RDF:about=\"urn:scrapbook:"_s +
                   pick({"root", "root2", "ro", "item" + pick(ids)}) + pick({"\">", "", "9\">"}));
        else if (kind < 35)
            b.line(pick({"</RDF:Seq>", "</RDF:Seq> x"}));
        else if (kind < 80)
            b.line(u"<RDF:li RDF:resource=\"urn:scrapbook:item"_s +
                   (random() % 10 ? pick(ids) + "\"/>" : pick({"", "1", "\"/"})));
        else
            b.line(pick({"", "<RDF:Description", "<RDF:li RDF:resource=\"urn:scrapbook:1\"/>"}));
    }
    if (doubling) b.chain(12, 2);
    return b.build();
}

TEST(CatalogueWalk, PlacesWhatThePlainRecursiveScanPlaces) {
    std::mt19937 random(11);
    int stopped = 0;
    for (int seed = 1; seed <= 600; ++seed) {
        const Catalogue catalogue = RandomCatalogue(random, seed % 10 == 0);
        const CatalogueWalk walk(catalogue);
        PlainWalk plain(catalogue);
        const bool finished = plain.walk(u"root"_s, -1);
        SCOPED_TRACE(seed);
        stopped += finished ? 0 : 1;
        ASSERT_EQ(walk.ok(), finished);
        ASSERT_EQ(walk.steps(), plain.steps);
        EXPECT_EQ(walk.skipped(), plain.log);
        for (int i = 0; i < catalogue.itemCount; ++i) {
            EXPECT_EQ(walk.placed(i), plain.parent[i] != -2) << i;
            EXPECT_EQ(walk.parentId(i), walk.parentName(plain.parent[i])) << i;
        }
    }
    EXPECT_GT(stopped, 0); // some catalogues multiply without end, and both walks stop
}

// Thousands of folders deep: no recursion to exhaust, and the depth comes back.
TEST(CatalogueWalk, ThousandsOfFoldersDeep) {
    constexpr int kDepth = 3000;
    const Catalogue catalogue = CatalogueBuilder().chain(kDepth, 1).build();
    const CatalogueWalk walk(catalogue);
    ASSERT_TRUE(walk.ok()) << walk.error().toStdString();
    EXPECT_EQ(walk.steps().size(), std::size_t(3 * kDepth + 1));
    EXPECT_EQ(walk.steps().back(), (WalkStep{WalkStep::Kind::Leave, 0, -1, 0}));
    EXPECT_EQ(walk.parentId(kDepth), catalogue.items.at(kDepth - 1).id);
}

} // namespace
} // namespace qmr
