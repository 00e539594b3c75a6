#include "support/TempFolder.h"

#include <QDir>

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::ReadBytes;
using test::RunQuillmereProgram;
using test::TempFolder;

const QByteArray kCatalogue =
    "<?xml version=\"1.0\"?>\n"
    "<RDF:RDF xmlns:NS1=\"http://amb.vis.ne.jp/mozilla/scrapbook-rdf#\">\n"
    "  <RDF:Seq RDF:about=\"urn:scrapbook:root\">\n"
    "    <RDF:li RDF:resource=\"urn:scrapbook:item20080309000000\"/>\n"
    "  </RDF:Seq>\n"
    "  <RDF:Description RDF:about=\"urn:scrapbook:item20080309000000\"\n"
    "                   NS1:id=\"20080309000000\"\n"
    "                   NS1:type=\"folder\"\n"
    "                   NS1:title=\"\xE5\x8F\xB0\xE7\x81\xA3\"\n"
    "                   NS1:source=\"\"\n"
    "                   NS1:comment=\"\" />\n"
    "  <RDF:Description RDF:about=\"urn:scrapbook:item20080309000001\"\n"
    "                   NS1:id=\"20080309000001\"\n"
    "                   NS1:type=\"\"\n"
    "                   NS1:title=\"Caf\xC3\xA9 &amp; Tea\"\n"
    "                   NS1:source=\"http://example.com/\"\n"
    "                   NS1:comment=\"PRIVATE\" />\n"
    "</RDF:RDF>\n";

// One line per item: index, id, type, title, source, comment; then the counts. "é" is not in
// the Big5 code page, so it reads back as "?".
TEST(CatalogueCommand, PrintsTheItemsAndCounts) {
    TempFolder scrapbook;
    scrapbook.write(QStringLiteral("scrapbook.rdf"), kCatalogue);
    const test::RunResult run =
        RunQuillmereProgram({QStringLiteral("catalogue"), scrapbook.path()});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out,
              QStringLiteral("0\t20080309000000\tfolder\t台灣\t\t\n"
                             "1\t20080309000001\t\tCaf? &amp; Tea\thttp://example.com/\tPRIVATE\n"
                             "itemCount=2 lineCount=18\n"));
    EXPECT_EQ(run.err, QString());
}

TEST(CatalogueCommand, CodePageAndLimitsComeFromTheHomeFolder) {
    TempFolder scrapbook;
    TempFolder home;
    scrapbook.write(QStringLiteral("scrapbook.rdf"), kCatalogue);
    home.write(QStringLiteral("Quillmere.ini"),
               "[Environment]\r\nCodePage=windows-1252\r\n[Limits]\r\nCatalogueLines=90000\r\n");
    const test::RunResult run = RunQuillmereProgram(
        {QStringLiteral("--home"), home.path(), QStringLiteral("catalogue"), scrapbook.path()});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.contains(QStringLiteral("\t??\t"))); // CJK is not in windows-1252
    EXPECT_TRUE(run.out.contains(QStringLiteral("Café &amp; Tea")));
    EXPECT_EQ(ReadBytes(scrapbook.path() + QStringLiteral("scrapbook.txt")).count('\xE9'), 1);

    home.write(QStringLiteral("Quillmere.ini"), "[Environment]\r\nCodePage=nonsense\r\n");
    const test::RunResult bad = RunQuillmereProgram(
        {QStringLiteral("--home"), home.path(), QStringLiteral("catalogue"), scrapbook.path()});
    EXPECT_EQ(bad.exitCode, 2);
    EXPECT_TRUE(bad.err.contains(QStringLiteral("Quillmere.ini: [Environment] CodePage")));
}

