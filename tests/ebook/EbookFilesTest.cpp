#include "ebook/EbookBuild.h"
#include "ebook/Sitemap.h"

#include "catalogue/CatalogueWalk.h"
#include "catalogue/RdfReader.h"
#include "ebook/ContentPage.h"
#include "ebook/EbookContext.h"
#include "ebook/ForumFile.h"
#include "ebook/HelpCompiler.h"
#include "ebook/ProjectFile.h"
#include "platform/AppFolder.h"
#include "platform/LocalCodePage.h"
#include "platform/PathSeparators.h"
#include "platform/Processes.h"
#include "support/CatalogueBuilder.h"
#include "support/Golden.h"
#include "support/RecordingHost.h"
#include "support/TempFolder.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <memory>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

using test::Fixture;
using test::Golden;
using test::ReadBytes;
using test::RecordingHost;
using test::SameText;
using test::TempFolder;

// The addresses and name every golden file of the e-book was written with.
PageChrome EbookTestChrome() {
    PageChrome chrome;
    chrome.scrapbookName = u"Toc Test"_s;
    chrome.addresses.projectHomePage = u"https://quillmere.example/"_s;
    chrome.addresses.makerSite = u"https://maker.example/"_s;
    return chrome;
}

// One e-book build over a catalogue in a temporary folder: the catalogue loaded (or given),
// its walk, and the build's context over both.
class EbookFixture {
  public:
    explicit EbookFixture(const QByteArray& rdf = Fixture(u"toc/scrapbook.rdf"_s)) {
        folder.write(u"scrapbook.rdf"_s, rdf);
        InputError error;
        EXPECT_TRUE(RecodeAndLoadCatalogue(folder.path(), catalogue, &error))
            << error.text().toStdString();
        start();
    }
    explicit EbookFixture(const Catalogue& given) : catalogue(given) { start(); }

    // After a change to the catalogue, as a new build would see it.
    void start() {
        walk = std::make_unique<CatalogueWalk>(catalogue);
        build = std::make_unique<EbookContext>(host, catalogue, *walk);
        build->folder = folder.path();
        build->chrome = EbookTestChrome();
    }

    // What the build writes beside the table of contents: content page, forum file,
    // Index.hhc, then Index.hhk.
    void writeSitemaps(const QString& contentMode = QString()) {
        build->content.ChooseContentTemplate(build->chrome, catalogue, build->folder, contentMode);
        build->forum.open(path("forum.txt"));
        QString error;
        ASSERT_TRUE(HHC(*build, path("Index.hhc"), &error)) << error.toStdString();
        ASSERT_TRUE(build->forum.close(&error) && build->content.CloseContentPage(&error) &&
                    hhk2(*build, path("Index.hhk"), &error))
            << error.toStdString();
    }

    QString path(const QString& name) const { return folder.path() + name; }
    QByteArray read(const QString& name) const { return ReadBytes(path(name)); }

    TempFolder folder;
    RecordingHost host;
    Catalogue catalogue;
    std::unique_ptr<CatalogueWalk> walk;
    std::unique_ptr<EbookContext> build;
};

QByteArray ebookGolden(const char* name) {
    return Golden(u"ebook/"_s + QLatin1String(name));
}

// A file's lines (each with its line end) from line `from` on.
QByteArray linesFrom(const QByteArray& text, int from) {
    qsizetype at = 0;
    for (int i = 0; i < from && at >= 0; ++i)
        at = text.indexOf('\n', at) + 1;
    return text.mid(at);
}

