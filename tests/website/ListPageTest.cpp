#include "website/ListPage.h"

#include "platform/LocalCodePage.h"
#include "website/WebsiteTestSupport.h"

#include <QDir>

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::ExpectGolden;
using test::ReadBytes;
using test::SampleCatalogue;
using test::SampleChrome;
using test::TempFolder;

QStringList titleCells(const QString& path) {
    QStringList cells;
    for (const QString& line : LocalCodePage::decode(ReadBytes(path)).split(QStringLiteral("\r\n")))
        if (line.startsWith(QStringLiteral("<td width=\"55%\">"))) cells.append(line);
    return cells;
}

TEST(ListPage, FindItemByIdNeverMatchesTheFirstPosition) {
    const Catalogue catalogue = SampleCatalogue();
    EXPECT_EQ(FindItemById(catalogue, QStringLiteral("20080101000002")), 2);
    EXPECT_EQ(FindItemById(catalogue, QStringLiteral("20080101000000")), -1);
    EXPECT_EQ(FindItemById(catalogue, QStringLiteral("root")), -1);
    Catalogue shorter = catalogue;
    shorter.itemCount = 2; // items past the count are not looked at
    EXPECT_EQ(FindItemById(shorter, QStringLiteral("20080101000002")), -1);
}

TEST(ListPage, ListsPlacedItemsThatAreNotFolders) {
    TempFolder root;
    const QString path = root.path() + QStringLiteral("data/qmr/temp.html");
    QString error;
    ASSERT_TRUE(WriteListPage(SampleChrome(), SampleCatalogue(), false, path, &error))
        << error.toStdString();
    ExpectGolden(path, "list-page.html");
    // The Big5 title stands in the page as Big5 bytes.
    EXPECT_TRUE(ReadBytes(path).contains("\xA5\x78\xC6\x57\xAE\xC8\xB9\x43</a></td>"));
}

TEST(ListPage, LinkToSourceUrlLinksEveryRowToItsSourceAsABookmark) {
    TempFolder root;
    const QString path = root.path() + QStringLiteral("temp.html");
    ASSERT_TRUE(WriteListPage(SampleChrome(), SampleCatalogue(), true, path));
    const QString icon = QStringLiteral(
        "<img border=\"0\" src=\"images-D(2007-0426-225435).jpg\" width=\"20\" height=\"20\">");
    const auto cell = [&](const char* source, const QString& title) {
        return QStringLiteral("<td width=\"55%\"><a href=\"") + QString::fromLatin1(source) +
               QStringLiteral("\">") + icon + title + QStringLiteral("</a></td>");
    };
    EXPECT_EQ(
        titleCells(path),
        (QStringList{cell("http://example.com/a?x=1&amp;y=2", test::kTitle50),
                     cell("", test::kTitle51.left(50) + QStringLiteral("...")),
                     cell("https://bookmark.example/", QStringLiteral("A bookmark")),
                     cell("file:///C:/clips/a.wmv", QStringLiteral("a.wmv")),
                     cell("", QStringLiteral("----")), cell("", QStringLiteral("<b>R&amp;D</b>")),
                     cell("", test::kBig5Title)}));
}

TEST(ListPage, OnlyFoldersGiveTheHeaderRowAlone) {
    TempFolder root;
    Catalogue catalogue = SampleCatalogue();
    for (CatalogueItem& item : catalogue.items)
        item.type = QStringLiteral("folder");
    const QString path = root.path() + QStringLiteral("temp.html");
    ASSERT_TRUE(WriteListPage(SampleChrome(), catalogue, false, path));
    const QString text = LocalCodePage::decode(ReadBytes(path));
    EXPECT_TRUE(text.contains(QStringLiteral("      <td align=\"left\" width=\"20%\" "
                                             "bgcolor=\"#008080\">\u3000</td>\r\n  </tr>\r\n"
                                             "</table>\r\n\u3000<hr>")));

    QString error;
    EXPECT_FALSE(WriteListPage(SampleChrome(), catalogue, false,
                               path + QStringLiteral("/under-a-file.html"), &error));
    EXPECT_FALSE(error.isEmpty());
}

} // namespace
} // namespace qmr
