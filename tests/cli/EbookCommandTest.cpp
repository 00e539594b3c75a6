#include "support/TempFolder.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::ReadBytes;
using test::RunQuillmereProgram;
using test::TempFolder;

bool haveProgram(const char* name) {
    return !QStandardPaths::findExecutable(QString::fromLatin1(name)).isEmpty();
}

QStringList lines(const QString& text) {
    return text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

TEST(EbookCommand, OptionsComeFromTheScrapbooksSettingsUnlessGiven) {
    TempFolder temp;
    const QString folder = temp.path() + QStringLiteral("book/");
    test::CopyTree(QStringLiteral(QMR_SOURCE_DIR "/examples/sample-scrapbook"), folder);
    temp.write(QStringLiteral("book/ScrapbookPrj.ini"),
               "[Scrapbook]\r\nScrapbookName=Tea\r\n[Content]\r\nMakeChmFile=0\r\n");
    const QString home = temp.path() + QStringLiteral("home/");
    test::RunResult run =
        RunQuillmereProgram({QStringLiteral("--home"), home, QStringLiteral("ebook"), folder,
                             QStringLiteral("--language"), QStringLiteral("2")});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QStringList out = lines(run.out);
    EXPECT_EQ(out.first(), QStringLiteral("Starting Build Quillmere ebook..."));
    EXPECT_TRUE(out.last().startsWith(QStringLiteral("No e-book was compiled")));
    EXPECT_FALSE(QFile::exists(home + QStringLiteral("chm/Index.chm")));
    // Language 2 from the command line; the name from the scrapbook's settings.
    EXPECT_TRUE(ReadBytes(folder + QStringLiteral("Index.hhp")).contains("Language=0x404"));
    EXPECT_TRUE(
        ReadBytes(folder + QStringLiteral("data/qmr/list.html")).contains("-(Tea)</title>"));

    temp.write(QStringLiteral("book/ScrapbookPrj.ini"), "[Content]\r\nMakeChmFile=yes\r\n");
    run = RunQuillmereProgram({QStringLiteral("--home"), home, QStringLiteral("ebook"), folder});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.contains(QStringLiteral("[Content] MakeChmFile=yes is not a number")));

    run = RunQuillmereProgram(
        {QStringLiteral("ebook"), folder, QStringLiteral("--language"), QStringLiteral("7")});
    EXPECT_EQ(run.exitCode, 2);
    run = RunQuillmereProgram({QStringLiteral("ebook"), temp.path() + QStringLiteral("nothing")});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.contains(QStringLiteral("holds no scrapbook.rdf")));
}

TEST(EbookCommand, CompilesAndNamesTheBook) {
    if (!haveProgram("chmcmd")) GTEST_SKIP() << "chmcmd missing";
    TempFolder temp;
    const QString folder = temp.path() + QStringLiteral("book/");
    test::CopyTree(QStringLiteral(QMR_SOURCE_DIR "/examples/sample-scrapbook"), folder);
    const QString home = temp.path() + QStringLiteral("home/");
    const test::RunResult run =
        RunQuillmereProgram({QStringLiteral("--home"), home, QStringLiteral("ebook"), folder,
                             QStringLiteral("--no-view")});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString() << run.out.toStdString();
    EXPECT_EQ(lines(run.out).last(),
              QStringLiteral("E-book: ") + home + QStringLiteral("chm/Index.chm"));
    EXPECT_TRUE(ReadBytes(home + QStringLiteral("chm/Index.chm")).startsWith("ITSF"));

    // A compiler that fails is reported, never as "Make Chm ok!".
    QDir().mkpath(home);
    QFile ini(home + QStringLiteral("Quillmere.ini"));
    ASSERT_TRUE(ini.open(QIODevice::WriteOnly));
    ini.write("[Tools]\r\nHelpCompiler=false\r\n");
    ini.close();
    const test::RunResult failing =
        RunQuillmereProgram({QStringLiteral("--home"), home, QStringLiteral("ebook"), folder,
                             QStringLiteral("--no-view")});
    EXPECT_EQ(failing.exitCode, 1);
    EXPECT_FALSE(failing.out.contains(QStringLiteral("Make Chm ok!")));
    EXPECT_FALSE(failing.err.isEmpty());
}

// The collections people published compile, and their table of contents is packed.
TEST(EbookCommand, WildCollectionsCompile) {
    if (!haveProgram("chmcmd") || !haveProgram("7z")) GTEST_SKIP() << "chmcmd or 7z missing";
    for (const char* name : {"airbase-ru", "azuwis-scrap", "scim-shield"}) {
        const QString source = QStringLiteral(QMR_WILD_DIR "/") + QString::fromLatin1(name);
        if (!QFile::exists(source + QStringLiteral("/scrapbook.rdf")))
            GTEST_SKIP() << "no collections";
        TempFolder temp;
        const QString folder = temp.path() + QString::fromLatin1(name) + QLatin1Char('/');
        test::CopyTree(source, folder);
        const QString home = temp.path() + QStringLiteral("home/");
        const test::RunResult run =
            RunQuillmereProgram({QStringLiteral("--home"), home, QStringLiteral("ebook"), folder,
                                 QStringLiteral("--no-view")});
        ASSERT_EQ(run.exitCode, 0) << name << run.err.toStdString();
        QProcess sevenZip;
        sevenZip.start(QStringLiteral("7z"),
                       {QStringLiteral("l"), home + QStringLiteral("chm/Index.chm")});
        sevenZip.waitForFinished(60000);
        EXPECT_EQ(sevenZip.exitCode(), 0) << name;
        EXPECT_TRUE(sevenZip.readAllStandardOutput().contains("Index.hhc")) << name;
        // chmcmd found the table of contents the project names.
        EXPECT_FALSE(ReadBytes(folder + QStringLiteral("ErrorLog.log")).contains("Can't find"))
            << name;
    }
}

} // namespace
} // namespace qmr
