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
using test::RunResult;
using test::TempFolder;

TEST(CommandLine, HelpVersionAndNewId) {
    RunResult run = RunQuillmereProgram({"--help"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.out.contains(u"Usage: quillmere [--home DIR] COMMAND"_s));
    EXPECT_TRUE(RunQuillmereProgram({"--version"}).out.startsWith(u"quillmere "_s));

    // The counter lives in the home folder, named by --home or QUILLMERE_HOME.
    TempFolder home;
    const QString today = QDate::currentDate().toString(u"yyyyMMdd"_s);
    EXPECT_EQ(RunQuillmereProgram({"--home", home.path(), "new-id"}).out, today + u"000000\n"_s);
    EXPECT_EQ(RunQuillmereProgram({"new-id"}, {u"QUILLMERE_HOME="_s + home.path()}).out,
              today + u"000001\n"_s);
}

// Every command refuses what it cannot use before doing anything: exit code 2, the reason on
// stderr (for a catalogue, its file and line; past a limit, the home folder's settings file),
// nothing on stdout, nothing of the user's changed.
TEST(CommandLine, BadInputIsRefusedWithExitCode2) {
    TempFolder temp;
    const QString cats = test::MakeScrapbook(temp, u"Cats"_s, 1);
    const QString nowhere = temp.path() + u"nowhere"_s;
    const QByteArray broken = "<RDF:Description\nNS1:id=\"1\n";
    temp.write(u"Broken/scrapbook.rdf"_s, broken);
    temp.write(u"Big/scrapbook.rdf"_s, QByteArray("<RDF:Description\n").repeated(20002));
    const QString home = temp.path() + u"app/"_s;
    temp.write(u"odd/Quillmere.ini"_s, "[Environment]\r\nCodePage=nonsense\r\n");
    const std::pair<QStringList, QString> cases[] = {
        {{}, u"Usage: quillmere"_s},
        {{"frobnicate"}, u"unknown command frobnicate"_s},
        {{"catalogue", nowhere}, nowhere + u"/: no such folder"_s},
        {{"catalogue", temp.path() + u"Broken"_s},
         temp.path() + u"Broken/scrapbook.rdf: line 2: "_s},
        {{"catalogue", temp.path() + u"Big"_s}, u"[Limits] CatalogueItems in "_s + home},
        {{"--home", temp.path() + u"odd"_s, "catalogue", cats}, u"[Environment] CodePage"_s},
        {{"ebook", temp.path()}, u"holds no scrapbook.rdf"_s},
        {{"ebook", cats, "--language", "7"}, u"--language takes 1"_s},
        {{"list", "File=notes.txt"}, u"File=notes.txt is not File= followed by"_s},
        {{"store", "add", "a*b", cats}, u"\"a*b\" cannot be a store name"_s},
        {{"multibook", "scan", nowhere}, nowhere + u"/: no such folder"_s},
        {{"convert-folder", nowhere}, nowhere + u": no such folder"_s},
        {{"import-text", temp.path()}, temp.path() + u"data.txt: no such file"_s},
    };
    for (const auto& [arguments, reason] : cases) {
        const RunResult run = RunQuillmereProgram(arguments, {u"QUILLMERE_HOME="_s + home});
        EXPECT_EQ(run.exitCode, 2) << arguments.join(u' ').toStdString();
        EXPECT_TRUE(run.err.contains(reason)) << run.err.toStdString();
        EXPECT_EQ(run.out, QString()) << arguments.join(u' ').toStdString();
    }
    EXPECT_EQ(ReadBytes(temp.path() + u"Broken/scrapbook.rdf"_s), broken);
    EXPECT_EQ(QDir(temp.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              (QStringList{"Big", "Broken", "Cats", "odd"}));

    // The home folder's settings raise the limit.
    test::TempFolder raised;
    raised.write(u"Quillmere.ini"_s, "[Limits]\r\nCatalogueItems=30000\r\n");
    EXPECT_TRUE(RunQuillmereProgram({"--home", raised.path(), "catalogue", temp.path() + u"Big"_s})
                    .out.endsWith(u"itemCount=20002 lineCount=20002\n"_s));
}

// One line per item: index, id, type, title, source, comment; then the counts. "é" is not in
// Big5, so it reads back as "?"; with windows-1252 from the home folder, Chinese does.
TEST(CatalogueCommand, PrintsTheItemsInTheHomeFoldersCodePage) {
    TempFolder scrapbook;
    TempFolder home;
    scrapbook.write(u"scrapbook.rdf"_s,
                    "<RDF:Seq RDF:about=\"urn:scrapbook:root\">\n"
                    "<RDF:li RDF:resource=\"urn:scrapbook:item20080309000000\"/>\n</RDF:Seq>\n"
                    "<RDF:Description RDF:about=\"urn:scrapbook:item20080309000000\"\n"
                    "NS1:id=\"20080309000000\"\nNS1:type=\"folder\"\n"
                    "NS1:title=\"\xE5\x8F\xB0\xE7\x81\xA3\"\n<RDF:Description\n"
                    "NS1:id=\"20080309000001\"\nNS1:title=\"Caf\xC3\xA9 &amp; Tea\"\n"
                    "NS1:source=\"http://example.com/\"\nNS1:comment=\"PRIVATE\" />\n");
    const QStringList arguments = {"--home", home.path(), "catalogue", scrapbook.path()};
    RunResult run = RunQuillmereProgram(arguments);
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out, QStringLiteral("0\t20080309000000\tfolder\t台灣\t\t\n"
                                      "1\t20080309000001\t\tCaf? &amp; Tea\thttp://example.com/\t"
                                      "PRIVATE\nitemCount=2 lineCount=12\n"));
    home.write(u"Quillmere.ini"_s, "[Environment]\r\nCodePage=windows-1252\r\n");
    run = RunQuillmereProgram(arguments);
    EXPECT_TRUE(run.out.contains(u"\t??\t"_s));
    EXPECT_TRUE(run.out.contains(u"Café &amp; Tea"_s));
}

} // namespace
} // namespace qmr
