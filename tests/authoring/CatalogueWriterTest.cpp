#include "authoring/CatalogueWriter.h"

#include "authoring/AuthoringTestSupport.h"
#include "catalogue/RdfReader.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::CatalogueTree;
using test::ExpectSameFile;
using test::Golden;
using test::ReadBytes;

// One use of every line form: a folder holding a page, a nested folder and a file.
CatalogueWriter lineFormsCatalogue() {
    CatalogueWriter writer;
    writer.WriteRdfHead();
    writer.WriteRootSeqOpen();
    writer.WriteSeqEntry(QStringLiteral("20080309000000"));
    writer.WriteSeqClose();
    writer.WriteFolderDescription(QStringLiteral("20080309000000"),
                                  QStringLiteral("剪貼簿 Clippings"));
    writer.WriteSeqOpen(QStringLiteral("20080309000000"));
    for (const char* id : {"20080309000001", "20080309000002", "20080309000003"})
        writer.WriteSeqEntry(QLatin1String(id));
    writer.WriteSeqClose();
    writer.WriteItemDescription(QStringLiteral("20080309000001"), QStringLiteral("A saved page"),
                                QString(), QStringLiteral("http://example.com/"), QString());
    writer.WriteItemDescription(QStringLiteral("20080309000002"), QStringLiteral("A nested folder"),
                                QStringLiteral("folder"), QString(), QString());
    writer.WriteItemDescription(QStringLiteral("20080309000003"),
                                QStringLiteral("00000009-報告.pdf"), QStringLiteral("file"),
                                QStringLiteral("http://example.com/報告"),
                                QStringLiteral("moz-icon://報告.pdf?size=16"));
    writer.WriteRdfTail();
    return writer;
}

TEST(CatalogueWriter, WritesEveryLineFormExactly) {
    test::TempFolder folder;
    ASSERT_TRUE(lineFormsCatalogue().Save(folder.path()));
    // The working copy in Big5 with CR LF, the catalogue in UTF-8 after a byte-order mark.
    ExpectSameFile(ReadBytes(folder.path() + QStringLiteral("scrapbook.txt")),
                   Golden(QStringLiteral("line-forms/scrapbook.txt")), QStringLiteral("txt"));
    ExpectSameFile(ReadBytes(folder.path() + QStringLiteral("scrapbook.rdf")),
                   Golden(QStringLiteral("line-forms/scrapbook.rdf")), QStringLiteral("rdf"));
}

TEST(CatalogueWriter, ComparesTheFolderTypeExactly) {
    CatalogueWriter writer;
    writer.WriteItemDescription(QStringLiteral("1"), QString(), QStringLiteral("Folder"), QString(),
                                QString());
    writer.WriteItemDescription(QStringLiteral("2"), QString(), QStringLiteral("folder"), QString(),
                                QString());
    EXPECT_EQ(writer.lines().at(3).trimmed(), QStringLiteral("NS1:chars=\"BIG5\""));
    EXPECT_EQ(writer.lines().at(11).trimmed(), QStringLiteral("NS1:chars=\"\""));
}

TEST(CatalogueWriter, FormsImportIdentifiersAndPdfIcons) {
    EXPECT_EQ(ImportEntryId(0), QStringLiteral("20060101000000"));
    EXPECT_EQ(ImportEntryId(10001), QStringLiteral("20060101010001"));
    // Entry 0's predecessor pads -1 into the last six characters.
    EXPECT_EQ(ImportEntryId(-1), QStringLiteral("200601010000-1"));
    EXPECT_EQ(ImportGroupId(3), QStringLiteral("20060102000003"));

    const QStringList lines =
        ImportedTextCatalogue({QStringLiteral("a.PdF"), QStringLiteral("pdf x")}, 1).lines();
    EXPECT_TRUE(lines.contains(QStringLiteral("                   NS1:icon=\"moz-icon://a.PdF"
                                              "?size=16\"")));
    EXPECT_EQ(lines.count(QStringLiteral("                   NS1:icon=\"\"")), 3);
}

TEST(CatalogueWriter, WhatItWritesLoadsBackWithTheSameItemsAndTree) {
    test::TempFolder folder;
    ASSERT_TRUE(lineFormsCatalogue().Save(folder.path()));
    Catalogue catalogue;
    InputError error;
    ASSERT_TRUE(RecodeAndLoadCatalogue(folder.path(), catalogue, &error))
        << error.text().toStdString();
    ASSERT_EQ(catalogue.itemCount, 4);
    const CatalogueItem& root = catalogue.items.at(0);
    EXPECT_EQ(root.id, QStringLiteral("20080309000000"));
    EXPECT_EQ(root.type, QStringLiteral("folder"));
    EXPECT_EQ(root.title, QStringLiteral("剪貼簿 Clippings"));
    EXPECT_EQ(root.source, QString());
    const CatalogueItem& file = catalogue.items.at(3);
    EXPECT_EQ(file.type, QStringLiteral("file"));
    EXPECT_EQ(file.title, QStringLiteral("00000009-報告.pdf"));
    EXPECT_EQ(file.chars, QStringLiteral("BIG5"));
    EXPECT_EQ(file.icon, QStringLiteral("moz-icon://報告.pdf?size=16"));
    EXPECT_EQ(file.source, QStringLiteral("http://example.com/報告"));
    EXPECT_EQ(catalogue.items.at(2).chars, QString());

    const QMap<QString, QStringList> tree = CatalogueTree(catalogue);
    EXPECT_EQ(tree.value(QStringLiteral("root")), QStringList{QStringLiteral("20080309000000")});
    EXPECT_EQ(tree.value(QStringLiteral("20080309000000")),
              (QStringList{QStringLiteral("20080309000001"), QStringLiteral("20080309000002"),
                           QStringLiteral("20080309000003")}));
}

TEST(CatalogueWriter, XmlReadersAcceptItUnlessATitleHoldsARawAmpersand) {
    if (!test::XmllintInstalled()) GTEST_SKIP() << "xmllint is not installed";
    test::TempFolder good;
    ASSERT_TRUE(lineFormsCatalogue().Save(good.path()));
    QString complaints;
    EXPECT_TRUE(test::XmllintAccepts(good.path() + QStringLiteral("scrapbook.rdf"), &complaints))
        << complaints.toStdString();

    // Titles are written as they stand: escaping is the caller's business.
    test::TempFolder bad;
    ASSERT_TRUE(ImportedTextCatalogue({QStringLiteral("Tom & Jerry")}, 0).Save(bad.path()));
    EXPECT_FALSE(test::XmllintAccepts(bad.path() + QStringLiteral("scrapbook.rdf")));
}

TEST(CatalogueWriter, ReportsAFolderItCannotWriteTo) {
    test::TempFolder folder;
    folder.write(QStringLiteral("blocker"), "a file where the folder should be");
    QString error;
    EXPECT_FALSE(lineFormsCatalogue().Save(folder.path() + QStringLiteral("blocker/"), &error));
    EXPECT_TRUE(error.contains(QStringLiteral("scrapbook.txt"))) << error.toStdString();
}

} // namespace
} // namespace qmr
