#include "chm/Lzx.h"

#include <algorithm>

namespace qmr::chm {

namespace {

// LZX reads its bits from 16-bit little-endian words, most significant bit first.
class LzxBitWriter {
  public:
    explicit LzxBitWriter(QByteArray& out) : m_out(out) {}

    void bits(quint32 value, int count) {
        for (int i = count - 1; i >= 0; --i) {
            m_word = quint16((m_word << 1) | ((value >> i) & 1));
            if (++m_used == 16) flushWord();
        }
    }

    // Before the raw bytes of an uncompressed block the decoder drops the rest of the word it
    // is in, or a whole word of padding when it stands on a word boundary.
    void alignForUncompressed() {
        if (m_used == 0)
            bits(0, 16);
        else
            bits(0, 16 - m_used);
    }

  private:
    void flushWord() {
        m_out.append(char(m_word & 0xFF));
        m_out.append(char(m_word >> 8));
        m_word = 0;
        m_used = 0;
    }

    QByteArray& m_out;
    quint16 m_word = 0;
    int m_used = 0;
};

constexpr quint32 kUncompressedBlock = 3;

// One frame as one uncompressed block: the decoder's recent-offset registers stay at their
// starting value 1, and an odd length is followed by a pad byte.
void AppendUncompressedFrame(QByteArray& out, QByteArrayView frame, bool startsInterval) {
    LzxBitWriter writer(out);
    if (startsInterval) writer.bits(0, 1); // no x86 call translation
    writer.bits(kUncompressedBlock, 3);
    writer.bits(quint32(frame.size()), 24);
    writer.alignForUncompressed();
    for (int r = 0; r < 3; ++r) {
        const char one[4] = {1, 0, 0, 0};
        out.append(one, 4);
    }
    out.append(frame);
    if (frame.size() % 2) out.append('\0');
}

} // namespace

// Stored, not compressed: every frame is one uncompressed block. A valid stream for every
// reader, to stand in until the real compressor is written.
LzxInterval CompressLzxInterval(QByteArrayView input, const LzxSettings& settings) {
    Q_UNUSED(settings);
    LzxInterval interval;
    interval.bytes.reserve(input.size() + input.size() / kLzxFrameSize * 32 + 32);
    for (qsizetype start = 0; start < input.size(); start += kLzxFrameSize) {
        interval.frameStarts.push_back(interval.bytes.size());
        const qsizetype length = std::min(kLzxFrameSize, input.size() - start);
        AppendUncompressedFrame(interval.bytes, input.sliced(start, length), start == 0);
    }
    return interval;
}

} // namespace qmr::chm
