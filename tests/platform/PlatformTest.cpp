#include "platform/FileTimes.h"
#include "platform/LocalCodePage.h"
#include "platform/ProcessMemory.h"

#include "support/Fuzzing.h"
#include "support/TempFolder.h"

#include <QFileInfo>

#include <cstdlib>
#include <random>
#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

class LocalCodePageTest : public ::testing::Test {
  protected:
    void TearDown() override { LocalCodePage::select(u"Big5"_s); }
};

TEST_F(LocalCodePageTest, EncodesOneQuestionMarkPerMissingCharacterAndSelectsByFamiliarNames) {
    ASSERT_TRUE(LocalCodePage::select(u"cp950"_s));
    EXPECT_EQ(LocalCodePage::name(), u"windows-950"_s);
    // 台 A5 78, 灣 C6 57, 茶 AF F9, € A3 E1 in the Windows Big5 table.
    EXPECT_EQ(LocalCodePage::encode(u"台灣茶 €"), QByteArray("\xA5\x78\xC6\x57\xAF\xF9 \xA3\xE1"));
    // é, a character outside the basic plane and a lone surrogate each become one "?".
    EXPECT_EQ(LocalCodePage::encode(QString::fromUtf8("aéb\xF0\x9F\x98\x80"
                                                      "c") +
                                    QChar(0xD800)),
              QByteArray("a?b?c?"));
    EXPECT_EQ(LocalCodePage::decode("\xA5\x78\xC6\x57"), u"台灣"_s);
    // A lead byte with a trail byte the table lacks, and one cut off at the end.
    EXPECT_EQ(LocalCodePage::decode("\xA5\x30"
                                    "b\xA5"),
              u"\uFFFD0b\uFFFD"_s);

    ASSERT_TRUE(LocalCodePage::select(u"GB2312"_s));
    EXPECT_EQ(LocalCodePage::name(), u"windows-936"_s);
    // GBK's € is one byte, and 丂's second byte looks like ASCII "@": neither may be cut apart.
    EXPECT_EQ(LocalCodePage::encode(u"€丂中"), QByteArray("\x80\x81\x40\xD6\xD0"));
    EXPECT_EQ(LocalCodePage::decode("\x80\x81\x40\xD6\xD0"), u"€丂中"_s);
    ASSERT_TRUE(LocalCodePage::select(u"windows-1252"_s));
    EXPECT_EQ(LocalCodePage::encode(u"café€中"), QByteArray("caf\xE9\x80?"));

    QString error;
    EXPECT_FALSE(LocalCodePage::select(u"no-such-table"_s, &error));
    EXPECT_TRUE(error.contains(u"no-such-table"_s));
    EXPECT_EQ(LocalCodePage::name(), u"windows-1252"_s); // unchanged
    ASSERT_TRUE(LocalCodePage::select(QString()));
    EXPECT_EQ(LocalCodePage::name(), LocalCodePage::systemDefaultName());
}

// Text of characters the code page holds comes back as it went; the mix of ASCII and
// double-byte characters is random, so every boundary between runs is met.
TEST_F(LocalCodePageTest, RandomTextRoundTripsInBig5AndGbk) {
    const int iterations = test::FuzzIterations(3000);
    const struct {
        const char* page;
        QString alphabet;
    } tables[] = {{"Big5", u"台灣茶€中文 a@\r\n~"_s}, {"GB2312", u"€丂中文乀 a@\r\n~"_s}};
    std::mt19937 random(7);
    for (const auto& table : tables) {
        ASSERT_TRUE(LocalCodePage::select(QLatin1String(table.page)));
        for (int i = 0; i < iterations; ++i) {
            QString text;
            const int length = int(random() % 40);
            for (int k = 0; k < length; ++k)
                text += table.alphabet.at(int(random() % table.alphabet.size()));
            ASSERT_EQ(LocalCodePage::decode(LocalCodePage::encode(text)), text) << table.page;
        }
    }
}

// The bias is the zone's standard one all year: New York is five hours west in winter and in
// summer alike, though its clocks move in summer.
TEST(FileTimes, StandardBiasAndLastWriteTime) {
    const QByteArray saved = qgetenv("TZ");
    qputenv("TZ", "America/New_York");
    EXPECT_EQ(StandardTimeBiasMinutes(), 300);
    qputenv("TZ", "Asia/Taipei");
    EXPECT_EQ(StandardTimeBiasMinutes(), -480);
    saved.isNull() ? qunsetenv("TZ") : qputenv("TZ", saved);

    // A clip's time is set by the playlists' test; a missing file is not made.
    test::TempFolder folder;
    EXPECT_FALSE(SetLastWriteTime(folder.path() + u"missing.txt"_s, QDateTime::currentDateTime()));
    EXPECT_FALSE(QFileInfo::exists(folder.path() + u"missing.txt"_s));
}

#if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__)
// Once asked, a build's large blocks come from the heap and stay there for reuse instead of
// being mapped one by one.
TEST(ProcessMemory, LargeBlocksComeFromTheHeap) {
    KeepLargeBlocksForReuse();
    const size_t mappedBefore = mallinfo2().hblks;
    volatile char* block = static_cast<char*>(std::malloc(8 << 20));
    block[0] = 1;
    EXPECT_EQ(mallinfo2().hblks, mappedBefore);
    std::free(const_cast<char*>(block));
}
#endif

} // namespace
} // namespace qmr
