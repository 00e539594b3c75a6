#include "library/ScrapbookFixtures.h"
#include "support/TempFolder.h"

#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::Golden;
using test::MakeScrapbook;
using test::ReadBytes;
using test::RunResult;
using test::TempFolder;

const char kBig5Taiwan[] = "\xA5\x78\xC6\x57";

// A machine of its own: HOME with a Firefox profile tree and an application folder, so that
// nothing reaches the profile of whoever runs the tests.
struct FakeMachine {
    TempFolder root;
    QByteArray rootBytes = root.path().toUtf8();
    QString home = root.path() + QStringLiteral("home/");
    QString app = root.path() + QStringLiteral("app/");
    QString firefox = home + QStringLiteral(".mozilla/firefox/");

    // Two profiles; the second is the default.
    QString addFirefoxProfiles() {
        root.write(QStringLiteral("home/.mozilla/firefox/profiles.ini"),
                   "[General]\nStartWithLastProfile=1\n\n[Profile0]\nName=default\nIsRelative=1\n"
                   "Path=Profiles/first.default\n\n[Profile1]\nName=work\nIsRelative=1\n"
                   "Path=Profiles/Work.Default\nDefault=1\n");
        MakeScrapbook(root,
                      QStringLiteral("home/.mozilla/firefox/Profiles/first.default/ScrapBook"), 5);
        return firefox + QStringLiteral("Profiles/Work.Default/ScrapBook/");
    }

    RunResult run(const QStringList& arguments) const {
        return test::RunQuillmereProgram(
            arguments, {QStringLiteral("HOME=") + home, QStringLiteral("QUILLMERE_HOME=") + app});
    }
};

// The list as the window shows it after start-up: Firefox's own scrapbook under its fixed
// name, the store's scrapbooks under the names in their settings (none, in a fresh run, for a
// scrapbook without one); a repeated folder overwrites the last row; a line without "*" is
// skipped, told on stderr, and makes the exit code 2.
TEST(ListCommand, ShowsTheListAsAfterStartUp) {
    FakeMachine m;
    MakeScrapbook(m.root, m.addFirefoxProfiles().mid(m.root.path().size()), 3, "Mine");
    MakeScrapbook(m.root, QStringLiteral("books/Recipes"), 37, "Recipes");
    MakeScrapbook(m.root, QStringLiteral("books/Taiwan"), 12,
                  QByteArray(kBig5Taiwan) + "\xAC\xDB\xC3\xAF");
    MakeScrapbook(m.root, QStringLiteral("books/Garden"), 0);
    MakeScrapbook(m.root, QStringLiteral("books/recipes"), 2, "Other");
    const QByteArray store = "Recipes*" + m.rootBytes + "books/Recipes/\r\n" + kBig5Taiwan + "*" +
                             m.rootBytes + "books/Taiwan\r\nGarden*" + m.rootBytes +
                             "books/Garden\r\na line without a star\r\n\r\nGone*" + m.rootBytes +
                             "books/Gone/\r\nRecipes again*" + m.rootBytes + "books/recipes/\r\n";
    m.root.write(QStringLiteral("app/ScrapBookStore.txt"), store);

    const RunResult run = m.run({QStringLiteral("list")});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.out.toUtf8(), Golden(QStringLiteral("library/quillmere-list.txt"), "@root@",
                                       m.root.path().toLower().toUtf8()));
    EXPECT_EQ(run.err, QStringLiteral("quillmere: %1ScrapBookStore.txt: line 4: \"a line without "
                                      "a star\" has no \"*\" between the scrapbook's name and "
                                      "its folder, so the list leaves it out. Write the line as "
                                      "name*folder, for example Recipes*/home/me/Books/Recipes/\n")
                           .arg(m.app));
    EXPECT_EQ(ReadBytes(m.app + QStringLiteral("ScrapBookStore.txt")), store);
    EXPECT_EQ(QDir(m.app).entryList(QDir::Files), QStringList{"ScrapBookStore.txt"});
}

// File=<catalogue>, as the desktop passes it unquoted, selects that scrapbook and adds it to
// the store once; without a store file it is listed but not kept, and stderr says so.
TEST(ListCommand, TheCommandLineCatalogueJoinsTheStoreOnce) {
    FakeMachine m;
    MakeScrapbook(m.root, QStringLiteral("books/New Book"), 1, "New");
    const QStringList arguments{QStringLiteral("list"),
                                QStringLiteral("File=") + m.root.path() +
                                    QStringLiteral("books/New"),
                                QStringLiteral("Book/scrapbook.rdf")};
    RunResult run = m.run(arguments);
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out, QStringLiteral("New\t0001\t%1books/new book/\n 1 Scrapbooks \n")
                           .arg(m.root.path().toLower()));
    EXPECT_TRUE(run.err.contains(QStringLiteral("ScrapBookStore.txt does not exist")));
    EXPECT_FALSE(QFileInfo::exists(m.app + QStringLiteral("ScrapBookStore.txt")));

    const QString store = m.root.write(QStringLiteral("app/ScrapBookStore.txt"), "");
    for (int i = 0; i < 2; ++i) {
        run = m.run(arguments);
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_EQ(run.err, QString());
    }
    EXPECT_EQ(ReadBytes(store), "New Book*" + m.rootBytes + "books/New Book/\r\n");

    run = m.run({QStringLiteral("list"), QStringLiteral("File=notes.txt")});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.contains(QStringLiteral("File=notes.txt is not File= followed by")));
    run = m.run({QStringLiteral("list"),
                 QStringLiteral("File=") + m.root.path() + QStringLiteral("books/scrapbook.rdf")});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.contains(QStringLiteral("books/ holds no scrapbook.rdf")));
    EXPECT_EQ(ReadBytes(store), "New Book*" + m.rootBytes + "books/New Book/\r\n");
}

