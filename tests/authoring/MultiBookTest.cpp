#include "authoring/MultiBook.h"

#include "library/ScrapbookStore.h"
#include "support/Golden.h"
#include "support/RecordingHost.h"
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
using test::RecordingHost;
using test::TempFolder;

// Scrapbooks below a folder of their own, with an application folder and the place of the
// extension's ScrapBook folder (not made).
struct Machine {
    TempFolder root;
    QByteArray rootBytes = root.path().toUtf8();
    LibraryFolders folders{root.path() + u"app/"_s, root.path() + u"ScrapBook/"_s};
    QString system = folders.scrapbookSystemFolder;
    RecordingHost host;
    QByteArray golden(const char* name) const {
        return Golden(u"authoring/"_s + QLatin1String(name), "@ROOT@", rootBytes);
    }
};

// The list's rows in name order: Unnamed (no name in a fresh run), Alpha, ALPHA, Cats & Dogs,
// 台灣. The unnamed row and the row named like the one before it are not written.
struct ListFixture : Machine {
    AppSettings settings{host};
    ScrapbookList list{settings};
    QString store =
        root.write(u"app/ScrapBookStore.txt"_s,
                   "Alpha*" + rootBytes + "Alpha/\r\nBig*" + rootBytes + "ALPHA2\r\nUnnamed*" +
                       rootBytes + "Unnamed/\r\nTaiwan*" + rootBytes + "Taiwan/\r\n");
    ListFixture() {
        MakeScrapbook(root, u"Alpha"_s, 1, "Alpha");
        MakeScrapbook(root, u"ALPHA2"_s, 1, "ALPHA");
        MakeScrapbook(root, u"Unnamed"_s, 1);
        MakeScrapbook(root, u"Taiwan"_s, 1, "\xA5\x78\xC6\x57");
        MakeScrapbook(root, u"Cats"_s, 1, "Cats & Dogs");
        LoadAllScrapbooksIntoList(list, folders, host);
    }
    MultiBookResult addCats() {
        return AddToMultiScrapbookList(list, u"Cats"_s, root.path() + u"Cats"_s, folders);
    }
};

TEST(MultiBook, FromTheMainList) {
    ListFixture f;
    QDir().mkpath(f.system);
    const MultiBookResult result = f.addCats();
    EXPECT_TRUE(result.written && result.copied);
    EXPECT_EQ(result.problems, QStringList());
    EXPECT_EQ(ReadBytes(f.system + u"multibook-BIG5.txt"_s), f.golden("multibook-list-BIG5.txt"));
    EXPECT_EQ(ReadBytes(f.system + u"multibook1.txt"_s), f.golden("multibook-list.txt"));
    EXPECT_EQ(ReadBytes(f.system + u"multibook.txt"_s), f.golden("multibook-list.txt"));
    EXPECT_TRUE(ReadBytes(f.store).endsWith("Taiwan/\r\nCats*" + f.rootBytes + "Cats\r\n"));
    EXPECT_EQ(f.list.count(), 5);
}

// A missing or unwritable ScrapBook folder leaves the store and the list with the new
// scrapbook, and the result tells what did not happen.
TEST(MultiBook, WithoutAUsableScrapbookFolderTheStoreStillTakesIt) {
    ListFixture f;
    MultiBookResult result = f.addCats();
    EXPECT_FALSE(result.written || result.copied);
    EXPECT_EQ(result.problems,
              QStringList{QStringLiteral("there is no ScrapBook folder at %1, so the extension's "
                                         "multibook.txt was not written. Install ScrapBook in "
                                         "Firefox's default profile (profiles.ini names it) and "
                                         "run Firefox once, then try again")
                              .arg(f.system)});
    EXPECT_FALSE(QFileInfo::exists(f.system));
    EXPECT_TRUE(ReadBytes(f.store).endsWith("Cats*" + f.rootBytes + "Cats\r\n"));
    EXPECT_EQ(f.list.count(), 5);

    // A folder in the way of the working file stands for one that cannot be written.
    QDir().mkpath(f.system + u"multibook-BIG5.txt"_s);
    result = f.addCats();
    EXPECT_FALSE(result.written);
    ASSERT_EQ(result.problems.size(), 1);
    EXPECT_TRUE(result.problems.first().startsWith(u"cannot write "_s + f.system +
                                                   u"multibook-BIG5.txt"_s));
    EXPECT_FALSE(QFileInfo::exists(f.system + "multibook.txt"));
}

