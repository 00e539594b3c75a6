#include "ebook/EbookBuild.h"

#include "support/RecordingHost.h"
#include "support/TempFolder.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

using test::ReadBytes;
using test::RecordingHost;
using test::TempFolder;

EbookRequest requestFor(const QString& folder, bool compile) {
    EbookRequest request;
    request.folder = folder;
    request.options.makeChmFile = compile;
    request.options.language = EbookLanguage::English;
    request.chrome.scrapbookName = u"Sample"_s;
    request.view = false;
    return request;
}

// Every stage runs in order, the catalogue is loaded once, and it stays as it was; a failed
// compile still writes the video page.
TEST(EbookBuild, WritesEveryPageWithoutCompilingAndLoadsTheCatalogueOnce) {
    TempFolder temp;
    const QString folder = test::CopyOfExample(temp);
    RecordingHost host;
    EbookRequest request = requestFor(folder, false);
    request.options.index2org = true;
    request.options.appendFolderPage = true;
    const EbookResult result = StartCreateChmEbook(host, request);
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
    EXPECT_TRUE(ReadBytes(folder + u"data/20240307080000/index.html"_s)
                    .contains("Content View")); // over the kiosk marker's saved page
    EXPECT_EQ(ReadBytes(folder + u"scrapbook.rdf"_s),
              ReadBytes(QStringLiteral(QMR_SOURCE_DIR "/examples/sample-scrapbook/scrapbook.rdf")));

    // A compiler that fails ends only its own stage: the video page is still written, the
    // failure is told last, and the build reports it.
    QFile::remove(folder + u"data/qmr/PlayAllVideos.html"_s);
    host.log.clear();
    request = requestFor(folder, true);
    request.tools.compiler = u"false"_s;
    const EbookResult failed = StartCreateChmEbook(host, request);
    EXPECT_FALSE(failed.ok || failed.badInput);
    EXPECT_TRUE(QFile::exists(folder + u"data/qmr/PlayAllVideos.html"_s));
    ASSERT_GE(host.log.size(), 3);
    EXPECT_EQ(host.log.at(host.log.size() - 2), u"ok!"_s);
    EXPECT_EQ(host.log.last(), failed.problem);
}

// Both options keep the saved page under one name, so the second build appends to the page as
// saved, never to a page already appended to; a page kept as "ORG.html" elsewhere is used.
TEST(EbookBuild, AppendingFolderPagesTwiceAppendsOnceFromTheOnePageKept) {
    TempFolder temp;
    const QString folder = test::CopyOfExample(temp);
    const QString item = folder + u"data/20240305140515/"_s;
    const QByteArray original = ReadBytes(item + u"index.html"_s);
    RecordingHost host;
    EbookRequest request = requestFor(folder, false);
    ASSERT_TRUE(StartCreateChmEbook(host, request).ok); // writes the folder pages
    request.options.appendFolderPage = true;
    request.options.googleAD = true;
    ASSERT_TRUE(StartCreateChmEbook(host, request).ok);
    const QByteArray once = ReadBytes(item + u"index.html"_s);
    request.options.index2org = true;
    ASSERT_TRUE(StartCreateChmEbook(host, request).ok);
    EXPECT_EQ(ReadBytes(item + u"index.html"_s), once);
    EXPECT_NE(once, original);
    EXPECT_TRUE(once.contains("Reading Room")); // its folder's page was appended
    EXPECT_EQ(QDir(item).entryList({u"*.html"_s}, QDir::Files),
              (QStringList{"index.html", "org.html"}));
    EXPECT_EQ(ReadBytes(item + u"org.html"_s), original);

    // A page kept as "ORG.html" where names ignore case is the page kept: nothing is made anew
    // from the page already appended to.
    const QString other = folder + u"data/20240302102233/"_s;
    const QByteArray otherOnce = ReadBytes(other + u"index.html"_s);
    QFile::rename(other + u"org.html"_s, other + u"ORG.html"_s);
    ASSERT_TRUE(StartCreateChmEbook(host, request).ok);
    EXPECT_FALSE(QFile::exists(other + u"org.html"_s));
    EXPECT_EQ(ReadBytes(other + u"index.html"_s), otherOnce);
}

TEST(EbookBuild, RefusesNoSelectionBrokenCataloguesAndUnsafeIdentifiers) {
    RecordingHost host;
    EbookResult result = StartCreateChmEbook(host, requestFor(QString(), false));
    EXPECT_EQ(host.messages, QStringList{"Please select a scrapbook in the list first!"});

    TempFolder broken;
    broken.write(u"scrapbook.rdf"_s, "<RDF:Description\nNS1:title=\"x\n");
    result = StartCreateChmEbook(host, requestFor(broken.path(), false));
    EXPECT_TRUE(result.badInput);
    EXPECT_TRUE(result.problem.contains(u"scrapbook.rdf: line 2"_s));
    EXPECT_FALSE(QFile::exists(broken.path() + u"Index.hhc"_s));

    TempFolder outside;
    outside.write(u"book/scrapbook.rdf"_s,
                  "<RDF:Seq RDF:about=\"urn:scrapbook:root\">\n"
                  "<RDF:li RDF:resource=\"urn:scrapbook:item../../evil\"/>\n"
                  "</RDF:Seq>\n"
                  "<RDF:Description RDF:about=\"urn:scrapbook:item../../evil\"\n"
                  "NS1:id=\"../../evil\"\nNS1:type=\"folder\"\nNS1:title=\"Evil\"\n"
                  "NS1:comment=\"Quillmere_Content_kiosk\" />\n");
    host.log.clear();
    EbookRequest request = requestFor(outside.path() + u"book/"_s, false);
    request.options.index2org = true;
    ASSERT_TRUE(StartCreateChmEbook(host, request).ok);
    EXPECT_FALSE(host.log.filter(u"../../evil"_s).isEmpty());
    EXPECT_EQ(QDir(outside.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList{"book"});
}

} // namespace
} // namespace qmr
