#include "library/ScrapbookStore.h"

#include "library/ScrapbookFixtures.h"
#include "support/TempFolder.h"

#include <QFileInfo>

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::Golden;
using test::ReadBytes;
using test::TempFolder;

// Only folders not yet in any line are appended, in the local code page with CR LF; a last
// line left without its line end keeps its text and the new line starts on a line of its own.
TEST(ScrapbookStore, AddAppendsOnlyNewFolders) {
    TempFolder app;
    const QString store = app.write(QStringLiteral("ScrapBookStore.txt"),
                                    "Recipes*/books/Recipes/\r\n\xA5\x78\xC6\x57*/books/Taiwan");
    EXPECT_EQ(AddToScrapbookStore(store, QStringLiteral("Cats"), QStringLiteral("/books/Cats/")),
              StoreAddResult::Added);
    QString message;
    EXPECT_EQ(AddToScrapbookStore(store, QStringLiteral("Again"), QStringLiteral("/BOOKS/recipes/"),
                                  &message),
              StoreAddResult::AlreadyIn);
    EXPECT_EQ(message, store + QStringLiteral(" already lists /BOOKS/recipes/"));
    EXPECT_EQ(AddToScrapbookStore(store, QStringLiteral("日記"), QStringLiteral("/books/日記/")),
              StoreAddResult::Added);
    // The test is a substring test: a folder inside another line's folder counts as listed.
    EXPECT_EQ(AddToScrapbookStore(store, QStringLiteral("Cat"), QStringLiteral("/books/Cat")),
              StoreAddResult::AlreadyIn);
    EXPECT_EQ(ReadBytes(store), Golden(QStringLiteral("library/ScrapBookStore.txt")));
}

TEST(ScrapbookStore, WithoutAStoreFileNothingIsWritten) {
    TempFolder app;
    const QString store = ScrapbookStorePath(app.path());
    EXPECT_EQ(store, app.path() + QStringLiteral("ScrapBookStore.txt"));
    QString message;
    EXPECT_EQ(AddToScrapbookStore(store, QStringLiteral("Cats"), QStringLiteral("/books/Cats/"),
                                  &message),
              StoreAddResult::NoStoreFile);
    EXPECT_FALSE(QFileInfo::exists(store));
    EXPECT_EQ(message, store + QStringLiteral(" does not exist, so /books/Cats/ was not added to "
                                              "it. Create it (it may be empty) to keep a list of "
                                              "your scrapbooks"));
}

// The file is found in any case; lines end at CR LF, CR or LF; the first "*" splits a line.
TEST(ScrapbookStore, ReadingLinesAndEntries) {
    TempFolder app;
    const QString store = app.write(QStringLiteral("scrapbookstore.TXT"),
                                    "A*/a/\r\nB * /b/ \rC*/c*d/\n\nno star\r\n");
    EXPECT_EQ(ScrapbookStorePath(app.path()), store);
    QStringList lines;
    ASSERT_TRUE(ReadScrapbookStore(store, lines));
    EXPECT_EQ(lines, (QStringList{"A*/a/", "B * /b/ ", "C*/c*d/", "", "no star"}));
    EXPECT_FALSE(ReadScrapbookStore(app.path() + QStringLiteral("none.txt"), lines));
    EXPECT_TRUE(lines.isEmpty());

    StoreEntry entry;
    ASSERT_TRUE(SplitStoreEntry(QStringLiteral(" B * /b/ "), entry));
    EXPECT_EQ(entry.name, QStringLiteral("B"));
    EXPECT_EQ(entry.folder, QStringLiteral("/b/"));
    ASSERT_TRUE(SplitStoreEntry(QStringLiteral("C*/c*d/"), entry));
    EXPECT_EQ(entry.folder, QStringLiteral("/c*d/"));
    EXPECT_FALSE(SplitStoreEntry(QStringLiteral("no star"), entry));

    EXPECT_EQ(StoreLineError(store, 5, QStringLiteral("no star ")).text(),
              store + QStringLiteral(": line 5: \"no star\" has no \"*\" between the scrapbook's "
                                     "name and its folder. Write the line as name*folder, for "
                                     "example Recipes*/home/me/Books/Recipes/"));
}

} // namespace
} // namespace qmr
