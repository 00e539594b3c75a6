#include "chm/BookFiles.h"
#include "chm/ReferenceScanner.h"

#include "platform/CodePage.h"
#include "support/TempFolder.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr::chm {
namespace {

// A project in book/ whose pages use files in every way a page can, with names that differ
// from the disk in case, escaped names, a file outside the project folder and missing files.
class BookFilesTest : public ::testing::Test {
  protected:
    void SetUp() override {
        write("Index.hhp", "[OPTIONS]\r\nCompiled file=out.chm\r\nContents file=Index.hhc\r\n"
                           "Index file=index.HHK\r\nDefault topic=index.html\r\n[FILES]\r\n"
                           "index.html\r\ndata\\1\\index.html\r\n");
        write("Index.hhc", "<ul><li><object type=\"text/sitemap\"><param name=Local "
                           "value=\"data/2/index.html#x\"><param name=Local value=\"http://x/\">");
        write("Index.hhk", "<ul><li><object type=\"text/sitemap\"><param name=Local "
                           "value=\"data/1/index.html\">");
        write("index.html", "<a href=\"data/1/index.html\"><img src=\"Logo.PNG\">"
                            "<a href=\"../outside.html\"><a href=\"missing.html\">"
                            "<a href=\"missing.html#again\"><a href=\"https://example.org/\">");
        write("logo.png", "");
        folder.write(QStringLiteral("outside.html"), "<img src=\"book/never.png\">");
        write("never.png", "");
        write("data/1/index.html",
              "<link href=\"style/a.css\" rel=stylesheet><img src=\"pic%20one.png\">"
              "<img src=\"a%20b.png\"><frame src=\"../../DATA/2/INDEX.HTML\">"
              "<img srcset=\"s1.png 1x, s2.png 2x\"><div style=\"background:url('st.png')\">"
              "<object data=\"o.swf\"><param name=movie value=\"m.swf\"></object>"
              "<embed src=\"e.swf\"><table background=\"bg.gif\">"
              "<a href=\"\xE4\xB8\xAD.html\">");
        for (const char* name : {"pic one.png", "a%20b.png", "s1.png", "s2.png", "st.png", "o.swf",
                                 "m.swf", "e.swf", "bg.gif", "\xE4\xB8\xAD.html", "img/bg.png"})
            write(QByteArray("data/1/") + name, "");
        write("data/1/style/a.css", "@import \"b.css\";\nbody { background: url(../img/bg.png) }");
        write("data/1/style/b.css", "p { background: url(\"missing.png\") }");
        write("data/2/index.html", "<img src=\"../1/pic one.png\"><img src=\"gone.png\">");
    }

    void write(const QByteArray& relative, const QByteArray& bytes) {
        folder.write(QStringLiteral("book/") + QString::fromUtf8(relative), bytes);
    }

    HelpProject project() {
        HelpProject read;
        CompileLog log;
        EXPECT_TRUE(ReadHelpProject(folder.path() + QStringLiteral("book/Index.hhp"), read, log));
        return read;
    }

