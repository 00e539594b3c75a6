#include "chm/ChmCompiler.h"

#include "platform/CodePage.h"

#include "support/BookReaders.h"
#include "support/TempFolder.h"

#include <QDir>
#include <QProcess>
#include <QSet>

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

bool RunChmcmd(const QString& folder) {
    QProcess chmcmd;
    chmcmd.setWorkingDirectory(folder);
    chmcmd.start(QStringLiteral("chmcmd"), {QStringLiteral("Index.hhp")});
    return chmcmd.waitForFinished(120000) && chmcmd.exitCode() == 0;
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
    ASSERT_TRUE(RunChmcmd(folder.path()));
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
