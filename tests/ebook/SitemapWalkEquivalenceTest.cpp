#include "catalogue/LocalTextFile.h"
#include "catalogue/PathSafety.h"
#include "ebook/CatalogueTree.h"
#include "ebook/Sitemap.h"
#include "ebook/SitemapTestSupport.h"
#include "website/ListPage.h"

#include <QSet>

#include <random>

#include <gtest/gtest.h>

namespace qmr {
namespace {

const QString kListStart = QStringLiteral("<RDF:Seq RDF:about=\"urn:scrapbook:");
const QString kListEnd = QStringLiteral("</RDF:Seq>");
const QString kChild = QStringLiteral("<RDF:li RDF:resource=\"urn:scrapbook:item");

// The first item with that identifier, read from the top each time.
int FirstItem(const Catalogue& catalogue, const QString& id) {
    for (int i = 0; i < catalogue.itemCount; ++i)
        if (catalogue.items.at(i).id == id) return i;
    return -1;
}

// A folder's children as the plain reading finds them: every line of the catalogue, with a
// flag set by a list line that begins with the folder's key and cleared by "</RDF:Seq>".
std::vector<int> ScannedChildren(const Catalogue& catalogue, const QString& name) {
    const QString start = kListStart + (name == u"root" ? name : QStringLiteral("item") + name);
    std::vector<int> children;
    bool inside = false;
    for (int i = 0; i <= catalogue.lineCount; ++i) {
        const QString& line = catalogue.lines.at(i);
        if (line.startsWith(start)) inside = true;
        if (line.startsWith(kListEnd)) inside = false;
        if (!inside || !line.startsWith(kChild)) continue;
        const QString rest = line.mid(kChild.size());
        const int child = rest.size() < 3 ? -1 : FirstItem(catalogue, rest.chopped(3));
        if (child >= 0) children.push_back(child);
    }
    return children;
}

bool IsPrivate(const CatalogueItem& item) {
    return item.comment.toUpper().contains(QStringLiteral("PRIVATE"));
}

// The walk of the table of contents as it reads most plainly: recursive, each folder scanning
// every line, with the same rules for what is left out.
class PlainWalk {
  public:
    PlainWalk(EbookContext& build, LocalTextFile& file)
        : b(build), c(build.catalogue), f(file), limit(16 * (qint64(c.lineCount) + 1) + 1024) {}

    bool walk(const QString& name) {
        ++b.walk.TreeDepth;
        int folder = -1;
        if (name != u"root") {
            folder = FirstItem(c, name);
            if (folder < 0 || IsPrivate(c.items.at(folder))) return true;
            if (b.walk.FirstFolderTitle.isEmpty()) b.walk.FirstFolderTitle = c.items[folder].title;
            f.writeLine(QStringLiteral("   <UL>"));
            WriteFolderEntry(f, c.items[folder].title, 1);
            c.items[folder].folderBody = FolderPathHeader(b.chrome, c, folder);
            open.insert(folder);
        }
        for (int child : ScannedChildren(c, name)) {
            if (++entries > limit) return false;
            if (!place(folder, name, child)) return false;
        }
        if (folder >= 0) {
            --b.walk.TreeDepth;
            f.writeLine(QStringLiteral("      </UL>"));
            open.remove(folder);
        }
        return true;
    }

  private:
    bool place(int folder, const QString& name, int child) {
        CatalogueItem& item = c.items[child];
        if (!IsSafePathComponent(item.id)) {
            report(child, QStringLiteral("Skipped item %1: its identifier cannot name a folder")
                              .arg(item.id));
            return true;
        }
        const QString type = item.type;
        if (type == u"folder" && !IsPrivate(item) && (open.contains(child) || item.id == u"root")) {
            report(child,
                   QStringLiteral("Skipped folder %1: it is listed inside itself").arg(item.id));
            return true;
        }
        item.placed = true;
        item.parentId = name;
        const QString page = QStringLiteral("../") + item.id + QStringLiteral("/index.html");
        const int pageMode = b.options.linkToSourceURL ? 1 : 0;
        if (type == u"folder") {
            gather(folder, child, QStringLiteral("../qmr/") + item.id + QStringLiteral(".html"));
            if (IsPrivate(item)) return true;
            content(child, 2);
            return walk(item.id);
        }
        if (type == u"bookmark") {
            gather(folder, child, item.source);
            WriteTocPageEntry(b, f, child, true);
            content(child, pageMode);
        } else if (type == u"note") {
            WriteTocPageEntry(b, f, child, false);
            content(child, pageMode);
        } else if (type.isEmpty() || type == u"image" || type == u"site" || type == u"marked" ||
                   type == u"file") {
            gather(folder, child, page);
            WriteTocPageEntry(b, f, child, false);
            content(child, pageMode);
        }
        return true;
    }
    void gather(int folder, int child, const QString& link) {
        if (folder >= 0) c.items[folder].folderBody += FolderItemLine(c.items.at(child), link);
    }
    void content(int child, int mode) {
        QString link;
        b.content.ContentItemEntry(c, b.walk.TreeDepth - 1, child, link, QStringLiteral("2"), mode,
                                   b.options.makeChmFile, &b.forum);
        if (b.walk.FirstPage.isEmpty()) b.walk.FirstPage = link;
    }
    void report(int child, const QString& line) {
        if (reported.contains(child)) return;
        reported.insert(child);
        b.host.add2loglist(line);
    }

