#include "ebook/ContentPage.h"

#include "ebook/SitemapTestSupport.h"

#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::SitemapBuild;

// Every picture a decorated content page names, other than the type icons in data/qmr/, is
// there beside the catalogue, where the page's base address points; a picture the user put
// there first stays as it was.
TEST(SkinPicturesOnDisk, EveryPictureTheSkinNamesIsWhereThePageLooks) {
    for (const bool kiosk : {true, false}) {
        SitemapBuild s;
        s.loadFixture();
        if (kiosk) s.build.catalogue.items[14].comment.clear(); // no Logitech marker
        const QString own = kiosk ? QStringLiteral("logo.gif") : QStringLiteral("logo.jpg");
        s.folder.write(own, "the user's own");
        s.writeSitemaps();
        const QString page = LocalCodePage::decode(test::ReadBytes(s.build.content.pagePath()));
        ASSERT_TRUE(page.contains(QStringLiteral("<base href=\"./../../\">")));
        static const QRegularExpression named(
            QStringLiteral("(?:src|background)=\"([^\"/:]+\\.(?:gif|jpg))\""));
        int pictures = 0;
        for (const auto& match : named.globalMatch(page)) {
            EXPECT_TRUE(QFile::exists(s.build.folder + match.captured(1)))
                << match.captured(1).toStdString();
            ++pictures;
        }
        EXPECT_GE(pictures, kiosk ? 6 : 9);
        EXPECT_EQ(test::ReadBytes(s.build.folder + own), "the user's own");
    }
}

} // namespace
} // namespace qmr
