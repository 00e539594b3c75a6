#include "authoring/FileModifiedTime.h"

#include "support/TempFolder.h"

#include <QFileInfo>

#include <gtest/gtest.h>

namespace qmr {
namespace {

QDateTime utc(int y, int mo, int d, int h, int mi, int s) {
    return QDateTime(QDate(y, mo, d), QTime(h, mi, s), Qt::UTC);
}

TEST(FileModifiedTime, AddsTheStandardBiasInWinterAndSummer) {
    test::TempFolder folder;
    const QString path = folder.write(QStringLiteral("page.html"), "x");
    ASSERT_TRUE(SetFileModifiedTime(path, 2008, 1, 2, 3, 4, 5, -480));
    EXPECT_EQ(QFileInfo(path).lastModified().toUTC(), utc(2008, 1, 1, 19, 4, 5));
    ASSERT_TRUE(SetFileModifiedTime(path, 2008, 7, 2, 3, 4, 5, -480));
    EXPECT_EQ(QFileInfo(path).lastModified().toUTC(), utc(2008, 7, 1, 19, 4, 5));
}

TEST(FileModifiedTime, UsesTheZonesStandardOffsetAndIgnoresMissingFiles) {
    const QByteArray saved = qgetenv("TZ");
    qputenv("TZ", "America/New_York");
    test::TempFolder folder;
    const QString path = folder.write(QStringLiteral("clip.wmv"), "x");
    SetFileModifiedTime(path, 2008, 7, 4, 12, 0, 0); // summer, yet five hours, not four
    EXPECT_EQ(QFileInfo(path).lastModified().toUTC(), utc(2008, 7, 4, 17, 0, 0));
    SetFileModifiedTime(folder.path() + QStringLiteral("gone.txt"), 2008, 1, 1, 0, 0, 0);
    EXPECT_FALSE(QFileInfo::exists(folder.path() + QStringLiteral("gone.txt")));
    EXPECT_FALSE(SetFileModifiedTime(path, 2008, 2, 30, 0, 0, 0, 0)); // no such day
    if (saved.isNull())
        qunsetenv("TZ");
    else
        qputenv("TZ", saved);
}

} // namespace
} // namespace qmr
