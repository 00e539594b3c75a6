#include "library/ScrapbookList.h"
#include "library/ScrapbookStore.h"
#include "library/Session.h"

#include "catalogue/TextFiles.h"
#include "support/Golden.h"
#include "support/RecordingHost.h"
#include "support/TempFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

using test::Golden;
using test::MakeScrapbook;
using test::ReadBytes;
using test::RecordingHost;
using test::TempFolder;

// A list over temporary scrapbooks, shown as "name|count|directory" rows in list order.
struct ListFixture {
    TempFolder root;
    RecordingHost host;
    AppSettings settings{host};
    ScrapbookList list{settings};
    QStringList rows() const {
        QStringList texts;
        for (const ScrapbookRow& row : list.rows())
            texts << QStringList{row.name, row.pageCount,
                                 QString(row.directory).replace(root.path().toLower(), "@/")}
                         .join(QLatin1Char('|'));
        return texts;
    }
};

// Rows need a catalogue, take the trimmed name, the four-digit count of item folders (hidden
// ones too) and the lower-cased folder, and stay in name order ignoring case. A folder listed
// already adds no row but overwrites the count and folder of the LAST row in name order.
TEST(ScrapbookList, RowsAndTheRepeatedFolder) {
    ListFixture f;
    const QString zoo = MakeScrapbook(f.root, u"Zoo"_s, 3);
    const QString apple = MakeScrapbook(f.root, u"Apple"_s, 12);
    QDir().mkpath(apple + u"data/.hidden"_s);
    f.root.write(u"Apple/data/file.txt"_s, "x");
    f.root.write(u"Upper/ScrapBook.RDF"_s, "");
    QDir().mkpath(f.root.path() + u"Empty"_s);
    EXPECT_EQ(f.list.AddtoListView(u"  zoo "_s, zoo), u"0003");
    EXPECT_EQ(f.list.AddtoListView(u"Apple"_s, RemoveBackslash(apple)), u"0013");
    f.list.AddtoListView(u"Big"_s, u" "_s + f.root.path() + "Upper");
    f.list.AddtoListView(u"None"_s, f.root.path() + u"Empty"_s);
    EXPECT_EQ(f.rows(),
              (QStringList{"Apple|0013|@/apple/", "Big|0000|@/upper/", "zoo|0003|@/zoo/"}));

    const QString lower = MakeScrapbook(f.root, u"apple"_s, 2);
    EXPECT_TRUE(f.list.IsalreadyIn(f.root.path() + u"APPLE/"_s));
    f.list.AddtoListView(u"Other"_s, lower);
    EXPECT_EQ(f.rows(),
              (QStringList{"Apple|0013|@/apple/", "Big|0000|@/upper/", "zoo|0002|@/apple/"}));
    EXPECT_FALSE(f.list.IsalreadyIn(zoo));
    f.list.AddtoListView(u"zoo"_s, zoo); // its key is still taken
    EXPECT_EQ(f.list.count(), 3);
}

// Entries split at the first "*"; the name shown comes from the scrapbook's settings through
// the shared settings object, whose Default carries over.
TEST(ScrapbookList, EntriesSelectionAndTheCommandLine) {
    ListFixture f;
    const QString named = MakeScrapbook(f.root, u"named"_s, 1, " \xA5\x78\xC6\x57 ");
    const QString unnamed = MakeScrapbook(f.root, u"unnamed"_s, 1);
    f.root.write(u"named/ScrapbookPrj.ini"_s,
                 "[Scrapbook]\r\nScrapbookName=\xA5\x78\xC6\x57\r\n[Content]\r\nMakeChmFile=0\r\n");
    for (const QString& entry : {u"Store name * "_s + RemoveBackslash(named) + "  ",
                                 u"Unnamed*"_s + unnamed, u"no star "_s + unnamed, u"Empty*  "_s})
        f.list.dotAdd2listView(entry);
    EXPECT_EQ(f.rows(), (QStringList{"|0001|@/unnamed/", "台灣|0001|@/named/"}));

    EXPECT_EQ(f.list.ListSelectByKeyword(f.root.path().toUpper() + u"NAMED/"_s), 2);
    EXPECT_FALSE(f.list.SelectRow(2).makeChmFile);
    EXPECT_EQ(f.list.caption, u"台灣"_s);
    // After a property page load the carried-over Default is "index.html".
    f.list.clear();
    f.list.dotAdd2listView(u"Unnamed*"_s + unnamed);
    EXPECT_EQ(f.rows(), QStringList{"index.html|0001|@/unnamed/"});

    EXPECT_EQ(CommandLineFolder(u"file=/my books/Cats/SCRAPBOOK.Rdf"_s), u"/my books/Cats/"_s);
    for (const char* other :
         {"File=scrapbook.rdf", "File=/b/Cats/scrapbook.txt", "/b/scrapbook.rdf"})
        EXPECT_EQ(CommandLineFolder(QLatin1String(other)), QString()) << other;
}

