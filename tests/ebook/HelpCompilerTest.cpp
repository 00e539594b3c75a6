#include "ebook/HelpCompiler.h"

#include "ebook/ProjectFile.h"
#include "platform/AppFolder.h"
#include "platform/PathSeparators.h"
#include "platform/Processes.h"
#include "support/RecordingHost.h"
#include "support/TempFolder.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QThread>

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::ReadBytes;
using test::RecordingHost;
using test::TempFolder;

// A stand-in compiler or viewer: a shell script that the test writes.
QString WriteScript(const TempFolder& folder, const QString& name, const QString& body) {
    const QString path = folder.write(name, (QStringLiteral("#!/bin/sh\n") + body).toUtf8());
    QFile::setPermissions(path, QFile::permissions(path) | QFile::ExeOwner | QFile::ExeUser);
    return path;
}

// Replaces Quillmere.ini for one test and puts the old one back afterwards.
class IniFileForTest {
  public:
    explicit IniFileForTest(const QByteArray& text)
        : m_existed(QFile::exists(GlobalIniPath())), m_saved(ReadBytes(GlobalIniPath())) {
        QDir().mkpath(ApplicationFolder());
        QFile file(GlobalIniPath());
        if (file.open(QIODevice::WriteOnly | QIODevice::Truncate)) file.write(text);
    }
    ~IniFileForTest() {
        QFile::remove(GlobalIniPath());
        QFile file(GlobalIniPath());
        if (m_existed && file.open(QIODevice::WriteOnly)) file.write(m_saved);
    }

  private:
    bool m_existed;
    QByteArray m_saved;
};

QStringList CountedLines(qsizetype rounds) {
    QStringList lines;
    for (qsizetype i = 1; i <= rounds; ++i)
        lines.append(QStringLiteral("Creating ebook now...") + QString::number(i));
    return lines;
}

// A scrapbook folder, the book's place in an application folder that does not exist yet, and
// a trace file the stand-in programs write.
struct CompileSetup {
    TempFolder temp;
    QString book = temp.path() + QStringLiteral("scrapbook/");
    QString project = book + QStringLiteral("Index.hhp");
    QString output = temp.path() + QStringLiteral("app/chm/Index.chm");
    QString trace = temp.path() + QStringLiteral("trace.txt");
    CompileSetup() { QDir().mkpath(book); }
};

TEST(HelpCompiler, WaitsInHalfSecondStepsAndKeepsTheCompilersOutput) {
    if (HostIsWindows()) GTEST_SKIP() << "the stand-in compiler is a shell script";
    CompileSetup s;
    WriteScript(s.temp, QStringLiteral("fake tools/hhc"),
                QStringLiteral("{ pwd; echo \"$@\"; test -e '%1' && echo present || echo absent; }"
                               " > '%2'\n"
                               "echo 'Note: compiling'\n"
                               "echo banner >&2\n"
                               "sleep 1.2\n"
                               "printf 'ITSF\\003' > '%1'\n")
                    .arg(s.output, s.trace));
    s.temp.write(QStringLiteral("app/chm/Index.chm"), "ITSF old book");

    RecordingHost host;
    const HelpTools tools{QStringLiteral("\"%1fake tools/hhc\" --quiet").arg(s.temp.path()), {}};
    const CompileResult result = RunHelpCompiler(host, tools, s.project, s.output);

    EXPECT_TRUE(result.ok) << result.problem.toStdString();
    EXPECT_GE(result.seconds, 1.2);
    // Steps end at 0.5 s, 1.0 s and at the compiler's end, 1.2 s; a busy machine may need more,
    // numbered on.
    ASSERT_GE(host.log.size(), 3);
    EXPECT_EQ(host.log, CountedLines(host.log.size()));

    const QStringList ran = QString::fromUtf8(ReadBytes(s.trace)).split(QLatin1Char('\n'));
    ASSERT_GE(ran.size(), 3);
    EXPECT_EQ(QDir(ran[0]).canonicalPath(), QDir(s.book).canonicalPath());
    EXPECT_EQ(ran[1], QStringLiteral("--quiet Index.hhp"));
    EXPECT_EQ(ran[2], QStringLiteral("absent")); // the old book was deleted first
    EXPECT_EQ(ReadBytes(s.book + QStringLiteral("ErrorLog.log")), "Note: compiling\nbanner\n");
}

