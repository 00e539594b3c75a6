#include "authoring/MultiBook.h"
#include "authoring/TextImport.h"

#include "authoring/AuthoringContext.h"
#include "authoring/CatalogueWriter.h"
#include "authoring/FolderConversion.h"
#include "authoring/NodeId.h"
#include "catalogue/CatalogueWalk.h"
#include "catalogue/RdfReader.h"
#include "library/ScrapbookStore.h"
#include "support/Golden.h"
#include "support/Programs.h"
#include "support/RecordingHost.h"
#include "support/TempFolder.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QMap>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

using test::Golden;
using test::MakeScrapbook;
using test::ReadBytes;
using test::RecordingHost;
using test::SameText;
using test::TempFolder;

// The day every identifier in these tests is drawn on, so the golden files stay stable.
const QDate kIdentifierDay(2008, 3, 9);

// A context that draws identifiers on kIdentifierDay from a counter in `appFolder`.
AuthoringContext FixedContext(BuildHost& host, const QString& appFolder,
                              const QString& scrapbookName) {
    AuthoringContext context(host);
    context.applicationFolder = appFolder;
    context.today = [] { return kIdentifierDay; };
    context.chrome.scrapbookName = scrapbookName;
    return context;
}

// Bytes and last-write time of every file below a folder, by path relative to it, leaving out
// what lies below `skip`; to show which files a command made and that it changed no other.
struct FileState {
    QByteArray bytes;
    QDateTime modified;
    bool operator==(const FileState&) const = default;
};
QMap<QString, FileState> FilesBelow(const QString& folder, const QString& skip = {}) {
    QMap<QString, FileState> files;
    QDirIterator it(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        if (skip.isEmpty() || !path.startsWith(skip))
            files.insert(path.mid(folder.size()),
                         {ReadBytes(path), QFileInfo(path).lastModified()});
    }
    return files;
}

// A written scrapbook loaded back (its working copy made elsewhere, so that the one written
// stays as it is): each folder's identifier ("root" for the top) with the identifiers its
// list places, in order.
QMap<QString, QStringList> LoadedLists(const QString& scrapbook, int* itemCount = nullptr) {
    TempFolder working;
    Catalogue catalogue;
    InputError error;
    EXPECT_TRUE(RecodeAndLoadCatalogue(scrapbook, catalogue, &error, {}, working.path()))
        << error.text().toStdString();
    if (itemCount) *itemCount = catalogue.itemCount;
    const CatalogueWalk walk(catalogue);
    QMap<QString, QStringList> lists;
    for (const WalkStep& step : walk.steps())
        if (step.kind == WalkStep::Kind::Place)
            lists[walk.parentName(step.parent)] << catalogue.items.at(step.item).id;
    return lists;
}

// xmllint's verdict on a written catalogue; true where xmllint is not installed.
bool XmlReadersAccept(const QString& path) {
    if (!test::HasProgram(u"xmllint"_s)) return true;
    return test::RunProgram(u"xmllint"_s, {u"--noout"_s, path}).exitCode == 0;
}

// Imports base/data.txt with identifiers drawn on the tests' day.
ImportResult import(RecordingHost& host, const QString& base) {
    return ImportTextToScrapbook(FixedContext(host, base + u"app/"_s, u"笑話集"_s), base);
}

