#pragma once

#include <QByteArray>
#include <QHash>

namespace qmr::chm {

// A file of NUL-terminated strings that others point into by offset (#STRINGS, #URLSTR).
// Offset 0 holds an empty string; readers fetch a string by reading one 4 KB block, so no
// string crosses a block boundary.
class StringTable {
  public:
    StringTable() {
        m_bytes.append('\0');
        m_offsets.insert(QByteArray(), 0);
    }

    // The offset of the string (and the `prefix` bytes before it), added once.
    quint32 add(const QByteArray& text, const QByteArray& prefix = {});
    const QByteArray& bytes() const { return m_bytes; }

  private:
    QByteArray m_bytes;
    QHash<QByteArray, quint32> m_offsets;
};

} // namespace qmr::chm
