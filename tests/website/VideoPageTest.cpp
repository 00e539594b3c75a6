#include "website/VideoPage.h"

#include "website/WebsiteTestSupport.h"

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::TempFolder;

TEST(VideoPage, PlaysThePlaylistBesideIt) {
    TempFolder root;
    const QString page = root.path() + QStringLiteral("data/qmr/PlayAllVideos.html");
    QString error;
    ASSERT_TRUE(WriteVideoPage(test::SampleChrome(), page,
                               QStringLiteral("Play All Videos on this Scrapbook"),
                               QStringLiteral("WMV_Play_List.wpl"), &error))
        << error.toStdString();
    test::ExpectGolden(page, "video-page.html");
}

TEST(VideoPage, PlayerIsAppendedAsOneLineWithItsOwnSizeAndCaption) {
    const QString player =
        BuildPlayerHtml(QStringLiteral("before"), QStringLiteral("a b.wmv"),
                        QStringLiteral("Caption"), QStringLiteral("False"), 320, 240);
    EXPECT_TRUE(player.startsWith(QStringLiteral("before<table border=\"1\"")));
    EXPECT_FALSE(player.contains(QLatin1Char('\n')));
    EXPECT_TRUE(
        player.contains(QStringLiteral("-00C04F79FAA6\"  width=\"320\" height=\"240\"><param "
                                       "name=\"URL\" ref value=\"a b.wmv\">")));
    EXPECT_TRUE(player.contains(QStringLiteral(
        "<embed src=\"a b.wmv\" type=\"video/x-ms-wmv\"  width=\"320\" height=\"240\" "
        "autoStart=\"False\" showControls")));
    EXPECT_TRUE(player.contains(QStringLiteral("<param name=\"autoStart\" value=\"False\">")));
    EXPECT_TRUE(player.endsWith(QStringLiteral("<td align=\"center\">Caption</td></tr></table>")));
}

} // namespace
} // namespace qmr