// The three real collections, read in place: counted, never written to.
TEST(ListCommand, RealCollections) {
    const QString wild = QDir(QStringLiteral(QMR_WILD_DIR)).absolutePath() + QLatin1Char('/');
    if (!QFileInfo::exists(wild + QStringLiteral("scim-shield/scrapbook.rdf")))
        GTEST_SKIP() << "no shared collections here";
    FakeMachine m;
    QByteArray store;
    for (const char* name : {"scim-shield", "airbase-ru", "azuwis-scrap"})
        store += QByteArray(name) + "*" + wild.toUtf8() + name + "\r\n";
    m.root.write(QStringLiteral("app/ScrapBookStore.txt"), store);
    const RunResult run = m.run({QStringLiteral("list")});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    // No names in a fresh run: the rows keep the order they were added in.
    const QString w = wild.toLower();
    EXPECT_EQ(run.out, QStringLiteral("\t0002\t%1scim-shield/\n\t0010\t%1airbase-ru/\n"
                                      "\t0067\t%1azuwis-scrap/\n 3 Scrapbooks \n")
                           .arg(w));
    EXPECT_FALSE(QFileInfo::exists(wild + QStringLiteral("scim-shield/ScrapbookPrj.ini")));
}

TEST(StoreCommand, AddsOnceAndRefusesBadInput) {
    FakeMachine m;
    const QString cats = MakeScrapbook(m.root, QStringLiteral("Cats"), 1);
    const QString store = m.app + QStringLiteral("ScrapBookStore.txt");
    RunResult run = m.run({QStringLiteral("store"), QStringLiteral("add"), QStringLiteral("Cats"),
                           m.root.path() + QStringLiteral("Cats")});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out, QStringLiteral("Created %1\nAdded Cats*%2 to %1\n").arg(store, cats));
    run = m.run({QStringLiteral("store"), QStringLiteral("add"), QStringLiteral("Again"), cats});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, QStringLiteral("%1 already lists %2\n").arg(store, cats));
    EXPECT_EQ(ReadBytes(store), "Cats*" + cats.toUtf8() + "\r\n");

    QDir().mkpath(m.root.path() + QStringLiteral("Empty"));
    run = m.run({QStringLiteral("store"), QStringLiteral("add"), QStringLiteral("E"),
                 m.root.path() + QStringLiteral("Empty")});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.contains(QStringLiteral("Empty/ holds no scrapbook.rdf")));
    run = m.run({QStringLiteral("store"), QStringLiteral("add"), QStringLiteral("a*b"), cats});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.contains(QStringLiteral("\"a*b\" cannot be a store name")));
    run = m.run({QStringLiteral("store"), QStringLiteral("remove"), QStringLiteral("x"), cats});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(ReadBytes(store), "Cats*" + cats.toUtf8() + "\r\n");
}

TEST(MultibookCommand, AddWritesTheExtensionsList) {
    FakeMachine m;
    const QString system = m.addFirefoxProfiles();
    QDir().mkpath(system);
    const QString alpha = MakeScrapbook(m.root, QStringLiteral("Alpha"), 1, "Alpha");
    const QString cats = MakeScrapbook(m.root, QStringLiteral("Cats"), 1, kBig5Taiwan);
    m.root.write(QStringLiteral("app/ScrapBookStore.txt"), "Alpha*" + alpha.toUtf8() + "\r\n");

    RunResult run = m.run({QStringLiteral("multibook"), QStringLiteral("add"), cats});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out, QStringLiteral("Alpha\t%1\n台灣\t%2\n").arg(alpha, cats));
    EXPECT_EQ(ReadBytes(system + QStringLiteral("multibook.txt")),
              "\xEF\xBB\xBF"
              "Alpha\t" +
                  alpha.toUtf8() + "\r\n\xE5\x8F\xB0\xE7\x81\xA3\t" + cats.toUtf8() + "\r\n");
    EXPECT_EQ(ReadBytes(m.app + QStringLiteral("ScrapBookStore.txt")),
              "Alpha*" + alpha.toUtf8() + "\r\nCats*" + m.rootBytes + "Cats\r\n");

    // With no ScrapBook folder the store still takes the scrapbook; the command fails.
    QDir(system).removeRecursively();
    const QString dogs = MakeScrapbook(m.root, QStringLiteral("Dogs"), 1, "Dogs");
    run = m.run({QStringLiteral("multibook"), QStringLiteral("add"), dogs});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral("there is no ScrapBook folder at ") + system));
    EXPECT_TRUE(ReadBytes(m.app + QStringLiteral("ScrapBookStore.txt"))
                    .endsWith("Dogs*" + m.rootBytes + "Dogs\r\n"));
}

