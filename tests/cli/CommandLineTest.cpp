#include "platform/LocalCodePage.h"
#include "support/Golden.h"

#include "support/Programs.h"
#include "support/TempFolder.h"

#include <QDate>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QUrl>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

using test::Golden;
using test::MakeScrapbook;
using test::ReadBytes;
using test::RunQuillmereProgram;
using test::RunResult;
using test::TempFolder;

// The counter lives in the home folder, named by --home or QUILLMERE_HOME.
TEST(CommandLine, NewIdCountsInTheHomeFolder) {
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
        {{"website"}, u"name the scrapbook FOLDER"_s},
        {{"website", nowhere}, nowhere + u"/ is not there"_s},
        {{"website", cats, "--step", "all"}, u"--step takes icons"_s},
        {{"videos", cats}, u"there is no terminal to ask"_s}, // and no --yes
    };
    for (const auto& [arguments, reason] : cases) {
        const RunResult run = RunQuillmereProgram(arguments, {u"QUILLMERE_HOME="_s + home});
        EXPECT_EQ(run.exitCode, 2) << arguments.join(u' ').toStdString();
        EXPECT_TRUE(run.err.contains(reason)) << run.err.toStdString();
        EXPECT_EQ(run.out, QString()) << arguments.join(u' ').toStdString();
    }
    // The playlists' log goes to stdout, the reason to stderr as well.
    const RunResult playlists = RunQuillmereProgram({"playlists", temp.path() + u"Broken"_s});
    EXPECT_EQ(playlists.exitCode, 2);
    EXPECT_TRUE(playlists.err.contains(temp.path() + u"Broken/scrapbook.rdf: line 2"_s));
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

const char kBig5Taiwan[] = "\xA5\x78\xC6\x57";

// A machine of its own: HOME with a Firefox profile tree and an application folder, so that
// nothing reaches the profile of whoever runs the tests.
struct FakeMachine {
    TempFolder root;
    QByteArray rootBytes = root.path().toUtf8();
    QString home = root.path() + u"home/"_s;
    QString app = root.path() + u"app/"_s;

    // Two profiles, each with a scrapbook; the second is the default.
    QString addFirefoxProfiles() {
        root.write(u"home/.mozilla/firefox/profiles.ini"_s,
                   "[Profile0]\nPath=Profiles/first.default\n\n[Profile1]\nIsRelative=1\n"
                   "Path=Profiles/Work.Default\nDefault=1\n");
        MakeScrapbook(root, u"home/.mozilla/firefox/Profiles/first.default/ScrapBook"_s, 5);
        return home + u".mozilla/firefox/Profiles/Work.Default/ScrapBook/"_s;
    }

    RunResult run(const QStringList& arguments) const {
        return test::RunQuillmereProgram(arguments,
                                         {u"HOME="_s + home, u"QUILLMERE_HOME="_s + app});
    }
};

// `store add` makes the store and adds each folder once. File=<catalogue>, as the desktop
// passes it unquoted, lists that scrapbook and adds it to the store; without a store file it
// is listed but not kept, and stderr says so. The list is as the window shows it after
// start-up; a store line without "*" is skipped, told on stderr with its line, and makes the
// exit code 2. Nothing is written.
TEST(StoreAndListCommands, TheStoreTakesEachFolderOnceAndTheListIsAsAtStartUp) {
    FakeMachine m;
    MakeScrapbook(m.root, u"books/New Book"_s, 1, "New");
    const QStringList list{u"list"_s, u"File="_s + m.root.path() + u"books/New"_s,
                           u"Book/scrapbook.rdf"_s};
    RunResult run = m.run(list);
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out,
              u"New\t0001\t%1books/new book/\n 1 Scrapbooks \n"_s.arg(m.root.path().toLower()));
    EXPECT_TRUE(run.err.contains(u"ScrapBookStore.txt does not exist"_s));

    const QString cats = MakeScrapbook(m.root, u"Cats"_s, 1);
    const QString store = m.app + u"ScrapBookStore.txt"_s;
    run = m.run({u"store"_s, u"add"_s, u"Cats"_s, m.root.path() + u"Cats"_s});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out, u"Created %1\nAdded Cats*%2 to %1\n"_s.arg(store, cats));
    m.run({u"store"_s, u"add"_s, u"Again"_s, cats});
    run = m.run(list);
    EXPECT_EQ(run.err, QString());
    EXPECT_EQ(ReadBytes(store),
              "Cats*" + cats.toUtf8() + "\r\nNew Book*" + m.rootBytes + "books/New Book/\r\n");

    MakeScrapbook(m.root, m.addFirefoxProfiles().mid(m.root.path().size()), 3, "Mine");
    MakeScrapbook(m.root, u"books/Recipes"_s, 37, "Recipes");
    MakeScrapbook(m.root, u"books/Taiwan"_s, 12, QByteArray(kBig5Taiwan) + "\xAC\xDB\xC3\xAF");
    MakeScrapbook(m.root, u"books/Garden"_s, 0);
    MakeScrapbook(m.root, u"books/recipes"_s, 2, "Other");
    const QByteArray stored = "Recipes*" + m.rootBytes + "books/Recipes/\r\n" + kBig5Taiwan + "*" +
                              m.rootBytes + "books/Taiwan\r\nGarden*" + m.rootBytes +
                              "books/Garden\r\na line without a star\r\n\r\nGone*" + m.rootBytes +
                              "books/Gone/\r\nRecipes again*" + m.rootBytes + "books/recipes/\r\n";
    m.root.write(u"app/ScrapBookStore.txt"_s, stored);

    run = m.run({u"list"_s});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.out.toUtf8(),
              Golden(u"library/quillmere-list.txt"_s, "@root@", m.root.path().toLower().toUtf8()));
    EXPECT_TRUE(run.err.startsWith(u"quillmere: %1ScrapBookStore.txt: line 4: "_s.arg(m.app)));
    EXPECT_EQ(ReadBytes(store), stored);
    EXPECT_EQ(QDir(m.app).entryList(QDir::Files), QStringList{"ScrapBookStore.txt"});
}