    test::TempFolder folder;
};

TEST_F(BookFilesTest, GathersEveryFileThePagesUseInOrder) {
    CompileLog log;
    const QStringList files = GatherBookFiles(project(), log, 1);
    EXPECT_EQ(files,
              QStringList({"index.html", "data/1/index.html", "Index.hhc", "Index.hhk", "logo.png",
                           "data/1/style/a.css", "data/1/pic one.png", "data/1/a%20b.png",
                           "data/2/index.html", "data/1/s1.png", "data/1/s2.png", "data/1/st.png",
                           "data/1/o.swf", "data/1/m.swf", "data/1/e.swf", "data/1/bg.gif",
                           QString::fromUtf8("data/1/中.html"), "data/1/style/b.css",
                           "data/1/img/bg.png"}));
    EXPECT_EQ(log.errorCount(), 0);
    EXPECT_EQ(log.lines(),
              QStringList({"Warning: index.html: \"missing.html\" names no file of the book "
                           "(missing.html is missing)",
                           "Warning: data/2/index.html: \"gone.png\" names no file of the book "
                           "(data/2/gone.png is missing)",
                           "Warning: data/1/style/b.css: \"missing.png\" names no file of the book "
                           "(data/1/style/missing.png is missing)"}));

    // The same list and the same messages on any number of threads.
    for (int jobs : {2, 5}) {
        CompileLog again;
        EXPECT_EQ(GatherBookFiles(project(), again, jobs), files);
        EXPECT_EQ(again.lines(), log.lines());
    }
}

// A file the project lists that is not there, or not in the project folder, is an error on
// its line; so is a missing contents file. Names differing in case and names written with
// the project folder in front are found.
TEST_F(BookFilesTest, ListedFilesMustExist) {
    write("Index.hhp", "[OPTIONS]\nCompiled file=out.chm\nContents file=toc.hhc\n[FILES]\n"
                       "INDEX.HTML\ngone.html\n../outside.html\n" +
                           folder.path().toUtf8() + "book/logo.png\n");
    CompileLog log;
    const HelpProject read = project();
    EXPECT_EQ(GatherBookFiles(read, log).mid(0, 2), QStringList({"index.html", "logo.png"}));
    const QStringList errors = log.lines().filter(QRegularExpression(QStringLiteral("^Error")));
    ASSERT_EQ(errors.size(), 3);
    EXPECT_EQ(log.errorCount(), 3);
    EXPECT_EQ(errors[0], QStringLiteral("Error: %1: line 6: the file \"gone.html\" in [FILES] "
                                        "does not exist; restore it or remove the line")
                             .arg(read.projectPath));
    EXPECT_TRUE(errors[1].contains(u"line 7: the file \"../outside.html\" in [FILES] is not"));
    EXPECT_TRUE(errors[2].contains(u"the contents file \"toc.hhc\" is not a file"));
}

// A page's <base href> moves its references: to the book's folder for the saved pages'
// "./../../", off the book for a web address, and a base above the book is a warning.
TEST_F(BookFilesTest, ABaseAddressMovesThePagesReferences) {
    write("Index.hhp", "[OPTIONS]\nCompiled file=out.chm\n[FILES]\n"
                       "data\\3\\index.html\ndata\\4\\index.html\ndata\\5\\index.html\n");
    write("data/3/index.html", "<head><base href=\"./../../\"><base href=\"x/\"></head>"
                               "<img src=\"logo.png\"><a href=\"data/1/bg.gif\">");
    write("data/4/index.html", "<base href=\"http://example.org/\"><img src=\"logo.png\">");
    write("data/5/index.html", "<base href=\"../../../\"><img src=\"logo.png\">");
    write("data/1/bg.gif", "");
    CompileLog log;
    EXPECT_EQ(GatherBookFiles(project(), log),
              QStringList({"data/3/index.html", "data/4/index.html", "data/5/index.html",
                           "logo.png", "data/1/bg.gif"}));
    EXPECT_EQ(log.lines(), QStringList({"Warning: data/5/index.html: its <base "
                                        "href=\"../../../\"> leads out of the book, so the "
                                        "files it uses are not packed"}));
}

// Where a folder holds names that differ only in case, the exact one is taken, else the first
// in code-point order.
TEST_F(BookFilesTest, NamesDifferingInCaseTakeTheExactOneElseTheFirst) {
    for (const char* name : {"pic.png", "Pic.png", "PIC.png"})
        write(QByteArray("shots/") + name, name);
    write("Index.hhp", "[OPTIONS]\nCompiled file=out.chm\n[FILES]\nSHOTS/pic.PNG\nshots/Pic.png\n"
                       "Shots/pic.png\n");
    CompileLog log;
    EXPECT_EQ(GatherBookFiles(project(), log),
              QStringList({"shots/PIC.png", "shots/Pic.png", "shots/pic.png"}));
    EXPECT_EQ(log.lines(), QStringList());
}

QStringList Paths(const QList<Reference>& references) {
    QStringList paths;
    for (const Reference& r : references)
        paths.append(r.path == r.asWritten ? r.path : r.path + QStringLiteral(" | ") + r.asWritten);
    return paths;
}

// Every place a page names a file, in page order, each once; addresses with a scheme and
// references to the page itself left out.
TEST(ReferenceScanner, FindsEveryKindOfReferenceInPages) {
    const QByteArray html =
        "<html><head><base href=\"./../&#46;./\"><link rel=stylesheet href=a.css>"
        "<style>@import \"b.css\"; @import url( 'c.css' ); div{background:url(d.png)}"
        "/* url(no.png) */</style><script src=\"e.js\"></script></head>"
        "<body background='f.gif'><a href=\"g.html#top\">g</a><a href=#x>x</a>"
        "<a href=\"mailto:a@b\">m</a><a href=\"http://x/y.png\">h</a><a href=\"javascript:go()\">j"
        "</a><img src=\"data:image/png;base64,AAAA\"><a href=\"/abs.html\">a</a>"
        "<img src=\" h%20i.png?v=2 \" srcset=\"j.png 1x, k,l.png 2x,m.png\">"
        "<frameset><frame src=n.html><iframe src='o.html'></iframe><embed src=p.swf>"
        "<object data=\"q.swf\"><param name=Movie value=\"r.swf\"><param name=quality value=hi>"
        "</object><div style=\"background-image:url(&quot;s.png&quot;)\">"
        "<span style='background: URL(t.png)'></span><a href=\"u.html?a=1&amp;b=2\">"
        "<a href=\"sub\\v.html\"><img src=\"%E4%B8%AD.png\"><img src=\"%B4%FA.png\">"
        "<img src=\"x&#46;png\"><a href=\"w.html\"><img src=a.css><img src=\"unclosed.png>"
        "<video poster=y.jpg><source src=z.mp4></video>";
    const CodePage big5(QStringLiteral("Big5"));
    QString base;
    EXPECT_EQ(
        Paths(ScanHtmlReferences(html, big5, &base)),
        u"a.css;b.css;c.css;d.png;e.js;f.gif;g.html;h i.png | h%20i.png;j.png;k,l.png;m.png;"
        u"n.html;o.html;p.swf;q.swf;r.swf;s.png;t.png;u.html;sub/v.html;"
        u"中.png | %E4%B8%AD.png;測.png | %B4%FA.png;x.png;w.html;unclosed.png;y.jpg;z.mp4"_s.split(
            u';'));
    EXPECT_EQ(base, u"./../../");
    // Below a web address or an absolute base, no reference is a file of the book.
    for (const char* other : {"http://example.org/", "/top/"}) {
        QByteArray moved = html;
        moved.replace("./../&#46;./", other);
        EXPECT_TRUE(ScanHtmlReferences(moved, big5, &base).isEmpty()) << other;
        EXPECT_TRUE(base.isEmpty());
    }
}

// Style sheets: url() in every quoting, @import both ways, comments and strings skipped.
TEST(ReferenceScanner, FindsEveryKindOfReferenceInStyleSheets) {
    const QByteArray css = "@charset \"utf-8\";\n@import 'a.css' screen;\n@IMPORT url(\"b.css\");"
                           "\n/* url(c.png) */ p { background: url( d.png ) }\n"
                           "q { content: \"url(e.png)\"; background:url('f.png') }\n"
                           "@font-face{src:url(\"g.woff2\") format(\"woff2\"),url(h.ttf)}"
                           "i{background:Url(img/\xE4\xB8\xAD.png)} j{x:myurl(k.png)} l{b:url(";
    EXPECT_EQ(
        Paths(ScanCssReferences(css, CodePage(QStringLiteral("Big5")))),
        QStringList({"a.css", "b.css", "d.png", "f.png", "g.woff2", "h.ttf", u"img/中.png"_s}));
}

} // namespace
} // namespace qmr::chm
