#pragma once

#include <QByteArray>

#include <array>
#include <cstdint>

namespace qmr::chm {

// The numbers of a word's location codes (topic steps, counts, location steps) are written in
// the scale-and-root code with scale 2: a value below 2^root is a 0 bit and `root` bits; a
// larger value of bit length n is (n - root) 1 bits, a 0 bit, and its n - 1 low bits. Bits
// fill each byte from its high bit down, as the search readers take them.
class ScaleRootWriter {
  public:
    explicit ScaleRootWriter(QByteArray& out) : m_out(out) {}
    ~ScaleRootWriter() { padToByte(); }
    ScaleRootWriter(const ScaleRootWriter&) = delete;
    ScaleRootWriter& operator=(const ScaleRootWriter&) = delete;

    void write(std::uint32_t value, int root);
    // Each topic's record starts on a byte of its own; the unused low bits stay 0.
    void padToByte();

  private:
    void writeBits(std::uint64_t bits, int count);

    QByteArray& m_out;
    std::uint64_t m_pending = 0; // bits not yet in m_out, the first in the highest place
    int m_pendingCount = 0;
};

// Number of bits (0 to 32) a value needs; 0 needs none.
int BitLength(std::uint32_t value);

// How many bits `write` uses for a value of bit length `bitLength` under `root`.
int ScaleRootBitCount(int bitLength, int root);

// Counts of values by bit length, gathered while the index is built, so that the root that
// writes them in the fewest bits can be chosen when it is written.
struct BitLengthCounts {
    std::array<std::uint64_t, 33> counts{};
    void add(std::uint32_t value) { ++counts[BitLength(value)]; }
    void add(const BitLengthCounts& other) {
        for (size_t i = 0; i < counts.size(); ++i)
            counts[i] += other.counts[i];
    }
    int bestRoot() const;
};

} // namespace qmr::chm
