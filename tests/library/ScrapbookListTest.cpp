#include "library/ScrapbookList.h"

#include "catalogue/TextFiles.h"
#include "library/ScrapbookFixtures.h"
#include "library/ScrapbookStore.h"
#include "support/RecordingHost.h"
#include "support/TempFolder.h"

#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::MakeScrapbook;
using test::ReadBytes;
using test::RecordingHost;
using test::TempFolder;

// The rows as "name|count|directory", in list order.
QStringList rowTexts(const ScrapbookList& list, const QString& root) {
    QStringList texts;
    for (const ScrapbookRow& row : list.rows())
        texts.append(
            QStringList{row.name, row.pageCount,
                        QString(row.directory).replace(root.toLower(), QStringLiteral("@/"))}
                .join(QLatin1Char('|')));
    return texts;
}

TEST(ScrapbookList, PageCountIsFourDigits) {
    EXPECT_EQ(FourDigitCount(0), QStringLiteral("0000"));
    EXPECT_EQ(FourDigitCount(37), QStringLiteral("0037"));
    EXPECT_EQ(FourDigitCount(10000), QStringLiteral("0000"));
    EXPECT_EQ(FourDigitCount(12345), QStringLiteral("2345"));

    TempFolder root;
    EXPECT_EQ(PageCountText(MakeScrapbook(root, QStringLiteral("none"), 0)),
              QStringLiteral("0000"));
    EXPECT_EQ(PageCountText(MakeScrapbook(root, QStringLiteral("some"), 37)),
              QStringLiteral("0037"));
    // Hidden folders count too; files do not.
    QDir().mkpath(root.path() + QStringLiteral("some/data/.hidden"));
    root.write(QStringLiteral("some/data/file.txt"), "x");
    EXPECT_EQ(PageCountText(root.path() + QStringLiteral("some/")), QStringLiteral("0038"));
}

// Rows need a catalogue, take the trimmed name, the four-digit count and the lower-cased
// folder, and stay in name order ignoring case.
TEST(ScrapbookList, RowsForFoldersWithACatalogue) {
    TempFolder root;
    RecordingHost host;
    AppSettings settings(host);
    ScrapbookList list(settings);
    const QString zoo = MakeScrapbook(root, QStringLiteral("Zoo"), 3);
    const QString apple = MakeScrapbook(root, QStringLiteral("Apple"), 12);
    root.write(QStringLiteral("Upper/ScrapBook.RDF"), "");
    QDir().mkpath(root.path() + QStringLiteral("Empty"));

    EXPECT_EQ(list.AddtoListView(QStringLiteral("  zoo "), zoo), QStringLiteral("0003"));
    EXPECT_EQ(list.AddtoListView(QStringLiteral("Apple"), RemoveBackslash(apple)),
              QStringLiteral("0012"));
    EXPECT_EQ(list.AddtoListView(QStringLiteral("Big"),
                                 QStringLiteral(" ") + root.path() + QStringLiteral("Upper")),
              QStringLiteral("0000"));
    EXPECT_EQ(list.AddtoListView(QStringLiteral("None"), root.path() + QStringLiteral("Empty")),
              QStringLiteral("0000"));
    EXPECT_EQ(rowTexts(list, root.path()),
              (QStringList{"Apple|0012|@/apple/", "Big|0000|@/upper/", "zoo|0003|@/zoo/"}));
    EXPECT_EQ(list.row(3).folder, zoo);
    EXPECT_EQ(list.row(1).folder, apple);
    EXPECT_EQ(list.statusCount, QStringLiteral("Not scanned"));
    EXPECT_EQ(list.StatusShowScrapbookCount(), QStringLiteral(" 3 Scrapbooks "));
}

