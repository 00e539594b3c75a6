#include "chm/HuffmanCode.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace qmr::chm {
namespace {

// The Kraft sum of the lengths in units of 2^-maxBits: 2^maxBits for a complete code.
uint64_t KraftSum(const std::vector<uint8_t>& lengths, int maxBits) {
    uint64_t sum = 0;
    for (uint8_t length : lengths)
        if (length) sum += uint64_t(1) << (maxBits - length);
    return sum;
}

std::vector<uint8_t> Lengths(const std::vector<uint32_t>& counts, int maxBits) {
    std::vector<uint8_t> lengths(counts.size(), 99);
    BuildCodeLengths(counts, maxBits, lengths);
    return lengths;
}

// Readers refuse incomplete codes and codes over their length limit, so every code must be
// complete and within its limit whatever the counts, the rarer symbols never shorter.
TEST(HuffmanCode, CodesAreCompleteWithinTheirLimitAndFavourFrequentSymbols) {
    std::vector<std::vector<uint32_t>> cases;
    std::vector<uint32_t> fibonacci = {1, 1};
    while (fibonacci.size() < 30)
        fibonacci.push_back(fibonacci[fibonacci.size() - 1] + fibonacci[fibonacci.size() - 2]);
    cases.push_back(fibonacci); // an unlimited code would be 29 bits deep
    std::mt19937 random(1);
    for (int i = 0; i < 50; ++i) {
        std::vector<uint32_t> counts(1 + random() % 656);
        for (uint32_t& count : counts)
            count = random() % 4 ? 0 : uint32_t(1) << (random() % 20);
        cases.push_back(counts);
    }
    for (int maxBits : {7, 15, 16}) {
        for (const std::vector<uint32_t>& counts : cases) {
            if (counts.size() < 2 || counts.size() > (size_t(1) << maxBits)) continue;
            const std::vector<uint8_t> lengths = Lengths(counts, maxBits);
            int used = 0;
            for (size_t s = 0; s < counts.size(); ++s) {
                used += counts[s] > 0;
                ASSERT_LE(lengths[s], maxBits);
                for (size_t t = 0; t < counts.size(); ++t) {
                    if (counts[s] > counts[t] && counts[t] > 0) {
                        ASSERT_LE(lengths[s], lengths[t]);
                    }
                }
            }
            if (used > 0) {
                ASSERT_EQ(KraftSum(lengths, maxBits), uint64_t(1) << maxBits);
            }
        }
    }
    // A lone symbol gets a partner; no symbol, no code.
    EXPECT_EQ(Lengths({0, 0, 5, 0}, 16), (std::vector<uint8_t>{1, 0, 1, 0}));
    EXPECT_EQ(Lengths({7, 0, 0}, 16), (std::vector<uint8_t>{1, 1, 0}));
    EXPECT_EQ(Lengths({0, 0, 0}, 16), (std::vector<uint8_t>{0, 0, 0}));
}

TEST(HuffmanCode, CanonicalCodesRiseWithLengthThenSymbol) {
    const std::vector<uint8_t> lengths = {3, 3, 3, 3, 3, 2, 4, 4, 0};
    std::vector<uint16_t> codes(lengths.size());
    AssignCanonicalCodes(lengths, codes);
    EXPECT_EQ(codes,
              (std::vector<uint16_t>{0b010, 0b011, 0b100, 0b101, 0b110, 0b00, 0b1110, 0b1111, 0}));
}

} // namespace
} // namespace qmr::chm
