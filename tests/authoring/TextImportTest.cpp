#include "authoring/TextImport.h"

#include "authoring/AuthoringTestSupport.h"
#include "authoring/CatalogueWriter.h"
#include "catalogue/RdfReader.h"
#include "support/RecordingHost.h"
#include "support/TempFolder.h"

#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::ReadBytes;

struct Imported {
    ImportResult result;
    test::RecordingHost host;
};

void import(Imported& out, const QString& base) {
    const AuthoringContext context =
        test::FixedContext(out.host, base + QStringLiteral("app/"), QStringLiteral("笑話集"));
    out.result = ImportTextToScrapbook(context, base);
}

QByteArray showcaseText() {
    return ReadBytes(QStringLiteral(QMR_SOURCE_DIR "/tests/fixtures/authoring/showcase/data.txt"));
}

int pageFolders(const QString& base) {
    return int(
        QDir(base + QStringLiteral("data")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size());
}

TEST(TextImport, WritesTheShowcaseExactly) {
    // Windows and Unix line ends read the same.
    for (const QByteArray& text :
         {showcaseText(), QByteArray(showcaseText()).replace("\r\n", "\n")}) {
        test::TempFolder base;
        base.write(QStringLiteral("data.txt"), text);
        const auto before = test::SnapshotFiles(base.path());
        Imported out;
        import(out, base.path());
        ASSERT_TRUE(out.result.ok) << out.result.problem.toStdString();
        EXPECT_EQ(out.result.pagesWritten, 5);
        EXPECT_EQ(out.result.catalogued, 4);
        EXPECT_EQ(out.host.log,
                  (QStringList{QStringLiteral("0=>"), QStringLiteral("1=>Hello"),
                               QStringLiteral("2=>A &quot;quoted&quot; &lt;title&gt; & more"),
                               QStringLiteral("3=>Manual.pdf"), QStringLiteral("4=>*****")}));
        for (const char* file :
             {"scrapbook.txt", "scrapbook.rdf", "data/20060101000000/index.html",
              "data/20060101000001/index.html", "data/20060101000004/index.html"})
            test::ExpectSameFile(ReadBytes(base.path() + QLatin1String(file)),
                                 test::Golden(QStringLiteral("showcase/") + QLatin1String(file)),
                                 QLatin1String(file));
        // The text after the last separator makes no page.
        EXPECT_EQ(pageFolders(base.path()), 5);
        const QByteArray page2 = ReadBytes(base.path() + "data/20060101000002/index.html");
        EXPECT_TRUE(page2.contains("<font size=\"5\">A &quot;quoted&quot; &lt;title&gt; & "
                                   "more</font>"));
        EXPECT_TRUE(page2.contains("&nbsp;&nbsp;&nbsp;A \"quoted\" <title> & more<br><br>"));
        EXPECT_EQ(test::SnapshotFiles(base.path(), base.path() + QStringLiteral("data/"))
                      .value(base.path() + QStringLiteral("data.txt")),
                  before.value(base.path() + QStringLiteral("data.txt")));
    }
}

// `separators` entries, entry k > 0 titled "Entry k", then text that is never written.
QByteArray countedText(int separators) {
    QByteArray text;
    for (int k = 0; k < separators; ++k)
        text += "Entry " + QByteArray::number(k) + "\r\nBody " + QByteArray::number(k) +
                "\r\n*****\r\n";
    return text + "Entry " + QByteArray::number(separators) + "\r\nnever written\r\n";
}

TEST(TextImport, FilesTheEntriesInGroupsOfTenStoppingOneShort) {
    for (int separators : {0, 1, 2, 9, 10, 11, 12, 25, 27}) {
        SCOPED_TRACE(separators);
        test::TempFolder base;
        base.write(QStringLiteral("data.txt"), countedText(separators));
        Imported out;
        import(out, base.path());
        ASSERT_TRUE(out.result.ok) << out.result.problem.toStdString();
        const int listed = qMax(separators - 1, 0);
        EXPECT_EQ(out.result.pagesWritten, separators);
        EXPECT_EQ(out.result.catalogued, listed);
        EXPECT_EQ(pageFolders(base.path()), separators);

        const QString golden = QStringLiteral("imported-%1/").arg(listed);
        if (QFileInfo::exists(QStringLiteral(QMR_GOLDEN_DIR "/authoring/") + golden)) {
            for (const char* file : {"scrapbook.txt", "scrapbook.rdf"})
                test::ExpectSameFile(ReadBytes(base.path() + QLatin1String(file)),
                                     test::Golden(golden + QLatin1String(file)), golden + file);
        }
        // Loaded back: the top folder, its groups of ten, and the entries in order.
        // The working copy goes elsewhere, so the golden scrapbook.txt above stays as written.
        test::TempFolder working;
        Catalogue catalogue;
        ASSERT_TRUE(RecodeAndLoadCatalogue(base.path(), catalogue, nullptr, {}, working.path()));
        const int groups = (listed + 9) / 10;
        EXPECT_EQ(catalogue.itemCount, 1 + groups + listed);
        const QMap<QString, QStringList> tree = test::CatalogueTree(catalogue);
        EXPECT_EQ(tree.value(QStringLiteral("root")),
                  QStringList{QLatin1String(kImportTopFolderId)});
        QStringList groupIds, entries;
        for (int g = 0; g < groups; ++g) {
            groupIds << ImportGroupId(g);
            entries << tree.value(ImportGroupId(g));
        }
        EXPECT_EQ(tree.value(QLatin1String(kImportTopFolderId)), groupIds);
        ASSERT_EQ(entries.size(), listed);
        for (int k = 0; k < listed; ++k)
            EXPECT_EQ(entries.at(k), ImportEntryId(k));
        if (test::XmllintInstalled()) {
            EXPECT_TRUE(test::XmllintAccepts(base.path() + QStringLiteral("scrapbook.rdf")));
        }
    }
}

void expectRefused(const QByteArray& text, const QStringList& messageParts) {
    test::TempFolder base;
    if (!text.isNull()) base.write(QStringLiteral("data.txt"), text);
    Imported out;
    import(out, base.path());
    EXPECT_FALSE(out.result.ok);
    for (const QString& part : messageParts)
        EXPECT_TRUE(out.result.problem.contains(part))
            << out.result.problem.toStdString() << " lacks " << part.toStdString();
    EXPECT_EQ(pageFolders(base.path()), 0);
    EXPECT_FALSE(QFileInfo::exists(base.path() + QStringLiteral("scrapbook.rdf")));
    EXPECT_TRUE(out.host.log.isEmpty());
}

TEST(TextImport, RefusesBadInputBeforeWritingAnything) {
    expectRefused(QByteArray(), {QStringLiteral("data.txt"), QStringLiteral("cannot read")});

    QByteArray longEntry = "*****\r\n";
    for (int i = 1; i <= 201; ++i)
        longEntry += "line " + QByteArray::number(i) + "\r\n";
    expectRefused(longEntry, {QStringLiteral("data.txt"), QStringLiteral("line 202"),
                              QStringLiteral("more than 200 lines")});

    const QByteArray manyEntries = QByteArray("*****\r\n").repeated(10002);
    expectRefused(manyEntries, {QStringLiteral("data.txt"), QStringLiteral("line 10002"),
                                QStringLiteral("more than 10001 entries")});
}

TEST(TextImport, TakesTwoHundredLinesInAnEntry) {
    test::TempFolder base;
    QByteArray text;
    for (int i = 1; i <= 200; ++i)
        text += "line " + QByteArray::number(i) + "\r\n";
    base.write(QStringLiteral("data.txt"), text + "*****\r\n");
    Imported out;
    import(out, base.path());
    ASSERT_TRUE(out.result.ok) << out.result.problem.toStdString();
    EXPECT_EQ(ReadBytes(base.path() + "data/20060101000000/index.html").count("<br><br>"), 201);
}

} // namespace
} // namespace qmr