// A folder listed already adds no row but overwrites the count and folder of the LAST row in
// name order, whichever scrapbook that is; a row whose folder was overwritten keeps its key,
// and a later add of that key is refused.
TEST(ScrapbookList, ARepeatedFolderOverwritesTheLastRow) {
    TempFolder root;
    RecordingHost host;
    AppSettings settings(host);
    ScrapbookList list(settings);
    const QString books = MakeScrapbook(root, QStringLiteral("Books"), 5);
    const QString lower = MakeScrapbook(root, QStringLiteral("books"), 2);
    const QString zoo = MakeScrapbook(root, QStringLiteral("zoo"), 9);
    list.AddtoListView(QStringLiteral("Books"), books);
    list.AddtoListView(QStringLiteral("Zoo"), zoo);
    EXPECT_TRUE(list.IsalreadyIn(root.path() + QStringLiteral("BOOKS/")));

    EXPECT_EQ(list.AddtoListView(QStringLiteral("Other"), lower), QStringLiteral("0002"));
    EXPECT_EQ(rowTexts(list, root.path()),
              (QStringList{"Books|0005|@/books/", "Zoo|0002|@/books/"}));
    EXPECT_EQ(list.row(2).folder, lower);
    EXPECT_FALSE(list.IsalreadyIn(zoo));

    list.AddtoListView(QStringLiteral("Zoo again"), zoo);
    EXPECT_EQ(rowTexts(list, root.path()),
              (QStringList{"Books|0005|@/books/", "Zoo|0002|@/books/"}));
}

// Entries are split at the first "*"; the name shown comes from the scrapbook's settings,
// read through the shared settings object, whose Default carries over.
TEST(ScrapbookList, EntriesTakeTheNameInTheScrapbooksSettings) {
    TempFolder root;
    RecordingHost host;
    AppSettings settings(host);
    ScrapbookList list(settings);
    const QString named = MakeScrapbook(root, QStringLiteral("named"), 1, " \xA5\x78\xC6\x57 ");
    const QString unnamed = MakeScrapbook(root, QStringLiteral("unnamed"), 1);
    list.dotAdd2listView(QStringLiteral("Store name * ") + RemoveBackslash(named) +
                         QStringLiteral("  "));
    list.dotAdd2listView(QStringLiteral("Unnamed*") + unnamed);
    list.dotAdd2listView(QStringLiteral("no star ") + unnamed);
    list.dotAdd2listView(QStringLiteral("Empty*  "));
    EXPECT_EQ(rowTexts(list, root.path()), (QStringList{"|0001|@/unnamed/", "台灣|0001|@/named/"}));

    // After a property page load the carried-over Default is "index.html".
    settings.load_ScrapbookName(ScrapbookIniPath(named));
    list.clear();
    list.dotAdd2listView(QStringLiteral("Unnamed*") + unnamed);
    EXPECT_EQ(rowTexts(list, root.path()), QStringList{"index.html|0001|@/unnamed/"});
    EXPECT_TRUE(host.messages.isEmpty());
}

TEST(ScrapbookList, SelectingRows) {
    TempFolder root;
    RecordingHost host;
    AppSettings settings(host);
    ScrapbookList list(settings);
    const QString alpha = MakeScrapbook(root, QStringLiteral("Alpha"), 1, "Alpha");
    const QString beta = MakeScrapbook(root, QStringLiteral("Beta"), 2, "Beta");
    root.write(QStringLiteral("Beta/ScrapbookPrj.ini"),
               "[Scrapbook]\r\nScrapbookName=Beta\r\n[Content]\r\nMakeChmFile=0\r\n");
    list.dotAdd2listView(QStringLiteral("a*") + alpha);
    list.dotAdd2listView(QStringLiteral("b*") + beta);

    EXPECT_EQ(list.ListSelectByKeyword(root.path().toUpper() + QStringLiteral("BETA/")), 2);
    EXPECT_EQ(list.selectedRow(), 2);
    EXPECT_EQ(list.currentFolder, beta);
    EXPECT_EQ(list.ListSelectByKeyword(root.path() + QStringLiteral("Gamma/")), 0);
    EXPECT_EQ(list.selectedRow(), 2);
    list.SnapSelectItem(0);
    EXPECT_EQ(list.selectedRow(), 2);

    const ScrapbookProperties properties = list.SelectRow(2);
    EXPECT_FALSE(properties.makeChmFile);
    EXPECT_EQ(list.caption, QStringLiteral("Beta"));
    EXPECT_EQ(list.statusFolder, beta);
    EXPECT_EQ(settings.ScrapbookName, QStringLiteral("Beta"));

    // Deleting touches the list only.
    list.DeleteSelectedRow();
    EXPECT_EQ(rowTexts(list, root.path()), QStringList{"Alpha|0001|@/alpha/"});
    EXPECT_EQ(list.statusCount, QStringLiteral(" 1 Scrapbooks "));
    EXPECT_TRUE(QFileInfo::exists(beta + QStringLiteral("scrapbook.rdf")));
}

