#include "chm/HelpProject.h"

#include "chm/BookLanguage.h"

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
    EXPECT_EQ(LanguageOfCodePage(QStringLiteral("cp932")), 0x411u);
    EXPECT_EQ(LanguageOfCodePage(QStringLiteral("windows-1251")), 0x419u);
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
        EXPECT_EQ(project.folder, folder.path());
        EXPECT_EQ(project.compiledFile, folder.path() + QStringLiteral("{app}chm/Index.chm"));
        EXPECT_EQ(project.title, u"Index");
        EXPECT_EQ(project.languageId, c.language);
        EXPECT_EQ(project.defaultFont, c.font);
        EXPECT_EQ(project.defaultTopic, c.topic);
        EXPECT_EQ(project.contentsFile, u"Index.hhc");
        EXPECT_EQ(project.indexFile, u"Index.hhk");
        EXPECT_EQ(project.defaultWindow, u"main");
        EXPECT_EQ(project.errorLogFile, u"ErrorLog.log");
        EXPECT_TRUE(!project.binaryToc && project.binaryIndex && project.fullTextSearch);
        ASSERT_EQ(project.windows.size(), 1);
        EXPECT_EQ(project.windows[0].name, u"main");
        const QStringList fields = project.windows[0].fields;
        ASSERT_EQ(fields.size(), 20);
        EXPECT_EQ(fields.mid(0, 5),
                  QStringList({"Index", "index.hhc", "index.hhk", c.topic, c.topic}));
        EXPECT_EQ(fields[9], u"0x23520");
        EXPECT_EQ(fields[12], u"");
        EXPECT_EQ(fields[13], u"0xB0000");
        EXPECT_EQ(fields[19], u"0");
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

} // namespace
} // namespace qmr::chm