TEST(MultibookCommand, ScanWritesTheBaseFoldersList) {
    FakeMachine m;
    const QString system = m.addFirefoxProfiles();
    QDir().mkpath(system);
    MakeScrapbook(m.root, QStringLiteral("base/Alpha"), 1);
    RunResult run = m.run({QStringLiteral("multibook"), QStringLiteral("scan"),
                           m.root.path() + QStringLiteral("base")});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out, QStringLiteral("multibook.txt has been created ok!\n"));
    const QByteArray expected = "\xEF\xBB\xBF"
                                "Alpha\t" +
                                m.rootBytes + "base/Alpha\r\ndefault\t" + system.toUtf8() + "\r\n";
    EXPECT_EQ(ReadBytes(m.root.path() + QStringLiteral("base/multibook.txt")), expected);
    EXPECT_EQ(ReadBytes(system + QStringLiteral("multibook.txt")), expected);

    m.root.write(QStringLiteral("app/ScrapBookStore.txt"), "Alpha /books/alpha\r\n");
    run = m.run({QStringLiteral("multibook"), QStringLiteral("scan"),
                 m.root.path() + QStringLiteral("base")});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.contains(QStringLiteral("ScrapBookStore.txt: line 1: \"Alpha "
                                                "/books/alpha\" has no \"*\"")));
    EXPECT_EQ(run.out, QString());
}

// The new scrapbook is registered as the list's rules have it: the second entry for the same
// folder overwrites the last row in name order (here Firefox's own), so multibook.txt pairs
// that row's name with the new folder. A missing ScrapBook folder leaves the new scrapbook
// and its store line, and is told on stderr.
TEST(ConvertFolderCommand, ConvertsAndRegisters) {
    FakeMachine m;
    const QString system = m.addFirefoxProfiles();
    MakeScrapbook(m.root, system.mid(m.root.path().size()), 2);
    const QString store = m.root.write(QStringLiteral("app/ScrapBookStore.txt"), "");
    m.root.write(QStringLiteral("Photos/a b.txt"), "hello");
    m.root.write(QStringLiteral("Photos/c.jpg"), "jpeg");

    RunResult run =
        m.run({QStringLiteral("convert-folder"), m.root.path() + QStringLiteral("Photos")});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.err, QString());
    const QString scrapbook = m.root.path() + QStringLiteral("Photos/scrapbook/");
    EXPECT_TRUE(run.out.endsWith(QStringLiteral("Converted 2 files into %1\n").arg(scrapbook)));
    EXPECT_TRUE(QFileInfo(scrapbook + QStringLiteral("scrapbook.rdf")).isFile());
    EXPECT_EQ(ReadBytes(store), "Photos*" + m.rootBytes + "Photos/scrapbook\r\n");
    EXPECT_EQ(ReadBytes(system + QStringLiteral("multibook.txt")),
              "\xEF\xBB\xBF(00)FireFox Default Scrapbook\t" + scrapbook.toUtf8() + "\r\n");

    QDir(system).removeRecursively();
    m.root.write(QStringLiteral("Notes/n.txt"), "n");
    run = m.run({QStringLiteral("convert-folder"), m.root.path() + QStringLiteral("Notes")});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.err.contains(
        QStringLiteral("quillmere: the scrapbook was made, but there is no ScrapBook folder at ")));
    EXPECT_TRUE(
        QFileInfo(m.root.path() + QStringLiteral("Notes/scrapbook/scrapbook.rdf")).isFile());
    EXPECT_TRUE(ReadBytes(store).endsWith("Notes*" + m.rootBytes + "Notes/scrapbook\r\n"));

    run = m.run({QStringLiteral("convert-folder"), m.root.path() + QStringLiteral("Nowhere")});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.contains(QStringLiteral("Nowhere: no such folder")));
}

TEST(ImportTextCommand, ImportsDataTxt) {
    FakeMachine m;
    m.root.write(QStringLiteral("Text/data.txt"),
                 "first body\r\n*****\r\nSecond\r\nmore\r\n*****\r\nleft out\r\n");
    const QString base = m.root.path() + QStringLiteral("Text/");
    RunResult run = m.run({QStringLiteral("import-text"), base});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.endsWith(
        QStringLiteral("Imported 2 pages into %1; scrapbook.rdf lists 1\n").arg(base)));
    EXPECT_TRUE(QFileInfo(base + QStringLiteral("scrapbook.rdf")).isFile());

    run = m.run({QStringLiteral("import-text"), m.root.path()});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.contains(m.root.path() + QStringLiteral("data.txt: no such file")));
}

} // namespace
} // namespace qmr