TEST(HelpCompiler, JudgesTheBookItselfNotTheExitCode) {
    if (HostIsWindows()) GTEST_SKIP() << "the stand-in compiler is a shell script";
    struct Case {
        const char* script; // %1 is the book
        bool ok;
        const char* problemPart;
    };
    const Case cases[] = {
        // Missing files in [Files]: exit 217 and an empty book.
        {"echo 'An unhandled exception occurred'; : > '%1'; exit 217", false, "empty"},
        {"echo 'Writing nothing'", false, "did not write"},
        {"printf 'MZ' > '%1'", false, "not a compiled help file"},
        // The table of contents was not found: the book is written, exit code 0.
        {"echo 'Error: Can'\"'\"'t find TOC file /x/Index.hhc'; printf 'ITSF' > '%1'", false,
         "Error: Can't find TOC file /x/Index.hhc"},
        // A compiler reporting success with exit code 1.
        {"printf 'ITSF' > '%1'; exit 1", true, ""},
    };
    for (const Case& c : cases) {
        CompileSetup s;
        s.temp.write(QStringLiteral("app/chm/Index.chm"), "ITSF old book");
        WriteScript(s.temp, QStringLiteral("hhc"),
                    QString::fromUtf8(c.script).replace(QStringLiteral("%1"), s.output));
        RecordingHost host;
        const CompileResult result = RunHelpCompiler(
            host, HelpTools{s.temp.path() + QStringLiteral("hhc"), {}}, s.project, s.output);
        EXPECT_EQ(result.ok, c.ok) << c.script;
        EXPECT_TRUE(result.problem.contains(QString::fromUtf8(c.problemPart))) << c.script;
        if (!c.ok) {
            EXPECT_TRUE(result.problem.contains(ToNativePath(s.output)))
                << result.problem.toStdString();
            EXPECT_TRUE(result.problem.contains(ToNativePath(s.book + "ErrorLog.log")));
        }
        EXPECT_EQ(host.log, CountedLines(1)) << c.script; // ended within the first step
    }
}

TEST(HelpCompiler, ACompilerThatCannotStartNamesItsSetting) {
    CompileSetup s;
    RecordingHost host;
    const QString missing = s.temp.path() + QStringLiteral("no such/chmcmd");
    const CompileResult result =
        RunHelpCompiler(host, HelpTools{"\"" + missing + "\"", {}}, s.project, s.output);
    EXPECT_FALSE(result.ok);
    for (const QString& part : {missing, QStringLiteral("[Tools]"), QStringLiteral("HelpCompiler"),
                                QStringLiteral("Quillmere.ini")})
        EXPECT_TRUE(result.problem.contains(part)) << result.problem.toStdString();
    EXPECT_EQ(result.problem.contains(QStringLiteral("fp-utils")), !HostIsWindows());
    EXPECT_TRUE(host.log.isEmpty());
    EXPECT_TRUE(QDir(QFileInfo(s.output).absolutePath()).exists());

    EXPECT_FALSE(RunHelpCompiler(host, HelpTools{}, s.project, s.output).ok);
}

TEST(HelpCompiler, ToolsComeFromTheIniFileElseFromThePlatform) {
    {
        IniFileForTest ini("[Other]\r\nHelpCompiler=no\r\n");
        const HelpTools tools = DefaultHelpTools();
        if (HostIsWindows()) {
            EXPECT_EQ(tools.compiler,
                      QStringLiteral("\"C:\\Program Files\\HTML Help Workshop\\hhc.exe\""));
            EXPECT_EQ(tools.viewer, QStringLiteral("\"c:\\windows\\hh.exe\""));
        } else {
            EXPECT_EQ(tools.compiler, QStringLiteral("chmcmd"));
            EXPECT_TRUE(tools.viewer.isEmpty());
        }
    }
    IniFileForTest ini("[Tools]\r\nHelpCompiler=\"/opt/help tools/chmcmd\" -v\r\n"
                       "HelpViewer=xchm\r\n");
    const HelpTools tools = DefaultHelpTools();
    EXPECT_EQ(tools.compiler, QStringLiteral("\"/opt/help tools/chmcmd\" -v"));
    EXPECT_EQ(tools.viewer, QStringLiteral("xchm"));
    EXPECT_EQ(SplitCommandLine(tools.compiler),
              (QStringList{QStringLiteral("/opt/help tools/chmcmd"), QStringLiteral("-v")}));
    EXPECT_EQ(SplitCommandLine(QStringLiteral("\"C:\\Program Files\\hh.exe\"")),
              QStringList{QStringLiteral("C:\\Program Files\\hh.exe")});
}

TEST(HelpCompiler, DeletesTheWorkingFilesWhateverTheirCase) {
    TempFolder book;
    EXPECT_NO_FATAL_FAILURE(DeleteAllTmpFiles(book.path()));
    EXPECT_TRUE(QDir(book.path()).isEmpty());

    for (const char* name : {"Index.hhp", "Index.hhc", "Index.hhk", "ErrorLog.log", "scrapbook.txt",
                             "hhc.txt", "index.html", "scrapbook.rdf"})
        book.write(QString::fromLatin1(name), "x");
    DeleteAllTmpFiles(book.path());
    EXPECT_EQ(QDir(book.path()).entryList(QDir::Files, QDir::Name),
              (QStringList{QStringLiteral("index.html"), QStringLiteral("scrapbook.rdf")}));

    CheckAndDeleteFile(book.path() + QStringLiteral("missing.txt"));
    CheckAndDeleteFile(book.path() + QStringLiteral("index.html"));
    EXPECT_FALSE(QFile::exists(book.path() + QStringLiteral("index.html")));
}

// Waits until the started program has written its whole line.
bool WaitForFile(const QString& path) {
    QDeadlineTimer deadline(10000);
    while (!ReadBytes(path).endsWith('\n') && !deadline.hasExpired())
        QThread::msleep(50);
    return ReadBytes(path).endsWith('\n');
}

