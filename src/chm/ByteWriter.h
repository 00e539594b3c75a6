#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QStringView>

namespace qmr::chm {

// Little-endian integers and the other small pieces the book's binary files are made of,
// appended to a byte array.
class ByteWriter {
  public:
    explicit ByteWriter(QByteArray& bytes) : m_bytes(bytes) {}

    void u8(quint8 value) { m_bytes.append(char(value)); }
    void u16(quint16 value);
    void u32(quint32 value);
    void u64(quint64 value);
    // Big-endian, as the container header keeps its time stamp.
    void u32BigEndian(quint32 value);
    // The directory's variable-length integer: seven bits a byte, most significant first, the
    // high bit set on every byte but the last.
    void encInt(quint64 value);
    void bytes(QByteArrayView data) { m_bytes.append(data); }
    // Text with a terminating NUL.
    void nulTerminated(QByteArrayView data);
    // UTF-16 little-endian, without a terminator.
    void utf16(QStringView text);
    void zeros(qsizetype count) { m_bytes.append(count, '\0'); }
    // A GUID as Windows stores it: "{7C01FD10-7BAA-11D0-9E0C-00A0C922E6EC}".
    void guid(const char* text);

    qsizetype size() const { return m_bytes.size(); }

  private:
    QByteArray& m_bytes;
};

// Overwrites four bytes at `offset` with a little-endian value.
void PutU32At(QByteArray& bytes, qsizetype offset, quint32 value);

// The number of bytes encInt writes for `value`.
int EncIntSize(quint64 value);

} // namespace qmr::chm
