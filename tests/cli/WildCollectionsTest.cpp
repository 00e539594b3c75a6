#include "support/TempFolder.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace qmr {
namespace {

// Collections people saved and published. Their catalogues are copied out first: the working
// copy must never be written beside the originals.
struct Collection {
    const char* name;
    int items;
};

void PrintTo(const Collection& c, std::ostream* os) {
    *os << c.name;
}

class WildCollections : public ::testing::TestWithParam<Collection> {};

TEST_P(WildCollections, LoadWithTheirItemCounts) {
    const QString source = QStringLiteral(QMR_WILD_DIR "/") + QString::fromLatin1(GetParam().name);
    if (!QFile::exists(source + QStringLiteral("/scrapbook.rdf")))
        GTEST_SKIP() << "no shared collections here";
    test::TempFolder copy;
    ASSERT_TRUE(QFile::copy(source + QStringLiteral("/scrapbook.rdf"),
                            copy.path() + QStringLiteral("scrapbook.rdf")));
    const test::RunResult run =
        test::RunQuillmereProgram({QStringLiteral("catalogue"), copy.path()});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QStringList lines = run.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), GetParam().items + 1);
    EXPECT_TRUE(lines.last().startsWith(QStringLiteral("itemCount=%1 ").arg(GetParam().items)));
    for (int i = 0; i < GetParam().items; ++i) {
        const QStringList fields = lines.at(i).split(QLatin1Char('\t'));
        ASSERT_EQ(fields.size(), 6) << lines.at(i).toStdString();
        EXPECT_EQ(fields.at(0), QString::number(i));
        EXPECT_EQ(fields.at(1).size(), 14) << lines.at(i).toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(
    Shared, WildCollections,
    ::testing::Values(Collection{"airbase-ru", 21}, Collection{"azuwis-scrap", 95},
                      Collection{"scim-shield", 93}),
    [](const auto& info) {
        return QString::fromLatin1(info.param.name).remove(QLatin1Char('-')).toStdString();
    });

} // namespace
} // namespace qmr
