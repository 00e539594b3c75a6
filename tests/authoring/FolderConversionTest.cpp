#include "authoring/FolderConversion.h"

#include "authoring/AuthoringTestSupport.h"
#include "catalogue/RdfReader.h"
#include "support/RecordingHost.h"
#include "support/TempFolder.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::ReadBytes;

// The sources of a.txt, report.pdf and 剪報 2008.txt, in Big5 with CR LF. A later line wins:
// the data.txt line also holds "a.txt", and the second report line overrides the first; a
// line without "*" is harmless when a later line matches or when it matches no file.
const QByteArray kSourceList = "http://example.com/a.txt*a.txt\r\n"
                               "http://example.com/old report*report.pdf\r\n"
                               "old notes about report.pdf\r\n"
                               "http://example.com/new report*REPORT.PDF\r\n"
                               "http://example.com/\xB0\xC5\xB3\xF8*\xB0\xC5\xB3\xF8 2008.txt\r\n"
                               "http://example.com/data?x=1&y=2*data.txt\r\n"
                               "no star on this line, and it names no file\r\n";

// The folder "Trip Notes" of the golden files, with a subfolder and a hidden file that the
// conversion leaves out.
QString makeTripNotes(const test::TempFolder& root) {
    const QString folder = QStringLiteral("Trip Notes/");
    root.write(folder + QStringLiteral("a b@c&d=e.txt"), "hello\r\n");
    root.write(folder + QStringLiteral("a.txt"), "A");
    root.write(folder + QStringLiteral("data.txt"), QByteArray(1234, 'x'));
    root.write(folder + QStringLiteral("empty.dat"), QByteArray());
    root.write(folder + QStringLiteral("File-Source.TXT"), kSourceList);
    root.write(folder + QStringLiteral("report.pdf"), "%PDF-1.4\n");
    root.write(folder + QStringLiteral("剪報 2008.txt"), "abc");
    root.write(folder + QStringLiteral("photos/inside.jpg"), "not converted");
    root.write(folder + QStringLiteral(".hidden"), "not listed");
    return root.path() + folder;
}

struct Converted {
    ConversionResult result;
    test::RecordingHost host;
};

void convert(Converted& out, const QString& folder, const QString& app, const QStringList& names) {
    const AuthoringContext context =
        test::FixedContext(out.host, app, QStringLiteral("Trip Notes"));
    out.result = ConvertFolderToScrapbook(context, folder, names);
}

TEST(FolderConversion, SanitizesNamesAndFindsTheLastSourceLine) {
    EXPECT_EQ(SanitizeItemName(QStringLiteral("a b@c&d=e.txt")), QStringLiteral("a-b-c-d-e.txt"));
    EXPECT_EQ(SanitizeItemName(QStringLiteral("50%#'剪.txt")), QStringLiteral("50%#'剪.txt"));
    const QStringList lines = {QStringLiteral("x*A.TXT"), QStringLiteral("y*b.txt"),
                               QStringLiteral("z*data.txt")};
    EXPECT_EQ(FindSourceLine(QStringLiteral("a.txt"), lines), 2);
    EXPECT_EQ(FindSourceLine(QStringLiteral("B.Txt"), lines), 1);
    EXPECT_EQ(FindSourceLine(QStringLiteral("c.txt"), lines), -1);
    EXPECT_EQ(FindSourceLine(QStringLiteral("a.txt"), {}), -1);
}

TEST(FolderConversion, ListsOnlyTheFilesDirectlyInTheFolder) {
    test::TempFolder root;
    const QString folder = makeTripNotes(root);
    EXPECT_EQ(ListFolderFiles(folder),
              (QStringList{QStringLiteral("a b@c&d=e.txt"), QStringLiteral("a.txt"),
                           QStringLiteral("data.txt"), QStringLiteral("empty.dat"),
                           QStringLiteral("File-Source.TXT"), QStringLiteral("report.pdf"),
                           QStringLiteral("剪報 2008.txt")}));
}

