#include "chm/PageText.h"

#include "platform/CodePage.h"

#include <gtest/gtest.h>

namespace qmr::chm {
namespace {

// Pages in Big5, GB2312, Shift-JIS and UTF-8, each declaring its charset its own way, and a UTF-16
// one known by its byte-order mark; the fallback is a code page none of them is in.
TEST(PageText, DecodesTheDeclaredCharset) {
    const CodePage fallback(QStringLiteral("windows-1252"));
    struct Case {
        QByteArray html;
        const char* title;
        const char* text;
    };
    for (const Case& c : {
             Case{"<html><head><meta http-equiv=\"Content-Type\" content=\"text/html; "
                  "charset=big5\"><title>\xA4\xA4\xA4\xE5</title></head><body>\xA5\x78\xC6\x57"
                  "</body></html>",
                  "中文", "台灣"},
             Case{"<HEAD><META HTTP-EQUIV=content-type CONTENT='text/html;charset=GB2312'>"
                  "<TITLE>\xD6\xD0\xCE\xC4</TITLE><BODY>\xD6\xD0",
                  "中文", "中"},
             Case{"<meta charset=\"utf-8\"><title> \xE4\xB8\xAD  \xE6\x96\x87 </title>\xC3\xA9",
                  "中 文", "é"},
             Case{"<meta charset=x-sjis><title>\x93\xFA\x96\x7B</title>", "日本", ""},
             Case{"\xEF\xBB\xBF<title>\xE4\xB8\xAD</title>", "中", ""},
             Case{QByteArray("\xFF\xFE<\0t\0i\0t\0l\0e\0>\0-N<\0/\0t\0i\0t\0l\0e\0>\0", 32), "中",
                  ""},
             Case{"<title>caf\xE9</title>", "café", ""},
         }) {
        const PageText page = ExtractPageText(c.html, fallback);
        EXPECT_EQ(page.title.toStdString(), c.title);
        EXPECT_EQ(page.text.simplified().toStdString(), c.text);
    }
}

// Only what a reader sees: no markup, scripts, styles, comments or SVG titles; references
// resolved; blocks apart, inline elements joined; blanks made one in the title.
TEST(PageText, KeepsOnlyTheVisibleText) {
    const QByteArray html =
        "<!DOCTYPE html><html><head><title>T &amp; U</title><style>p{color:red}</style>"
        "<script>var s = \"</p>\";</script></head><body><!-- hidden <b>x</b> -->"
        "<h1>Head</h1><p>One&nbsp;&nbsp;<b>bo</b>ld&#x4E2D;&#20013;\n\t two</p>"
        "<svg><title>icon</title><path d=\"M0\"/></svg><div>Three<br>Four</div>"
        "<SCRIPT type=module>alert(1)</SCRIPT ><textarea>Five &lt;</textarea>"
        "<p title=\"not shown\">Six &copy 2020 &unknown; &#0; a < b</p>";
    const PageText page = ExtractPageText(html, CodePage(QStringLiteral("UTF-8")));
    EXPECT_EQ(page.title, u"T & U");
    EXPECT_EQ(page.text.simplified().toStdString(),
              "Head One bold中中 two Three Four Five < Six © 2020 "
              "&unknown; \xEF\xBF\xBD a < b");
}

} // namespace
} // namespace qmr::chm