    EbookContext& b;
    Catalogue& c;
    LocalTextFile& f;
    QSet<int> open;
    QSet<int> reported;
    const qint64 limit;
    qint64 entries = 0;
};

// Catalogues nobody would write by hand: lists that never close, closes without lists, child
// lines outside any list or cut short, identifiers that begin other identifiers, the same
// identifier twice, folders in several lists and inside themselves.
class RandomCatalogue {
  public:
    explicit RandomCatalogue(unsigned seed) : m_random(seed) {}

    // `withChain` adds folders that multiply without end.
    Catalogue make(bool withChain = false) {
        Catalogue catalogue;
        const int items = 4 + below(16);
        for (int i = 0; i < items; ++i)
            catalogue.items << randomItem();
        const int lines = 5 + below(70);
        for (int i = 0; i < lines; ++i)
            catalogue.lines << randomLine();
        if (withChain) addDoublingChain(catalogue);
        catalogue.lineCount = int(catalogue.lines.size()) - 1;
        catalogue.itemCount = int(catalogue.items.size());
        return catalogue;
    }

    QStringList names() const {
        QStringList all = pool();
        all << QStringLiteral("root") << QStringLiteral("roo") << QStringLiteral("itemz");
        return all;
    }

  private:
    static QStringList pool() {
        return {QStringLiteral("1"),
                QStringLiteral("12"),
                QStringLiteral("123"),
                QStringLiteral("2"),
                QStringLiteral("20240101000001"),
                QStringLiteral("202401010000011"),
                QStringLiteral("20240101000002"),
                QStringLiteral("root"),
                QStringLiteral("a/b"),
                QString()};
    }
    int below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(m_random); }
    QString pick(const QStringList& from) { return from.at(below(int(from.size()))); }

    CatalogueItem randomItem() {
        static const QStringList types = {QStringLiteral("folder"),    QStringLiteral("folder"),
                                          QStringLiteral("folder"),    QString(),
                                          QStringLiteral("bookmark"),  QStringLiteral("note"),
                                          QStringLiteral("separator"), QStringLiteral("image"),
                                          QStringLiteral("site"),      QStringLiteral("marked"),
                                          QStringLiteral("file")};
        static const QStringList comments = {QString(), QString(), QString(),
                                             QStringLiteral("Private"),
                                             QStringLiteral("not private at all")};
        static const QStringList sources = {QString(), QStringLiteral("http://a.example/"),
                                            QStringLiteral("file:///c:/x"),
                                            QStringLiteral("https://mail.google.com/m")};
        CatalogueItem item;
        item.id = pick(pool());
        item.type = pick(types);
        item.title = QStringLiteral("Title %1").arg(below(1000));
        item.comment = pick(comments);
        item.source = pick(sources);
        return item;
    }

    // Folders that each list the next one twice, from the top: 2^12 entries, more than the
    // walk writes for a catalogue of this size.
    void addDoublingChain(Catalogue& catalogue) {
        auto id = [](int i) { return QStringLiteral("c%1").arg(i, 2, 10, QLatin1Char('0')); };
        const int at = below(int(catalogue.lines.size()) + 1);
        QStringList chain = {kListStart + QStringLiteral("root\">"),
                             kChild + id(0) + QStringLiteral("\"/>"), kListEnd};
        for (int i = 0; i < 12; ++i) {
            const QString next = kChild + id(i + 1) + QStringLiteral("\"/>");
            chain << kListStart + QStringLiteral("item") + id(i) + QStringLiteral("\">") << next
                  << next << kListEnd;
            CatalogueItem folder;
            folder.id = id(i);
            folder.type = QStringLiteral("folder");
            catalogue.items << folder;
        }
        for (qsizetype i = chain.size() - 1; i >= 0; --i)
            catalogue.lines.insert(at, chain.at(i));
    }