TEST(ScrapbookList, CommandLineFolder) {
    EXPECT_EQ(CommandLineFolder(QStringLiteral("File=/books/Cats/scrapbook.rdf")),
              QStringLiteral("/books/Cats/"));
    EXPECT_EQ(CommandLineFolder(QStringLiteral("file=/my books/Cats/SCRAPBOOK.Rdf")),
              QStringLiteral("/my books/Cats/"));
    EXPECT_EQ(CommandLineFolder(QStringLiteral("File=scrapbook.rdf")), QString());
    EXPECT_EQ(CommandLineFolder(QStringLiteral("File=/books/Cats/scrapbook.txt")), QString());
    EXPECT_EQ(CommandLineFolder(QStringLiteral("/books/Cats/scrapbook.rdf")), QString());
    EXPECT_EQ(CommandLineFolder(QString()), QString());
}

// Without multibook.txt the extension's own scrapbook is listed under its fixed name; store
// lines follow; a line without "*" is skipped and reported; row 1 becomes current.
TEST(ScrapbookListLoad, FirefoxScrapbookThenTheStore) {
    TempFolder root;
    const LibraryFolders folders{root.path() + QStringLiteral("app/"),
                                 MakeScrapbook(root, QStringLiteral("ScrapBook"), 4, "Mine")};
    const QString cats = MakeScrapbook(root, QStringLiteral("Cats"), 2, "Cats");
    const QString dogs = MakeScrapbook(root, QStringLiteral("Dogs"), 1, "Dogs");
    root.write(QStringLiteral("app/ScrapBookStore.txt"),
               ("Dogs*" + dogs + "\r\nbroken\r\n\r\nCats*" + cats + "\r\n").toUtf8());
    RecordingHost host;
    AppSettings settings(host);
    ScrapbookList list(settings);
    const ListLoadReport report = LoadAllScrapbooksIntoList(list, folders, host);

    EXPECT_EQ(rowTexts(list, root.path()),
              (QStringList{"(00)FireFox Default Scrapbook|0004|@/scrapbook/", "Cats|0002|@/cats/",
                           "Dogs|0001|@/dogs/"}));
    EXPECT_EQ(list.rawEntries,
              (QStringList{"(00)FireFox Default Scrapbook*" + folders.scrapbookSystemFolder,
                           "Dogs*" + dogs, "broken", "", "Cats*" + cats}));
    ASSERT_EQ(report.skippedStoreLines.size(), 1);
    EXPECT_EQ(report.skippedStoreLines.first().line, 2);
    EXPECT_TRUE(report.skippedStoreLines.first().text().endsWith(
        QStringLiteral("\"broken\" has no \"*\" between the scrapbook's name and its folder, so "
                       "the list leaves it out. Write the line as name*folder, for example "
                       "Recipes*/home/me/Books/Recipes/")));
    EXPECT_EQ(list.selectedRow(), 1);
    EXPECT_EQ(list.currentFolder, folders.scrapbookSystemFolder);
    EXPECT_EQ(list.caption, QStringLiteral("(00)FireFox Default Scrapbook"));
    EXPECT_EQ(list.statusCount, QStringLiteral(" 3 Scrapbooks "));
}

