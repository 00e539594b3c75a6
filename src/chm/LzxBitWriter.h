#pragma once

#include <QByteArray>

#include <algorithm>
#include <cstdint>

namespace qmr::chm {

// The LZX bit stream: bits are taken from the top of 16-bit words that are stored low byte
// first. Callers make room with reserve() before a run of writes; the writes themselves do not
// check, which keeps the encoder's inner loop short.
class LzxBitWriter {
  public:
    explicit LzxBitWriter(QByteArray& out) : m_out(out), m_size(out.size()) {}

    // Room for at least `bytes` more bytes of output.
    void reserve(qsizetype bytes) {
        if (m_out.size() - m_size >= bytes) return;
        m_out.resize(std::max(m_size + bytes, m_out.size() * 2));
        m_data = reinterpret_cast<uint8_t*>(m_out.data());
    }

    // The low `count` bits of `value` (0 to 32 bits; no bit above them may be set).
    void write(uint32_t value, int count) {
        m_bits = (m_bits << count) | value;
        m_count += count;
        while (m_count >= 16) {
            m_count -= 16;
            const uint32_t word = uint32_t(m_bits >> m_count);
            m_data[m_size++] = uint8_t(word);
            m_data[m_size++] = uint8_t(word >> 8);
        }
    }

    // Zero bits up to the next 16-bit boundary, as the decoder skips them at a frame's end.
    void padToWord() {
        if (m_count > 0) write(0, 16 - m_count);
    }

    // Bytes written so far; a partly filled word is not counted until padToWord().
    qsizetype size() const { return m_size; }

    // Cuts the output to what was written (after padToWord()).
    void finish() { m_out.resize(m_size); }

  private:
    QByteArray& m_out;
    uint8_t* m_data = reinterpret_cast<uint8_t*>(m_out.data());
    qsizetype m_size;
    uint64_t m_bits = 0;
    int m_count = 0;
};

} // namespace qmr::chm
