#include "website/ListPage.h"

#include "website/WebsiteTestSupport.h"

#include <QDir>

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::ExpectGolden;
using test::SampleCatalogue;
using test::SampleChrome;
using test::TempFolder;

// The bodies as the table-of-contents walk gathers them: a header, then one line per child.
Catalogue catalogueWithFolderBodies(const PageChrome& chrome) {
    Catalogue catalogue = SampleCatalogue();
    const auto line = [&](int child, const char* link) {
        return FolderItemLine(catalogue.items.at(child), QString::fromLatin1(link));
    };
    catalogue.items[1].folderBody = FolderPathHeader(chrome, catalogue, 1) +
                                    line(2, "../qmr/20080101000002.html") +
                                    line(6, "../20080101000006/index.html");
    catalogue.items[2].folderBody =
        FolderPathHeader(chrome, catalogue, 2) + line(3, "../20080101000003/index.html") +
        line(4, "../20080101000004/index.html") + line(11, "../20080101000011/index.html");
    return catalogue;
}

TEST(FolderPages, EachFolderGetsAUtf8PageOfItsGatheredBody) {
    TempFolder root;
    const PageChrome chrome = SampleChrome();
    Catalogue catalogue = catalogueWithFolderBodies(chrome);
    // A folder whose identifier would lead out of data/qmr/ gets no page.
    catalogue.items.append(
        test::Item("../20080101000099", "folder", QStringLiteral("Out"), "", true, "root"));
    catalogue.items.last().folderBody = QStringLiteral("escaped\r\n");
    catalogue.itemCount = int(catalogue.items.size());

    QString error;
    ASSERT_TRUE(WriteFolderPages(chrome, catalogue, root.path(), &error)) << error.toStdString();
    const QString pages = root.path() + QStringLiteral("data/qmr/");
    ExpectGolden(pages + QStringLiteral("20080101000001.html"), "folder-travel.html");
    ExpectGolden(pages + QStringLiteral("20080101000002.html"), "folder-japan.html");
    // The pages are made in memory: no scratch or temporary file stays behind.
    EXPECT_EQ(QDir(pages).entryList(QDir::Files, QDir::Name),
              (QStringList{"20080101000001.html", "20080101000002.html"}));
    EXPECT_EQ(QDir(root.path() + QStringLiteral("data/")).entryList(QDir::Files), QStringList());
}

TEST(FolderPages, ParentWithoutTitleGivesNoPathLink) {
    const PageChrome chrome = SampleChrome();
    Catalogue catalogue = SampleCatalogue();
    catalogue.items[1].title.clear();
    const QString header = FolderPathHeader(chrome, catalogue, 2);
    EXPECT_TRUE(header.endsWith(QStringLiteral("<font size=\"4\"><b>\r\nJapan</b></font><br>\r\n"
                                               "<p align=\"left\">\r\n<div align=\"left\">\r\n")));
    EXPECT_FALSE(header.contains(QStringLiteral("&gt;")));
}

TEST(FolderPages, AnUnwritableFolderStopsWithTheReason) {
    TempFolder root;
    root.write(QStringLiteral("data/qmr"), "a file where the folder should be");
    const PageChrome chrome = SampleChrome();
    QString error;
    EXPECT_FALSE(WriteFolderPages(chrome, catalogueWithFolderBodies(chrome), root.path(), &error));
    EXPECT_TRUE(error.contains(QStringLiteral("20080101000001.html"))) << error.toStdString();
}

} // namespace
} // namespace qmr