// The scan: subfolders with a catalogue, then store lines with one, then "default"; an entry
// equal to the one just before it, ignoring case, is written once.
struct ScanFixture : Machine {
    QString base = root.path() + u"base/"_s;
    QString store = root.write(u"app/ScrapBookStore.txt"_s,
                               "Cats*" + rootBytes + "base/Cats/\r\n\r\nNowhere * " + rootBytes +
                                   "nowhere/\r\nRecipes*" + rootBytes + "Recipes\r\n");
    ScanFixture() {
        for (const char* name : {"base/Alpha", "base/Cats", "base/cats", "base/台灣", "Recipes"})
            MakeScrapbook(root, QString::fromUtf8(name), 1);
        QDir().mkpath(base + u"Empty"_s);
    }
    MultiBookResult scan(const QString& folder) {
        return Menu_Dir2MultiScrapbook_Click(folder, folders, host);
    }
};

TEST(MultiBook, FolderScan) {
    ScanFixture f;
    QDir().mkpath(f.system);
    const MultiBookResult result = f.scan(f.base);
    EXPECT_EQ(result.problems, QStringList());
    EXPECT_TRUE(result.copied);
    EXPECT_EQ(ReadBytes(f.base + u"multibook-BIG5.txt"_s), f.golden("multibook-scan-BIG5.txt"));
    EXPECT_EQ(ReadBytes(f.base + u"multibook.txt"_s), f.golden("multibook-scan.txt"));
    EXPECT_EQ(ReadBytes(f.system + u"multibook.txt"_s), f.golden("multibook-scan.txt"));
    EXPECT_EQ(f.host.log, QStringList{"multibook.txt has been created ok!"});
}

TEST(MultiBook, FolderScanFailures) {
    ScanFixture f;
    // No ScrapBook folder: the list is made in the base folder, ending with the default entry,
    // and the result says it did not reach the extension.
    MultiBookResult result = f.scan(f.base);
    EXPECT_TRUE(result.written && !result.copied && !result.badInput);
    EXPECT_EQ(result.entries.last(), u"default\t"_s + f.system);

    // A store line without "*" stops the scan before anything is written.
    QFile::remove(f.base + u"multibook.txt"_s);
    QFile::remove(f.base + u"multibook-BIG5.txt"_s);
    f.root.write(u"app/ScrapBookStore.txt"_s, "Cats*/c/\r\nno star here\r\n");
    result = f.scan(f.base);
    EXPECT_TRUE(result.badInput);
    EXPECT_FALSE(result.written);
    EXPECT_EQ(result.problems,
              QStringList{f.store +
                          QStringLiteral(": line 2: \"no star here\" has no \"*\" between the "
                                         "scrapbook's name and its folder, so the scan stopped "
                                         "before writing anything. Write the line as name*folder, "
                                         "for example Recipes*/home/me/Books/Recipes/, then run "
                                         "the scan again")});
    EXPECT_FALSE(QFileInfo::exists(f.base + u"multibook-BIG5.txt"_s));

    result = f.scan(f.root.path() + u"nowhere"_s);
    EXPECT_TRUE(result.badInput);
    EXPECT_EQ(result.problems,
              QStringList{f.root.path() + u"nowhere/: no such folder. Name the "
                                          u"folder whose subfolders are scrapbooks"_s});
}

} // namespace
} // namespace qmr
