#include "authoring/NodeId.h"

#include "support/TempFolder.h"

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

} // namespace
} // namespace qmr
