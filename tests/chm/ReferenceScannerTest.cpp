#include "chm/ReferenceScanner.h"

#include "platform/CodePage.h"

#include <gtest/gtest.h>

namespace qmr::chm {
namespace {

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
    EXPECT_EQ(Paths(ScanHtmlReferences(html, big5, &base)),
              QStringList({"a.css",
                           "b.css",
                           "c.css",
                           "d.png",
                           "e.js",
                           "f.gif",
                           "g.html",
                           "h i.png | h%20i.png",
                           "j.png",
                           "k,l.png",
                           "m.png",
                           "n.html",
                           "o.html",
                           "p.swf",
                           "q.swf",
                           "r.swf",
                           "s.png",
                           "t.png",
                           "u.html",
                           "sub/v.html",
                           QString::fromUtf8("中.png | %E4%B8%AD.png"),
                           QString::fromUtf8("測.png | %B4%FA.png"),
                           "x.png",
                           "w.html",
                           "unclosed.png",
                           "y.jpg",
                           "z.mp4"}));
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
    EXPECT_EQ(Paths(ScanCssReferences(css, CodePage(QStringLiteral("Big5")))),
              QStringList({"a.css", "b.css", "d.png", "f.png", "g.woff2", "h.ttf",
                           QString::fromUtf8("img/中.png")}));
}

} // namespace
} // namespace qmr::chm
