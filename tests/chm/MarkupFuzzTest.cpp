#include "chm/HtmlTokenizer.h"
#include "chm/PageText.h"
#include "chm/ReferenceScanner.h"
#include "chm/Sitemap.h"

#include "platform/CodePage.h"
#include "support/Fuzzing.h"

#include <gtest/gtest.h>

namespace qmr::chm {
namespace {

using test::XorShift;

// clang-format off
const char* const kPieces[] = {
    "<", ">", "</", "/>", "<a href=\"", "<img src='", " src=", "\"", "'", "=", " ", "\n", "<!--",
    "-->", "<![CDATA[", "]]>", "<script>", "</script>", "<style>", "</style", "<title>",
    "</title>", "<svg>", "</svg>", "<meta charset=big5>", "<meta charset=\"utf-16\">",
    "<meta http-equiv=content-type content=\"text/html; charset=", "x-sjis", "gb2312", "\">",
    "url(", "url('", ")", "@import ", "/*", "*/", "srcset=\"a 1x, b", "style=\"background:url(",
    "&amp;", "&#", "&#x", "&", ";", "%", "%E4%B8", "%ZZ", "\\", "?", "#", "..", "../", "http:",
    "<ul>", "</ul>", "<li>", "<object type=\"text/sitemap\">", "</object>",
    "<param name=\"Name\" value=\"", "<param name=movie value=", "\xEF\xBB\xBF", "\xFF\xFE",
    "\xA4", "\xE4\xB8\xAD", "\xC3", "\xFF"};
// clang-format on

QByteArray RandomMarkup(XorShift& rng) {
    QByteArray html;
    const uint32_t pieces = rng.below(80);
    for (uint32_t i = 0; i < pieces; ++i) {
        switch (rng.below(40)) {
        case 0:
            html += QByteArray(int(rng.below(5000)), 'x'); // a huge name or value
            break;
        case 1:
            html += QByteArray("<div><ul><b>").repeated(int(rng.below(2000))); // deep nesting
            break;
        case 2:
            html += '\0';
            break;
        case 3:
            html += char(rng.below(256));
            break;
        default:
            html += kPieces[rng.below(std::size(kPieces))];
        }
    }
    return html.left(int(rng.below(uint32_t(html.size()) + 1))); // now and then cut short
}

// Random markup never crashes the readers: tokens stay inside the page and come to an end,
// references are clean, text has no runs of blanks. Run longer with QMR_FUZZ_ITERATIONS.
TEST(MarkupFuzz, RandomMarkupIsReadWithoutHarm) {
    const CodePage big5(QStringLiteral("Big5"));
    const int count = test::FuzzIterations(3000);
    for (int seed = 0; seed < count; ++seed) {
        XorShift rng{uint64_t(seed)};
        const QByteArray html = RandomMarkup(rng);
        HtmlTokenizer tokens(html);
        HtmlToken token;
        qsizetype tokenCount = 0;
        while (tokens.next(token)) {
            ASSERT_LE(++tokenCount, html.size() + 1) << "seed " << seed;
            ASSERT_TRUE(token.text.isEmpty() ||
                        (token.text.data() >= html.data() && token.text.end() <= html.end()))
                << "seed " << seed;
        }
        for (const Reference& r : ScanHtmlReferences(html, big5) + ScanCssReferences(html, big5)) {
            ASSERT_FALSE(r.path.isEmpty()) << "seed " << seed;
            ASSERT_FALSE(r.asWritten.contains(u'?') || r.asWritten.contains(u'#') ||
                         r.asWritten.contains(u'\\'))
                << "seed " << seed;
        }
        const PageText text = ExtractPageText(html, big5);
        ASSERT_FALSE(text.title.contains(QStringLiteral("  ")) || text.title.startsWith(u' '))
            << "seed " << seed;
        ReadSitemap(html, big5);
    }
}

} // namespace
} // namespace qmr::chm
