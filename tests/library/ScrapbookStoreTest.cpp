#include "library/ScrapbookStore.h"

#include "support/Golden.h"
#include "support/TempFolder.h"

#include <QFileInfo>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

using test::Golden;
using test::ReadBytes;
using test::TempFolder;

// Only folders not yet in any line are appended, in the local code page with CR LF; a last
// line left without its line end keeps its text and the new line starts on a line of its own.
// Without a store file nothing is written.
TEST(ScrapbookStore, AddAppendsOnlyNewFolders) {
    TempFolder app;
    const QString store = ScrapbookStorePath(app.path());
    EXPECT_EQ(store, app.path() + u"ScrapBookStore.txt"_s);
    QString message;
    EXPECT_EQ(AddToScrapbookStore(store, u"Cats"_s, u"/books/Cats/"_s, &message),
              StoreAddResult::NoStoreFile);
    EXPECT_FALSE(QFileInfo::exists(store));
    EXPECT_EQ(message, store + QStringLiteral(" does not exist, so /books/Cats/ was not added to "
                                              "it. Create it (it may be empty) to keep a list of "
                                              "your scrapbooks"));

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

} // namespace
} // namespace qmr
