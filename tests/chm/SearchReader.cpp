#include "chm/SearchReader.h"

#include <QtEndian>

#include <stdexcept>

namespace qmr::test {

namespace {

int CaseBlindCompare(const QByteArray& a, const QByteArray& b, qsizetype limit = -1) {
    auto fold = [](char c) { return quint8(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c); };
    for (qsizetype i = 0; limit < 0 || i < limit; ++i) {
        const quint8 x = i < a.size() ? fold(a[i]) : 0, y = i < b.size() ? fold(b[i]) : 0;
        if (x != y || x == 0) return int(x) - int(y);
    }
    return 0;
}

quint32 EncInt(const QByteArray& node, qsizetype& at) {
    quint32 value = 0;
    for (int shift = 0; at < node.size(); shift += 7) {
        const quint8 byte = quint8(node[at++]);
        value |= quint32(byte & 0x7F) << shift;
        if (!(byte & 0x80)) return value;
    }
    throw std::runtime_error("encint runs past the node");
}

// Bits read from the high bit of each byte down, the scale-and-root code with scale 2.
class BitReader {
  public:
    BitReader(const QByteArray& bytes) : m_bytes(bytes) {}
    int bit() {
        if (m_at / 8 >= m_bytes.size())
            throw std::runtime_error("location codes run past their block");
        const int value = (quint8(m_bytes[m_at / 8]) >> (7 - m_at % 8)) & 1;
        ++m_at;
        return value;
    }
    quint32 scaleRoot(int root) {
        int ones = 0;
        while (bit())
            ++ones;
        const int bits = root + (ones ? ones - 1 : 0);
        quint64 value = 0;
        for (int i = 0; i < bits; ++i)
            value = value << 1 | quint64(bit());
        if (ones) value |= quint64(1) << bits;
        return quint32(value);
    }
    void toByte() { m_at = (m_at + 7) / 8 * 8; }

  private:
    const QByteArray& m_bytes;
    qint64 m_at = 0;
};

// A word of a node entry: the length it shares with the entry before and the rest.
QByteArray EntryWord(const QByteArray& node, qsizetype at, const QByteArray& previous) {
    const int length = quint8(node[at]), shared = quint8(node[at + 1]);
    if (length < 1 || shared > previous.size()) throw std::runtime_error("bad word entry");
    return previous.left(shared) + node.mid(at + 2, length - 1);
}

} // namespace

quint32 SearchReader::u32(qsizetype at) const {
    return at + 4 <= m_file.size() ? qFromLittleEndian<quint32>(m_file.constData() + at) : 0;
}

quint16 SearchReader::u16(qsizetype at) const {
    return at + 2 <= m_file.size() ? qFromLittleEndian<quint16>(m_file.constData() + at) : 0;
}

quint32 SearchReader::leafFor(const QByteArray& text) const {
    quint32 offset = u32(0x14), tested = 0;
    const quint32 nodeSize = u32(0x2E);
    qsizetype i = 2; // as the readers do, not restarted for the next level
    QByteArray word;
    for (int depth = u16(0x18); --depth > 0;) {
        if (offset == tested) return 0;
        tested = offset;
        const QByteArray node = m_file.mid(offset, nodeSize);
        const qsizetype end = qsizetype(nodeSize) - u16(offset);
        while (i < end) {
            word = EntryWord(node, i, word);
            const int length = quint8(node[i]);
            if (CaseBlindCompare(text, word) <= 0) {
                offset = qFromLittleEndian<quint32>(node.constData() + i + length + 1);
                break;
            }
            i += length + 1 + 4 + 2;
        }
    }
    return offset == tested ? 0 : offset;
}

void SearchReader::readCodes(quint32 offset, quint32 size, quint32 topics, Hits& hits) const {
    const QByteArray block = m_file.mid(offset, size);
    BitReader bits(block);
    quint32 topic = 0;
    for (quint32 t = 0; t < topics; ++t) {
        bits.toByte();
        topic += bits.scaleRoot(u8(0x1F));
        const quint32 count = bits.scaleRoot(u8(0x21));
        std::vector<quint32>& places = hits[topic];
        places.clear();
        quint32 location = 0;
        for (quint32 c = 0; c < count; ++c) {
            location += bits.scaleRoot(u8(0x23));
            places.push_back(location);
        }
    }
}

SearchReader::Hits SearchReader::search(const QByteArray& text, bool wholeWords,
                                        bool titlesOnly) const {
    Hits hits;
    if (u8(0x1E) != 2 || u8(0x20) != 2 || u8(0x22) != 2)
        throw std::runtime_error("scales other than 2");
    const quint32 nodeSize = u32(0x2E);
    quint32 leaf = leafFor(text);
    QByteArray word;
    while (leaf != 0) {
        const QByteArray node = m_file.mid(leaf, nodeSize);
        const qsizetype end =
            qsizetype(nodeSize) - qFromLittleEndian<quint16>(node.constData() + 6);
        const quint32 next = qFromLittleEndian<quint32>(node.constData());
        for (qsizetype i = 8; i < end;) {
            word = EntryWord(node, i, word);
            i += 2 + quint8(node[i]);
            const bool title = node[i - 1] != 0;
            const quint32 topics = EncInt(node, i);
            const quint32 codesOffset = qFromLittleEndian<quint32>(node.constData() + i);
            i += 4 + 2;
            const quint32 codesSize = EncInt(node, i);
            if (!title && titlesOnly) continue;
            if (wholeWords && CaseBlindCompare(text, word) == 0) {
                readCodes(codesOffset, codesSize, topics, hits);
                return hits;
            }
            if (!wholeWords) {
                if (CaseBlindCompare(word, text, text.size()) == 0)
                    readCodes(codesOffset, codesSize, topics, hits);
                else if (CaseBlindCompare(text, word, text.size()) < -1)
                    return hits;
            }
        }
        if (wholeWords || !word.startsWith(text)) break;
        leaf = next;
    }
    return hits;
}

} // namespace qmr::test
