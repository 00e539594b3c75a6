#include "website/PageFragments.h"

#include "support/Golden.h"
#include "support/TempFolder.h"
#include "website/PageWriter.h"
#include "website/VideoPage.h"
#include "website/WebsiteSample.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

using test::ReadBytes;
using test::SampleChrome;
using test::TempFolder;

// The footer of the sample chrome in the local code page (Big5: U+3000 is A1 40).
QByteArray sampleFooterBytes(const char* prefix) {
    return QByteArray("\xA1\x40<hr><div align=\"center\"><a href=\"") + prefix +
           "index.html\"><font size=\"3\" >[My Travels]</font></a><font size=\"2\" >  created by "
           "free ebook tool:<a href=\"https://home.example/\">Quillmere</a> and <a "
           "href=\"https://maker.example/\">https://maker.example/</a></font></BODY></HTML>";
}

// The golden pages check every fragment whole; these are the cases they do not reach.
TEST(PageFragments, EmptyNamesNoEscapingAndTheAdvertBlock) {
    PageChrome chrome = SampleChrome();
    chrome.scrapbookName.clear();
    EXPECT_TRUE(
        HtmlHead(chrome, u"<i>T&</i>"_s, u"BIG5"_s).contains(u"<title><i>T&</i>-()</title>"_s));
    EXPECT_TRUE(HtmlFooter(chrome, QString())
                    .startsWith(QStringLiteral("\u3000<hr><div align=\"center\"><a "
                                               "href=\"index.html\"><font size=\"3\" >[]</font>")));

    // The advert block, only when advertising, carries the chrome's publisher and script.
    QString text = u"kept"_s;
    AppendAdvertBlock(chrome, text);
    EXPECT_EQ(text, u"kept"_s);
    chrome.advertising = true;
    AppendAdvertBlock(chrome, text);
    EXPECT_TRUE(text.startsWith(u"kept\r\n<!-- "_s));
    EXPECT_TRUE(text.contains(u"\r\ngoogle_ad_client = \"pub-42\";\r\n"_s));
    EXPECT_TRUE(text.endsWith(u"\r\n  src=\"https://ads.example/show_ads.js\">\r\n</script>"_s));
}

// The redirect page is checked byte for byte by the converted scrapbook's golden files.
TEST(PageFragments, PageWriterVideoPageAndRedirectFailure) {
    TempFolder folder;
    QString error;
    EXPECT_FALSE(
        WriteRedirectIndex(SampleChrome(), folder.path() + u"missing/"_s, u"a.pdf"_s, &error));
    EXPECT_TRUE(error.contains(u"missing"_s)) << error.toStdString();

    // The page writer: lines in the local code page, one page at a time, the deep footer last.
    const PageChrome chrome = SampleChrome();
    PageWriter writer(chrome);
    EXPECT_FALSE(writer.ClosePageWithFooter(&error));
    writer.OpenPage(folder.path() + u"first.html"_s);
    writer.WritePageLine(u"台灣"_s);
    ASSERT_TRUE(writer.ClosePageWithFooter());
    EXPECT_EQ(ReadBytes(folder.path() + u"first.html"_s),
              QByteArray("\xA5\x78\xC6\x57\r\n") + sampleFooterBytes("./../../") + "\r\n");

    const QString page = folder.path() + u"data/qmr/PlayAllVideos.html"_s;
    ASSERT_TRUE(WriteVideoPage(chrome, page, u"Play All Videos on this Scrapbook"_s,
                               u"WMV_Play_List.wpl"_s, &error))
        << error.toStdString();
    EXPECT_TRUE(test::SameText(test::Golden(u"website/video-page.html"_s), ReadBytes(page)));
}

} // namespace
} // namespace qmr