// Firefox's own scrapbook, then the store, with Firefox's current (the list command's golden
// output shows the rows, and a store line without "*" left out); with multibook.txt its "*"
// lines instead of the Firefox row (its working copies removed); a command-line folder joins
// the store once and is selected, row 1 stays current.
TEST(ScrapbookList, LoadingAtStartUp) {
    ListFixture f;
    const LibraryFolders folders{f.root.path() + u"app/"_s,
                                 MakeScrapbook(f.root, u"ScrapBook"_s, 4, "Mine")};
    const QString cats = MakeScrapbook(f.root, u"Cats"_s, 2, "Cats");
    const QString dogs = MakeScrapbook(f.root, u"Dogs"_s, 1, "\xAA\xAF");
    const QString store = f.root.write(u"app/ScrapBookStore.txt"_s,
                                       ("Dogs*" + dogs + "\r\nCats*" + cats + "\r\n").toUtf8());
    LoadAllScrapbooksIntoList(f.list, folders, f.host);
    EXPECT_EQ(f.list.count(), 3);
    EXPECT_EQ(f.list.currentFolder, folders.scrapbookSystemFolder);
    EXPECT_EQ(f.list.caption, u"(00)FireFox Default Scrapbook"_s);

    f.root.write(u"ScrapBook/multibook.txt"_s, ("\xEF\xBB\xBF"
                                                "Cats\t" +
                                                cats + "\r\n\xE7\x8B\x97*" + dogs + "\r\n")
                                                   .toUtf8());
    f.root.write(u"app/multibook.txt"_s, "left over");
    QFile::remove(store);
    LoadAllScrapbooksIntoList(f.list, folders, f.host);
    EXPECT_EQ(f.rows(), QStringList{"狗|0001|@/dogs/"});
    EXPECT_EQ(QDir(folders.applicationFolder).entryList(QDir::Files), QStringList());

    QFile::remove(folders.scrapbookSystemFolder + u"multibook.txt"_s);
    f.root.write(u"app/ScrapBookStore.txt"_s, ("Cats*" + cats + "\r\n").toUtf8());
    for (int run = 0; run < 2; ++run)
        EXPECT_EQ(LoadAllScrapbooksIntoList(f.list, folders, f.host, dogs).storeProblem, QString());
    EXPECT_EQ(f.list.selectedRow(), 3);
    EXPECT_EQ(f.list.statusFolder, dogs);
    EXPECT_EQ(f.list.currentFolder, folders.scrapbookSystemFolder);
    EXPECT_EQ(ReadBytes(store), ("Cats*" + cats + "\r\nDogs*" + dogs + "\r\n").toUtf8());
    QFile::remove(store);
    const ListLoadReport report = LoadAllScrapbooksIntoList(f.list, folders, f.host, dogs);
    EXPECT_TRUE(report.storeProblem.startsWith(store + u" does not exist"_s));
    EXPECT_FALSE(QFileInfo::exists(store));
}

// Only folders not yet in any line are appended, in the local code page with CR LF; a last
// line left without its line end keeps its text and the new line starts on a line of its own.
// Without a store file nothing is written.
TEST(ScrapbookStore, AddAppendsOnlyNewFolders) {
    TempFolder app;
    const QString store = ScrapbookStorePath(app.path());
    QString message;
    EXPECT_EQ(AddToScrapbookStore(store, u"Cats"_s, u"/books/Cats/"_s, &message),
              StoreAddResult::NoStoreFile);
    EXPECT_FALSE(QFileInfo::exists(store));
    EXPECT_TRUE(message.startsWith(store + u" does not exist, so /books/Cats/ was not added"_s));

    app.write(u"ScrapBookStore.txt"_s, "Recipes*/books/Recipes/\r\n\xA5\x78\xC6\x57*/books/Taiwan");
    EXPECT_EQ(AddToScrapbookStore(store, u"Cats"_s, u"/books/Cats/"_s), StoreAddResult::Added);
    EXPECT_EQ(AddToScrapbookStore(store, u"Again"_s, u"/BOOKS/recipes/"_s, &message),
              StoreAddResult::AlreadyIn);
    EXPECT_EQ(message, store + u" already lists /BOOKS/recipes/"_s);
    EXPECT_EQ(AddToScrapbookStore(store, u"日記"_s, u"/books/日記/"_s), StoreAddResult::Added);
    // The test is a substring test: a folder inside another line's folder counts as listed.
    EXPECT_EQ(AddToScrapbookStore(store, u"Cat"_s, u"/books/Cat"_s), StoreAddResult::AlreadyIn);
    EXPECT_EQ(ReadBytes(store), Golden(u"library/ScrapBookStore.txt"_s));
}

// The builders' options are those of the scrapbook that is current when they ask, read again
// once the property page has closed; its GoogleAD box is never kept.
TEST(Session, OptionsFollowTheCurrentScrapbook) {
    TempFolder root;
    const QString compiled = MakeScrapbook(root, u"a"_s, 1, "Compiled");
    const QString pagesOnly = MakeScrapbook(root, u"b"_s, 1, "Pages only");
    root.write(u"b/ScrapbookPrj.ini"_s,
               "[Scrapbook]\r\nScrapbookName=Pages only\r\n[Content]\r\nMakeChmFile=0\r\n");
    root.write(u"app/Quillmere.ini"_s, "[Language]\r\nLanguage=3\r\n");
    RecordingHost host;
    Session session(host, {root.path() + u"app/"_s, root.path() + u"firefox/"_s});
    EXPECT_EQ(session.options().language, EbookLanguage::ChineseSimplified);

    session.useScrapbook(compiled);
    session.options().googleAD = true;
    EXPECT_TRUE(session.options().properties.makeChmFile);
    EXPECT_EQ(session.displayName(), u"Compiled"_s);
    session.list.currentFolder = pagesOnly;
    EXPECT_FALSE(session.options().properties.makeChmFile);
    EXPECT_FALSE(session.options().googleAD);
    EXPECT_EQ(session.displayName(), u"Pages only"_s);

    session.options().properties.makeChmFile = true; // edited on the page, then Cancel
    session.forgetProperties();
    EXPECT_FALSE(session.options().properties.makeChmFile);
    EXPECT_TRUE(host.messages.isEmpty());
}

} // namespace
} // namespace qmr
