#include "support/Golden.h"
#include "support/Programs.h"
#include "support/TempFolder.h"

#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

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
    QString home = root.path() + u"home/"_s;
    QString app = root.path() + u"app/"_s;

    // Two profiles, each with a scrapbook; the second is the default.
    QString addFirefoxProfiles() {
        root.write(u"home/.mozilla/firefox/profiles.ini"_s,
                   "[Profile0]\nPath=Profiles/first.default\n\n[Profile1]\nIsRelative=1\n"
                   "Path=Profiles/Work.Default\nDefault=1\n");
        MakeScrapbook(root, u"home/.mozilla/firefox/Profiles/first.default/ScrapBook"_s, 5);
        return home + u".mozilla/firefox/Profiles/Work.Default/ScrapBook/"_s;
    }

    RunResult run(const QStringList& arguments) const {
        return test::RunQuillmereProgram(arguments,
                                         {u"HOME="_s + home, u"QUILLMERE_HOME="_s + app});
    }
};

// The list as the window shows it after start-up; a store line without "*" is skipped, told
// on stderr with its line, and makes the exit code 2. Nothing is written.
TEST(ListCommand, ShowsTheListAsAfterStartUp) {
    FakeMachine m;
    MakeScrapbook(m.root, m.addFirefoxProfiles().mid(m.root.path().size()), 3, "Mine");
    MakeScrapbook(m.root, u"books/Recipes"_s, 37, "Recipes");
    MakeScrapbook(m.root, u"books/Taiwan"_s, 12, QByteArray(kBig5Taiwan) + "\xAC\xDB\xC3\xAF");
    MakeScrapbook(m.root, u"books/Garden"_s, 0);
    MakeScrapbook(m.root, u"books/recipes"_s, 2, "Other");
    const QByteArray store = "Recipes*" + m.rootBytes + "books/Recipes/\r\n" + kBig5Taiwan + "*" +
                             m.rootBytes + "books/Taiwan\r\nGarden*" + m.rootBytes +
                             "books/Garden\r\na line without a star\r\n\r\nGone*" + m.rootBytes +
                             "books/Gone/\r\nRecipes again*" + m.rootBytes + "books/recipes/\r\n";
    m.root.write(u"app/ScrapBookStore.txt"_s, store);

    const RunResult run = m.run({u"list"_s});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.out.toUtf8(),
              Golden(u"library/quillmere-list.txt"_s, "@root@", m.root.path().toLower().toUtf8()));
    EXPECT_TRUE(run.err.startsWith(u"quillmere: %1ScrapBookStore.txt: line 4: "_s.arg(m.app)));
    EXPECT_EQ(ReadBytes(m.app + u"ScrapBookStore.txt"_s), store);
    EXPECT_EQ(QDir(m.app).entryList(QDir::Files), QStringList{"ScrapBookStore.txt"});
}

// `store add` makes the store and adds each folder once. File=<catalogue>, as the desktop
// passes it unquoted, lists that scrapbook and adds it to the store; without a store file it
// is listed but not kept, and stderr says so.
TEST(StoreAndListCommands, TheStoreTakesEachFolderOnce) {
    FakeMachine m;
    MakeScrapbook(m.root, u"books/New Book"_s, 1, "New");
    const QStringList list{u"list"_s, u"File="_s + m.root.path() + u"books/New"_s,
                           u"Book/scrapbook.rdf"_s};
    RunResult run = m.run(list);
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out,
              u"New\t0001\t%1books/new book/\n 1 Scrapbooks \n"_s.arg(m.root.path().toLower()));
    EXPECT_TRUE(run.err.contains(u"ScrapBookStore.txt does not exist"_s));

    const QString cats = MakeScrapbook(m.root, u"Cats"_s, 1);
    const QString store = m.app + u"ScrapBookStore.txt"_s;
    run = m.run({u"store"_s, u"add"_s, u"Cats"_s, m.root.path() + u"Cats"_s});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out, u"Created %1\nAdded Cats*%2 to %1\n"_s.arg(store, cats));
    EXPECT_EQ(m.run({u"store"_s, u"add"_s, u"Again"_s, cats}).out,
              u"%1 already lists %2\n"_s.arg(store, cats));
    run = m.run(list);
    EXPECT_EQ(run.err, QString());
    EXPECT_EQ(ReadBytes(store),
              "Cats*" + cats.toUtf8() + "\r\nNew Book*" + m.rootBytes + "books/New Book/\r\n");
}

// The extension's list is written from the store and the new scrapbook, and printed; with no
// ScrapBook folder the command fails with exit code 1.
TEST(MultibookCommand, AddWritesTheExtensionsList) {
    FakeMachine m;
    const QString system = m.addFirefoxProfiles();
    QDir().mkpath(system);
    const QString alpha = MakeScrapbook(m.root, u"Alpha"_s, 1, "Alpha");
    const QString cats = MakeScrapbook(m.root, u"Cats"_s, 1, kBig5Taiwan);
    m.root.write(u"app/ScrapBookStore.txt"_s, "Alpha*" + alpha.toUtf8() + "\r\n");
    RunResult run = m.run({u"multibook"_s, u"add"_s, cats});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out, u"Alpha\t%1\n台灣\t%2\n"_s.arg(alpha, cats));
    EXPECT_TRUE(ReadBytes(system + u"multibook.txt"_s).endsWith("\t" + cats.toUtf8() + "\r\n"));

    QDir(system).removeRecursively();
    run = m.run({u"multibook"_s, u"add"_s, alpha});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.startsWith(u"quillmere: "_s));
}

// The new scrapbook is registered as the list's rules have it: the second entry for the same
// folder overwrites the last row in name order (here Firefox's own), so multibook.txt pairs
// that row's name with the new folder. A missing ScrapBook folder leaves the new scrapbook
// and its store line, and is told on stderr.
TEST(ConvertFolderCommand, ConvertsAndRegisters) {
    FakeMachine m;
    const QString system = m.addFirefoxProfiles();
    MakeScrapbook(m.root, system.mid(m.root.path().size()), 2);
    const QString store = m.root.write(u"app/ScrapBookStore.txt"_s, "");
    m.root.write(u"Photos/a b.txt"_s, "hello");
    m.root.write(u"Photos/c.jpg"_s, "jpeg");
    RunResult run = m.run({u"convert-folder"_s, m.root.path() + u"Photos"_s});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QString scrapbook = m.root.path() + u"Photos/scrapbook/"_s;
    EXPECT_TRUE(run.out.endsWith(u"Converted 2 files into %1\n"_s.arg(scrapbook)));
    EXPECT_EQ(ReadBytes(store), "Photos*" + m.rootBytes + "Photos/scrapbook\r\n");
    EXPECT_EQ(ReadBytes(system + u"multibook.txt"_s),
              "\xEF\xBB\xBF(00)FireFox Default Scrapbook\t" + scrapbook.toUtf8() + "\r\n");

    QDir(system).removeRecursively();
    m.root.write(u"Notes/n.txt"_s, "n");
    run = m.run({u"convert-folder"_s, m.root.path() + u"Notes"_s});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.err.startsWith(u"quillmere: the scrapbook was made, but there is no "_s));
    EXPECT_TRUE(ReadBytes(store).endsWith("Notes*" + m.rootBytes + "Notes/scrapbook\r\n"));
}

} // namespace
} // namespace qmr
