#include "platform/LocalCodePage.h"

#include <gtest/gtest.h>

namespace qmr {
namespace {

class LocalCodePageTest : public ::testing::Test {
  protected:
    void TearDown() override { LocalCodePage::select(QStringLiteral("Big5")); }
};

TEST_F(LocalCodePageTest, Big5EncodesOneQuestionMarkPerMissingCharacter) {
    ASSERT_TRUE(LocalCodePage::select(QStringLiteral("cp950")));
    EXPECT_EQ(LocalCodePage::name(), QStringLiteral("windows-950"));
    // 台 A5 78, 灣 C6 57, 茶 AF F9, € A3 E1 in the Windows Big5 table.
    EXPECT_EQ(LocalCodePage::encode(u"台灣茶 €"), QByteArray("\xA5\x78\xC6\x57\xAF\xF9 \xA3\xE1"));
    // é and a character outside the basic plane (two UTF-16 units) each become one "?".
    EXPECT_EQ(LocalCodePage::encode(QString::fromUtf8("aéb\xF0\x9F\x98\x80"
                                                      "c")),
              QByteArray("a?b?c"));
    // A lone surrogate is not a character either.
    EXPECT_EQ(LocalCodePage::encode(QString(QChar(0xD800)) + QStringLiteral("x")),
              QByteArray("?x"));
    EXPECT_EQ(LocalCodePage::encode(u"line\r\n"), QByteArray("line\r\n"));
}

TEST_F(LocalCodePageTest, DecodesBig5AndMarksBadBytes) {
    ASSERT_TRUE(LocalCodePage::select(QStringLiteral("Big5")));
    EXPECT_EQ(LocalCodePage::decode("\xA5\x78\xC6\x57"), QStringLiteral("台灣"));
    // A lead byte without its trail byte at the end, and an unassigned byte.
    const QString bad = LocalCodePage::decode("a\xFF"
                                              "b\xA5");
    EXPECT_EQ(bad.left(1), QStringLiteral("a"));
    EXPECT_TRUE(bad.contains(QChar(0xFFFD)));
    EXPECT_TRUE(bad.contains(QLatin1Char('b')));
    EXPECT_EQ(LocalCodePage::decode(QByteArray()), QString());
}

TEST_F(LocalCodePageTest, SelectsByFamiliarNamesAndRefusesUnknownOnes) {
    ASSERT_TRUE(LocalCodePage::select(QStringLiteral("GB2312")));
    EXPECT_EQ(LocalCodePage::name(), QStringLiteral("windows-936"));
    EXPECT_EQ(LocalCodePage::encode(u"中文"), QByteArray("\xD6\xD0\xCE\xC4"));
    ASSERT_TRUE(LocalCodePage::select(QStringLiteral("windows-1252")));
    EXPECT_EQ(LocalCodePage::encode(u"café€"), QByteArray("caf\xE9\x80"));
    EXPECT_EQ(LocalCodePage::encode(u"中"), QByteArray("?"));

    QString error;
    EXPECT_FALSE(LocalCodePage::select(QStringLiteral("no-such-table"), &error));
    EXPECT_TRUE(error.contains(QStringLiteral("no-such-table")));
    EXPECT_EQ(LocalCodePage::name(), QStringLiteral("windows-1252")); // unchanged

    ASSERT_TRUE(LocalCodePage::select(QString()));
    EXPECT_EQ(LocalCodePage::name(), LocalCodePage::systemDefaultName());
}

} // namespace
} // namespace qmr
