#include "support/Programs.h"
#include "support/TempFolder.h"

#include <QDate>
#include <QDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

using test::ReadBytes;
using test::RunQuillmereProgram;
using test::TempFolder;

const QByteArray kCatalogue =
    "<RDF:Seq RDF:about=\"urn:scrapbook:root\">\n"
    "<RDF:li RDF:resource=\"urn:scrapbook:item20080309000000\"/>\n"
    "</RDF:Seq>\n"
    "<RDF:Description RDF:about=\"urn:scrapbook:item20080309000000\"\n"
    "NS1:id=\"20080309000000\"\nNS1:type=\"folder\"\nNS1:title=\"\xE5\x8F\xB0\xE7\x81\xA3\"\n"
    "<RDF:Description RDF:about=\"urn:scrapbook:item20080309000001\"\n"
    "NS1:id=\"20080309000001\"\nNS1:title=\"Caf\xC3\xA9 &amp; Tea\"\n"
    "NS1:source=\"http://example.com/\"\nNS1:comment=\"PRIVATE\" />\n";

// One line per item: index, id, type, title, source, comment; then the counts. "é" is not in
// Big5, so it reads back as "?"; with windows-1252 from the home folder, Chinese does.
TEST(CatalogueCommand, PrintsTheItemsInTheHomeFoldersCodePage) {
    TempFolder scrapbook;
    TempFolder home;
    scrapbook.write(u"scrapbook.rdf"_s, kCatalogue);
    test::RunResult run =
        RunQuillmereProgram({"--home", home.path(), "catalogue", scrapbook.path()});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out, QStringLiteral("0\t20080309000000\tfolder\t台灣\t\t\n"
                                      "1\t20080309000001\t\tCaf? &amp; Tea\thttp://example.com/\t"
                                      "PRIVATE\nitemCount=2 lineCount=12\n"));
    home.write(u"Quillmere.ini"_s, "[Environment]\r\nCodePage=windows-1252\r\n");
    run = RunQuillmereProgram({"--home", home.path(), "catalogue", scrapbook.path()});
    EXPECT_TRUE(run.out.contains(u"\t??\t"_s));
    EXPECT_TRUE(run.out.contains(u"Café &amp; Tea"_s));
    home.write(u"Quillmere.ini"_s, "[Environment]\r\nCodePage=nonsense\r\n");
    run = RunQuillmereProgram({"--home", home.path(), "catalogue", scrapbook.path()});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.contains(u"Quillmere.ini: [Environment] CodePage"_s));
}

// Bad input: a message on stderr naming the file, the line and what to do, exit code 2, and
// the catalogue as it was; past the item limit, the setting that raises it, which then does.
TEST(CatalogueCommand, BadInputStopsCleanly) {
    TempFolder scrapbook;
    TempFolder home;
    const QByteArray broken = "<RDF:Description\nNS1:id=\"1\n";
    scrapbook.write(u"scrapbook.rdf"_s, broken);
    test::RunResult run = RunQuillmereProgram({"catalogue", scrapbook.path()});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.contains(
        QStringLiteral("scrapbook.rdf: line 2: the value of NS1:id has no closing double quote")));
    EXPECT_EQ(run.out, QString());
    EXPECT_EQ(ReadBytes(scrapbook.path() + u"scrapbook.rdf"_s), broken);
    run = RunQuillmereProgram({"catalogue", scrapbook.path() + u"nowhere"_s});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.contains(u"nowhere/: no such folder"_s));

    scrapbook.write(u"scrapbook.rdf"_s, QByteArray("<RDF:Description\n").repeated(20002));
    run = RunQuillmereProgram({"--home", home.path(), "catalogue", scrapbook.path()});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.contains(u"line 20002: the catalogue has more than 20001 items"_s));
    EXPECT_TRUE(run.err.contains(u"Raise [Limits] CatalogueItems in "_s + home.path() +
                                 u"Quillmere.ini"_s));
    home.write(u"Quillmere.ini"_s, "[Limits]\r\nCatalogueItems=30000\r\n");
    run = RunQuillmereProgram({"--home", home.path(), "catalogue", scrapbook.path()});
    EXPECT_TRUE(run.out.endsWith(u"itemCount=20002 lineCount=20002\n"_s));
}

TEST(CommandLine, HelpVersionUsageAndNewId) {
    test::RunResult run = RunQuillmereProgram({"--help"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.out.contains(u"Usage: quillmere [--home DIR] COMMAND"_s));
    EXPECT_TRUE(run.out.contains(u"  catalogue FOLDER\n"_s));
    EXPECT_TRUE(RunQuillmereProgram({"--version"}).out.startsWith(u"quillmere "_s));
    EXPECT_EQ(RunQuillmereProgram({}).exitCode, 2);
    run = RunQuillmereProgram({"frobnicate"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.contains(u"unknown command frobnicate"_s));

    TempFolder home;
    const QString today = QDate::currentDate().toString(u"yyyyMMdd"_s);
    EXPECT_EQ(RunQuillmereProgram({"--home", home.path(), "new-id"}).out, today + u"000000\n"_s);
    EXPECT_EQ(RunQuillmereProgram({"new-id"}, {u"QUILLMERE_HOME="_s + home.path()}).out,
              today + u"000001\n"_s);
}

} // namespace
} // namespace qmr