// Every generated file matches its golden twin; the rest are byte copies of the files.
void expectGoldenTree(const QString& folder, const QString& scrapbookFolder) {
    const QMap<QString, QByteArray> written = test::FilesBelow(scrapbookFolder);
    const QMap<QString, QByteArray> golden =
        test::FilesBelow(QStringLiteral(QMR_GOLDEN_DIR "/authoring/converted/"));
    const QStringList copies = {QStringLiteral("a-b-c-d-e.txt"),   QStringLiteral("a.txt"),
                                QStringLiteral("data.txt"),        QStringLiteral("empty.dat"),
                                QStringLiteral("File-Source.TXT"), QStringLiteral("report.pdf"),
                                QStringLiteral("剪報-2008.txt")};
    const QStringList originals = ListFolderFiles(folder);
    EXPECT_EQ(written.size(), golden.size() + copies.size());
    for (auto it = golden.begin(); it != golden.end(); ++it)
        test::ExpectSameFile(written.value(it.key()), it.value(), it.key());
    for (int i = 0; i < copies.size(); ++i) {
        const QString copy = QStringLiteral("data/2008030900000%1/").arg(i + 1) + copies.at(i);
        EXPECT_EQ(written.value(copy), ReadBytes(folder + originals.at(i))) << copy.toStdString();
    }
}

// Loaded back, the catalogue is one folder holding the seven files in order.
void expectLoadsBack(const QString& scrapbookFolder) {
    test::TempFolder working;
    Catalogue catalogue;
    ASSERT_TRUE(RecodeAndLoadCatalogue(scrapbookFolder, catalogue, nullptr, {}, working.path()));
    ASSERT_EQ(catalogue.itemCount, 8);
    EXPECT_EQ(catalogue.items.at(0).title, QStringLiteral("Trip Notes"));
    EXPECT_EQ(catalogue.items.at(7).title, QStringLiteral("00000003-剪報-2008.txt"));
    EXPECT_EQ(catalogue.items.at(7).source, QStringLiteral("http://example.com/剪報"));
    QStringList fileIds;
    for (int i = 1; i <= 7; ++i) {
        EXPECT_EQ(catalogue.items.at(i).type, QStringLiteral("file"));
        fileIds << catalogue.items.at(i).id;
    }
    const QMap<QString, QStringList> tree = test::CatalogueTree(catalogue);
    EXPECT_EQ(tree.value(QStringLiteral("root")), QStringList{catalogue.items.at(0).id});
    EXPECT_EQ(tree.value(catalogue.items.at(0).id), fileIds);
    if (test::XmllintInstalled()) {
        EXPECT_TRUE(test::XmllintAccepts(scrapbookFolder + QStringLiteral("scrapbook.rdf")));
    }
}

TEST(FolderConversion, ConvertsTheFolderWithoutTouchingItsFiles) {
    test::TempFolder root;
    test::TempFolder app;
    const QString folder = makeTripNotes(root);
    const auto before = test::SnapshotFiles(folder);
    Converted out;
    // A subfolder passed with the files is skipped like any other.
    convert(out, folder, app.path(), ListFolderFiles(folder) << QStringLiteral("photos"));
    ASSERT_TRUE(out.result.ok) << out.result.problem.toStdString();
    EXPECT_EQ(out.result.scrapbookName, QStringLiteral("Trip Notes"));
    EXPECT_EQ(out.result.scrapbookFolder, folder + QStringLiteral("scrapbook/"));
    EXPECT_EQ(out.result.storeEntry(),
              QStringLiteral("Trip Notes*") + QDir::toNativeSeparators(folder + "scrapbook"));
    EXPECT_EQ(out.result.itemCount, 7);
    EXPECT_TRUE(out.host.log.isEmpty()) << out.host.log.join('\n').toStdString();
    EXPECT_EQ(ReadBytes(app.path() + QStringLiteral("NodeID.txt")), "20080309000007\r\n");

    expectGoldenTree(folder, out.result.scrapbookFolder);
    expectLoadsBack(out.result.scrapbookFolder);
    EXPECT_EQ(test::SnapshotFiles(folder, out.result.scrapbookFolder), before);
}

TEST(FolderConversion, AnEmptyFolderGetsTheFolderWithAnEmptyList) {
    test::TempFolder root;
    test::TempFolder app;
    QDir().mkpath(root.path() + QStringLiteral("Empty"));
    Converted out;
    convert(out, root.path() + QStringLiteral("Empty"), app.path(), {});
    ASSERT_TRUE(out.result.ok);
    const QByteArray rdf = ReadBytes(out.result.scrapbookFolder + QStringLiteral("scrapbook.rdf"));
    EXPECT_TRUE(rdf.contains("NS1:source=\"\" />\r\n"
                             "  <RDF:Seq RDF:about=\"urn:scrapbook:item20080309000000\">\r\n"
                             "  </RDF:Seq>\r\n"
                             "</RDF:RDF>\r\n"));
}

