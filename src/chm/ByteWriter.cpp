#include "chm/ByteWriter.h"

#include <QUuid>

namespace qmr::chm {

void ByteWriter::u16(quint16 value) {
    u8(quint8(value));
    u8(quint8(value >> 8));
}

void ByteWriter::u32(quint32 value) {
    u16(quint16(value));
    u16(quint16(value >> 16));
}

void ByteWriter::u64(quint64 value) {
    u32(quint32(value));
    u32(quint32(value >> 32));
}

void ByteWriter::u32BigEndian(quint32 value) {
    for (int shift = 24; shift >= 0; shift -= 8)
        u8(quint8(value >> shift));
}

void ByteWriter::encInt(quint64 value) {
    const int count = EncIntSize(value);
    for (int i = count - 1; i >= 0; --i) {
        const quint8 group = quint8((value >> (7 * i)) & 0x7F);
        u8(i > 0 ? quint8(group | 0x80) : group);
    }
}

void ByteWriter::nulTerminated(QByteArrayView data) {
    m_bytes.append(data);
    m_bytes.append('\0');
}

void ByteWriter::utf16(QStringView text) {
    for (QChar c : text)
        u16(c.unicode());
}

void ByteWriter::guid(const char* text) {
    const QUuid id(QAnyStringView{text});
    u32(id.data1);
    u16(id.data2);
    u16(id.data3);
    for (unsigned char b : id.data4)
        u8(b);
}

void PutU32At(QByteArray& bytes, qsizetype offset, quint32 value) {
    for (int i = 0; i < 4; ++i)
        bytes[offset + i] = char(quint8(value >> (8 * i)));
}

int EncIntSize(quint64 value) {
    int count = 1;
    while (value >>= 7)
        ++count;
    return count;
}

} // namespace qmr::chm
