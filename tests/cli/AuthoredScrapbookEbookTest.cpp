#include "support/TempFolder.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::ReadBytes;
using test::RunQuillmereProgram;
using test::TempFolder;

// What the authoring commands write reads back through the catalogue reader and builds into an
// e-book: a converted folder and an imported text, each compiled when chmcmd is there.
class AuthoredScrapbooks : public ::testing::Test {
  protected:
    test::RunResult run(const QStringList& arguments) {
        return RunQuillmereProgram(arguments, {QStringLiteral("HOME=") + root.path() + QStringLiteral("home"),
                                               QStringLiteral("QUILLMERE_HOME=") + root.path() +
                                                   QStringLiteral("app")});
    }
    void expectBook(const QString& scrapbook, int items) {
        const test::RunResult listed = run({QStringLiteral("catalogue"), scrapbook});
        ASSERT_EQ(listed.exitCode, 0) << listed.err.toStdString();
        EXPECT_TRUE(listed.out.contains(QStringLiteral("itemCount=%1 ").arg(items))) << listed.out.toStdString();
        const bool compile = !QStandardPaths::findExecutable(QStringLiteral("chmcmd")).isEmpty();
        const test::RunResult built =
            run({QStringLiteral("ebook"), scrapbook, QStringLiteral("--no-view"),
                 compile ? QStringLiteral("--compile") : QStringLiteral("--no-compile")});
        ASSERT_EQ(built.exitCode, 0) << built.err.toStdString() << built.out.toStdString();
        EXPECT_TRUE(QFile::exists(scrapbook + QStringLiteral("Index.hhc")));
        if (compile) {
            EXPECT_TRUE(ReadBytes(root.path() + QStringLiteral("app/chm/Index.chm")).startsWith("ITSF"));
        }
    }
    TempFolder root;
};

TEST_F(AuthoredScrapbooks, ConvertedFolderBuildsIntoABook) {
    root.write(QStringLiteral("files/My Report.pdf"), "%PDF-1.4 a report");
    root.write(QStringLiteral("files/a&b=c@d.txt"), "notes");
    root.write(QStringLiteral("files/empty.txt"), "");
    const QString folder = root.path() + QStringLiteral("files");
    const test::RunResult converted = run({QStringLiteral("convert-folder"), folder});
    ASSERT_EQ(converted.exitCode, 0) << converted.err.toStdString();
    expectBook(folder + QStringLiteral("/scrapbook/"), 4); // the folder and its three files
    EXPECT_EQ(ReadBytes(folder + QStringLiteral("/My Report.pdf")), QByteArray("%PDF-1.4 a report"));
}

TEST_F(AuthoredScrapbooks, ImportedTextBuildsIntoABook) {
    root.write(QStringLiteral("text/data.txt"),
               "preface\r\n*****\r\nFirst\r\nbody one\r\n*****\r\nSecond\r\nbody two\r\n*****\r\n"
               "Third\r\nbody three\r\n*****\r\n");
    const QString folder = root.path() + QStringLiteral("text/");
    const test::RunResult imported = run({QStringLiteral("import-text"), folder});
    ASSERT_EQ(imported.exitCode, 0) << imported.err.toStdString();
    // Four separators: three entries catalogued (one short), in one group below the top folder.
    expectBook(folder, 1 + 1 + 3);
}

} // namespace
} // namespace qmr