// Each bad input is refused before anything is written: no scrapbook folder, no identifier.
void expectRefused(const QString& folder, const QString& app, const QStringList& names,
                   const QStringList& messageParts) {
    Converted out;
    convert(out, folder, app, names);
    EXPECT_FALSE(out.result.ok);
    for (const QString& part : messageParts)
        EXPECT_TRUE(out.result.problem.contains(part))
            << out.result.problem.toStdString() << " lacks " << part.toStdString();
    EXPECT_FALSE(QFileInfo::exists(folder + QStringLiteral("/scrapbook/scrapbook.rdf")));
    EXPECT_FALSE(QFileInfo::exists(app + QStringLiteral("NodeID.txt")));
}

TEST(FolderConversion, RefusesBadInputBeforeWritingAnything) {
    test::TempFolder root;
    test::TempFolder app;
    const QString folder = makeTripNotes(root);
    const QString sources = folder + QStringLiteral("File-Source.TXT");

    // The last line naming a file has no "*" to end its source.
    root.write(QStringLiteral("Trip Notes/File-Source.TXT"),
               kSourceList + "the empty.dat file came from a friend\r\n");
    expectRefused(folder, app.path(), ListFolderFiles(folder),
                  {QDir::toNativeSeparators(sources), QStringLiteral("line 8"),
                   QStringLiteral("empty.dat"), QStringLiteral("\"*\"")});

    QByteArray longList;
    for (int i = 0; i < 10002; ++i)
        longList += "http://example.com/*nothing\r\n";
    root.write(QStringLiteral("Trip Notes/File-Source.TXT"), longList);
    expectRefused(folder, app.path(), ListFolderFiles(folder),
                  {QDir::toNativeSeparators(sources), QStringLiteral("10001")});
    QFile::remove(sources);

    root.write(QStringLiteral("Trip Notes/a<b.txt"), "x");
    for (const char* name : {".", "..", "../outside.txt", "sub/x.txt", "a\\b.txt", "", "a\nb.txt",
                             "say \"hi\".txt", "a<b.txt"})
        expectRefused(folder, app.path(), {QString::fromUtf8(name)}, {folder});
    expectRefused(folder, app.path(), {QStringLiteral("gone.txt")},
                  {QStringLiteral("gone.txt"), QStringLiteral("cannot read")});
    expectRefused(root.path() + QStringLiteral("Missing"), app.path(), {},
                  {QStringLiteral("Missing"), QStringLiteral("no such folder")});
}

TEST(FolderConversion, RefusesMoreFilesThanTheIdentifierTable) {
    test::TempFolder root;
    test::TempFolder app;
    for (int i = 0; i < 10002; ++i)
        root.write(QStringLiteral("Many/f%1").arg(i), QByteArray());
    expectRefused(root.path() + QStringLiteral("Many"), app.path(),
                  ListFolderFiles(root.path() + QStringLiteral("Many")),
                  {QStringLiteral("Many"), QStringLiteral("more than 10001 files")});
}

TEST(FolderConversion, ReportsATargetItCannotWrite) {
    test::TempFolder root;
    test::TempFolder app;
    root.write(QStringLiteral("Blocked/scrapbook"), "a file where the scrapbook folder goes");
    root.write(QStringLiteral("Blocked/a.txt"), "A");
    Converted out;
    convert(out, root.path() + QStringLiteral("Blocked"), app.path(), {QStringLiteral("a.txt")});
    EXPECT_FALSE(out.result.ok);
    EXPECT_TRUE(out.result.problem.contains(QStringLiteral("scrapbook")));
    EXPECT_TRUE(out.result.problem.contains(QStringLiteral("write")));
}

TEST(FolderConversion, LogsNamesTheLocalCodePageCannotHold) {
    test::TempFolder root;
    test::TempFolder app;
    root.write(QStringLiteral("Cafe/café.txt"), "x");
    Converted out;
    convert(out, root.path() + QStringLiteral("Cafe"), app.path(), {QStringLiteral("café.txt")});
    ASSERT_TRUE(out.result.ok);
    ASSERT_EQ(out.host.log.size(), 1);
    EXPECT_TRUE(out.host.log.first().startsWith(QStringLiteral("café.txt: ")));
    // The copy keeps the real name; the catalogue shows "?" where the code page has no "é".
    EXPECT_TRUE(QFileInfo::exists(out.result.scrapbookFolder +
                                  QStringLiteral("data/20080309000001/café.txt")));
    EXPECT_TRUE(ReadBytes(out.result.scrapbookFolder + QStringLiteral("scrapbook.rdf"))
                    .contains("NS1:title=\"00000001-caf?.txt\" />"));
}

} // namespace
} // namespace qmr
