#include "chm/StringTable.h"

namespace qmr::chm {

namespace {
constexpr qsizetype kBlockSize = 0x1000;
}

quint32 StringTable::add(const QByteArray& text, const QByteArray& prefix) {
    const QByteArray key = prefix + text;
    const auto known = m_offsets.constFind(key);
    if (known != m_offsets.constEnd()) return known.value();
    const qsizetype length = key.size() + 1;
    const qsizetype used = m_bytes.size() % kBlockSize;
    if (length <= kBlockSize && used + length > kBlockSize) m_bytes.append(kBlockSize - used, '\0');
    const quint32 offset = quint32(m_bytes.size());
    m_bytes.append(key);
    m_bytes.append('\0');
    m_offsets.insert(key, offset);
    return offset;
}

} // namespace qmr::chm
