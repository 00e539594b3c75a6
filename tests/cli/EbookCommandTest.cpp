#include "support/Programs.h"
#include "support/TempFolder.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

using test::ReadBytes;
using test::RunQuillmereProgram;
using test::TempFolder;

QStringList lines(const QString& text) {
    return text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

TEST(EbookCommand, OptionsComeFromTheScrapbooksSettingsUnlessGiven) {
    TempFolder temp;
    const QString folder = test::CopyOfExample(temp);
    temp.write(u"sample-scrapbook/ScrapbookPrj.ini"_s,
               "[Scrapbook]\r\nScrapbookName=Tea\r\n[Content]\r\nMakeChmFile=0\r\n");
    const QString home = temp.path() + u"home/"_s;
    test::RunResult run =
        RunQuillmereProgram({"--home", home, "ebook", folder, "--language", "2", "--no-view"});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(lines(run.out).first(), u"Starting Build Quillmere ebook..."_s);
    EXPECT_TRUE(lines(run.out).last().startsWith(u"No e-book was compiled"_s));
    EXPECT_FALSE(QFile::exists(home + u"chm/Index.chm"_s));
    EXPECT_TRUE(ReadBytes(folder + u"Index.hhp"_s).contains("Language=0x404"));
    EXPECT_TRUE(ReadBytes(folder + "data/qmr/list.html").contains("-(Tea)</title>"));
}

// Real collections people published, and scrapbooks the authoring commands made, load with
// their item counts and compile into books that hold their table of contents; the command
// names the book it made.
TEST(EbookCommand, RealAndAuthoredScrapbooksCompile) {
    const bool compile = test::HasProgram("7z"); // to list the book; the compiler is our own
    TempFolder temp;
    const QStringList env = {u"HOME="_s + temp.path() + u"home"_s,
                             u"QUILLMERE_HOME="_s + temp.path() + "app"};
    temp.write(u"files/My Report.pdf"_s, "%PDF-1.4 a report");
    temp.write(u"files/a&b=c@d.txt"_s, "notes");
    ASSERT_EQ(RunQuillmereProgram({"convert-folder", temp.path() + "files"}, env).exitCode, 0);
    temp.write(u"text/data.txt"_s,
               "preface\r\n*****\r\nFirst\r\none\r\n*****\r\nSecond\r\ntwo\r\n*****\r\n");
    ASSERT_EQ(RunQuillmereProgram({"import-text", temp.path() + "text"}, env).exitCode, 0);
    QList<std::pair<QString, int>> books = {{temp.path() + "files/scrapbook/", 3},
                                            {temp.path() + "text/", 4}};
    for (const auto& [name, items] : {std::pair{"airbase-ru", 21},
                                      {"azuwis-scrap", 95},
                                      {"scim-shield", 93},
                                      {"bamanzi-2020", 276}}) {
        const QString source = QStringLiteral(QMR_WILD_DIR "/") + QLatin1String(name);
        if (!QFile::exists(source + u"/scrapbook.rdf"_s)) continue;
        test::CopyTree(source, temp.path() + QLatin1String(name));
        books.append({temp.path() + QLatin1String(name) + QLatin1Char('/'), items});
    }
    for (const auto& [folder, items] : books) {
        const test::RunResult listed = RunQuillmereProgram({"catalogue", folder}, env);
        ASSERT_EQ(listed.exitCode, 0) << listed.err.toStdString();
        EXPECT_TRUE(lines(listed.out).last().startsWith(u"itemCount=%1 "_s.arg(items)))
            << folder.toStdString();
        const test::RunResult built = RunQuillmereProgram(
            {"ebook", folder, "--no-view", compile ? "--compile" : "--no-compile"}, env);
        ASSERT_EQ(built.exitCode, 0) << built.err.toStdString();
        if (!compile) continue;
        const QString book = temp.path() + u"app/chm/Index.chm"_s;
        EXPECT_EQ(lines(built.out).last(), u"E-book: "_s + book);
        EXPECT_TRUE(test::BookListing(book).contains(u"Index.hhc"_s)) << folder.toStdString();
    }
}

} // namespace
} // namespace qmr
