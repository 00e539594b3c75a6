#include "ebook/ProjectFile.h"

#include "platform/AppFolder.h"
#include "platform/PathSeparators.h"
#include "support/RecordingHost.h"
#include "support/TempFolder.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <algorithm>

namespace qmr {
namespace {

using test::ReadBytes;
using test::RecordingHost;
using test::TempFolder;

const QString kPlacedItem = QStringLiteral("20080101000001");
const QString kHiddenItem = QStringLiteral("20080101000002");
const QString kFolderlessItem = QStringLiteral("20080101000003");

CatalogueItem Item(const QString& id, bool placed) {
    CatalogueItem item;
    item.id = id;
    item.placed = placed;
    return item;
}

// A scrapbook with a file for each rule of the [Files] section: working and generated files in
// its root, a placed item, an item the table of contents left out, a folder no item names, and
// the generated pages.
void WriteScrapbook(const TempFolder& book) {
    for (const char* name : {"ErrorLog.log",
                             "Index.hhc",
                             "Index.hhk",
                             "Thumbs.db",
                             "forum.txt",
                             "index.html",
                             "scrapbook.rdf",
                             "scrapbook.txt",
                             "data/20080101000001/a.css",
                             "data/20080101000001/index.dat",
                             "data/20080101000001/index.html",
                             "data/20080101000001/pic.gif",
                             "data/20080101000001/x.JPG",
                             "data/20080101000001/x.jpg",
                             "data/20080101000001/說明.html",
                             "data/20080101000001/img/b.png",
                             "data/20080101000002/a.css",
                             "data/20080101000002/index.html",
                             "data/20080101000009/index.html",
                             "data/qmr/list.html",
                             "data/qmr/root.html"})
        book.write(QString::fromUtf8(name), "x");
}

struct Case {
    EbookLanguage language;
    bool linkToSourceURL;
    const char* startPage;
    const char* golden;
};

// The golden files name the application folder "{app}".
QByteArray Golden(const char* name) {
    QByteArray bytes = ReadBytes(QStringLiteral(QMR_GOLDEN_DIR "/ebook/") + QLatin1String(name));
    return bytes.replace("{app}", QFile::encodeName(ToNativePath(ApplicationFolder())));
}

TEST(ProjectFile, WritesEveryLineAsTheGoldenFilesShow) {
    TempFolder book;
    WriteScrapbook(book);
    const QStringList files = GatherScrapbookFiles(book.path());
    const Case cases[] = {
        {EbookLanguage::English, false, "index.html", "Index-english.hhp"},
        {EbookLanguage::ChineseTraditional, false, "index.html", "Index-traditional.hhp"},
        {EbookLanguage::ChineseSimplified, true, "start.html", "Index-simplified-source-links.hhp"},
    };
    for (const Case& c : cases) {
        RecordingHost host;
        EbookContext build(host);
        build.folder = book.path();
        build.catalogue.items = {Item(kPlacedItem, true), Item(kHiddenItem, false),
                                 Item(kFolderlessItem, true)};
        build.options.language = c.language;
        build.options.linkToSourceURL = c.linkToSourceURL;
        build.options.homePageFilename = QString::fromLatin1(c.startPage);
        const QString path = book.path() + QStringLiteral("Index.hhp");
        QString error;
        ASSERT_TRUE(hhp(build, path, files, &error)) << error.toStdString();

        const QList<QByteArray> written = ReadBytes(path).split('\n');
        const QList<QByteArray> expected = Golden(c.golden).split('\n');
        for (qsizetype i = 0; i < std::max(written.size(), expected.size()); ++i)
            EXPECT_EQ(written.value(i).toStdString(), expected.value(i).toStdString())
                << c.golden << " line " << i + 1;
        EXPECT_EQ(build.outputPath, ApplicationFolder() + QStringLiteral("chm/Index.chm"));
    }
}

TEST(ProjectFile, GathersFilesByNameThenSubFoldersAndStaysInside) {
    TempFolder outside;
    outside.write(QStringLiteral("secret.txt"), "s");
    TempFolder book;
    for (const char* name : {"b.txt", "a.txt", "B.txt", "sub/z.txt", "sub/deeper/y.txt",
                             "other/x.txt", ".hidden/h.txt"})
        book.write(QString::fromLatin1(name), "x");
    const QString root = book.path();
    QFile::link(outside.path() + QStringLiteral("secret.txt"), root + QStringLiteral("leak.txt"));
    QFile::link(outside.path(), root + QStringLiteral("leakdir"));
    QFile::link(root + QStringLiteral("sub/z.txt"), root + QStringLiteral("alias.txt"));
    QFile::link(root, root + QStringLiteral("sub/loop"));
    QFile::link(root + QStringLiteral("missing"), root + QStringLiteral("broken.txt"));

    const QStringList expected = {root + "B.txt",         root + "a.txt",
                                  root + "alias.txt",     root + "b.txt",
                                  root + ".hidden/h.txt", root + "other/x.txt",
                                  root + "sub/z.txt",     root + "sub/deeper/y.txt"};
    EXPECT_EQ(GatherScrapbookFiles(root), expected);
    EXPECT_EQ(GatherScrapbookFiles(root.chopped(1)), expected);
    EXPECT_TRUE(GatherScrapbookFiles(root + QStringLiteral("missing/")).isEmpty());
}

// The lines of the [Files] section for the given items and paths, joined by blanks.
std::string ListedFiles(const QList<CatalogueItem>& items, const QStringList& relativePaths) {
    TempFolder book;
    RecordingHost host;
    EbookContext build(host);
    build.folder = book.path();
    build.catalogue.items = items;
    QStringList files;
    for (const QString& relative : relativePaths)
        files.append(book.path() + relative);
    const QString path = book.path() + QStringLiteral("Index.hhp");
    if (!hhp(build, path, files)) return "not written";
    const QByteArray text = ReadBytes(path);
    const qsizetype from = text.indexOf("[Files]\r\n") + 9;
    return text.mid(from, text.indexOf("[ALIAS]") - from)
        .replace("\r\n", " ")
        .trimmed()
        .toStdString();
}

TEST(ProjectFile, TheFirstItemWhoseIdOccursInThePathDecides) {
    const QStringList paths = {QStringLiteral("data/20080101000002/a.css"),
                               QStringLiteral("data/20080101000009/a.css")};
    const std::string both = "data/20080101000002/a.css data/20080101000009/a.css";
    // A shorter identifier earlier in the catalogue is found before the folder's own item.
    const CatalogueItem shortPlaced = Item(QStringLiteral("000002"), true);
    EXPECT_EQ(ListedFiles({shortPlaced, Item(kHiddenItem, false)}, paths), both);
    EXPECT_EQ(ListedFiles({Item(kHiddenItem, false), shortPlaced}, paths),
              "data/20080101000009/a.css");
    EXPECT_EQ(ListedFiles({Item(QStringLiteral("zz"), true), Item(kHiddenItem, false), shortPlaced},
                          paths),
              "data/20080101000009/a.css");
    // An empty identifier occurs in every path.
    EXPECT_EQ(ListedFiles({Item(QString(), false), Item(kHiddenItem, true)}, paths), "");
    EXPECT_EQ(ListedFiles({Item(QString(), true), Item(kHiddenItem, false)}, paths), both);
    EXPECT_EQ(ListedFiles({Item(kHiddenItem, true), Item(QString(), false)}, paths),
              "data/20080101000002/a.css");
    // Extensions are compared by their last three characters only.
    EXPECT_EQ(
        ListedFiles({}, {QStringLiteral("a.db"), QStringLiteral("a.DAT"), QStringLiteral("a.ico"),
                         QStringLiteral("xhhp"), QStringLiteral("a.chm"), QStringLiteral("a.htm")}),
        "a.db a.htm");
}

TEST(ProjectFile, MatchesAmongTwentyThousandItems) {
    QList<CatalogueItem> items;
    for (int i = 0; i < 20000; ++i)
        items.append(Item(QStringLiteral("2008%1").arg(i, 10, 10, QLatin1Char('0')), i != 19999));
    QStringList paths;
    for (int i = 0; i < 5000; ++i)
        paths.append(
            QStringLiteral("data/2008%1/page.html").arg(i * 4 + 3, 10, 10, QLatin1Char('0')));
    const std::string listed = ListedFiles(items, paths);
    // Every folder but the last item's, which is not placed.
    EXPECT_EQ(listed, paths.mid(0, 4999).join(QLatin1Char(' ')).toStdString());
}

TEST(ProjectFile, EmptyFolderWritesNothingAndUnwritablePathFails) {
    TempFolder book;
    RecordingHost host;
    EbookContext build(host);
    build.folder = QStringLiteral("  ");
    const QString path = book.path() + QStringLiteral("Index.hhp");
    EXPECT_TRUE(hhp(build, path, {}));
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_TRUE(build.outputPath.isEmpty());

    build.folder = book.path();
    const QString blocker = book.write(QStringLiteral("file"), "x");
    QString error;
    EXPECT_FALSE(hhp(build, blocker + QStringLiteral("/Index.hhp"), {}, &error));
    EXPECT_FALSE(error.isEmpty());
}

} // namespace
} // namespace qmr
