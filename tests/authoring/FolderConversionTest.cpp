#include "authoring/FolderConversion.h"

#include "authoring/AuthoringTestSupport.h"
#include "support/RecordingHost.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

using test::ReadBytes;

// The folder "Trip Notes" of the golden files (tests/fixtures/authoring/trip-notes), with a
// subfolder and a hidden file that the conversion leaves out. Its File-Source.TXT gives the
// sources of a.txt, report.pdf and 剪報 2008.txt, in Big5 with CR LF. A later line wins: the
// data.txt line also holds "a.txt", and the second report line overrides the first; a line
// without "*" is harmless when a later line matches or when it matches no file.
QString makeTripNotes(const test::TempFolder& root) {
    test::CopyTree(QStringLiteral(QMR_SOURCE_DIR "/tests/fixtures/authoring/trip-notes"),
                   root.path() + u"Trip Notes"_s);
    return root.path() + u"Trip Notes/"_s;
}

ConversionResult convert(BuildHost& host, const QString& folder, const QString& app,
                         const QStringList& names) {
    return ConvertFolderToScrapbook(test::FixedContext(host, app, u"Trip Notes"_s), folder, names);
}

// Every generated file matches its golden twin, the rest are byte copies of the files, the
// catalogue loads back as one folder of seven files, and the folder's own files are untouched.
TEST(FolderConversion, ConvertsTheFolderWithoutTouchingItsFiles) {
    test::TempFolder root;
    test::TempFolder app;
    const QString folder = makeTripNotes(root);
    const auto before = test::FilesBelow(folder);
    const QStringList names = ListFolderFiles(folder);
    EXPECT_EQ(names, (QStringList{"a b@c&d=e.txt", "a.txt", "data.txt", "empty.dat",
                                  "File-Source.TXT", "report.pdf", "剪報 2008.txt"}));
    test::RecordingHost host;
    // A subfolder passed with the files is skipped like any other.
    const ConversionResult result =
        convert(host, folder, app.path(), QStringList(names) << u"photos"_s);
    ASSERT_TRUE(result.ok) << result.problem.toStdString();
    EXPECT_EQ(result.scrapbookFolder, folder + u"scrapbook/"_s);
    EXPECT_EQ(result.itemCount, 7);
    EXPECT_TRUE(host.log.isEmpty()) << host.log.join('\n').toStdString();
    EXPECT_EQ(ReadBytes(app.path() + u"NodeID.txt"_s), "20080309000007\r\n");

    const auto written = test::FilesBelow(result.scrapbookFolder);
    const auto golden = test::FilesBelow(QStringLiteral(QMR_GOLDEN_DIR "/authoring/converted/"));
    for (auto it = golden.begin(); it != golden.end(); ++it)
        EXPECT_TRUE(test::SameText(it.value().bytes, written.value(it.key()).bytes))
            << it.key().toStdString();
    const QStringList copies = {"a-b-c-d-e.txt",   "a.txt",      "data.txt",     "empty.dat",
                                "File-Source.TXT", "report.pdf", "剪報-2008.txt"};
    EXPECT_EQ(written.size(), golden.size() + copies.size());
    for (int i = 0; i < copies.size(); ++i)
        EXPECT_EQ(written.value(u"data/2008030900000%1/"_s.arg(i + 1) + copies.at(i)).bytes,
                  ReadBytes(folder + names.at(i)));
    int items = 0;
    const auto lists = test::LoadedLists(result.scrapbookFolder, &items);
    EXPECT_EQ(items, 8);
    EXPECT_EQ(lists.value(u"20080309000000"_s).size(), 7);
    EXPECT_TRUE(test::XmlReadersAccept(result.scrapbookFolder + u"scrapbook.rdf"_s));
    EXPECT_EQ(test::FilesBelow(folder, result.scrapbookFolder), before);
    EXPECT_EQ(SanitizeItemName(u"50%#'剪.txt"_s), u"50%#'剪.txt"_s);
}

TEST(FolderConversion, EdgesOfWhatItTakes) {
    test::TempFolder root;
    test::TempFolder app;
    test::RecordingHost host;
    // A name the local code page cannot hold: logged; the copy keeps the real name and the
    // catalogue shows "?" for the character.
    root.write(u"Cafe/café.txt"_s, "x");
    ConversionResult result = convert(host, root.path() + u"Cafe"_s, app.path(), {"café.txt"});
    ASSERT_TRUE(result.ok);
    ASSERT_EQ(host.log.size(), 1);
    EXPECT_TRUE(host.log.first().startsWith(u"café.txt: "_s));
    EXPECT_TRUE(QFileInfo::exists(result.scrapbookFolder + "data/20080309000001/café.txt"));
    EXPECT_TRUE(ReadBytes(result.scrapbookFolder + u"scrapbook.rdf"_s)
                    .contains("NS1:title=\"00000001-caf?.txt\" />"));
    // A target it cannot write.
    root.write(u"Blocked/scrapbook"_s, "a file where the scrapbook folder goes");
    root.write(u"Blocked/a.txt"_s, "A");
    result = convert(host, root.path() + u"Blocked"_s, app.path(), {"a.txt"});
    EXPECT_FALSE(result.ok);
    EXPECT_TRUE(result.problem.contains(u"write"_s));
}

// Each bad input is refused before anything is written: no scrapbook folder, no identifier.
TEST(FolderConversion, RefusesBadInputBeforeWritingAnything) {
    test::TempFolder root;
    test::TempFolder app;
    const QString folder = makeTripNotes(root);
    const QString sources = folder + u"File-Source.TXT"_s;
    auto expectRefused = [&](const QString& from, const QStringList& names,
                             const QStringList& parts) {
        test::RecordingHost host;
        const ConversionResult result = convert(host, from, app.path(), names);
        EXPECT_FALSE(result.ok);
        for (const QString& part : parts)
            EXPECT_TRUE(result.problem.contains(part))
                << result.problem.toStdString() << " lacks " << part.toStdString();
        EXPECT_FALSE(QFileInfo::exists(from + u"/scrapbook/scrapbook.rdf"_s));
        EXPECT_FALSE(QFileInfo::exists(app.path() + u"NodeID.txt"_s));
    };
    // The last line naming a file has no "*" to end its source.
    root.write(u"Trip Notes/File-Source.TXT"_s,
               ReadBytes(sources) + "the empty.dat file came from a friend\r\n");
    expectRefused(folder, ListFolderFiles(folder),
                  {QDir::toNativeSeparators(sources), "line 8", "empty.dat", "\"*\""});
    root.write(u"Trip Notes/File-Source.TXT"_s,
               QByteArray("http://example.com/*nothing\r\n").repeated(10002));
    expectRefused(folder, ListFolderFiles(folder), {QDir::toNativeSeparators(sources), "10001"});
    QFile::remove(sources);
    root.write(u"Trip Notes/a<b.txt"_s, "x");
    for (const char* name : {".", "..", "../outside.txt", "sub/x.txt", "a\\b.txt", "", "a\nb.txt",
                             "say \"hi\".txt", "a<b.txt"})
        expectRefused(folder, {QString::fromUtf8(name)}, {folder});
    expectRefused(folder, {"gone.txt"}, {"gone.txt", "cannot read"});
    expectRefused(root.path() + u"Missing"_s, {}, {"Missing", "no such folder"});
    for (int i = 0; i < 10002; ++i)
        root.write(u"Many/f%1"_s.arg(i), QByteArray());
    expectRefused(root.path() + u"Many"_s, ListFolderFiles(root.path() + u"Many"_s),
                  {"Many", "more than 10001 files"});
}

} // namespace
} // namespace qmr
