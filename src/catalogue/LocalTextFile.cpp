#include "catalogue/LocalTextFile.h"

#include "catalogue/TextFiles.h"
#include "platform/LocalCodePage.h"

namespace qmr {

void LocalTextFile::open(const QString& path) {
    m_path = path;
    m_pending.clear();
    m_bytes.clear();
    m_asRead = nullptr;
}

void LocalTextFile::writeLine(const QString& text) {
    m_pending += text;
    m_pending += QLatin1String("\r\n");
}

void LocalTextFile::write(const QString& text) {
    m_pending += text;
}

void LocalTextFile::flushText() {
    if (m_pending.isEmpty()) return;
    if (m_asRead) {
        QString chunk;
        m_bytes += LocalCodePage::encode(m_pending, &chunk);
        *m_asRead += chunk;
    } else {
        m_bytes += LocalCodePage::encode(m_pending);
    }
    m_pending.clear();
}

void LocalTextFile::writeBytes(const QByteArray& bytes) {
    flushText();
    m_bytes += bytes;
}

bool LocalTextFile::commit(QString* error) {
    flushText();
    const bool written = WriteFileAtomically(m_path, m_bytes, error);
    m_path.clear();
    m_bytes.clear();
    return written;
}

} // namespace qmr
