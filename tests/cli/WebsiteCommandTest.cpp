#include "platform/LocalCodePage.h"
#include "support/Programs.h"
#include "support/TempFolder.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QRegularExpression>
#include <QUrl>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

using test::ReadBytes;
using test::RunQuillmereProgram;
using test::TempFolder;

// The local links of a page that lead nowhere: every href and src and a refresh's URL, each
// resolved as a browser does (against the page's folder, or its base address for what follows
// the base), and each "#name" against the page's anchors.
QStringList deadLinks(const QString& page, const QString& html) {
    static const QRegularExpression link(uR"re((?:\b(?:href|src)="|;URL=)([^"]*)")re"_s);
    static const QRegularExpression base(uR"re(<base href="([^"]*)")re"_s);
    const QRegularExpressionMatch baseMatch = base.match(html);
    QStringList dead;
    for (const QRegularExpressionMatch& m : link.globalMatch(html)) {
        const QString url = m.captured(1);
        if (url.contains(u':') || url.isEmpty()) continue; // web addresses
        const qsizetype hash = url.indexOf(u'#');
        if (hash == 0) {
            if (!html.contains(u"name=\""_s + url.mid(1) + u'"')) dead << url;
            continue;
        }
        const bool based = baseMatch.hasMatch() && m.capturedStart() > baseMatch.capturedStart();
        const QString from =
            QFileInfo(page).path() + u'/' + (based ? baseMatch.captured(1) : u""_s);
        const QString path = from + QUrl::fromPercentEncoding(url.left(hash).toUtf8());
        if (!QFileInfo::exists(QDir::cleanPath(path))) dead << url;
    }
    return dead;
}

QString pageText(const QString& path) {
    const QByteArray bytes = ReadBytes(path);
    return bytes.startsWith("\xEF\xBB\xBF") ? QString::fromUtf8(bytes)
                                            : LocalCodePage::decode(bytes);
}

// The page as headless Chromium reads it from file://.
QString chromiumDom(const QString& page) {
    TempFolder profile;
    return test::RunProgram(u"chromium"_s,
                            {"--headless", "--no-sandbox", "--disable-gpu", "--disable-quic",
                             "--no-first-run", "--disable-background-networking",
                             "--disable-component-update", "--disable-sync",
                             "--user-data-dir=" + profile.path(), "--dump-dom",
                             QUrl::fromLocalFile(page).toString()})
        .out;
}

TEST(WebsiteCommand, TheExampleSiteHasNoDeadLinkAndChromiumReadsIt) {
    TempFolder temp;
    const QString book = test::CopyOfExample(temp);
    const QStringList home = {"--home", temp.path() + u"home"_s};
    test::RunResult run = RunQuillmereProgram(home + QStringList{"website", book, "--no-open"});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString() << run.out.toStdString();
    EXPECT_TRUE(
        run.out.endsWith(u"Quillmere Sample ScrapbookBuild all things for this Website ok!\n"_s));

    QStringList pages = {book + u"index.html"_s, book + u"data/20240307080000/index.html"_s};
    for (QDirIterator it(book + u"data"_s, {"*.html"}, QDir::Files, QDirIterator::Subdirectories);
         it.hasNext();) {
        const QString path = it.next();
        if (path.contains(u"/qmr/"_s) || QFileInfo(path).fileName().toLower() == u"photo.html")
            pages << path;
    }
    EXPECT_EQ(pages.size(), 2 + 18 + 10); // 9 photo pages twice; the gallery and 9 e-book pages
    for (const QString& page : pages)
        EXPECT_EQ(deadLinks(page, pageText(page)), QStringList()) << page.toStdString();

    // Chromium reads the odd attributes of the icons as they were always read, and finds every
    // picture where the page says.
    if (!test::HasProgram(u"chromium"_s)) GTEST_SKIP() << "chromium missing";
    const QString gallery = book + u"data/qmr/PhotoIcons001.html"_s;
    const QString photos = book + u"data/20240302103010/Photo.html"_s;
    for (const QString& page : {gallery, photos}) {
        const QString dom = chromiumDom(page);
        EXPECT_TRUE(dom.contains(u"</html>"_s)) << page.toStdString();
        EXPECT_EQ(deadLinks(page, dom), QStringList()) << page.toStdString();
    }
    EXPECT_EQ(chromiumDom(gallery).count(u"/100x75/qmr_icon.jpg\""_s), 9);
    EXPECT_EQ(chromiumDom(photos).count(u"<a name=\"PIC("_s), 4);

    // A second build finds everything made: no page of the e-book, no picture to copy.
    run = RunQuillmereProgram(home + QStringList{"website", book, "--no-open"});
    EXPECT_FALSE(run.out.contains(u"e-book build"_s));
    EXPECT_TRUE(run.out.contains(u"Picture copies: 0 made, 5 up to date, 0 skipped"_s));
}

TEST(WebsiteCommand, OneStepBadInputAndAnUnwritableFolder) {
    TempFolder temp;
    const QString book = test::CopyOfExample(temp);
    ASSERT_EQ(RunQuillmereProgram({"website", book, "--step", "icons"}).exitCode, 0);
    EXPECT_TRUE(QFile::exists(book + u"data/20240303111520/100x75/clay-teapot.jpg"_s));
    EXPECT_FALSE(QFile::exists(book + u"data/20240303111520/640x480"_s));
    EXPECT_FALSE(QFile::exists(book + u"data/qmr/PhotoIcons001.html"_s));

    EXPECT_EQ(RunQuillmereProgram({"website", book, "--step", "all"}).exitCode, 2);
    EXPECT_EQ(RunQuillmereProgram({"website"}).exitCode, 2);
    EXPECT_TRUE(
        RunQuillmereProgram({"website", temp.path() + u"gone"_s}).err.contains(u"is not there"_s));
    temp.write(u"bad/scrapbook.rdf"_s, "<RDF:RDF>\n\xFF\n");
    const test::RunResult bad = RunQuillmereProgram({"playlists", temp.path() + u"bad"_s});
    EXPECT_EQ(bad.exitCode, 2);
    EXPECT_TRUE(bad.err.contains(temp.path() + u"bad/scrapbook.rdf: line 2"_s))
        << bad.err.toStdString();

    // A file where the website's folder belongs: the build fails, naming it.
    QDir(book + u"data/qmr"_s).removeRecursively();
    temp.write(u"sample-scrapbook/data/qmr"_s, "in the way");
    const test::RunResult blocked = RunQuillmereProgram({"website", book, "--step", "home"});
    EXPECT_EQ(blocked.exitCode, 1);
    EXPECT_TRUE(blocked.err.contains(book + u"data/qmr/"_s)) << blocked.err.toStdString();

    const QString help = RunQuillmereProgram({"--help"}).out;
    for (const char* usage : {"website FOLDER [--step icons|icons640|photos|home]",
                              "websites [--no-open]", "videos FOLDER [--yes]", "playlists FOLDER"})
        EXPECT_TRUE(help.contains(QLatin1String(usage))) << usage;
}

// The question is asked on the terminal (here one that `script` makes) or answered by --yes;
// a clip name that holds no date is named and the playlists still written.
TEST(WebsiteCommand, VideosAskAndPlaylistsNameUndatedClips) {
    TempFolder temp;
    const QString book = test::CopyOfExample(temp);
    const QString page = book + u"data/20240306093000/org.html"_s;
    EXPECT_EQ(RunQuillmereProgram({"videos", book}).exitCode, 2); // no terminal, no --yes
    if (test::HasProgram(u"script"_s)) {
        const QString command = u"printf 'cancel\\n' | script -qec '%1 videos %2' /dev/null"_s.arg(
            QStringLiteral(QMR_QUILLMERE_EXE), book);
        EXPECT_EQ(test::RunProgram(u"sh"_s, {"-c", command}).exitCode, 1);
        EXPECT_FALSE(QFile::exists(page));
    }
    ASSERT_EQ(RunQuillmereProgram({"videos", book, "--yes"}).exitCode, 0);
    EXPECT_TRUE(ReadBytes(page).contains("value=\"steeping-D(2024-0306-093000).wmv\""));

    EXPECT_EQ(RunQuillmereProgram({"playlists", book}).exitCode, 0);
    QFile::rename(book + u"data/20240306093000/steeping-D(2024-0306-093000).wmv"_s,
                  book + u"data/20240306093000/steeping-D(2024-1306-093000).wmv"_s);
    const test::RunResult undated = RunQuillmereProgram({"playlists", book});
    EXPECT_EQ(undated.exitCode, 2);
    EXPECT_TRUE(undated.out.contains(u"steeping-D(2024-1306-093000).wmv holds no date"_s));
}

// Collections people published build whole; their broken pictures are logged and skipped.
TEST(WebsiteCommand, RealCollectionsBuild) {
    const QDir wild(QStringLiteral(QMR_WILD_DIR));
    if (!wild.exists()) GTEST_SKIP() << "no real collections beside the project";
    for (const QString& name : wild.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        TempFolder temp;
        test::CopyTree(wild.filePath(name), temp.path() + name);
        const test::RunResult run =
            RunQuillmereProgram({"website", temp.path() + name, "--no-open", "--jobs", "2"});
        EXPECT_EQ(run.exitCode, 0) << name.toStdString() << run.err.toStdString();
        EXPECT_TRUE(QFile::exists(temp.path() + name + u"/data/qmr/PhotoIcons001.html"_s));
    }
}

} // namespace
} // namespace qmr
