#include "authoring/NodeId.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace qmr {
namespace {

const QDate kMarch9(2008, 3, 9);

TEST(NodeId, FormatsDateAndSixDigitCounter) {
    EXPECT_EQ(FormatNodeID(0, kMarch9), QStringLiteral("20080309000000"));
    EXPECT_EQ(FormatNodeID(42, QDate(2024, 12, 31)), QStringLiteral("20241231000042"));
    // Past a million a day only the last six digits are kept.
    EXPECT_EQ(FormatNodeID(1000001, kMarch9), QStringLiteral("20080309000001"));
}

TEST(NodeId, CountsWithinADayAndRestartsOnTheNext) {
    test::TempFolder app;
    NodeIdGenerator generator(app.path());
    EXPECT_EQ(generator.NewNodeID(kMarch9), QStringLiteral("20080309000000"));
    EXPECT_EQ(generator.NewNodeID(kMarch9), QStringLiteral("20080309000001"));
    EXPECT_EQ(test::ReadBytes(app.path() + QStringLiteral("NodeID.txt")),
              QByteArray("20080309000001\r\n"));
    // A second program sharing the folder continues the sequence.
    EXPECT_EQ(NodeIdGenerator(app.path()).NewNodeID(kMarch9), QStringLiteral("20080309000002"));
    EXPECT_EQ(generator.NewNodeID(kMarch9.addDays(1)), QStringLiteral("20080310000000"));
    EXPECT_EQ(generator.lastId(), QStringLiteral("20080310000000"));
}

TEST(NodeId, ContinuesFromTheCounterFile) {
    test::TempFolder app;
    const QString counter = QStringLiteral("NodeID.txt");
    app.write(counter, "20080308000041\r\n");
    EXPECT_EQ(NodeIdGenerator(app.path()).NewNodeID(kMarch9), QStringLiteral("20080309000000"));
    app.write(counter, "20080309000041\r\n");
    EXPECT_EQ(NodeIdGenerator(app.path()).NewNodeID(kMarch9), QStringLiteral("20080309000042"));
    app.write(counter, "20080309abcdef\r\n"); // not digits: counts as 0
    EXPECT_EQ(NodeIdGenerator(app.path()).NewNodeID(kMarch9), QStringLiteral("20080309000001"));
    app.write(counter, "");
    EXPECT_EQ(NodeIdGenerator(app.path()).NewNodeID(kMarch9), QStringLiteral("20080309000000"));
}

TEST(NodeId, ReportsAnUnwritableCounterFile) {
    test::TempFolder app;
    app.write(QStringLiteral("blocker"), "a file where a folder should be");
    QString error;
    NodeIdGenerator generator(app.path() + QStringLiteral("blocker/"));
    EXPECT_EQ(generator.NewNodeID(kMarch9, &error), QString());
    EXPECT_TRUE(error.contains(QStringLiteral("NodeID.txt")));
}

} // namespace
} // namespace qmr