// Bad input: a message on stderr naming the file and line, exit code 2, and nothing written
// into the scrapbook but the working copy.
TEST(CatalogueCommand, BadInputStopsCleanly) {
    struct Case {
        QByteArray rdf;
        QString expected;
    };
    const Case cases[] = {
        {"<RDF:Description\nNS1:id=\"1\n",
         QStringLiteral("scrapbook.rdf: line 2: the value of NS1:id has no closing double quote")},
        {"NS1:type=\"\"\n",
         QStringLiteral(
             "scrapbook.rdf: line 1: NS1:type stands before the first <RDF:Description line")},
        {"<RDF:RDF>\n\xC0\xAF\n",
         QStringLiteral("scrapbook.rdf: line 2: the catalogue is not valid UTF-8")},
        {QByteArray("\x89PNG\r\n\x1A\n\x00\x00", 10),
         QStringLiteral("scrapbook.rdf: line 3: the catalogue holds binary data")},
    };
    for (const Case& c : cases) {
        TempFolder scrapbook;
        scrapbook.write(QStringLiteral("scrapbook.rdf"), c.rdf);
        const test::RunResult run =
            RunQuillmereProgram({QStringLiteral("catalogue"), scrapbook.path()});
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_TRUE(run.err.contains(c.expected)) << run.err.toStdString();
        EXPECT_EQ(run.out, QString());
        EXPECT_EQ(ReadBytes(scrapbook.path() + QStringLiteral("scrapbook.rdf")), c.rdf);
        const QStringList files = QDir(scrapbook.path()).entryList(QDir::Files);
        EXPECT_TRUE(files == QStringList{"scrapbook.rdf"} ||
                    files == (QStringList{"scrapbook.rdf", "scrapbook.txt"}));
    }

    TempFolder empty;
    test::RunResult run = RunQuillmereProgram({QStringLiteral("catalogue"), empty.path()});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.contains(QStringLiteral("scrapbook.rdf: cannot read the catalogue")));
    EXPECT_TRUE(run.err.contains(QStringLiteral("Choose a ScrapBook folder")));
    run = RunQuillmereProgram(
        {QStringLiteral("catalogue"), empty.path() + QStringLiteral("nowhere")});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.contains(QStringLiteral("nowhere/: no such folder")))
        << run.err.toStdString();
}

TEST(CatalogueCommand, TooLargeCatalogueNamesTheSetting) {
    TempFolder scrapbook;
    TempFolder home;
    QByteArray rdf;
    for (int i = 0; i < 20002; ++i)
        rdf += "<RDF:Description\n";
    scrapbook.write(QStringLiteral("scrapbook.rdf"), rdf);
    test::RunResult run = RunQuillmereProgram(
        {QStringLiteral("--home"), home.path(), QStringLiteral("catalogue"), scrapbook.path()});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(
        run.err.contains(QStringLiteral("line 20002: the catalogue has more than 20001 items")))
        << run.err.toStdString();
    EXPECT_TRUE(run.err.contains(QStringLiteral("Raise [Limits] CatalogueItems in ") + home.path() +
                                 QStringLiteral("Quillmere.ini")));
    home.write(QStringLiteral("Quillmere.ini"), "[Limits]\r\nCatalogueItems=30000\r\n");
    run = RunQuillmereProgram(
        {QStringLiteral("--home"), home.path(), QStringLiteral("catalogue"), scrapbook.path()});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.endsWith(QStringLiteral("itemCount=20002 lineCount=20002\n")));
}

TEST(CommandLine, HelpVersionUsageAndNewId) {
    test::RunResult run = RunQuillmereProgram({QStringLiteral("--help")});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.out.contains(QStringLiteral("Usage: quillmere [--home DIR] COMMAND")));
    EXPECT_TRUE(run.out.contains(QStringLiteral("  catalogue FOLDER\n")));
    EXPECT_TRUE(run.out.contains(QStringLiteral("  new-id\n")));
    run = RunQuillmereProgram({QStringLiteral("--version")});
    EXPECT_TRUE(run.out.startsWith(QStringLiteral("quillmere ")));
    EXPECT_EQ(RunQuillmereProgram({}).exitCode, 2);
    run = RunQuillmereProgram({QStringLiteral("frobnicate")});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.contains(QStringLiteral("unknown command frobnicate")));
    EXPECT_EQ(RunQuillmereProgram({QStringLiteral("catalogue")}).exitCode, 2);

    TempFolder home;
    const QString today = QDate::currentDate().toString(QStringLiteral("yyyyMMdd"));
    run = RunQuillmereProgram({QStringLiteral("--home"), home.path(), QStringLiteral("new-id")});
    EXPECT_EQ(run.out, today + QStringLiteral("000000\n"));
    run = RunQuillmereProgram({QStringLiteral("new-id")},
                              {QStringLiteral("QUILLMERE_HOME=") + home.path()});
    EXPECT_EQ(run.out, today + QStringLiteral("000001\n"));
    EXPECT_EQ(ReadBytes(home.path() + QStringLiteral("NodeID.txt")),
              (today + QStringLiteral("000001\r\n")).toLatin1());
}

} // namespace
} // namespace qmr
