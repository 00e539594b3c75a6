#include "catalogue/CatalogueWalk.h"

#include "catalogue/PathSafety.h"
#include "support/CatalogueBuilder.h"

#include <QSet>

#include <random>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {

namespace {

using test::CatalogueBuilder;

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