// With multibook.txt the Firefox row is gone; its TAB lines add nothing (the loader splits
// at "*" only), a "*" line adds its scrapbook, and the working copies are removed.
TEST(ScrapbookListLoad, MultibookEntriesReplaceTheFirefoxRow) {
    TempFolder root;
    const LibraryFolders folders{root.path() + QStringLiteral("app/"),
                                 MakeScrapbook(root, QStringLiteral("ScrapBook"), 4)};
    const QString cats = MakeScrapbook(root, QStringLiteral("Cats"), 2, "Cats");
    const QString dogs = MakeScrapbook(root, QStringLiteral("Dogs"), 1, "\xAA\xAF");
    root.write(QStringLiteral("ScrapBook/multibook.txt"),
               ("\xEF\xBB\xBF"
                "Cats\t" +
                cats + "\r\n\xE7\x8B\x97*" + dogs + "\r\n")
                   .toUtf8());
    root.write(QStringLiteral("app/multibook.txt"), "left over");
    RecordingHost host;
    AppSettings settings(host);
    ScrapbookList list(settings);
    const ListLoadReport report = LoadAllScrapbooksIntoList(list, folders, host);

    EXPECT_EQ(rowTexts(list, root.path()), QStringList{"狗|0001|@/dogs/"});
    EXPECT_TRUE(report.skippedStoreLines.isEmpty());
    EXPECT_TRUE(list.rawEntries.contains("狗*" + dogs));
    EXPECT_EQ(QDir(folders.applicationFolder).entryList(QDir::Files), QStringList());
}

// A command-line folder not yet known is added to the list and once to the store; it is
// selected, but row 1 stays current until the user selects a row.
TEST(ScrapbookListLoad, CommandLineFolderJoinsTheStoreOnce) {
    TempFolder root;
    const LibraryFolders folders{root.path() + QStringLiteral("app/"),
                                 root.path() + QStringLiteral("ScrapBook/")};
    const QString alpha = MakeScrapbook(root, QStringLiteral("Alpha"), 1, "Alpha");
    const QString zulu = MakeScrapbook(root, QStringLiteral("Books/Zulu"), 3, "Zulu");
    const QString store =
        root.write(QStringLiteral("app/ScrapBookStore.txt"), ("Alpha*" + alpha + "\r\n").toUtf8());
    RecordingHost host;
    AppSettings settings(host);
    ScrapbookList list(settings);
    for (int run = 0; run < 2; ++run) {
        const ListLoadReport report = LoadAllScrapbooksIntoList(list, folders, host, zulu);
        EXPECT_EQ(rowTexts(list, root.path()),
                  (QStringList{"Alpha|0001|@/alpha/", "Zulu|0003|@/books/zulu/"}));
        EXPECT_EQ(list.selectedRow(), 2);
        EXPECT_EQ(list.statusFolder, zulu);
        EXPECT_EQ(list.currentFolder, alpha);
        EXPECT_EQ(list.caption, QStringLiteral("Alpha"));
        EXPECT_EQ(report.storeProblem, QString());
    }
    EXPECT_EQ(ReadBytes(store), ("Alpha*" + alpha + "\r\nZulu*" + zulu + "\r\n").toUtf8());

    // Without a store file the folder is listed all the same, and the report says why it was
    // not kept.
    QFile::remove(store);
    const ListLoadReport report = LoadAllScrapbooksIntoList(list, folders, host, zulu);
    EXPECT_EQ(rowTexts(list, root.path()), QStringList{"Zulu|0003|@/books/zulu/"});
    EXPECT_TRUE(report.storeProblem.startsWith(store + QStringLiteral(" does not exist")));
    EXPECT_FALSE(QFileInfo::exists(store));
}

} // namespace
} // namespace qmr
