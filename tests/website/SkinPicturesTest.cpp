#include "website/SkinPictures.h"

#include "website/PictureTestSupport.h"

#include <QMap>

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::TempFolder;

// Each built-in picture is a real picture of the size its page's markup gives it.
TEST(SkinPictures, EveryPictureDecodesAtTheSizeItsPageGivesIt) {
    const QMap<QString, QSize> sizes = {
        {"logo.gif", {114, 116}},
        {"logo.jpg", {61, 52}},
        {"right-1.gif", {12, 32}},
        {"right-bg.gif", {12, 32}},
        {"spacer.gif", {1, 1}},
        {"foot-bg.gif", {8, 32}},
        {"topbg.gif", {8, 28}},
        {"topbg_right.gif", {8, 116}},
        {"strip_bg5_333333.gif", {8, 52}},
    };
    TempFolder folder;
    QStringList names;
    for (const QList<EmbeddedFile>* files : {&SkinPictureFiles(), &TypeIconFiles()})
        for (const EmbeddedFile& picture : *files) {
            const QString path = folder.write(picture.name, picture.bytes);
            const QSize size = test::PictureSize(path);
            EXPECT_TRUE(size.isValid()) << picture.name.toStdString();
            const QSize expected =
                files == &TypeIconFiles() ? QSize(20, 20) : sizes.value(picture.name, size);
            EXPECT_EQ(size, expected) << picture.name.toStdString();
            names.append(picture.name);
        }
    EXPECT_TRUE(names.contains("images-D(2007-0423-011620).jpg")); // the gallery's placeholder
}

} // namespace
} // namespace qmr