int pageFolders(const QString& base) {
    return int(QDir(base + u"data"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size());
}

TEST(TextImport, WritesTheShowcaseExactly) {
    // Windows and Unix line ends read the same.
    const QByteArray showcase = test::Fixture(u"authoring/showcase/data.txt"_s);
    for (const QByteArray& text : {showcase, QByteArray(showcase).replace("\r\n", "\n")}) {
        TempFolder base;
        base.write(u"data.txt"_s, text);
        RecordingHost host;
        const ImportResult result = import(host, base.path());
        ASSERT_TRUE(result.ok) << result.problem.toStdString();
        EXPECT_EQ(host.log, (QStringList{u"0=>"_s, u"1=>Hello"_s,
                                         u"2=>A &quot;quoted&quot; &lt;title&gt; & more"_s,
                                         u"3=>Manual.pdf"_s, u"4=>*****"_s}));
        for (const char* file :
             {"scrapbook.txt", "scrapbook.rdf", "data/20060101000000/index.html",
              "data/20060101000001/index.html", "data/20060101000004/index.html"})
            EXPECT_TRUE(SameText(Golden(u"authoring/showcase/"_s + QLatin1String(file)),
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
        TempFolder base;
        base.write(u"data.txt"_s, countedText(separators));
        RecordingHost host;
        const ImportResult result = import(host, base.path());
        ASSERT_TRUE(result.ok) << result.problem.toStdString();
        const int listed = qMax(separators - 1, 0);
        EXPECT_EQ(result.pagesWritten, separators);
        EXPECT_EQ(result.catalogued, listed);
        for (const QString& file : {u"scrapbook.txt"_s, u"scrapbook.rdf"_s})
            EXPECT_TRUE(SameText(Golden(u"authoring/imported-%1/"_s.arg(listed) + file),
                                 ReadBytes(base.path() + file)));

        const auto lists = LoadedLists(base.path());
        EXPECT_EQ(lists.value(u"root"_s), QStringList{QLatin1String(kImportTopFolderId)});
        QStringList entries;
        for (const QString& group : lists.value(QLatin1String(kImportTopFolderId)))
            entries << lists.value(group);
        EXPECT_EQ(entries.size(), listed);
        for (int k = 0; k < entries.size(); ++k)
            EXPECT_EQ(entries.at(k), ImportEntryId(k));
        EXPECT_TRUE(XmlReadersAccept(base.path() + u"scrapbook.rdf"_s));
    }
}

void expectRefused(const QByteArray& text, const QStringList& messageParts) {
    TempFolder base;
    if (!text.isNull()) base.write(u"data.txt"_s, text);
    RecordingHost host;
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
    TempFolder full;
    full.write(u"data.txt"_s, longEntry + "*****\r\n");
    RecordingHost host;
    ASSERT_TRUE(import(host, full.path()).ok);
    EXPECT_EQ(ReadBytes(full.path() + "data/20060101000000/index.html").count("<br><br>"), 201);
    longEntry = "*****\r\n" + longEntry + "line\r\n";
    expectRefused(longEntry, {u"data.txt"_s, u"line 202"_s, u"more than 200 lines"_s});

    const QByteArray manyEntries = QByteArray("*****\r\n").repeated(10002);
    expectRefused(manyEntries, {u"data.txt"_s, u"line 10002"_s, u"more than 10001 entries"_s});
}

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
    TempFolder folder;
    ASSERT_TRUE(lineFormsCatalogue().Save(folder.path()));
    EXPECT_TRUE(SameText(Golden(u"authoring/line-forms/scrapbook.txt"_s),
                         ReadBytes(folder.path() + u"scrapbook.txt"_s)));
    EXPECT_TRUE(SameText(Golden(u"authoring/line-forms/scrapbook.rdf"_s),
                         ReadBytes(folder.path() + u"scrapbook.rdf"_s)));
    int items = 0;
    const auto lists = LoadedLists(folder.path(), &items);
    EXPECT_EQ(items, 4);
    EXPECT_EQ(lists.value(u"20080309000000"_s),
              (QStringList{"20080309000001", "20080309000002", "20080309000003"}));
    EXPECT_TRUE(XmlReadersAccept(folder.path() + u"scrapbook.rdf"_s));

    EXPECT_EQ(ImportEntryId(10001), u"20060101010001"_s); // entries run past five digits

    QString error;
    folder.write(u"blocker"_s, "a file where the folder should be");
    EXPECT_FALSE(lineFormsCatalogue().Save(folder.path() + u"blocker/"_s, &error));
    EXPECT_TRUE(error.contains(u"scrapbook.txt"_s)) << error.toStdString();
}

TEST(NodeId, CountsWithinADayFromTheCounterFileAndRestartsOnTheNext) {
    EXPECT_EQ(FormatNodeID(1000042, kIdentifierDay), u"20080309000042"_s); // six digits
    TempFolder app;
    NodeIdGenerator generator(app.path());
    EXPECT_EQ(generator.NewNodeID(kIdentifierDay), u"20080309000000"_s);
    EXPECT_EQ(generator.NewNodeID(kIdentifierDay), u"20080309000001"_s);
    EXPECT_EQ(ReadBytes(app.path() + u"NodeID.txt"_s), "20080309000001\r\n");
    // A second program sharing the folder continues the sequence.
    EXPECT_EQ(NodeIdGenerator(app.path()).NewNodeID(kIdentifierDay), u"20080309000002"_s);
    EXPECT_EQ(generator.NewNodeID(kIdentifierDay.addDays(1)), u"20080310000000"_s);
    for (const auto& [stored, next] : {std::pair{"20080308000041\r\n", "20080309000000"},
                                       {"20080309000041\r\n", "20080309000042"},
                                       {"20080309abcdef\r\n", "20080309000001"},
                                       {"", "20080309000000"}}) {
        app.write(u"NodeID.txt"_s, stored);
        EXPECT_EQ(NodeIdGenerator(app.path()).NewNodeID(kIdentifierDay), QLatin1String(next))
            << stored;
    }
    app.write(u"blocker"_s, "a file where a folder should be");
    QString error;
    EXPECT_EQ(NodeIdGenerator(app.path() + u"blocker/"_s).NewNodeID(kIdentifierDay, &error),
              QString());
    EXPECT_TRUE(error.contains(u"NodeID.txt"_s));
}

// The folder "Trip Notes" of the golden files (tests/fixtures/authoring/trip-notes), with a
// subfolder and a hidden file that the conversion leaves out. Its File-Source.TXT gives the
// sources of a.txt, report.pdf and 剪報 2008.txt, in Big5 with CR LF. A later line wins: the
// data.txt line also holds "a.txt", and the second report line overrides the first; a line
// without "*" is harmless when a later line matches or when it matches no file.
QString makeTripNotes(const TempFolder& root) {
    test::CopyTree(QStringLiteral(QMR_SOURCE_DIR "/tests/fixtures/authoring/trip-notes"),
                   root.path() + u"Trip Notes"_s);
    return root.path() + u"Trip Notes/"_s;
}

ConversionResult convert(BuildHost& host, const QString& folder, const QString& app,
                         const QStringList& names) {
    return ConvertFolderToScrapbook(FixedContext(host, app, u"Trip Notes"_s), folder, names);
}

// Every generated file matches its golden twin, the rest are byte copies of the files, the
// catalogue loads back as one folder of seven files, and the folder's own files are untouched.
TEST(FolderConversion, ConvertsTheFolderWithoutTouchingItsFiles) {
    TempFolder root;
    TempFolder app;
    const QString folder = makeTripNotes(root);
    const auto before = FilesBelow(folder);
    const QStringList names = ListFolderFiles(folder);
    RecordingHost host;
    // A subfolder passed with the files is skipped like any other.
    const ConversionResult result =
        convert(host, folder, app.path(), QStringList(names) << u"photos"_s);
    ASSERT_TRUE(result.ok) << result.problem.toStdString();
    EXPECT_TRUE(host.log.isEmpty()) << host.log.join('\n').toStdString();

    const auto written = FilesBelow(result.scrapbookFolder);
    const auto golden = FilesBelow(QStringLiteral(QMR_GOLDEN_DIR "/authoring/converted/"));
    for (auto it = golden.begin(); it != golden.end(); ++it)
        EXPECT_TRUE(SameText(it.value().bytes, written.value(it.key()).bytes))
            << it.key().toStdString();
    const QStringList copies = {"a-b-c-d-e.txt",   "a.txt",      "data.txt",     "empty.dat",
                                "File-Source.TXT", "report.pdf", "剪報-2008.txt"};
    EXPECT_EQ(written.size(), golden.size() + copies.size());
    for (int i = 0; i < copies.size(); ++i)
        EXPECT_EQ(written.value(u"data/2008030900000%1/"_s.arg(i + 1) + copies.at(i)).bytes,
                  ReadBytes(folder + names.at(i)));
    int items = 0;
    const auto lists = LoadedLists(result.scrapbookFolder, &items);
    EXPECT_EQ(items, 8);
    EXPECT_EQ(lists.value(u"20080309000000"_s).size(), 7);
    EXPECT_TRUE(XmlReadersAccept(result.scrapbookFolder + u"scrapbook.rdf"_s));
    EXPECT_EQ(FilesBelow(folder, result.scrapbookFolder), before);
    EXPECT_EQ(SanitizeItemName(u"50%#'剪.txt"_s), u"50%#'剪.txt"_s);
}

// Each bad input is refused before anything is written: no scrapbook folder, no identifier. A
// name the local code page cannot hold is logged and converted; a target that cannot be
// written fails the conversion.
TEST(FolderConversion, BadInputAndTheEdgesOfWhatItTakes) {
    TempFolder root;
    TempFolder app;
    const QString folder = makeTripNotes(root);
    const QString sources = folder + u"File-Source.TXT"_s;
    auto expectRefused = [&](const QString& from, const QStringList& names,
                             const QStringList& parts) {
        RecordingHost host;
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

    // The copy of a name the local code page cannot hold keeps it; the catalogue shows "?".
    RecordingHost host;
    root.write(u"Cafe/café.txt"_s, "x");
    const ConversionResult converted =
        convert(host, root.path() + u"Cafe"_s, app.path(), {"café.txt"});
    ASSERT_TRUE(converted.ok);
    ASSERT_EQ(host.log.size(), 1);
    EXPECT_TRUE(host.log.first().startsWith(u"café.txt: "_s));
    EXPECT_TRUE(QFileInfo::exists(converted.scrapbookFolder + "data/20080309000001/café.txt"));
    EXPECT_TRUE(ReadBytes(converted.scrapbookFolder + u"scrapbook.rdf"_s)
                    .contains("NS1:title=\"00000001-caf?.txt\" />"));
    root.write(u"Blocked/scrapbook"_s, "a file where the scrapbook folder goes");
    root.write(u"Blocked/a.txt"_s, "A");
    const ConversionResult blocked =
        convert(host, root.path() + u"Blocked"_s, app.path(), {"a.txt"});
    EXPECT_FALSE(blocked.ok);
    EXPECT_TRUE(blocked.problem.contains(u"write"_s));
}

// Scrapbooks below a folder of their own, with an application folder and the place of the
// extension's ScrapBook folder (not made).
struct Machine {
    TempFolder root;
    QByteArray rootBytes = root.path().toUtf8();
    LibraryFolders folders{root.path() + u"app/"_s, root.path() + u"ScrapBook/"_s};
    QString system = folders.scrapbookSystemFolder;
    RecordingHost host;
    QByteArray golden(const char* name) const {
        return Golden(u"authoring/"_s + QLatin1String(name), "@ROOT@", rootBytes);
    }
};

// The list's rows in name order: Unnamed (no name in a fresh run), Alpha, ALPHA, Cats & Dogs,
// 台灣. The unnamed row and the row named like the one before it are not written.
struct ListFixture : Machine {
    AppSettings settings{host};
    ScrapbookList list{settings};
    QString store =
        root.write(u"app/ScrapBookStore.txt"_s,
                   "Alpha*" + rootBytes + "Alpha/\r\nBig*" + rootBytes + "ALPHA2\r\nUnnamed*" +
                       rootBytes + "Unnamed/\r\nTaiwan*" + rootBytes + "Taiwan/\r\n");
    ListFixture() {
        MakeScrapbook(root, u"Alpha"_s, 1, "Alpha");
        MakeScrapbook(root, u"ALPHA2"_s, 1, "ALPHA");
        MakeScrapbook(root, u"Unnamed"_s, 1);
        MakeScrapbook(root, u"Taiwan"_s, 1, "\xA5\x78\xC6\x57");
        MakeScrapbook(root, u"Cats"_s, 1, "Cats & Dogs");
        LoadAllScrapbooksIntoList(list, folders, host);
    }
    MultiBookResult addCats() {
        return AddToMultiScrapbookList(list, u"Cats"_s, root.path() + u"Cats"_s, folders);
    }
};

// The list goes to the ScrapBook folder and the scrapbook to the store; a missing or
// unwritable folder is told in the result.
TEST(MultiBook, FromTheMainList) {
    ListFixture f;
    QDir().mkpath(f.system);
    MultiBookResult result = f.addCats();
    EXPECT_TRUE(result.written && result.copied);
    EXPECT_EQ(result.problems, QStringList());
    EXPECT_EQ(ReadBytes(f.system + u"multibook-BIG5.txt"_s), f.golden("multibook-list-BIG5.txt"));
    EXPECT_EQ(ReadBytes(f.system + u"multibook1.txt"_s), f.golden("multibook-list.txt"));
    EXPECT_EQ(ReadBytes(f.system + u"multibook.txt"_s), f.golden("multibook-list.txt"));
    EXPECT_TRUE(ReadBytes(f.store).endsWith("Taiwan/\r\nCats*" + f.rootBytes + "Cats\r\n"));
    EXPECT_EQ(f.list.count(), 5);

    QDir(f.system).removeRecursively();
    result = f.addCats();
    EXPECT_FALSE(result.written || result.copied);
    ASSERT_EQ(result.problems.size(), 1);
    EXPECT_TRUE(
        result.problems.first().startsWith(u"there is no ScrapBook folder at "_s + f.system))
        << result.problems.first().toStdString();
    EXPECT_FALSE(QFileInfo::exists(f.system));

    // A folder in the way of the working file stands for one that cannot be written.
    QDir().mkpath(f.system + u"multibook-BIG5.txt"_s);
    result = f.addCats();
    EXPECT_FALSE(result.written);
    ASSERT_EQ(result.problems.size(), 1);
    EXPECT_TRUE(result.problems.first().startsWith(u"cannot write "_s + f.system +
                                                   u"multibook-BIG5.txt"_s));
    EXPECT_FALSE(QFileInfo::exists(f.system + "multibook.txt"));
}

// The scan: subfolders with a catalogue, then store lines with one, then "default"; an entry
// equal to the one just before it, ignoring case, is written once.
struct ScanFixture : Machine {
    QString base = root.path() + u"base/"_s;
    QString store = root.write(u"app/ScrapBookStore.txt"_s,
                               "Cats*" + rootBytes + "base/Cats/\r\n\r\nNowhere * " + rootBytes +
                                   "nowhere/\r\nRecipes*" + rootBytes + "Recipes\r\n");
    ScanFixture() {
        for (const char* name : {"base/Alpha", "base/Cats", "base/cats", "base/台灣", "Recipes"})
            MakeScrapbook(root, QString::fromUtf8(name), 1);
        QDir().mkpath(base + u"Empty"_s);
    }
    MultiBookResult scan(const QString& folder) {
        return Menu_Dir2MultiScrapbook_Click(folder, folders, host);
    }
};

// Without a ScrapBook folder the list is made in the base folder, ending with the default
// entry, and the result says it did not reach the extension; with one it is copied there. A
// store line without "*" stops the scan before anything is written, as does a missing base.
TEST(MultiBook, FolderScan) {
    ScanFixture f;
    MultiBookResult result = f.scan(f.base);
    EXPECT_TRUE(result.written && !result.copied && !result.badInput);
    EXPECT_EQ(result.entries.last(), u"default\t"_s + f.system);

    QDir().mkpath(f.system);
    f.host.log.clear();
    result = f.scan(f.base);
    EXPECT_EQ(result.problems, QStringList());
    EXPECT_TRUE(result.copied);
    EXPECT_EQ(ReadBytes(f.base + u"multibook-BIG5.txt"_s), f.golden("multibook-scan-BIG5.txt"));
    EXPECT_EQ(ReadBytes(f.base + u"multibook.txt"_s), f.golden("multibook-scan.txt"));
    EXPECT_EQ(ReadBytes(f.system + u"multibook.txt"_s), f.golden("multibook-scan.txt"));
    EXPECT_EQ(f.host.log, QStringList{"multibook.txt has been created ok!"});

    QFile::remove(f.base + u"multibook.txt"_s);
    QFile::remove(f.base + u"multibook-BIG5.txt"_s);
    f.root.write(u"app/ScrapBookStore.txt"_s, "Cats*/c/\r\nno star here\r\n");
    result = f.scan(f.base);
    EXPECT_TRUE(result.badInput);
    EXPECT_FALSE(result.written);
    ASSERT_EQ(result.problems.size(), 1);
    EXPECT_TRUE(result.problems.first().startsWith(f.store + u": line 2: \"no star here\""_s))
        << result.problems.first().toStdString();
    EXPECT_TRUE(result.problems.first().contains(u"so the scan stopped before writing anything"_s));
    EXPECT_FALSE(QFileInfo::exists(f.base + u"multibook-BIG5.txt"_s));

    result = f.scan(f.root.path() + u"nowhere"_s);
    EXPECT_TRUE(result.badInput);
    EXPECT_EQ(result.problems.size(), 1);
    EXPECT_TRUE(result.problems.first().startsWith(f.root.path() + u"nowhere/: no such folder"_s));
}

} // namespace
} // namespace qmr
