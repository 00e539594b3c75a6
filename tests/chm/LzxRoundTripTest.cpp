#include "chm/Lzx.h"
#include "chm/LzxReaders.h"
#include "chm/LzxSamples.h"

#include <gtest/gtest.h>

namespace qmr::chm {
namespace {

using test::ReadersRestore;

constexpr LzxSettings kDefault;
// The smallest and largest windows, several frames to an interval, and an interval longer
// than its window, so the decoder's window wraps inside it.
constexpr LzxSettings kVariants[] = {{15, 1}, {16, 2}, {17, 4}, {21, 3}, {15, 4}};

TEST(Lzx, ReadersRestoreEveryKindOfInput) {
    test::SampleRandom random(1);
    const QByteArray text = test::SampleText(random, 300000);
    const QByteArray noise = test::SampleNoise(random, 100000);
    const struct {
        const char* name;
        QByteArray bytes;
    } inputs[] = {
        {"text", text},
        {"noise", noise},
        {"runs", test::SampleRuns(random, 200000)},
        {"records", test::SampleRecords(random, 200000)},
        {"deflated text", qCompress(text, 9)},
        {"example scrapbook", test::ExampleScrapbookFiles()},
        {"example pictures", test::ExampleScrapbookFiles(true)},
        {"text, noise, text", text.left(50000) + noise.left(40000) + text.left(50000)},
    };
    for (const auto& input : inputs)
        for (const LzxSettings& settings : kVariants)
            EXPECT_TRUE(ReadersRestore(input.bytes, settings))
                << input.name << ", window 2^" << settings.windowBits << ", "
                << settings.framesPerReset << " frames to a reset";
}

TEST(Lzx, SizesAroundFrameAndIntervalBoundaries) {
    test::SampleRandom random(2);
    const QByteArray text = test::SampleText(random, 5 * kLzxFrameSize + 2);
    for (int framesPerReset : {1, 2, 3})
        for (qsizetype frames = 1; frames <= 4; ++frames)
            for (qsizetype delta : {-1, 0, 1}) {
                const qsizetype size = frames * kLzxFrameSize + delta;
                EXPECT_TRUE(ReadersRestore(text.left(size), {16, framesPerReset}))
                    << size << " bytes, " << framesPerReset << " frames to a reset";
            }
    // A run that a match would carry across every frame boundary if allowed.
    EXPECT_TRUE(ReadersRestore(QByteArray(3 * kLzxFrameSize + 100, 'a'), kDefault));
    for (const char* tiny : {"x", "aaa", "abab", "<p></p>"})
        EXPECT_TRUE(ReadersRestore(QByteArray(tiny), kDefault)) << tiny;
    const LzxInterval empty = CompressLzxInterval({}, kDefault);
    EXPECT_TRUE(empty.bytes.isEmpty() && empty.frameStarts.empty());
}

// The container compresses the intervals on several threads, each with a compressor of its
// own, and joins them; the decoders read the joined stream as one, and it is what one
// compressor reused for every interval gives.
TEST(Lzx, SeparatelyCompressedIntervalsJoinIntoOneStream) {
    test::SampleRandom random(3);
    const QByteArray input = test::SampleText(random, 5 * kDefault.intervalSize() + 12345);
    LzxInterval joined;
    for (qsizetype start = 0; start < input.size(); start += kDefault.intervalSize()) {
        LzxCompressor compressor(kDefault);
        const LzxInterval part = compressor.compress(input.mid(start, kDefault.intervalSize()));
        for (qint64 frameStart : part.frameStarts)
            joined.frameStarts.push_back(joined.bytes.size() + frameStart);
        joined.bytes += part.bytes;
    }
    EXPECT_TRUE(ReadersRestore(input, joined, kDefault));
    EXPECT_EQ(joined.bytes, LzxCompressor(kDefault).compress(input).bytes);
}

TEST(Lzx, CompressesTextAndRunsAndBarelyGrowsNoise) {
    test::SampleRandom random(5);
    const QByteArray text = test::SampleText(random, 1 << 20);
    const QByteArray runs = test::SampleRuns(random, 1 << 20);
    const QByteArray noise = test::SampleNoise(random, 1 << 20);
    EXPECT_LT(CompressLzxInterval(text, kDefault).bytes.size(), text.size() * 30 / 100);
    EXPECT_LT(CompressLzxInterval(runs, kDefault).bytes.size(), runs.size() * 3 / 100);
    EXPECT_LT(CompressLzxInterval(noise, kDefault).bytes.size(), noise.size() * 1005 / 1000);
}

} // namespace
} // namespace qmr::chm