    QString randomLine() {
        const int kind = below(100);
        if (kind < 20) {
            static const QStringList tails = {QStringLiteral("\">"), QString(),
                                              QStringLiteral("9\">")};
            const QString name =
                below(4) == 0
                    ? pick({QStringLiteral("root"), QStringLiteral("root2"), QStringLiteral("ro")})
                    : QStringLiteral("item") + pick(pool());
            return kListStart + name + pick(tails);
        }
        if (kind < 35) return below(3) == 0 ? kListEnd + QStringLiteral(" x") : kListEnd;
        if (kind < 80) {
            if (below(10) == 0)
                return kChild + pick({QString(), QStringLiteral("1"), QStringLiteral("\"/")});
            return kChild + pick(pool()) + QStringLiteral("\"/>");
        }
        return pick({QString(), QStringLiteral("<RDF:Description"), QStringLiteral("NS1:id=\"1\""),
                     QStringLiteral("<RDF:Seq RDF:about=\"urn:other:root\">"),
                     QStringLiteral("<RDF:li RDF:resource=\"urn:scrapbook:1\"/>")});
    }

    std::mt19937 m_random;
};

TEST(SitemapWalk, IndexedChildrenEqualTheLineScan) {
    for (unsigned seed = 1; seed <= 400; ++seed) {
        RandomCatalogue random(seed);
        const Catalogue catalogue = random.make();
        const CatalogueTree tree(catalogue);
        for (const QString& name : random.names())
            ASSERT_EQ(tree.children(name), ScannedChildren(catalogue, name))
                << "seed " << seed << " name " << name.toStdString();
    }
}

// One walk, written into its own files, and everything it leaves behind.
struct WalkOutcome {
    bool finished = false;
    QByteArray toc, content, forum;
    QList<CatalogueItem> items;
    WalkState walk;
    QStringList log;
};

template <typename Walk>
WalkOutcome RunWalk(const Catalogue& catalogue, bool linkToSource, bool box, Walk walkFrom) {
    test::SitemapBuild s;
    s.build.catalogue = catalogue;
    s.build.options.linkToSourceURL = linkToSource;
    s.build.options.makeChmFile = box;
    s.build.content.ChooseContentTemplate(s.build.chrome, s.build.catalogue, s.build.folder,
                                          QStringLiteral("ROOT_CONTENT"),
                                          QStringLiteral("content.html"));
    s.build.forum.open(s.path("forum.txt"));
    LocalTextFile toc(s.path("toc.txt"));
    WalkOutcome outcome;
    outcome.finished = walkFrom(s.build, toc);
    EXPECT_TRUE(toc.commit());
    EXPECT_TRUE(s.build.forum.close());
    EXPECT_TRUE(s.build.content.CloseContentPage());
    outcome.toc = s.read("toc.txt");
    outcome.content = s.read("content.html");
    outcome.forum = s.read("forum.txt");
    outcome.items = s.build.catalogue.items;
    outcome.walk = s.build.walk;
    outcome.log = s.host.log;
    return outcome;
}

TEST(SitemapWalk, WritesWhatThePlainRecursiveScanWrites) {
    int stopped = 0;
    // Each walk writes three files, so fewer catalogues than above, some with lists that multiply.
    for (unsigned seed = 1; seed <= 50; ++seed) {
        const Catalogue catalogue = RandomCatalogue(seed).make(seed % 10 == 0);
        const bool linkToSource = seed % 3 == 0;
        const bool box = seed % 2 == 0;
        const WalkOutcome fast =
            RunWalk(catalogue, linkToSource, box, [](EbookContext& build, LocalTextFile& toc) {
                return WalkCatalogueTree(build, toc, QStringLiteral("root"));
            });
        const WalkOutcome plain =
            RunWalk(catalogue, linkToSource, box, [](EbookContext& build, LocalTextFile& toc) {
                return PlainWalk(build, toc).walk(QStringLiteral("root"));
            });
        SCOPED_TRACE(seed);
        stopped += fast.finished ? 0 : 1;
        ASSERT_EQ(fast.finished, plain.finished);
        EXPECT_TRUE(test::SameLines(test::CrLfLines(plain.toc), test::CrLfLines(fast.toc)));
        EXPECT_EQ(fast.content, plain.content);
        EXPECT_EQ(fast.forum, plain.forum);
        EXPECT_EQ(fast.log, plain.log);
        EXPECT_EQ(fast.walk.TreeDepth, plain.walk.TreeDepth);
        EXPECT_EQ(fast.walk.FirstFolderTitle, plain.walk.FirstFolderTitle);
        EXPECT_EQ(fast.walk.FirstPage, plain.walk.FirstPage);
        for (qsizetype i = 0; i < plain.items.size(); ++i) {
            EXPECT_EQ(fast.items.at(i).placed, plain.items.at(i).placed) << i;
            EXPECT_EQ(fast.items.at(i).parentId, plain.items.at(i).parentId) << i;
            EXPECT_EQ(fast.items.at(i).folderBody, plain.items.at(i).folderBody) << i;
        }
    }
    // Some of the catalogues multiply without end, and both walks stop at the same entry.
    EXPECT_GT(stopped, 0);
}

} // namespace
} // namespace qmr
