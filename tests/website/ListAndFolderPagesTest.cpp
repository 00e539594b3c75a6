#include "website/FolderPages.h"
#include "website/ListPage.h"

#include "platform/LocalCodePage.h"
#include "support/Golden.h"
#include "support/TempFolder.h"
#include "website/WebsiteSample.h"

#include <QDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

using test::Golden;
using test::ReadBytes;
using test::SameText;
using test::TempFolder;

TEST(ListPage, ListsPlacedItemsThatAreNotFolders) {
    TempFolder root;
    const Catalogue catalogue = test::SampleCatalogue();
    const CatalogueWalk walk(catalogue);
    const QString path = root.path() + u"data/qmr/temp.html"_s;
    QString error;
    ASSERT_TRUE(WriteListPage(test::SampleChrome(), catalogue, walk, false, path, &error))
        << error.toStdString();
    EXPECT_TRUE(SameText(Golden(u"website/list-page.html"_s), ReadBytes(path)));
    EXPECT_EQ(FindItemById(catalogue, u"20080101000000"_s), -1);

    // "Link To Source URL" shows every row as a bookmark linked to its source (none for a note),
    // titles cut at fifty characters.
    ASSERT_TRUE(WriteListPage(test::SampleChrome(), catalogue, walk, true, path));
    const QString page = LocalCodePage::decode(ReadBytes(path));
    const QString bookmark = QStringLiteral(
        "<img border=\"0\" src=\"images-D(2007-0426-225435).jpg\" width=\"20\" height=\"20\">");
    EXPECT_EQ(page.count(bookmark), 7);
    EXPECT_TRUE(page.contains(u"<a href=\"http://example.com/a?x=1&amp;y=2\">"_s + bookmark +
                              test::kTitle50 + u"</a>"_s));
    EXPECT_TRUE(
        page.contains(u"<a href=\"\">"_s + bookmark + test::kTitle51.left(50) + u"...</a>"_s));

    // An unwritable path gives the reason.
    EXPECT_FALSE(WriteListPage(test::SampleChrome(), catalogue, walk, false,
                               path + u"/under-a-file.html"_s, &error));
    EXPECT_FALSE(error.isEmpty());
}

TEST(FolderPages, EachFolderGetsAUtf8PageOfWhatItsListPlaces) {
    TempFolder root;
    const Catalogue catalogue = test::SampleCatalogue();
    QString error;
    ASSERT_TRUE(WriteFolderPages(test::SampleChrome(), catalogue, CatalogueWalk(catalogue),
                                 root.path(), &error))
        << error.toStdString();
    const QString pages = root.path() + u"data/qmr/"_s;
    EXPECT_TRUE(SameText(Golden(u"website/folder-travel.html"_s),
                         ReadBytes(pages + u"20080101000001.html"_s)));
    EXPECT_TRUE(SameText(Golden(u"website/folder-japan.html"_s),
                         ReadBytes(pages + u"20080101000002.html"_s)));
    // The pages are made in memory: no scratch or temporary file stays behind.
    EXPECT_EQ(QDir(pages).entryList(QDir::Files, QDir::Name),
              (QStringList{"20080101000001.html", "20080101000002.html"}));

    TempFolder blocked;
    blocked.write(u"data/qmr"_s, "a file where the folder should be");
    EXPECT_FALSE(WriteFolderPages(test::SampleChrome(), catalogue, CatalogueWalk(catalogue),
                                  blocked.path(), &error));
    EXPECT_TRUE(error.contains(u"20080101000001.html"_s)) << error.toStdString();
}

} // namespace
} // namespace qmr
