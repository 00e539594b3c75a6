#include "ebook/EbookBuild.h"

#include "support/RecordingHost.h"
#include "support/TempFolder.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::ReadBytes;
using test::RecordingHost;
using test::TempFolder;

const QString kPrivatePage = QStringLiteral("20240308201500");
const QString kOrphanPage = QStringLiteral("20240309120000");
const QString kKioskNote = QStringLiteral("20240307080000");

// A copy of the bundled example scrapbook, so the build writes nothing into the source tree.
QString copyOfExample(const TempFolder& folder) {
    const QString target = folder.path() + QStringLiteral("sample-scrapbook/");
    test::CopyTree(QStringLiteral(QMR_SOURCE_DIR "/examples/sample-scrapbook"), target);
    return target;
}

EbookRequest requestFor(const QString& folder, bool compile) {
    EbookRequest request;
    request.folder = folder;
    request.options.makeChmFile = compile;
    request.options.language = EbookLanguage::English;
    request.chrome.scrapbookName = QStringLiteral("Sample");
    request.tools = DefaultHelpTools();
    request.view = false;
    return request;
}

bool haveProgram(const char* name) {
    return !QStandardPaths::findExecutable(QString::fromLatin1(name)).isEmpty();
}

QStringList filesInBook(const QString& chm) {
    QProcess sevenZip;
    sevenZip.start(QStringLiteral("7z"), {QStringLiteral("l"), QStringLiteral("-slt"), chm});
    sevenZip.waitForFinished(60000);
    QStringList paths;
    for (const QString& line :
         QString::fromUtf8(sevenZip.readAllStandardOutput()).split(QLatin1Char('\n')))
        if (line.startsWith(QLatin1String("Path = "))) paths.append(line.mid(7).trimmed());
    return paths;
}

TEST(EbookBuild, WritesEveryPageWithoutCompiling) {
    TempFolder temp;
    const QString folder = copyOfExample(temp);
    RecordingHost host;
    const EbookResult result = StartCreateChmEbook(host, requestFor(folder, false));
    ASSERT_TRUE(result.ok) << result.problem.toStdString();
    EXPECT_TRUE(result.chmPath.isEmpty());
    EXPECT_EQ(host.log,
              (QStringList{"Starting Build Quillmere ebook...", "Loading all pages...",
                           "create chm content...", "create chm index...",
                           "Create Page List page...(List.html)", "Pack all file to chm...",
                           "Make Chm ok! Time=0 Sec.", "View Chm ebook...", "ok!"}));
    for (const char* name :
         {"Index.hhc", "Index.hhk", "Index.hhp", "scrapbook.txt", "forum.txt", "data/qmr/list.html",
          "data/qmr/PlayAllVideos.html", "data/qmr/20240301090000.html"})
        EXPECT_TRUE(QFile::exists(folder + QString::fromLatin1(name))) << name;
    EXPECT_TRUE(
        ReadBytes(folder + QStringLiteral("data/qmr/list.html")).startsWith("\xEF\xBB\xBF"));
    // The kiosk marker's saved page now holds the content view.
    EXPECT_TRUE(
        ReadBytes(folder + QStringLiteral("data/") + kKioskNote + QStringLiteral("/index.html"))
            .contains("Content View"));
    const QByteArray toc = ReadBytes(folder + QStringLiteral("Index.hhc"));
    EXPECT_FALSE(toc.contains(kPrivatePage.toLatin1()));
    EXPECT_FALSE(toc.contains(kOrphanPage.toLatin1()));
    EXPECT_EQ(toc.count("data/20240302102233/index.html"), 2); // listed in two folders
    const QByteArray index = ReadBytes(folder + QStringLiteral("Index.hhk"));
    EXPECT_EQ(index.count("data/20240302102233/index.html"), 1);
    // The user's catalogue is never changed.
    EXPECT_EQ(ReadBytes(folder + QStringLiteral("scrapbook.rdf")),
              ReadBytes(QStringLiteral(QMR_SOURCE_DIR "/examples/sample-scrapbook/scrapbook.rdf")));
}

TEST(EbookBuild, CompilesARealBookWithoutPrivatePages) {
    if (!haveProgram("chmcmd") || !haveProgram("7z")) GTEST_SKIP() << "chmcmd or 7z missing";
    TempFolder temp;
    const QString folder = copyOfExample(temp);
    RecordingHost host;
    const EbookResult result = StartCreateChmEbook(host, requestFor(folder, true));
    ASSERT_TRUE(result.ok) << result.problem.toStdString() << host.log.join('\n').toStdString();
    EXPECT_TRUE(result.chmPath.endsWith(QStringLiteral("/chm/Index.chm")));
    EXPECT_TRUE(ReadBytes(result.chmPath).startsWith("ITSF"));
    EXPECT_TRUE(host.log.contains(QStringLiteral("Creating ebook now...1")));
    EXPECT_TRUE(host.log.filter(QStringLiteral("Make Chm ok! Time=")).size() == 1);
    EXPECT_EQ(host.log.last(), QStringLiteral("ok!"));

    const QStringList packed = filesInBook(result.chmPath);
    EXPECT_TRUE(packed.contains(QStringLiteral("Index.hhc"))) << packed.join(' ').toStdString();
    for (const char* id : {"20240302102233", "20240301091044", "20240305140515", "20240306093000",
                           "20240303111520", "20240307080000"})
        EXPECT_TRUE(packed.contains(QStringLiteral("data/%1/index.html").arg(QLatin1String(id))))
            << id;
    EXPECT_TRUE(packed.filter(kPrivatePage).isEmpty());
    EXPECT_TRUE(packed.filter(kOrphanPage).isEmpty());

    // The packed table of contents is the one the build wrote.
    QProcess extract;
    extract.start(QStringLiteral("7z"), {QStringLiteral("e"), QStringLiteral("-so"), result.chmPath,
                                         QStringLiteral("Index.hhc")});
    extract.waitForFinished(60000);
    EXPECT_EQ(extract.readAllStandardOutput(), ReadBytes(folder + QStringLiteral("Index.hhc")));
}

