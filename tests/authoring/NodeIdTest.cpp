#include "authoring/NodeId.h"
#include "authoring/FileModifiedTime.h"

#include "support/TempFolder.h"

#include <QFileInfo>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

const QDate kMarch9(2008, 3, 9);

TEST(NodeId, CountsWithinADayFromTheCounterFileAndRestartsOnTheNext) {
    EXPECT_EQ(FormatNodeID(1000042, kMarch9), u"20080309000042"_s); // six digits
    test::TempFolder app;
    NodeIdGenerator generator(app.path());
    EXPECT_EQ(generator.NewNodeID(kMarch9), u"20080309000000"_s);
    EXPECT_EQ(generator.NewNodeID(kMarch9), u"20080309000001"_s);
    EXPECT_EQ(test::ReadBytes(app.path() + u"NodeID.txt"_s), "20080309000001\r\n");
    // A second program sharing the folder continues the sequence.
    EXPECT_EQ(NodeIdGenerator(app.path()).NewNodeID(kMarch9), u"20080309000002"_s);
    EXPECT_EQ(generator.NewNodeID(kMarch9.addDays(1)), u"20080310000000"_s);
    for (const auto& [stored, next] : {std::pair{"20080308000041\r\n", "20080309000000"},
                                       {"20080309000041\r\n", "20080309000042"},
                                       {"20080309abcdef\r\n", "20080309000001"},
                                       {"", "20080309000000"}}) {
        app.write(u"NodeID.txt"_s, stored);
        EXPECT_EQ(NodeIdGenerator(app.path()).NewNodeID(kMarch9), QLatin1String(next)) << stored;
    }
    app.write(u"blocker"_s, "a file where a folder should be");
    QString error;
    EXPECT_EQ(NodeIdGenerator(app.path() + u"blocker/"_s).NewNodeID(kMarch9, &error), QString());
    EXPECT_TRUE(error.contains(u"NodeID.txt"_s));
}

// The time is the local one less the bias in minutes (the zone's standard one unless given);
// a day that does not exist and a missing file are refused, and nothing is made.
TEST(FileModifiedTime, SetsTheLocalTimeLessTheBias) {
    test::TempFolder folder;
    const QString path = folder.write(u"page.html"_s, "x");
    ASSERT_TRUE(SetFileModifiedTime(path, 2008, 7, 2, 3, 4, 5, -480));
    EXPECT_EQ(QFileInfo(path).lastModified().toUTC(), QDateTime({2008, 7, 1}, {19, 4, 5}, Qt::UTC));
    EXPECT_FALSE(SetFileModifiedTime(path, 2008, 2, 30, 0, 0, 0, 0));
    EXPECT_FALSE(SetFileModifiedTime(folder.path() + u"gone"_s, 2008, 1, 1, 0, 0, 0, 0));
    EXPECT_FALSE(QFileInfo::exists(folder.path() + u"gone"_s));
}

} // namespace
} // namespace qmr