// The other languages change the heads only (the golden heads are files of their own); no
// language at all is language 1.
TEST(Sitemap, TableOfContentsAndIndexAsTheGoldenFilesShow) {
    const QByteArray toc = ebookGolden("Index-lang1.hhc");
    const QByteArray index = ebookGolden("Index-lang1.hhk");
    const struct {
        EbookLanguage language;
        bool linkToSourceURL;
        QByteArray toc, index;
    } cases[] = {
        {EbookLanguage::English, false, toc, index},
        {EbookLanguage::None, false, toc, index},
        {EbookLanguage::English, true, ebookGolden("Index-link.hhc"),
         ebookGolden("Index-link.hhk")},
        {EbookLanguage::ChineseTraditional, false,
         ebookGolden("Index-lang2-head.hhc") + linesFrom(toc, 12),
         ebookGolden("Index-lang2-head.hhk") + linesFrom(index, 11)},
        {EbookLanguage::ChineseSimplified, false,
         ebookGolden("Index-lang3-head.hhc") + linesFrom(toc, 12),
         ebookGolden("Index-lang3-head.hhk") + linesFrom(index, 11)},
    };
    for (const auto& c : cases) {
        EbookFixture s;
        s.build->options.language = c.language;
        s.build->options.linkToSourceURL = c.linkToSourceURL;
        s.writeSitemaps();
        EXPECT_TRUE(SameText(c.toc, s.read("Index.hhc")));
        EXPECT_TRUE(SameText(c.index, s.read("Index.hhk")));
        EXPECT_TRUE(s.host.log.isEmpty()) << s.host.log.join(u'\n').toStdString();
    }
    EbookFixture empty("<RDF:Seq RDF:about=\"urn:scrapbook:root\">\n</RDF:Seq>\n");
    empty.writeSitemaps();
    EXPECT_TRUE(SameText(ebookGolden("Index-empty.hhc"), empty.read("Index.hhc")));
    EXPECT_TRUE(SameText(ebookGolden("Index-empty.hhk"), empty.read("Index.hhk")));
}

TEST(Sitemap, WhatTheWalkLeavesOutIsLoggedAndEndlessListsStopTheBuild) {
    // A lists itself and B; B lists A again: both would open for ever.
    test::CatalogueBuilder b;
    b.list(u"root"_s, {"../up", "A", "../up", "p"})
        .list(u"A"_s, {"A", "B"})
        .list(u"B"_s, {"A", "p"})
        .item(u"../up"_s, QString())
        .item(u"A"_s, u"folder"_s)
        .item(u"B"_s, u"folder"_s)
        .item(u"p"_s, QString());
    EbookFixture s(b.build());
    s.writeSitemaps();
    EXPECT_EQ(s.host.log, (QStringList{"Skipped item ../up: its identifier cannot name a folder",
                                       "Skipped folder A: it is listed inside itself"}));
    EXPECT_EQ(s.read("Index.hhc").count("value=\"Tp\""), 2); // under B and at the top

    // An untitled page stays in the table of contents but gives no index keyword: an empty
    // keyword can crash a compiler's binary index.
    EbookFixture untitled(test::CatalogueBuilder()
                              .list(u"root"_s, {"u", "n"})
                              .item("u", "", u""_s)
                              .item("n", "")
                              .build());
    untitled.writeSitemaps();
    EXPECT_TRUE(untitled.read("Index.hhc").contains("data/u/index.html"));
    EXPECT_FALSE(untitled.read("Index.hhk").contains("data/u/index.html"));
    EXPECT_TRUE(untitled.read("Index.hhk").contains("data/n/index.html"));

    // Each folder lists the next one twice: 2^40 entries if nothing stopped them.
    EbookFixture endless(test::CatalogueBuilder().chain(40, 2).build());
    QString error;
    EXPECT_FALSE(HHC(*endless.build, endless.path("Index.hhc"), &error));
    EXPECT_TRUE(error.startsWith(u"The table of contents stops after"_s));
    EXPECT_FALSE(QFile::exists(endless.path("Index.hhc"))); // nothing half-written is left
}

// Saved pages by identifier; those marked placed are in the top-level list.
Catalogue pages(const QList<std::pair<QString, bool>>& items) {
    test::CatalogueBuilder b;
    QStringList listed;
    for (const auto& [id, placed] : items) {
        b.item(id, QString());
        if (placed) listed << id;
    }
    return b.list(u"root"_s, listed).build();
}

