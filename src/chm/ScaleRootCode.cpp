#include "chm/ScaleRootCode.h"

#include <bit>
#include <limits>

namespace qmr::chm {

int BitLength(std::uint32_t value) {
    return std::bit_width(value);
}

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

void ScaleRootWriter::write(std::uint32_t value, int root) {
    const int length = BitLength(value);
    if (length <= root) {
        writeBits(0, 1);
        writeBits(value, root);
        return;
    }
    const int ones = length - root; // at most 32: ones and their closing 0 fit one write
    writeBits(((std::uint64_t(1) << ones) - 1) << 1, ones + 1);
    writeBits(value & ((std::uint64_t(1) << (length - 1)) - 1), length - 1);
}

void ScaleRootWriter::writeBits(std::uint64_t bits, int count) {
    // count is at most 33, so the pending bits (fewer than 8 after each flush) never overflow.
    m_pending = (m_pending << count) | bits;
    m_pendingCount += count;
    if (m_pendingCount < 8) return;
    char bytes[5];
    int made = 0;
    while (m_pendingCount >= 8) {
        m_pendingCount -= 8;
        bytes[made++] = char((m_pending >> m_pendingCount) & 0xFF);
    }
    m_out.append(bytes, made);
    m_pending &= (std::uint64_t(1) << m_pendingCount) - 1;
}

void ScaleRootWriter::padToByte() {
    if (m_pendingCount > 0) writeBits(0, 8 - m_pendingCount);
}

} // namespace qmr::chm
