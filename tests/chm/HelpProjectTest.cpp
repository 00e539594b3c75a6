#include "chm/HelpProject.h"
#include "chm/Sitemap.h"

#include "chm/BookLanguage.h"
#include "platform/CodePage.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace qmr::chm {
namespace {

QByteArray Golden(const char* name) {
    return test::ReadBytes(QStringLiteral(QMR_GOLDEN_DIR "/ebook/") + QLatin1String(name));
}

// A project without a Language= line is in the language of the system's code page, as the
// e-book build's projects are.
TEST(HelpProject, WithoutALanguageLineTheSystemsCodePageDecides) {
    test::TempFolder folder;
    const QString path = folder.write(QStringLiteral("Index.hhp"),
                                      "[OPTIONS]\nCompiled file=a.chm\nTitle=\xB4\xFA\n");
    HelpProject project;
    CompileLog log;
    ASSERT_TRUE(ReadHelpProject(path, project, log, LanguageOfCodePage(QStringLiteral("Big5"))));
    EXPECT_EQ(project.languageId, 0x404u);
    EXPECT_EQ(project.title, QString::fromUtf8("測"));
    EXPECT_EQ(LanguageOfCodePage(QStringLiteral("GB2312")), 0x804u);
    EXPECT_EQ(LanguageOfCodePage(QStringLiteral("windows-1252")), 0x409u);
    EXPECT_EQ(LanguageOfCodePage(QStringLiteral("no such code page")), 0x409u);
}

// The three projects the e-book build writes, read back field by field.
TEST(HelpProject, ReadsTheProjectsTheEbookBuildWrites) {
    test::TempFolder folder;
    struct Case {
        const char* golden;
        quint32 language;
        QString font;
        QString topic;
        qsizetype files;
        int firstFileLine;
    };
    for (const Case& c :
         {Case{"Index-english.hhp", 0x409, {}, "index.html", 11, 21},
          Case{"Index-traditional.hhp", 0x404, QString::fromUtf8("新細明體, 10,136"), "index.html",
               11, 22},
          Case{"Index-simplified-source-links.hhp", 0x804, {}, "start.html", 0, 0}}) {
        SCOPED_TRACE(c.golden);
        const QString path = folder.write(QStringLiteral("Index.hhp"), Golden(c.golden));
        HelpProject project;
        CompileLog log;
        ASSERT_TRUE(ReadHelpProject(path, project, log)) << log.lines().join(u'\n').toStdString();
        EXPECT_EQ(log.lines(), QStringList());
        EXPECT_EQ(project.compiledFile, folder.path() + QStringLiteral("{app}chm/Index.chm"));
        EXPECT_EQ(project.languageId, c.language);
        EXPECT_EQ(project.defaultFont, c.font);
        EXPECT_EQ(project.defaultTopic, c.topic);
        EXPECT_TRUE(!project.binaryToc && project.binaryIndex && project.fullTextSearch);
        ASSERT_EQ(project.windows.size(), 1);
        EXPECT_EQ(project.windows[0].fields.mid(0, 5),
                  QStringList({"Index", "index.hhc", "index.hhk", c.topic, c.topic}));
        ASSERT_EQ(project.files.size(), c.files);
        if (c.files) {
            EXPECT_EQ(project.files[0], u"Thumbs.db");
            EXPECT_EQ(project.fileLines[0], c.firstFileLine);
            EXPECT_EQ(project.files[6], QString::fromUtf8("data/20080101000001/說明.html"));
        }
    }
}

// What other projects write: keys in any case, blanks around "=", "\" in paths, a relative
// book, LF lines, a window with quoted commas and a position group, Big5 texts beside UTF-8
// file names, comments and the sections the compiler has no use for.
TEST(HelpProject, ReadsLooselyWrittenProjects) {
    test::TempFolder folder;
    const QByteArray hhp = "[OPTIONS]\n  compiled FILE =  out\\book.chm \nTitle =\xA5\x78\xC6\x57\n"
                           "LANGUAGE=0x404\nbinary toc=YES\nDefault topic=\xE8\xAA\xAA.html\n"
                           "[WINDOWS]\nw=\"a, \xA5\x78\",,\"\",,,,,,,0x1,,,[10,20,300,400],,\n"
                           "[ALIAS]\nIDH_X = a.html\n[MAP]\n#define X 1\n[FILES]\n\n; a comment\n"
                           "sub\\\xE8\xAA\xAA.html\n[INFOTYPES]\nwhatever\n";
    HelpProject project;
    CompileLog log;
    ASSERT_TRUE(ReadHelpProject(folder.write(QStringLiteral("p.hhp"), hhp), project, log));
    EXPECT_EQ(project.compiledFile, folder.path() + QStringLiteral("out/book.chm"));
    EXPECT_EQ(project.title, QString::fromUtf8("台灣"));
    EXPECT_TRUE(project.binaryToc);
    EXPECT_EQ(project.defaultTopic, QString::fromUtf8("說.html"));
    ASSERT_EQ(project.windows.size(), 1);
    EXPECT_EQ(project.windows[0].fields,
              QStringList({QString::fromUtf8("a, 台"), "", "", "", "", "", "", "", "", "0x1", "",
                           "", "10,20,300,400", "", ""}));
    EXPECT_EQ(project.files, QStringList(QString::fromUtf8("sub/說.html")));
    EXPECT_EQ(project.fileLines, QList<int>({16}));
}

// Each problem is one error naming the project file and, where there is one, the line.
TEST(HelpProject, RefusesBadProjectsWithClearMessages) {
    test::TempFolder folder;
    struct Case {
        QByteArray hhp;
        const char* line;
    };
    const QByteArray book = "[OPTIONS]\r\nCompiled file=a.chm\r\n";
    for (const Case& c :
         {Case{"[OPTIONS]\r\nTitle=x\r\n", "names no book to write"},
          Case{book + "Language=English\r\n", "line 3: the language must be a number"},
          Case{book + "Full-text search=Maybe\r\n", "line 3: write Yes or No"},
          Case{book + "Title\r\n", "line 3: an option needs the form"},
          Case{book + "[WINDOWS]\r\nmain=\"x,y\r\n", "line 4: a quote or a \"[\""},
          Case{book + "[WINDOWS]\r\nmain\r\n", "line 4: a window needs the form"}}) {
        HelpProject project;
        CompileLog log;
        const QString path = folder.write(QStringLiteral("bad.hhp"), c.hhp);
        EXPECT_FALSE(ReadHelpProject(path, project, log));
        ASSERT_EQ(log.lines().size(), 1) << c.line;
        EXPECT_TRUE(log.lines()[0].startsWith(QStringLiteral("Error: ") + path));
        EXPECT_TRUE(log.lines()[0].contains(QLatin1String(c.line))) << log.lines()[0].toStdString();
    }
    HelpProject project;
    CompileLog log;
    EXPECT_FALSE(ReadHelpProject(folder.path() + QStringLiteral("none.hhp"), project, log));
    EXPECT_TRUE(log.lines().value(0).contains(u"none.hhp: cannot read the project file"));
}

// "level name -> local" for each entry, to compare whole files at a glance.
QStringList Outline(const Sitemap& sitemap) {
    QStringList lines;
    for (const SitemapEntry& e : sitemap.entries)
        lines.append(QStringLiteral("%1 %2 -> %3").arg(e.level).arg(e.name(), e.local()));
    return lines;
}

// The build's table of contents wraps each page in a list of its own and nests folders; its
// index wraps every entry in a list inside one outer list: both give the levels a reader shows.
TEST(Sitemap, ReadsTheLevelsOfTheBuildsFiles) {
    const CodePage big5(QStringLiteral("Big5"));
    const Sitemap toc = ReadSitemap(Golden("Index-lang1.hhc"), big5);
    const QStringList outline = Outline(toc);
    ASSERT_GE(outline.size(), 8);
    EXPECT_EQ(outline.mid(0, 6),
              QStringList({"1 Travel -> ", "2 Mountain trail -> data/20240101000008/index.html",
                           "2 Asia -> ", QString::fromUtf8("3 台灣 -> "),
                           "4 Marked mail -> data/20240101000012/index.html",
                           "4 Report -> data/20240101000013/index.html"}));
    EXPECT_TRUE(outline[6].startsWith(u"3 A title of exactly eighty"));
    EXPECT_EQ(toc.entries[0].value(u"imagenumber"), u"1");
    EXPECT_EQ(toc.properties.size(), 3);
    EXPECT_EQ(toc.properties[0].name, u"Window Styles");

    const Sitemap index = ReadSitemap(Golden("Index-lang1.hhk"), big5);
    ASSERT_GE(index.entries.size(), 3);
    for (const SitemapEntry& entry : index.entries)
        EXPECT_EQ(entry.level, 1) << entry.name().toStdString();
    EXPECT_EQ(index.entries[1].name(), u"Search & find");
    EXPECT_EQ(index.entries[1].local(), u"https://search.example.org/?q=a&b=c");
    EXPECT_EQ(index.entries[2].name(), u"Notes \"draft\"");
}

// The file's own charset wins over the code page handed in; Big5 and GB2312 titles decode.
TEST(Sitemap, DecodesTheCharsetTheFileDeclares) {
    const CodePage latin(QStringLiteral("windows-1252"));
    const QByteArray entry = "<UL><LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"";
    const Sitemap traditional =
        ReadSitemap(Golden("Index-lang2-head.hhc") + entry + "\xA4\xA4\xA4\xE5\">", latin);
    ASSERT_EQ(traditional.entries.size(), 1);
    EXPECT_EQ(traditional.entries[0].name(), QString::fromUtf8("中文"));
    EXPECT_EQ(traditional.properties[1].value, QString::fromUtf8("新細明體,10,136"));
    const Sitemap simplified =
        ReadSitemap(Golden("Index-lang3-head.hhk") + entry + "\xD6\xD0\xCE\xC4\">", latin);
    ASSERT_EQ(simplified.entries.size(), 1);
    EXPECT_EQ(simplified.entries[0].name(), QString::fromUtf8("中文"));
}

// Hand-written sitemaps: lower case, unclosed <LI>, no </OBJECT>, comments, unquoted values,
// references in values, repeated parameters, an object of another type.
TEST(Sitemap, ToleratesLooseMarkup) {
    const QByteArray hhk = "<ul><!-- <li><object type=\"text/sitemap\"> -->\n"
                           "<li><object type=text/sitemap><param name=name value=\"A &amp; B\">"
                           "<param name=Local value=a.htm><param name=Local value=b.htm>\n"
                           "<ul><li><OBJECT TYPE=\"Text/Sitemap\"><param name=\"Name\" "
                           "value=\"&#20013;&lt;\"></ul>"
                           "<li><object type=\"application/x-oleobject\"><param name=Name "
                           "value=x></object><li><object type=\"text/sitemap\">"
                           "<param name=Name value='C'>";
    const Sitemap sitemap = ReadSitemap(hhk, CodePage(QStringLiteral("windows-1252")));
    EXPECT_EQ(Outline(sitemap), QStringList({QString::fromUtf8("1 A & B -> a.htm"),
                                             QString::fromUtf8("2 中< -> "), "1 C -> "}));
    EXPECT_EQ(sitemap.entries[0].params.size(), 3);
}

} // namespace
} // namespace qmr::chm