TEST(HelpCompiler, ViewsOnlyABookThatExists) {
    TempFolder temp;
    const QString chm = temp.path() + QStringLiteral("chm/Index.chm");
    RecordingHost host;
    IniFileForTest noViewer("");
    ViewChm(host, chm);
    EXPECT_TRUE(host.opened.isEmpty());

    temp.write(QStringLiteral("chm/Index.chm"), "ITSF");
    ViewChm(host, chm);
    EXPECT_EQ(host.opened, QStringList{ToNativePath(chm)});

    if (HostIsWindows()) return;
    const QString seen = temp.path() + QStringLiteral("seen.txt");
    WriteScript(temp, QStringLiteral("viewer"), QStringLiteral("echo \"$@\" > '%1'\n").arg(seen));
    IniFileForTest viewer("[Tools]\r\nHelpViewer=" + QFile::encodeName(temp.path()) +
                          "viewer --maximized\r\n");
    ViewChm(host, chm);
    ASSERT_TRUE(WaitForFile(seen));
    EXPECT_EQ(ReadBytes(seen), "--maximized " + QFile::encodeName(chm) + "\n");
    EXPECT_EQ(host.opened.size(), 1);
}

bool HaveProgram(const char* name) {
    return !QStandardPaths::findExecutable(QString::fromLatin1(name)).isEmpty();
}

// The stored names of a compiled book, as 7-Zip lists them.
QStringList NamesInBook(const QString& chm) {
    QProcess sevenZip;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    sevenZip.setProcessEnvironment(env);
    sevenZip.start(QStringLiteral("7z"), {QStringLiteral("l"), QStringLiteral("-slt"), chm});
    sevenZip.waitForFinished(60000);
    QStringList names;
    for (const QString& line :
         QString::fromUtf8(sevenZip.readAllStandardOutput()).split(QLatin1Char('\n'))) {
        if (line.startsWith(QLatin1String("Path = "))) names.append(line.mid(7).trimmed());
    }
    return names;
}

// A table of contents, used as the index too.
const char kSitemap[] =
    "<HTML><BODY><UL>\r\n"
    "<LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"Start\">"
    "<param name=\"Local\" value=\"index.html\"></OBJECT>\r\n"
    "<LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"Page\">"
    "<param name=\"Local\" value=\"data/20080101000001/index.html\"></OBJECT>\r\n"
    "</UL></BODY></HTML>\r\n";

// One real compile: the project file as written for a Big5 book, the table of contents and
// index, and files the compiler finds only through [Files].
TEST(HelpCompiler, ChmcmdCompilesTheProjectIntoARealBook) {
    if (!HaveProgram("chmcmd") || !HaveProgram("7z"))
        GTEST_SKIP() << "chmcmd (fp-utils) and 7z (p7zip-full) are needed";
    TempFolder book;
    book.write(QStringLiteral("index.html"),
               "<html><body><a href=\"data/20080101000001/index.html\">page</a></body></html>");
    book.write(QStringLiteral("data/20080101000001/index.html"),
               "<html><head><link rel=\"stylesheet\" href=\"a.css\"></head><body>p</body></html>");
    book.write(QStringLiteral("data/20080101000001/a.css"), "body { color: black }");
    book.write(QStringLiteral("data/20080101000001/說明.html"),
               "<html><body>unlinked</body></html>");
    book.write(QStringLiteral("data/20080101000002/index.html"),
               "<html><body>hidden</body></html>");
    book.write(QStringLiteral("Index.hhc"), kSitemap);
    book.write(QStringLiteral("Index.hhk"), kSitemap);

    RecordingHost host;
    EbookContext build(host);
    build.folder = book.path();
    CatalogueItem placed, hidden;
    placed.id = QStringLiteral("20080101000001");
    placed.placed = true;
    hidden.id = QStringLiteral("20080101000002");
    build.catalogue.items = {placed, hidden};
    build.options.language = EbookLanguage::ChineseTraditional;
    const QString project = book.path() + QStringLiteral("Index.hhp");
    ASSERT_TRUE(hhp(build, project, GatherScrapbookFiles(book.path())));

    const CompileResult result =
        RunHelpCompiler(host, DefaultHelpTools(), project, build.outputPath);
    ASSERT_TRUE(result.ok) << result.problem.toStdString();
    EXPECT_EQ(host.log.first(), QStringLiteral("Creating ebook now...1"));
    EXPECT_TRUE(ReadBytes(book.path() + QStringLiteral("ErrorLog.log")).contains("Writing CHM"));

    const QStringList names = NamesInBook(build.outputPath);
    for (const char* name :
         {"index.html", "data/20080101000001/index.html", "data/20080101000001/a.css",
          "data/20080101000001/說明.html", "Index.hhc", "Index.hhk", "#SYSTEM"})
        EXPECT_TRUE(names.contains(QString::fromUtf8(name))) << name;
    EXPECT_FALSE(names.contains(QStringLiteral("data/20080101000002/index.html")));
    CheckAndDeleteFile(build.outputPath);
}

} // namespace
} // namespace qmr
