#include "website/PageWriter.h"

#include "website/PageFragments.h"

namespace qmr {

void PageWriter::OpenPage(const QString& path) {
    m_file.open(path);
}

void PageWriter::WritePageLine(const QString& text) {
    m_file.writeLine(text);
}

bool PageWriter::ClosePageWithFooter(QString* error) {
    if (!m_file.isOpen()) {
        if (error) *error = QStringLiteral("no page is open to be closed");
        return false;
    }
    m_file.writeLine(HtmlFooter(m_chrome, QStringLiteral("./../../")));
    return m_file.commit(error);
}

} // namespace qmr