// The new scrapbook is registered as the list's rules have it: the second entry for the same
// folder overwrites the last row in name order (here Firefox's own), so multibook.txt pairs
// that row's name with the new folder. `multibook add` prints the list it writes: the named rows
// at start-up (the converted scrapbook has no name) and the scrapbook added. Without a ScrapBook
// folder, `multibook add` fails with exit code 1, while a conversion keeps the new scrapbook and
// its store line and tells it on stderr.
TEST(MultibookAndConvertFolderCommands, RegisterTheNewScrapbook) {
    FakeMachine m;
    const QString system = m.addFirefoxProfiles();
    MakeScrapbook(m.root, system.mid(m.root.path().size()), 2);
    const QString store = m.root.write(u"app/ScrapBookStore.txt"_s, "");
    m.root.write(u"Photos/a b.txt"_s, "hello");
    m.root.write(u"Photos/c.jpg"_s, "jpeg");
    RunResult run = m.run({u"convert-folder"_s, m.root.path() + u"Photos"_s});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QString scrapbook = m.root.path() + u"Photos/scrapbook/"_s;
    EXPECT_TRUE(run.out.endsWith(u"Converted 2 files into %1\n"_s.arg(scrapbook)));
    EXPECT_EQ(ReadBytes(store), "Photos*" + m.rootBytes + "Photos/scrapbook\r\n");
    EXPECT_EQ(ReadBytes(system + u"multibook.txt"_s),
              "\xEF\xBB\xBF(00)FireFox Default Scrapbook\t" + scrapbook.toUtf8() + "\r\n");

    QFile::remove(system + u"multibook.txt"_s); // else its "*" lines would make the list
    const QString cats = MakeScrapbook(m.root, u"Cats"_s, 1, kBig5Taiwan);
    run = m.run({u"multibook"_s, u"add"_s, cats});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out, u"(00)FireFox Default Scrapbook\t%1\n台灣\t%2\n"_s.arg(system, cats));

    QDir(system).removeRecursively();
    run = m.run({u"multibook"_s, u"add"_s, cats});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.startsWith(u"quillmere: there is no ScrapBook folder at "_s + system));
    m.root.write(u"Notes/n.txt"_s, "n");
    run = m.run({u"convert-folder"_s, m.root.path() + u"Notes"_s});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.err.startsWith(u"quillmere: the scrapbook was made, but there is no "_s));
    EXPECT_TRUE(ReadBytes(store).endsWith("Notes*" + m.rootBytes + "Notes/scrapbook\r\n"));
}

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

// The question is asked on the terminal (here one that `script` makes) or answered by --yes;
// a clip name that holds no date is named and the playlists still written. One step makes only
// its own files, and a file where the website's folder belongs fails the build, naming it.
TEST(WebsiteCommand, VideosPlaylistsOneStepAndAnUnwritableFolder) {
    TempFolder temp;
    const QString book = test::CopyOfExample(temp);
    const QString page = book + u"data/20240306093000/org.html"_s;
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

    ASSERT_EQ(RunQuillmereProgram({"website", book, "--step", "icons"}).exitCode, 0);
    EXPECT_TRUE(QFile::exists(book + u"data/20240303111520/100x75/clay-teapot.jpg"_s));
    EXPECT_FALSE(QFile::exists(book + u"data/20240303111520/640x480"_s));
    EXPECT_FALSE(QFile::exists(book + u"data/qmr/PhotoIcons001.html"_s));

    QDir(book + u"data/qmr"_s).removeRecursively();
    temp.write(u"sample-scrapbook/data/qmr"_s, "in the way");
    const test::RunResult blocked = RunQuillmereProgram({"website", book, "--step", "home"});
    EXPECT_EQ(blocked.exitCode, 1);
    EXPECT_TRUE(blocked.err.contains(book + u"data/qmr/"_s)) << blocked.err.toStdString();
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
