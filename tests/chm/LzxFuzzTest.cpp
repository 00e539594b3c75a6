#include "chm/Lzx.h"
#include "chm/LzxReaders.h"
#include "chm/LzxSamples.h"
#include "support/Fuzzing.h"

#include <gtest/gtest.h>

namespace qmr::chm {
namespace {

// Pieces of every kind, and copies of earlier pieces near and far, so matches of every length
// and offset, repeated offsets among them, land on frame and interval boundaries. A quarter of
// the inputs end within two bytes of a frame boundary.
QByteArray RandomInput(test::SampleRandom& random) {
    const uint64_t kind = random() % 4;
    const qsizetype size =
        kind == 0 ? qsizetype(1 + random() % 4) * kLzxFrameSize - 2 + qsizetype(random() % 5)
                  : qsizetype(random() % (kind == 1 ? 64 : 100000));
    QByteArray bytes;
    while (bytes.size() < size) {
        const qsizetype piece = 1 + qsizetype(random() % 3000);
        switch (random() % 6) {
        case 0:
            bytes += test::SampleText(random, piece);
            break;
        case 1:
            bytes += test::SampleNoise(random, piece % 300);
            break;
        case 2:
            bytes += test::SampleRuns(random, piece);
            break;
        case 3:
            bytes += test::SampleRecords(random, piece);
            break;
        default:
            bytes += bytes.mid(qsizetype(random() % uint64_t(bytes.size() + 1)), piece);
        }
    }
    bytes.truncate(size);
    return bytes;
}

// Run longer with QMR_FUZZ_ITERATIONS=100000; a failing case replays from its seed.
TEST(LzxFuzz, RandomInputsComeBackFromBothReaders) {
    const int count = test::FuzzIterations(2000);
    for (int seed = 0; seed < count; ++seed) {
        test::SampleRandom random{uint64_t(seed)};
        const LzxSettings settings{15 + int(random() % 7), 1 + int(random() % 4)};
        const QByteArray input = RandomInput(random);
        ASSERT_TRUE(test::ReadersRestore(input, settings))
            << "seed " << seed << ", " << input.size() << " bytes, window 2^" << settings.windowBits
            << ", " << settings.framesPerReset << " frames to a reset";
    }
}

} // namespace
} // namespace qmr::chm
