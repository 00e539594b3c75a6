#include "ebook/HelpCompiler.h"

#include "platform/PathSeparators.h"
#include "platform/Processes.h"
#include "support/RecordingHost.h"
#include "support/TempFolder.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

using test::ReadBytes;
using test::RecordingHost;
using test::TempFolder;

// A stand-in compiler or viewer: a shell script that the test writes.
QString WriteScript(const TempFolder& folder, const QString& name, const QString& body) {
    const QString path = folder.write(name, (u"#!/bin/sh\n"_s + body).toUtf8());
    QFile::setPermissions(path, QFile::permissions(path) | QFile::ExeOwner | QFile::ExeUser);
    return path;
}

QStringList CountedLines(qsizetype rounds) {
    QStringList lines;
    for (qsizetype i = 1; i <= rounds; ++i)
        lines.append(u"Creating ebook now..."_s + QString::number(i));
    return lines;
}

// A scrapbook folder, the book's place in an application folder that does not exist yet, and
// a trace file the stand-in programs write.
struct CompileSetup {
    TempFolder temp;
    QString book = temp.path() + u"scrapbook/"_s;
    QString project = book + u"Index.hhp"_s;
    QString output = temp.path() + u"app/chm/Index.chm"_s;
    QString trace = temp.path() + u"trace.txt"_s;
    CompileSetup() { QDir().mkpath(book); }
};

// The compiler runs in the book's folder on the project, after the old book is deleted; its
// output goes to ErrorLog.log, and the log counts half seconds while it runs. The book itself is
// judged, not the exit code: present, not empty, a compiled help file, no file missing.
TEST(HelpCompiler, RunsInTheBooksFolderAndJudgesTheBookItself) {
    if (HostIsWindows()) GTEST_SKIP() << "the stand-in compiler is a shell script";
    const struct {
        const char* script; // %1 is the book, %2 the trace file
        bool ok;
        const char* problemPart;
    } cases[] = {
        {"{ pwd; echo \"$@\"; test -e '%1' && echo present || echo absent; } > '%2'\n"
         "echo 'Note: compiling'\necho banner >&2\nsleep 1.2\nprintf 'ITSF\\003' > '%1'",
         true, ""},
        // Missing files in [Files]: exit 217 and an empty book.
        {"echo 'An unhandled exception occurred'; : > '%1'; exit 217", false, "empty"},
        {"echo 'Writing nothing'", false, "did not write"},
        {"printf 'MZ' > '%1'", false, "not a compiled help file"},
        // The table of contents was not found: the book is written, exit code 0.
        {"echo 'Error: Can'\"'\"'t find TOC file /x/Index.hhc'; printf 'ITSF' > '%1'", false,
         "Error: Can't find TOC file /x/Index.hhc"},
        {"printf 'ITSF' > '%1'; exit 1", true, ""}, // success told with exit code 1
    };
    for (const auto& c : cases) {
        CompileSetup s;
        s.temp.write(u"app/chm/Index.chm"_s, "ITSF old book");
        WriteScript(
            s.temp, u"fake tools/hhc"_s,
            QString::fromUtf8(c.script).replace(u"%1"_s, s.output).replace(u"%2"_s, s.trace));
        RecordingHost host;
        const HelpTools tools{u"\"%1fake tools/hhc\" --quiet"_s.arg(s.temp.path()), {}};
        const CompileResult result = RunHelpCompiler(host, tools, s.project, s.output);
        EXPECT_EQ(result.ok, c.ok) << result.problem.toStdString();
        EXPECT_TRUE(result.problem.contains(QString::fromUtf8(c.problemPart))) << c.script;
        if (!c.ok) {
            EXPECT_TRUE(result.problem.contains(ToNativePath(s.output)));
            EXPECT_TRUE(result.problem.contains(ToNativePath(s.book + "ErrorLog.log")));
        }
        // A quick compiler ends within the first step, which is logged all the same; a busy
        // machine may take longer.
        ASSERT_FALSE(host.log.isEmpty()) << c.script;
        EXPECT_EQ(host.log, CountedLines(host.log.size())) << c.script;
        if (!QFile::exists(s.trace)) continue;
        // Steps end at 0.5 s, 1.0 s and at the end, 1.2 s.
        EXPECT_GE(result.seconds, 1.2);
        EXPECT_GE(host.log.size(), 3);
        const QStringList ran = QString::fromUtf8(ReadBytes(s.trace)).split(u'\n');
        ASSERT_GE(ran.size(), 3);
        EXPECT_EQ(QDir(ran[0]).canonicalPath(), QDir(s.book).canonicalPath());
        EXPECT_EQ(ran[1], u"--quiet Index.hhp"_s);
        EXPECT_EQ(ran[2], u"absent"_s);
        EXPECT_EQ(ReadBytes(s.book + u"ErrorLog.log"_s), "Note: compiling\nbanner\n");
    }
}

// A host whose user asks the build to stop after `steps` yields.
class StoppingHost : public RecordingHost {
  public:
    explicit StoppingHost(int steps) : m_steps(steps) {}
    void yield() override { --m_steps; }
    bool cancelled() const override { return m_steps <= 0; }

  private:
    int m_steps;
};

TEST(HelpCompiler, AStopEndsTheCompilerAndRemovesItsUnfinishedBook) {
    if (HostIsWindows()) GTEST_SKIP() << "the stand-in compiler is a shell script";
    CompileSetup s;
    WriteScript(s.temp, u"hhc"_s, u"printf 'ITSF half' > '%1'\nsleep 60\n"_s.arg(s.output));
    StoppingHost host(2);
    QDeadlineTimer deadline(30000);
    const CompileResult result =
        RunHelpCompiler(host, {s.temp.path() + u"hhc"_s, {}}, s.project, s.output);
    EXPECT_FALSE(deadline.hasExpired());
    EXPECT_TRUE(result.cancelled);
    EXPECT_EQ(result.problem, CancelledProblem());
    EXPECT_EQ(host.log, CountedLines(2));
    EXPECT_FALSE(QFileInfo::exists(s.output));
}

TEST(HelpCompiler, ACompilerThatCannotStartNamesItsSetting) {
    CompileSetup s;
    RecordingHost host;
    const QString missing = s.temp.path() + u"no such/chmcmd"_s;
    const CompileResult result =
        RunHelpCompiler(host, HelpTools{"\"" + missing + "\"", {}}, s.project, s.output);
    EXPECT_FALSE(result.ok);
    for (const QString& part : {missing, u"[Tools]"_s, u"HelpCompiler"_s, u"Quillmere.ini"_s})
        EXPECT_TRUE(result.problem.contains(part)) << result.problem.toStdString();
    EXPECT_TRUE(
        result.problem.contains(u"Leave it empty to use the compiler built into Quillmere"_s));
    EXPECT_TRUE(host.log.isEmpty());
    EXPECT_TRUE(QDir(QFileInfo(s.output).absolutePath()).exists());
}

} // namespace
} // namespace qmr
