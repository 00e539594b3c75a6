#include "chm/ScaleRootCode.h"

#include <limits>

namespace qmr::chm {

int ScaleRootBitCount(int bitLength, int root) {
    return bitLength <= root ? 1 + root : 2 * bitLength - root;
}

int BitLengthCounts::bestRoot() const {
    int best = 0;
    std::uint64_t bestBits = std::numeric_limits<std::uint64_t>::max();
    for (int root = 0; root <= 32; ++root) {
        std::uint64_t bits = 0;
        for (int length = 0; length <= 32; ++length)
            bits += counts[length] * std::uint64_t(ScaleRootBitCount(length, root));
        if (bits < bestBits) {
            bestBits = bits;
            best = root;
        }
    }
    return best;
}

} // namespace qmr::chm
