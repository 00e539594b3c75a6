#include "chm/HuffmanCode.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace qmr::chm {
namespace {

// Readers refuse incomplete codes and codes over their length limit: whatever the counts, the
// code is complete (Kraft sum 1, a lone symbol given a partner) and within its limit, and a
// rarer symbol is never shorter.
TEST(HuffmanCode, CodesAreCompleteAndWithinTheirLimit) {
    std::vector<uint32_t> fibonacci = {1, 1}; // an unlimited code would be 29 bits deep
    while (fibonacci.size() < 30)
        fibonacci.push_back(fibonacci.end()[-1] + fibonacci.end()[-2]);
    std::vector<std::vector<uint32_t>> cases = {fibonacci, {0, 0, 5, 0}, {7, 0}};
    std::mt19937 random(1);
    for (int i = 0; i < 50; ++i) {
        std::vector<uint32_t> counts(2 + random() % 655);
        for (uint32_t& count : counts)
            count = random() % 4 ? 0 : uint32_t(1) << (random() % 20);
        cases.push_back(counts);
    }
    for (int maxBits : {7, 16}) {
        for (const std::vector<uint32_t>& counts : cases) {
            if (counts.size() > (size_t(1) << maxBits)) continue;
            std::vector<uint8_t> lengths(counts.size(), 99);
            BuildCodeLengths(counts, maxBits, lengths);
            uint64_t kraft = 0;
            for (size_t s = 0; s < counts.size(); ++s) {
                ASSERT_LE(lengths[s], maxBits);
                if (lengths[s]) kraft += uint64_t(1) << (maxBits - lengths[s]);
                for (size_t t = 0; t < counts.size(); ++t)
                    ASSERT_FALSE(counts[s] > counts[t] && counts[t] > 0 && lengths[s] > lengths[t]);
            }
            ASSERT_EQ(kraft, uint64_t(1) << maxBits) << counts.size() << " symbols";
        }
    }
    std::vector<uint8_t> none(3, 99);
    BuildCodeLengths(std::vector<uint32_t>(3, 0), 16, none);
    EXPECT_EQ(none, std::vector<uint8_t>(3, 0));
}

} // namespace
} // namespace qmr::chm