TEST(ProjectFile, WritesEveryLineAsTheGoldenFilesShow) {
    TempFolder book;
    const QString names = u"ErrorLog.log Index.hhc Index.hhk Thumbs.db forum.txt index.html "
                          u"scrapbook.rdf scrapbook.txt data/qmr/list.html data/qmr/root.html "
                          u"data/20080101000001/a.css data/20080101000001/index.dat "
                          u"data/20080101000001/index.html data/20080101000001/pic.gif "
                          u"data/20080101000001/x.JPG data/20080101000001/x.jpg "
                          u"data/20080101000001/說明.html data/20080101000001/img/b.png "
                          u"data/20080101000002/a.css data/20080101000002/index.html "
                          u"data/20080101000009/index.html"_s;
    for (const QString& name : names.split(u' '))
        book.write(name, "x");
    const QStringList files = GatherScrapbookFiles(book.path());
    const struct {
        EbookLanguage language;
        bool linkToSourceURL;
        const char* startPage;
        const char* golden;
    } cases[] = {
        {EbookLanguage::English, false, "index.html", "Index-english.hhp"},
        {EbookLanguage::ChineseTraditional, false, "index.html", "Index-traditional.hhp"},
        {EbookLanguage::ChineseSimplified, true, "start.html", "Index-simplified-source-links.hhp"},
    };
    EbookFixture s(pages(
        {{u"20080101000001"_s, true}, {u"20080101000002"_s, false}, {u"20080101000003"_s, true}}));
    s.build->folder = book.path();
    QString error;
    for (const auto& c : cases) {
        s.build->options.language = c.language;
        s.build->options.linkToSourceURL = c.linkToSourceURL;
        s.build->options.homePageFilename = QString::fromLatin1(c.startPage);
        ASSERT_TRUE(hhp(*s.build, book.path() + u"Index.hhp"_s, files, &error))
            << error.toStdString();
        EXPECT_TRUE(SameText(Golden(u"ebook/"_s + QLatin1String(c.golden), "{app}",
                                    QFile::encodeName(ToNativePath(ApplicationFolder()))),
                             ReadBytes(book.path() + u"Index.hhp"_s)))
            << c.golden;
    }
    // An unwritable path fails with the reason.
    EXPECT_FALSE(hhp(*s.build, book.path() + u"Index.hhp/Index.hhp"_s, files, &error));
    EXPECT_FALSE(error.isEmpty());
}

TEST(ProjectFile, GathersFilesByNameThenSubFoldersAndStaysInside) {
    TempFolder outside;
    outside.write(u"secret.txt"_s, "s");
    TempFolder book;
    for (const char* name : {"b.txt", "a.txt", "B.txt", "sub/z.txt", "sub/deeper/y.txt",
                             "other/x.txt", ".hidden/h.txt"})
        book.write(QString::fromLatin1(name), "x");
    const QString root = book.path();
    QFile::link(outside.path() + u"secret.txt"_s, root + u"leak.txt"_s);
    QFile::link(outside.path(), root + u"leakdir"_s);
    QFile::link(root + u"sub/z.txt"_s, root + u"alias.txt"_s);
    QFile::link(root, root + u"sub/loop"_s);
    EXPECT_EQ(GatherScrapbookFiles(root.chopped(1)),
              (QStringList{root + "B.txt", root + "a.txt", root + "alias.txt", root + "b.txt",
                           root + ".hidden/h.txt", root + "other/x.txt", root + "sub/z.txt",
                           root + "sub/deeper/y.txt"}));
    EXPECT_TRUE(GatherScrapbookFiles(root + u"missing/"_s).isEmpty());
}

// The entry lines of the plain page: after its four head lines, up to its closing "<hr>".
QByteArray entryLines(const QByteArray& page) {
    qsizetype start = 0;
    for (int i = 0; i < 4; ++i)
        start = page.indexOf('\n', start) + 1;
    return page.mid(start, page.indexOf("<hr>\r\n") - start);
}

TEST(ContentPage, PlainPageAndForumLinkSavedCopiesOrWebSources) {
    EbookFixture compiled;
    compiled.build->options.makeChmFile = true;
    compiled.writeSitemaps(u"ROOT_CONTENT"_s);
    EXPECT_TRUE(SameText(Golden("ebook/content-NoPIC1.html"), compiled.read("index.html")));

    EbookFixture sources;
    sources.build->options.makeChmFile = false;
    sources.build->options.linkToSourceURL = true;
    sources.writeSitemaps(u"ROOT_CONTENT"_s);
    EXPECT_TRUE(SameText(Golden("ebook/content-NoPIC1-sources.html"), sources.read("index.html")));
    EXPECT_TRUE(SameText(Golden("ebook/forum-sources.txt"), sources.read("forum.txt")));
}

