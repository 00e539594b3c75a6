#include "authoring/CatalogueWriter.h"

#include "authoring/AuthoringTestSupport.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

using test::Golden;
using test::ReadBytes;
using test::SameText;

// One use of every line form: a folder holding a page, a nested folder and a file.
CatalogueWriter lineFormsCatalogue() {
    CatalogueWriter writer;
    writer.WriteRdfHead();
    writer.WriteRootSeqOpen();
    writer.WriteSeqEntry(u"20080309000000"_s);
    writer.WriteSeqClose();
    writer.WriteFolderDescription(u"20080309000000"_s, u"剪貼簿 Clippings"_s);
    writer.WriteSeqOpen(u"20080309000000"_s);
    for (const char* id : {"20080309000001", "20080309000002", "20080309000003"})
        writer.WriteSeqEntry(QLatin1String(id));
    writer.WriteSeqClose();
    writer.WriteItemDescription(u"20080309000001"_s, u"A saved page"_s, QString(),
                                u"http://example.com/"_s, QString());
    writer.WriteItemDescription(u"20080309000002"_s, u"A nested folder"_s, u"folder"_s, QString(),
                                QString());
    writer.WriteItemDescription(u"20080309000003"_s, u"00000009-報告.pdf"_s, u"file"_s,
                                u"http://example.com/報告"_s, u"moz-icon://報告.pdf?size=16"_s);
    writer.WriteRdfTail();
    return writer;
}

// The working copy in Big5 with CR LF, the catalogue in UTF-8 after a byte-order mark; read
// back it gives the same items and tree, and XML readers accept it.
TEST(CatalogueWriter, WritesEveryLineFormExactlyAndReadsBack) {
    test::TempFolder folder;
    ASSERT_TRUE(lineFormsCatalogue().Save(folder.path()));
    EXPECT_TRUE(SameText(Golden(u"authoring/line-forms/scrapbook.txt"_s),
                         ReadBytes(folder.path() + u"scrapbook.txt"_s)));
    EXPECT_TRUE(SameText(Golden(u"authoring/line-forms/scrapbook.rdf"_s),
                         ReadBytes(folder.path() + u"scrapbook.rdf"_s)));
    int items = 0;
    const auto lists = test::LoadedLists(folder.path(), &items);
    EXPECT_EQ(items, 4);
    EXPECT_EQ(lists.value(u"20080309000000"_s),
              (QStringList{"20080309000001", "20080309000002", "20080309000003"}));
    EXPECT_TRUE(test::XmlReadersAccept(folder.path() + u"scrapbook.rdf"_s));

    EXPECT_EQ(ImportEntryId(10001), u"20060101010001"_s); // entries run past five digits

    QString error;
    folder.write(u"blocker"_s, "a file where the folder should be");
    EXPECT_FALSE(lineFormsCatalogue().Save(folder.path() + u"blocker/"_s, &error));
    EXPECT_TRUE(error.contains(u"scrapbook.txt"_s)) << error.toStdString();
}

} // namespace
} // namespace qmr
