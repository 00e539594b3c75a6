#include "website/PageFragments.h"

#include "website/PageWriter.h"
#include "website/TypeIcons.h"
#include "website/WebsiteTestSupport.h"

#include <gtest/gtest.h>

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

// The golden pages check every fragment whole; these are the edge cases they do not reach.
TEST(PageFragments, AnEmptyNameStaysEmptyAndNothingIsEscaped) {
    PageChrome chrome = SampleChrome();
    chrome.scrapbookName.clear();
    const QString head = HtmlHead(chrome, QStringLiteral("<i>T&</i>"), QStringLiteral("BIG5"));
    EXPECT_TRUE(head.contains(QStringLiteral("charset=BIG5\">")));
    EXPECT_TRUE(head.contains(QStringLiteral("<title><i>T&</i>-()</title>")));
    EXPECT_TRUE(HtmlTitleBar(chrome, QStringLiteral("./"))
                    .contains(QStringLiteral("<a href=\"./index.html\"><font size=\"4\" "
                                             "color=\"#FFFFFF\"></font></a>")));
    EXPECT_TRUE(HtmlFooter(chrome, QString())
                    .startsWith(QStringLiteral("\u3000<hr><div align=\"center\"><a "
                                               "href=\"index.html\"><font size=\"3\" >[]</font>")));
    const QString bar = HtmlNavigationBar(QString());
    EXPECT_TRUE(bar.contains(QStringLiteral("href=\"index.html\">Content View</a>]")));
    EXPECT_TRUE(bar.contains(QStringLiteral("href=\"data/qmr/list.html\">List View</a>]")));
}

TEST(PageFragments, AdvertBlockIsThirteenLinesOnlyWhenAdvertisingIsOn) {
    PageChrome chrome = SampleChrome();
    QString text = QStringLiteral("kept");
    AppendAdvertBlock(chrome, text);
    EXPECT_EQ(text, QStringLiteral("kept"));

    chrome.advertising = true;
    AppendAdvertBlock(chrome, text);
    EXPECT_EQ(text, QStringLiteral("kept\r\n"
                                   "<!-- ***************************************** -->\r\n"
                                   "<script type=\"text/javascript\"><!--\r\n"
                                   "google_ad_client = \"pub-42\";\r\n"
                                   "google_ad_width = 728;\r\n"
                                   "google_ad_height = 90;\r\n"
                                   "google_ad_format = \"728x90_as\";\r\n"
                                   "google_ad_type = \"text_image\";\r\n"
                                   "google_ad_channel = \"\";\r\n"
                                   "//-->\r\n"
                                   "</script>\r\n"
                                   "<script type=\"text/javascript\"\r\n"
                                   "  src=\"https://ads.example/show_ads.js\">\r\n"
                                   "</script>"));
}

TEST(PageFragments, RedirectIndexIsTwoLinesWithTheTargetAsItStands) {
    TempFolder folder;
    ASSERT_TRUE(WriteRedirectIndex(SampleChrome(), folder.path(), QStringLiteral("My File.pdf")));
    EXPECT_EQ(ReadBytes(folder.path() + QStringLiteral("index.html")),
              QByteArray("<html><head><meta http-equiv=\"refresh\" content=\"0;URL=./My "
                         "File.pdf\"></head><body>\r\n") +
                  sampleFooterBytes("./") + "\r\n");
    QString error;
    EXPECT_FALSE(WriteRedirectIndex(SampleChrome(), folder.path() + QStringLiteral("missing/"),
                                    QStringLiteral("a.pdf"), &error));
    EXPECT_TRUE(error.contains(QStringLiteral("missing"))) << error.toStdString();
}

TEST(PageWriter, WritesLinesInTheLocalCodePageAndEndsWithTheDeepFooter) {
    TempFolder folder;
    const PageChrome chrome = SampleChrome();
    PageWriter writer(chrome);
    QString error;
    EXPECT_FALSE(writer.ClosePageWithFooter(&error));
    EXPECT_FALSE(error.isEmpty());

    writer.OpenPage(folder.path() + QStringLiteral("first.html"));
    writer.WritePageLine(QStringLiteral("台灣"));
    QString advert;
    AppendAdvertBlock(chrome, advert);
    writer.WritePageLine(advert); // advertising off: the empty line stays
    ASSERT_TRUE(writer.ClosePageWithFooter());
    // The next page starts anew.
    writer.OpenPage(folder.path() + QStringLiteral("second.html"));
    ASSERT_TRUE(writer.ClosePageWithFooter());

    EXPECT_EQ(ReadBytes(folder.path() + QStringLiteral("first.html")),
              QByteArray("\xA5\x78\xC6\x57\r\n\r\n") + sampleFooterBytes("./../../") + "\r\n");
    EXPECT_EQ(ReadBytes(folder.path() + QStringLiteral("second.html")),
              sampleFooterBytes("./../../") + "\r\n");
}

TEST(TypeIcons, IconsFollowTheTypeInAnyCase) {
    EXPECT_EQ(TypeIconTag(QStringLiteral("Marked"), QStringLiteral("../qmr/")),
              QStringLiteral("<img border=\"0\" src=\"../qmr/images-D(2007-0418-162822).jpg\" "
                             "width=\"20\" height=\"20\">"));
    EXPECT_EQ(TypeIconFile(QString()), QStringLiteral("images-D(2007-0418-162822).jpg"));
    EXPECT_EQ(TypeIconFile(QStringLiteral("BOOKMARK")),
              QStringLiteral("images-D(2007-0426-225435).jpg"));
    EXPECT_EQ(TypeIconFile(QStringLiteral("folder")),
              QStringLiteral("images-D(2007-0423-011620).jpg"));
    EXPECT_EQ(TypeIconFile(QStringLiteral("separator")), QString());
}

} // namespace
} // namespace qmr
