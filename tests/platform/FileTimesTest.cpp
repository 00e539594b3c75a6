#include "platform/FileTimes.h"

#include "support/TempFolder.h"

#include <QFileInfo>

#include <gtest/gtest.h>

namespace qmr {
namespace {

// The bias is the zone's standard one all year: New York is five hours west in winter and in
// summer alike, though its clocks move in summer.
TEST(FileTimes, StandardBiasLeavesDaylightSavingOut) {
    const QByteArray saved = qgetenv("TZ");
    qputenv("TZ", "America/New_York");
    EXPECT_EQ(StandardTimeBiasMinutes(), 300);
    qputenv("TZ", "Asia/Taipei");
    EXPECT_EQ(StandardTimeBiasMinutes(), -480);
    if (saved.isNull())
        qunsetenv("TZ");
    else
        qputenv("TZ", saved);
}

TEST(FileTimes, SetsOnlyTheLastWriteTimeOfAnExistingFile) {
    test::TempFolder folder;
    const QString path = folder.write(QStringLiteral("a.txt"), "x");
    const QDateTime when(QDate(2008, 1, 1), QTime(19, 4, 5), Qt::UTC);
    ASSERT_TRUE(SetLastWriteTime(path, when));
    EXPECT_EQ(QFileInfo(path).lastModified().toUTC(), when);
    EXPECT_FALSE(SetLastWriteTime(folder.path() + QStringLiteral("missing.txt"), when));
    EXPECT_FALSE(QFileInfo::exists(folder.path() + QStringLiteral("missing.txt")));
}

} // namespace
} // namespace qmr
