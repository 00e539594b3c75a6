#include "authoring/TextImport.h"

#include "authoring/AuthoringTestSupport.h"
#include "authoring/CatalogueWriter.h"
#include "support/RecordingHost.h"

#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

using test::ReadBytes;

// Imports base/data.txt with identifiers drawn on the tests' day.
ImportResult import(test::RecordingHost& host, const QString& base) {
    return ImportTextToScrapbook(test::FixedContext(host, base + u"app/"_s, u"笑話集"_s), base);
}

QByteArray showcaseText() {
    return test::Fixture(u"authoring/showcase/data.txt"_s);
}

int pageFolders(const QString& base) {
    return int(QDir(base + u"data"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size());
}

TEST(TextImport, WritesTheShowcaseExactly) {
    // Windows and Unix line ends read the same.
    for (const QByteArray& text :
         {showcaseText(), QByteArray(showcaseText()).replace("\r\n", "\n")}) {
        test::TempFolder base;
        base.write(u"data.txt"_s, text);
        test::RecordingHost host;
        const ImportResult result = import(host, base.path());
        ASSERT_TRUE(result.ok) << result.problem.toStdString();
        EXPECT_EQ(result.pagesWritten, 5);
        EXPECT_EQ(result.catalogued, 4);
        EXPECT_EQ(host.log, (QStringList{u"0=>"_s, u"1=>Hello"_s,
                                         u"2=>A &quot;quoted&quot; &lt;title&gt; & more"_s,
                                         u"3=>Manual.pdf"_s, u"4=>*****"_s}));
        for (const char* file :
             {"scrapbook.txt", "scrapbook.rdf", "data/20060101000000/index.html",
              "data/20060101000001/index.html", "data/20060101000004/index.html"})
            EXPECT_TRUE(test::SameText(test::Golden(u"authoring/showcase/"_s + QLatin1String(file)),
                                       ReadBytes(base.path() + QLatin1String(file))))
                << file;
        // The text after the last separator makes no page.
        EXPECT_EQ(pageFolders(base.path()), 5);
        const QByteArray page2 = ReadBytes(base.path() + "data/20060101000002/index.html");
        EXPECT_TRUE(page2.contains("<font size=\"5\">A &quot;quoted&quot; &lt;title&gt; & "
                                   "more</font>"));
        EXPECT_TRUE(page2.contains("&nbsp;&nbsp;&nbsp;A \"quoted\" <title> & more<br><br>"));
        EXPECT_EQ(ReadBytes(base.path() + u"data.txt"_s), text);
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

// Every count here has its golden catalogue; read back, the top folder holds the groups of ten
// and they hold the entries in order.
TEST(TextImport, FilesTheEntriesInGroupsOfTenStoppingOneShort) {
    for (int separators : {0, 1, 2, 11, 12, 27}) {
        SCOPED_TRACE(separators);
        test::TempFolder base;
        base.write(u"data.txt"_s, countedText(separators));
        test::RecordingHost host;
        const ImportResult result = import(host, base.path());
        ASSERT_TRUE(result.ok) << result.problem.toStdString();
        const int listed = qMax(separators - 1, 0);
        EXPECT_EQ(result.pagesWritten, separators);
        EXPECT_EQ(result.catalogued, listed);
        for (const QString& file : {u"scrapbook.txt"_s, u"scrapbook.rdf"_s})
            EXPECT_TRUE(test::SameText(test::Golden(u"authoring/imported-%1/"_s.arg(listed) + file),
                                       ReadBytes(base.path() + file)));

        const auto lists = test::LoadedLists(base.path());
        EXPECT_EQ(lists.value(u"root"_s), QStringList{QLatin1String(kImportTopFolderId)});
        QStringList entries;
        for (const QString& group : lists.value(QLatin1String(kImportTopFolderId)))
            entries << lists.value(group);
        EXPECT_EQ(entries.size(), listed);
        for (int k = 0; k < entries.size(); ++k)
            EXPECT_EQ(entries.at(k), ImportEntryId(k));
        EXPECT_TRUE(test::XmlReadersAccept(base.path() + u"scrapbook.rdf"_s));
    }
}

void expectRefused(const QByteArray& text, const QStringList& messageParts) {
    test::TempFolder base;
    if (!text.isNull()) base.write(u"data.txt"_s, text);
    test::RecordingHost host;
    const ImportResult result = import(host, base.path());
    EXPECT_FALSE(result.ok);
    for (const QString& part : messageParts)
        EXPECT_TRUE(result.problem.contains(part))
            << result.problem.toStdString() << " lacks " << part.toStdString();
    EXPECT_EQ(pageFolders(base.path()), 0);
    EXPECT_FALSE(QFileInfo::exists(base.path() + u"scrapbook.rdf"_s));
    EXPECT_TRUE(host.log.isEmpty());
}

TEST(TextImport, RefusesBadInputBeforeWritingAnything) {
    expectRefused(QByteArray(), {u"data.txt"_s, u"cannot read"_s});

    // Two hundred lines make an entry; one more is refused.
    QByteArray longEntry = QByteArray("line\r\n").repeated(200);
    test::TempFolder full;
    full.write(u"data.txt"_s, longEntry + "*****\r\n");
    test::RecordingHost host;
    ASSERT_TRUE(import(host, full.path()).ok);
    EXPECT_EQ(ReadBytes(full.path() + "data/20060101000000/index.html").count("<br><br>"), 201);
    longEntry = "*****\r\n" + longEntry + "line\r\n";
    expectRefused(longEntry, {u"data.txt"_s, u"line 202"_s, u"more than 200 lines"_s});

    const QByteArray manyEntries = QByteArray("*****\r\n").repeated(10002);
    expectRefused(manyEntries, {u"data.txt"_s, u"line 10002"_s, u"more than 10001 entries"_s});
}

} // namespace
} // namespace qmr
