#include "chm/HuffmanCode.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace qmr::chm {
namespace {

// Readers refuse incomplete codes and codes over their length limit: whatever the counts (the
// Fibonacci ones would make a 29-bit code unlimited), the code is complete (Kraft sum 1, a lone
// symbol given a partner) and within its limit, and a rarer symbol is never shorter.
TEST(HuffmanCode, CodesAreCompleteAndWithinTheirLimit) {
    std::vector<std::vector<uint32_t>> cases = {{1, 1}, {0, 0, 5, 0}, {7, 0}};
    while (cases[0].size() < 30)
        cases[0].push_back(cases[0].end()[-1] + cases[0].end()[-2]);
    std::mt19937 random(1);
    for (int i = 0; i < 50; ++i) {
        cases.emplace_back(2 + random() % 655);
        for (uint32_t& count : cases.back())
            count = random() % 4 ? 0 : uint32_t(1) << (random() % 20);
    }
    for (int maxBits : {7, 16}) {
        for (const std::vector<uint32_t>& counts : cases) {
            if (counts.size() > (size_t(1) << maxBits)) continue;
            std::vector<uint8_t> lengths(counts.size());
            BuildCodeLengths(counts, maxBits, lengths);
            uint64_t kraft = 0;
            for (size_t s = 0; s < counts.size(); ++s) {
                ASSERT_LE(lengths[s], maxBits);
                kraft += lengths[s] ? uint64_t(1) << (maxBits - lengths[s]) : 0;
                for (size_t t = 0; t < counts.size(); ++t)
                    ASSERT_FALSE(counts[s] > counts[t] && counts[t] > 0 && lengths[s] > lengths[t]);
            }
            ASSERT_EQ(kraft, uint64_t(1) << maxBits) << counts.size() << " symbols";
        }
    }
}

} // namespace
} // namespace qmr::chm
