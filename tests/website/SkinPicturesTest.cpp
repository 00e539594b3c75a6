#include "website/SkinPictures.h"

#include "website/PictureTestSupport.h"

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::TempFolder;

// Each built-in picture is a real picture; the type icons are the 20 by 20 their tags give them.
TEST(SkinPictures, EveryPictureDecodes) {
    TempFolder folder;
    for (const QList<EmbeddedFile>* files : {&SkinPictureFiles(), &TypeIconFiles()})
        for (const EmbeddedFile& picture : *files) {
            const QSize size = test::PictureSize(folder.write(picture.name, picture.bytes));
            EXPECT_TRUE(size.isValid()) << picture.name.toStdString();
            EXPECT_TRUE(files != &TypeIconFiles() || size == QSize(20, 20))
                << picture.name.toStdString();
        }
}

} // namespace
} // namespace qmr
