#include "chm/ChmCompiler.h"

#include "platform/CodePage.h"

#include "support/BookReaders.h"
#include "support/Programs.h"
#include "support/TempFolder.h"

#include <QDir>
#include <QRandomGenerator>
#include <QSet>
#include <QTimeZone>
#include <QtEndian>

#include <gtest/gtest.h>

#include <map>

using namespace qmr;
using namespace qmr::chm;

namespace {

QByteArray Lines(std::initializer_list<QByteArray> lines) {
    QByteArray text;
    for (const QByteArray& line : lines)
        text += line + "\r\n";
    return text;
}

QByteArray SitemapEntry(const QByteArray& name, const QByteArray& local) {
    return "<LI> <OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"" + name +
           "\"><param name=\"Local\" value=\"" + local + "\"></OBJECT>";
}

// A project as the e-book builder writes one: two pages, a style sheet, pictures that only a
// background attribute and a style sheet's url(...) name, a table of contents and an index.
void WriteProject(const test::TempFolder& folder, const QByteArray& language,
                  const QByteArray& codePage, const QByteArray& title,
                  const QList<QByteArray>& keywords, const QList<QByteArray>& files) {
    folder.write(
        "Index.hhp",
        Lines({"[Options]", "Binary TOC=No", "Binary Index=Yes",
               "Compiled file= " + folder.path().toUtf8() + "chmcmd.chm", "Full-text search=Yes",
               "Contents file=Index.hhc", "Default Window=main", "Default topic=index.html",
               "Index file=Index.hhk", "Language=" + language, "Title =" + title, "[WINDOWS]",
               "main=\"" + title +
                   "\",\"index.hhc\",\"index.hhk\",\"index.html\",\"index.html\",,,,,"
                   "0x23520,0,0x70387E,,0xB0000,,,,,,0",
               "[Files]"}) +
            Lines(std::initializer_list<QByteArray>{}) + files.join("\r\n") + "\r\n");
    const QByteArray head = "<HTML><HEAD><meta http-equiv=\"Content-Type\" content=\"text/html; "
                            "charset=" +
                            codePage + "\"></HEAD><BODY><UL>\r\n";
    folder.write("Index.hhc", head + SitemapEntry(title, "index.html") + "\r\n<UL>" +
                                  SitemapEntry(keywords[0], "data/20240101000000/index.html") +
                                  "</UL></UL></BODY></HTML>\r\n");
    folder.write("Index.hhk", head + SitemapEntry(keywords[0], "data/20240101000000/index.html") +
                                  SitemapEntry(keywords[1], "index.html") +
                                  "</UL></BODY></HTML>\r\n");
    folder.write("index.html", "<html><head><title>" + title +
                                   "</title><link rel=\"stylesheet\" href=\"style.css\"></head>"
                                   "<body><img src=\"pic.png\"><a href=\"data/20240101000000/"
                                   "index.html\">more</a> home words</body></html>");
    folder.write("data/20240101000000/index.html",
                 "<html><head><title>" + keywords[0] +
                     "</title></head><body background=\"../../bg.gif\">alpha words</body></html>");
    folder.write("style.css", "body { background: url(css.png); }");
    for (const char* picture : {"pic.png", "bg.gif", "css.png"})
        folder.write(picture, QByteArray("picture ") + picture);
}

// The files a reader shows: neither the compiler's own (#..., $..., ::...) nor chmcmd's notice.
QSet<QString> ContentFiles(const QString& book) {
    QSet<QString> files;
    for (const QString& name : test::ChmLibListing(book))
        if (!name.startsWith(QLatin1String("/#")) && !name.startsWith(QLatin1String("/$")) &&
            !name.startsWith(QLatin1String("/_#_")) && !name.startsWith(QLatin1String("::")))
            files.insert(name);
    return files;
}

// #SYSTEM's entries by code, as extracted by chmlib.
std::map<int, QByteArray> SystemEntries(const QString& book, const QString& folder) {
    EXPECT_TRUE(test::ExtractWithChmLib(book, folder));
    const auto entries = test::SystemEntries(test::ReadBytes(folder + QStringLiteral("/#SYSTEM")));
    return {entries.begin(), entries.end()};
}

QByteArray Utf16(QStringView text) {
    return QByteArray(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
}

bool ReadersAvailable() {
    for (const char* program : {"chmcmd", "enum_chmLib", "7z", "mspack_extract"})
        if (!test::ProgramAvailable(QString::fromLatin1(program))) return false;
    return true;
}

} // namespace

TEST(ChmCompiler, PacksWhatChmcmdPacksAndWhatItMissesWithTheSameOptions) {
    if (!ReadersAvailable()) GTEST_SKIP() << "chmcmd or a reader is not installed";
    const test::TempFolder folder;
    WriteProject(folder, "0x409 English (United States)", "windows-1252", "Home", {"Alpha", "Zulu"},
                 {"index.html", "data/20240101000000/index.html"});
    ASSERT_EQ(test::RunProgram(QStringLiteral("chmcmd"), {"Index.hhp"}, {}, folder.path()).exitCode,
              0);
    const QString ours = folder.path() + QStringLiteral("ours.chm");
    CompileLog log;
    ASSERT_TRUE(CompileHelpProject(folder.path() + "Index.hhp", {ours, 2, {}, {}, {}, {}}, log))
        << log.lines().join('\n').toStdString();

    const QSet<QString> chmcmdFiles = ContentFiles(folder.path() + "chmcmd.chm");
    const QSet<QString> ourFiles = ContentFiles(ours);
    EXPECT_TRUE(ourFiles.contains(chmcmdFiles));
    // chmcmd misses the pictures only a background attribute and a style sheet's url(...) name.
    EXPECT_EQ(ourFiles - chmcmdFiles, (QSet<QString>{"/bg.gif", "/css.png"}));
    EXPECT_TRUE(test::SevenZipTests(ours));
    EXPECT_TRUE(test::ExtractWithMspack(ours, folder.path() + "mspack"));

    auto theirs = SystemEntries(folder.path() + "chmcmd.chm", folder.path() + "chmcmd-files");
    auto mine = SystemEntries(ours, folder.path() + "our-files");
    for (int code : {0, 1, 2, 3})
        EXPECT_EQ(mine[code], theirs[code]) << "#SYSTEM entry " << code;
    EXPECT_EQ(mine[4].left(4), theirs[4].left(4)) << "language";
    EXPECT_EQ(test::ReadBytes(folder.path() + "our-files/index.html"),
              test::ReadBytes(folder.path() + "index.html"));
}

TEST(ChmCompiler, ChineseKeywordsAreWideAndTitlesInTheBooksCodePage) {
    if (!ReadersAvailable()) GTEST_SKIP() << "a reader is not installed";
    const test::TempFolder folder;
    const CodePage big5(QStringLiteral("Big5"));
    const QByteArray title = big5.encode(u"我的書");
    WriteProject(folder, "0x404 Chinese (Traditional/Taiwan)", "big5", title,
                 {big5.encode(u"第一篇"), big5.encode(u"索引")},
                 {"index.html", "data/20240101000000/index.html"});
    const QString book = folder.path() + QStringLiteral("book.chm");
    CompileLog log;
    ASSERT_TRUE(CompileHelpProject(folder.path() + "Index.hhp", {book, 1, {}, {}, {}, {}}, log))
        << log.lines().join('\n').toStdString();
    EXPECT_TRUE(test::SevenZipTests(book));
    const QString files = folder.path() + QStringLiteral("files");
    auto system = SystemEntries(book, files);
    EXPECT_EQ(system[3], title + '\0');
    EXPECT_EQ(system[4].mid(0, 8), QByteArray("\x04\x04\0\0\x01\0\0\0", 8)) << "double-byte";
    EXPECT_EQ(system[4].mid(8, 4), QByteArray("\x01\0\0\0", 4)) << "full-text index";
    const QByteArray btree = test::ReadBytes(files + "/$WWKeywordLinks/BTree");
    EXPECT_TRUE(btree.contains(Utf16(u"第一篇") + '\0' + '\0'));
    EXPECT_TRUE(btree.contains(Utf16(u"索引") + '\0' + '\0'));
    EXPECT_TRUE(test::ReadBytes(files + "/#STRINGS").contains(title + '\0'));
    EXPECT_TRUE(QFile::exists(files + "/$FIftiMain"));
}

TEST(ChmCompiler, AMissingFileIsAnErrorAndNoBook) {
    const test::TempFolder folder;
    WriteProject(folder, "0x409 English (United States)", "windows-1252", "Home", {"Alpha", "Zulu"},
                 {"index.html", "missing.html"});
    const QString book = folder.write(QStringLiteral("book.chm"), "the old book");
    CompileLog log;
    EXPECT_FALSE(CompileHelpProject(folder.path() + "Index.hhp", {book, 1, {}, {}, {}, {}}, log));
    EXPECT_TRUE(log.hasErrors());
    EXPECT_TRUE(log.lines().join('\n').contains(QLatin1String("missing.html")));
    EXPECT_EQ(test::ReadBytes(book), QByteArray("the old book"));

    CompileLog cancelledLog;
    CompileOptions cancelled{folder.path() + "new.chm", 1, {}, {}, [] { return true; }, {}};
    folder.write("Index.hhp",
                 test::ReadBytes(folder.path() + "Index.hhp").replace("missing.html", "style.css"));
    EXPECT_FALSE(CompileHelpProject(folder.path() + "Index.hhp", cancelled, cancelledLog));
    EXPECT_FALSE(QFile::exists(folder.path() + "new.chm"));
    EXPECT_EQ(QDir(folder.path()).entryList({"*.tmp"}, QDir::Files), QStringList());

    CompileLog noProject;
    EXPECT_FALSE(CompileHelpProject(folder.path() + "none.hhp", {}, noProject));
    EXPECT_TRUE(noProject.lines().join('\n').contains(QLatin1String("none.hhp")));
}

namespace {

// The NUL-ended string at `offset` of #STRINGS.
QByteArray StringAt(const QByteArray& strings, quint32 offset) {
    return strings.mid(offset, strings.indexOf('\0', offset) - offset);
}

quint32 U32At(const QByteArray& bytes, qsizetype at) {
    return qFromLittleEndian<quint32>(bytes.constData() + at);
}

} // namespace

// The e-book build names index.html even when the scrapbook has none; the book must still open
// on a page: the first page of the contents file that it holds (the contents' first entry names
// the missing page itself), else the first topic. chmlib reads back #SYSTEM and the window.
TEST(ChmCompiler, AMissingDefaultTopicGivesWayToTheFirstPageOfTheContents) {
    if (!test::ProgramAvailable(QStringLiteral("extract_chmLib")))
        GTEST_SKIP() << "chmlib is not installed";
    const test::TempFolder folder;
    WriteProject(folder, "0x409 English (United States)", "windows-1252", "Home", {"Alpha", "Zulu"},
                 {"style.css", "data/20240102000000/index.html", "data/20240101000000/index.html"});
    folder.write("data/20240102000000/index.html", "<title>Second</title>beta");
    QFile::remove(folder.path() + "index.html");
    const QString page = QStringLiteral("data/20240101000000/index.html");
    for (const bool withContents : {true, false}) {
        if (!withContents)
            folder.write("Index.hhp", test::ReadBytes(folder.path() + "Index.hhp")
                                          .replace("Contents file=Index.hhc\r\n", ""));
        const QString expected =
            withContents ? page : QStringLiteral("data/20240102000000/index.html");
        SCOPED_TRACE(expected.toStdString());
        const QString book = folder.path() + QStringLiteral("book.chm");
        CompileLog log;
        ASSERT_TRUE(CompileHelpProject(folder.path() + "Index.hhp", {book, 2, {}, {}, {}, {}}, log))
            << log.lines().join('\n').toStdString();
        EXPECT_TRUE(log.lines().contains(
            QStringLiteral(
                "Warning: %1Index.hhp: the default topic \"index.html\" is not a file of "
                "the book; it opens on %2 instead (name an existing page in the "
                "project's \"Default topic=\")")
                .arg(folder.path(), expected)))
            << log.lines().join('\n').toStdString();

        const QString files = folder.path() + QStringLiteral("files");
        auto system = SystemEntries(book, files);
        EXPECT_EQ(system[2], expected.toUtf8() + '\0');
        const QByteArray windows = test::ReadBytes(files + "/#WINDOWS");
        const QByteArray strings = test::ReadBytes(files + "/#STRINGS");
        ASSERT_EQ(windows.size(), 8 + 0xC4);
        EXPECT_EQ(StringAt(strings, U32At(windows, 8 + 0x68)), expected.toUtf8()) << "default";
        EXPECT_EQ(StringAt(strings, U32At(windows, 8 + 0x6C)), expected.toUtf8()) << "home";
        EXPECT_EQ(test::ReadBytes(files + '/' + expected),
                  test::ReadBytes(folder.path() + expected));
    }
}

// The same project makes the same bytes on one thread (reading done by the packing thread
// itself) and on several: more files than the workers read ahead and several LZX intervals.
TEST(ChmCompiler, TheBookIsTheSameForAnyNumberOfThreads) {
    const test::TempFolder folder;
    QList<QByteArray> files{"index.html"};
    for (int i = 0; i < 70; ++i) {
        const QByteArray id = QByteArray::number(20240101000000LL + i);
        QByteArray page = "<html><head><title>Page " + id + "</title></head><body>";
        for (int p = 0; p < 40; ++p)
            page += "<p>Paragraph " + QByteArray::number(p * i) + " of page " + id +
                    " with <a href=\"../20240101000000/index.html\">a link</a>.</p>";
        folder.write("data/" + id + "/index.html", page + "<img src=\"p.png\"></body></html>");
        QByteArray picture(2000 + 50 * i, Qt::Uninitialized); // noise: it stays large
        QRandomGenerator(quint32(i))
            .fillRange(reinterpret_cast<quint32*>(picture.data()), picture.size() / 4);
        folder.write("data/" + id + "/p.png", picture);
        files.append("data/" + id + "/index.html");
    }
    WriteProject(folder, "0x409 English (United States)", "windows-1252", "Home", {"Alpha", "Zulu"},
                 files);
    QByteArray first;
    for (int jobs : {1, 2, 5}) {
        const QString book = folder.path() + QStringLiteral("book%1.chm").arg(jobs);
        CompileOptions options{
            book, jobs, {}, QDateTime(QDate(2024, 5, 1), QTime(12, 0), QTimeZone::utc()), {}, {}};
        CompileLog log;
        ASSERT_TRUE(CompileHelpProject(folder.path() + "Index.hhp", options, log));
        const QByteArray bytes = test::ReadBytes(book);
        EXPECT_GT(bytes.size(), 2 * 65536);
        if (first.isEmpty())
            first = bytes;
        else
            EXPECT_TRUE(bytes == first) << jobs << " threads";
    }
}

// A contents file too large to be read ahead is packed from disk, and the pages only it names
// are still packed.
TEST(ChmCompiler, PagesNamedOnlyByALargeContentsFileArePacked) {
    if (!test::ProgramAvailable(QStringLiteral("enum_chmLib")))
        GTEST_SKIP() << "chmlib is not installed";
    const test::TempFolder folder;
    WriteProject(folder, "0x409 English (United States)", "windows-1252", "Home", {"Alpha", "Zulu"},
                 {"index.html"});
    QByteArray contents = test::ReadBytes(folder.path() + "Index.hhc");
    contents.insert(contents.indexOf("<UL>"), "<!-- " + QByteArray(3 << 20, '-') + " -->\r\n");
    folder.write("Index.hhc", contents.replace("data/20240101000000/", "only/"));
    folder.write("only/index.html", "<title>Only in the contents</title>");
    const QString book = folder.path() + QStringLiteral("book.chm");
    CompileLog log;
    ASSERT_TRUE(CompileHelpProject(folder.path() + "Index.hhp", {book, 2, {}, {}, {}, {}}, log))
        << log.lines().join('\n').toStdString();
    const QStringList listing = test::ChmLibListing(book);
    EXPECT_TRUE(listing.contains(QStringLiteral("/only/index.html")));
    EXPECT_TRUE(listing.contains(QStringLiteral("/Index.hhc")));
}