TEST(EbookBuild, AppendingFolderPagesTwiceAppendsOnce) {
    TempFolder temp;
    const QString folder = copyOfExample(temp);
    const QString page = folder + QStringLiteral("data/20240305140515/index.html");
    const QByteArray original = ReadBytes(page);
    RecordingHost host;
    EbookRequest request = requestFor(folder, false);
    ASSERT_TRUE(StartCreateChmEbook(host, request).ok); // writes the folder pages
    request.options.appendFolderPage = true;
    request.options.googleAD = true;
    request.options.index2org = true;
    ASSERT_TRUE(StartCreateChmEbook(host, request).ok);
    const QByteArray once = ReadBytes(page);
    ASSERT_TRUE(StartCreateChmEbook(host, request).ok);
    EXPECT_EQ(ReadBytes(page), once);
    EXPECT_NE(once, original);
    EXPECT_TRUE(once.contains("Reading Room")); // its folder's page was appended
    EXPECT_EQ(ReadBytes(folder + QStringLiteral("data/20240305140515/org.html")), original);
    EXPECT_EQ(ReadBytes(folder + QStringLiteral("data/20240305140515/ORG.html")), original);
}

TEST(EbookBuild, RefusesNoSelectionBrokenCataloguesAndUnsafeIdentifiers) {
    RecordingHost host;
    EbookResult result = StartCreateChmEbook(host, requestFor(QString(), false));
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(host.messages, QStringList{"Please select a scrapbook in the list first!"});

    TempFolder broken;
    broken.write(QStringLiteral("scrapbook.rdf"), "<RDF:Description\nNS1:title=\"x\n");
    result = StartCreateChmEbook(host, requestFor(broken.path(), false));
    EXPECT_FALSE(result.ok);
    EXPECT_TRUE(result.badInput);
    EXPECT_TRUE(result.problem.contains(QStringLiteral("scrapbook.rdf: line 2")));
    EXPECT_FALSE(QFile::exists(broken.path() + QStringLiteral("Index.hhc")));

    TempFolder outside;
    const QString scrapbook = outside.path() + QStringLiteral("book/");
    outside.write(QStringLiteral("book/scrapbook.rdf"),
                  "<RDF:Seq RDF:about=\"urn:scrapbook:root\">\n"
                  "<RDF:li RDF:resource=\"urn:scrapbook:item../../evil\"/>\n"
                  "</RDF:Seq>\n"
                  "<RDF:Description RDF:about=\"urn:scrapbook:item../../evil\"\n"
                  "NS1:id=\"../../evil\"\nNS1:type=\"folder\"\nNS1:title=\"Evil\"\n"
                  "NS1:comment=\"Quillmere_Content_kiosk\" />\n");
    host.log.clear();
    EbookRequest request = requestFor(scrapbook, false);
    request.options.index2org = true;
    result = StartCreateChmEbook(host, request);
    EXPECT_TRUE(result.ok) << result.problem.toStdString();
    EXPECT_FALSE(host.log.filter(QStringLiteral("../../evil")).isEmpty());
    EXPECT_EQ(QDir(outside.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList{"book"});
    EXPECT_FALSE(ReadBytes(scrapbook + QStringLiteral("Index.hhc")).contains("evil"));
}

// An untitled page stays in the table of contents but gives no index keyword: an empty keyword
// can crash the compiler's binary index.
TEST(EbookBuild, UntitledPagesGiveNoIndexKeyword) {
    TempFolder scrapbook;
    scrapbook.write(QStringLiteral("scrapbook.rdf"),
                    "<RDF:Seq RDF:about=\"urn:scrapbook:root\">\n"
                    "<RDF:li RDF:resource=\"urn:scrapbook:item20080309000000\"/>\n"
                    "<RDF:li RDF:resource=\"urn:scrapbook:item20080309000001\"/>\n"
                    "</RDF:Seq>\n"
                    "<RDF:Description RDF:about=\"urn:scrapbook:item20080309000000\"\n"
                    "NS1:id=\"20080309000000\"\nNS1:type=\"\"\nNS1:title=\"\" />\n"
                    "<RDF:Description RDF:about=\"urn:scrapbook:item20080309000001\"\n"
                    "NS1:id=\"20080309000001\"\nNS1:type=\"\"\nNS1:title=\"Named\" />\n");
    RecordingHost host;
    ASSERT_TRUE(StartCreateChmEbook(host, requestFor(scrapbook.path(), false)).ok);
    EXPECT_TRUE(
        ReadBytes(scrapbook.path() + QStringLiteral("Index.hhc")).contains("20080309000000"));
    const QByteArray index = ReadBytes(scrapbook.path() + QStringLiteral("Index.hhk"));
    EXPECT_FALSE(index.contains("20080309000000"));
    EXPECT_TRUE(index.contains("data/20080309000001/index.html"));
}

} // namespace
} // namespace qmr
