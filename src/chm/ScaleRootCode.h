#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace qmr::chm {

// The numbers of a word's location codes (topic steps, counts, location steps) are written in
// the scale-and-root code with scale 2: a value below 2^root is a 0 bit and `root` bits; a
// larger value of bit length n is (n - root) 1 bits, a 0 bit, and its n - 1 low bits. Bits
// fill each byte from its high bit down, as the search readers take them.
// Called for every number of every word's places, so it is written here, where the compiler
// can fold it into the loop that calls it.
class ScaleRootWriter {
  public:
    explicit ScaleRootWriter(std::vector<std::uint8_t>& out) : m_out(out) {}
    ~ScaleRootWriter() { padToByte(); }
    ScaleRootWriter(const ScaleRootWriter&) = delete;
    ScaleRootWriter& operator=(const ScaleRootWriter&) = delete;

    void write(std::uint32_t value, int root) {
        const int length = std::bit_width(value);
        if (length <= root) {
            writeBits(value, root + 1); // a 0 bit, then the value in `root` bits
            return;
        }
        const int ones = length - root; // at most 32: ones and their closing 0 fit one write
        writeBits(((std::uint64_t(1) << ones) - 1) << 1, ones + 1);
        writeBits(value & ((std::uint64_t(1) << (length - 1)) - 1), length - 1);
    }

    // Each topic's record starts on a byte of its own; the unused low bits stay 0.
    void padToByte() {
        if (m_pendingCount > 0) writeBits(0, 8 - m_pendingCount);
    }

  private:
    void writeBits(std::uint64_t bits, int count) {
        // count is at most 33, so the pending bits (fewer than 8 after each flush) never
        // overflow.
        m_pending = (m_pending << count) | bits;
        m_pendingCount += count;
        while (m_pendingCount >= 8) {
            m_pendingCount -= 8;
            m_out.push_back(std::uint8_t(m_pending >> m_pendingCount));
        }
        m_pending &= (std::uint64_t(1) << m_pendingCount) - 1;
    }

    std::vector<std::uint8_t>& m_out;
    std::uint64_t m_pending = 0; // bits not yet in m_out, the first in the highest place
    int m_pendingCount = 0;
};

// Number of bits (0 to 32) a value needs; 0 needs none.
inline int BitLength(std::uint32_t value) {
    return std::bit_width(value);
}

// How many bits `write` uses for a value of bit length `bitLength` under `root`.
int ScaleRootBitCount(int bitLength, int root);

// Counts of values by bit length, gathered while the index is built, so that the root that
// writes them in the fewest bits can be chosen when it is written.
struct BitLengthCounts {
    std::array<std::uint64_t, 33> counts{};
    void add(std::uint32_t value) { ++counts[BitLength(value)]; }
    void add(const BitLengthCounts& other) {
        for (std::size_t i = 0; i < counts.size(); ++i)
            counts[i] += other.counts[i];
    }
    int bestRoot() const;
};

} // namespace qmr::chm
