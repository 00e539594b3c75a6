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

    // Room for at least `bytes` more bytes of output, beside the bits still held back.
    void reserve(qsizetype bytes) {
        bytes += 4;
        if (m_out.size() - m_size >= bytes) return;
        m_out.resize(std::max(m_size + bytes, m_out.size() * 2));
        m_data = reinterpret_cast<uint8_t*>(m_out.data());
    }

    // The low `count` bits of `value` (0 to 32 bits; no bit above them may be set). Two
    // 16-bit words go out at a time, so a code's bits are rarely split over two stores.
    void write(uint32_t value, int count) {
        m_bits = (m_bits << count) | value;
        m_count += count;
        if (m_count >= 32) {
            m_count -= 32;
            storeWords(uint32_t(m_bits >> m_count));
        }
    }

    // Zero bits up to the next 16-bit boundary, as the decoder skips them at a frame's end;
    // everything written is then in the output.
    void padToWord() {
        if (m_count % 16 != 0) write(0, 16 - m_count % 16);
        if (m_count == 16) {
            m_count = 0;
            const uint32_t word = uint32_t(m_bits) & 0xFFFF;
            m_data[m_size++] = uint8_t(word);
            m_data[m_size++] = uint8_t(word >> 8);
        }
    }

    // Bytes written so far; bits not yet in a whole pair of words are not counted until
    // padToWord().
    qsizetype size() const { return m_size; }

    // Cuts the output to what was written (after padToWord()).
    void finish() { m_out.resize(m_size); }

  private:
    // The first word (the higher 16 bits) is stored first, each low byte first.
    void storeWords(uint32_t words) {
        const uint32_t swapped = (words >> 16) | (words << 16);
        m_data[m_size++] = uint8_t(swapped);
        m_data[m_size++] = uint8_t(swapped >> 8);
        m_data[m_size++] = uint8_t(swapped >> 16);
        m_data[m_size++] = uint8_t(swapped >> 24);
    }

    QByteArray& m_out;
    uint8_t* m_data = reinterpret_cast<uint8_t*>(m_out.data());
    qsizetype m_size;
    uint64_t m_bits = 0;
    int m_count = 0;
};

} // namespace qmr::chm