// The decorated skins frame the same entries over the marked item's saved page; every table
// they open is closed, and every picture they name is written where the page's base address
// points, except one the user put there.
TEST(ContentPage, MarkersChooseTheSkinLogitechFirst) {
    const QByteArray entries = entryLines(Golden("ebook/content-NoPIC1.html"));
    for (const bool logitech : {true, false}) {
        EbookFixture s;
        if (!logitech) {
            s.catalogue.items[14].comment.clear();
            s.start();
        }
        const QString own = logitech ? u"logo.jpg"_s : u"logo.gif"_s;
        s.folder.write(own, "the user's own");
        s.writeSitemaps();
        // The fixture's items 20240101000015 and 20240101000014 carry the markers.
        const QString path =
            s.path(logitech ? "data/20240101000015/index.html" : "data/20240101000014/index.html");
        EXPECT_EQ(s.build->content.pagePath(), path);
        const QByteArray page = ReadBytes(path);
        EXPECT_TRUE(page.contains(entries));
        EXPECT_TRUE(page.contains(logitech ? "<div id=\"D5title\"> Content View</div>"
                                           : "Content View</b></font></td>"));
        const QString text = LocalCodePage::decode(page);
        static const QRegularExpression named(u"(?:src|background)=\"([^\"/:]+\\.(?:gif|jpg))\""_s);
        for (const auto& match : named.globalMatch(text))
            EXPECT_TRUE(QFile::exists(s.path(match.captured(1))))
                << match.captured(1).toStdString();
        EXPECT_EQ(ReadBytes(s.path(own)), "the user's own");
        for (const QString& tag : {u"table"_s, u"tr"_s, u"td"_s, u"tbody"_s})
            EXPECT_EQ(text.count(u"<"_s + tag + u">"_s) + text.count(u"<"_s + tag + u" "_s),
                      text.count(u"</"_s + tag + u">"_s))
                << tag.toStdString();
    }
}

// What the golden pages do not reach: an entry without a link is a bold title, and a forum line
// for a local file or an empty address is the title alone, not indented.
TEST(ContentPage, EntryWithoutALinkAndForumLines) {
    const Catalogue catalogue = test::CatalogueBuilder().item("n", "note", "Bold").build();
    TempFolder folder;
    const PageChrome chrome = EbookTestChrome();
    ContentPage content;
    content.ChooseContentTemplate(chrome, catalogue, folder.path(), u"ROOT_CONTENT"_s, u"c.html"_s);
    QString link;
    content.ContentItemEntry(catalogue, 2, 0, link, u"3"_s, 7, false, nullptr);
    ASSERT_TRUE(content.CloseContentPage());
    EXPECT_TRUE(ReadBytes(folder.path() + u"c.html"_s)
                    .contains("<font size=\"3\">\r\n<b>Bold...</b></font><br>\r\n"));
    EXPECT_EQ(ForumLine(3, u"T"_s, u"data/1/index.html"_s),
              u"      [url=data/1/index.html]T[/url]");
    EXPECT_EQ(ForumLine(2, u"T"_s, u"FiLe:x"_s), u"T");
    EXPECT_EQ(ForumLine(2, u"T"_s, u"   "_s), u"T");
}

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

// A compiler that cannot start names the setting to change; one the user stops is ended, and
// its unfinished book removed.
TEST(HelpCompiler, ACompilerThatCannotStartOrIsStopped) {
    CompileSetup s;
    RecordingHost host;
    const QString missing = s.temp.path() + u"no such/chmcmd"_s;
    CompileResult result =
        RunHelpCompiler(host, HelpTools{"\"" + missing + "\"", {}}, s.project, s.output);
    EXPECT_FALSE(result.ok);
    for (const QString& part : {missing, u"[Tools]"_s, u"HelpCompiler"_s, u"Quillmere.ini"_s})
        EXPECT_TRUE(result.problem.contains(part)) << result.problem.toStdString();
    EXPECT_TRUE(host.log.isEmpty());
    EXPECT_TRUE(QDir(QFileInfo(s.output).absolutePath()).exists());

    if (HostIsWindows()) GTEST_SKIP() << "the stand-in compiler is a shell script";
    WriteScript(s.temp, u"hhc"_s, u"printf 'ITSF half' > '%1'\nsleep 60\n"_s.arg(s.output));
    StoppingHost stopping(2);
    QDeadlineTimer deadline(30000);
    result = RunHelpCompiler(stopping, {s.temp.path() + u"hhc"_s, {}}, s.project, s.output);
    EXPECT_FALSE(deadline.hasExpired());
    EXPECT_TRUE(result.cancelled);
    EXPECT_EQ(result.problem, CancelledProblem());
    EXPECT_EQ(stopping.log, CountedLines(2));
    EXPECT_FALSE(QFileInfo::exists(s.output));
}

} // namespace
} // namespace qmr
