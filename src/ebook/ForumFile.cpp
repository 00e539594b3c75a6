#include "ebook/ForumFile.h"

namespace qmr {

QString ForumLine(int level, const QString& title, const QString& address) {
    // A local file or no address at all cannot be linked from a forum post.
    // Only the start is upper-cased: a ligature such as "ﬁ" grows when it is.
    if (address.left(8).toUpper().startsWith(QLatin1String("FILE")) || address.trimmed().isEmpty())
        return title;
    const QString indent(qMax(level, 0) * 2, QLatin1Char(' '));
    return indent + QStringLiteral("[url=") + address + QStringLiteral("]") + title +
           QStringLiteral("[/url]");
}

void ForumFile::writeLine(int level, const QString& title, const QString& address) {
    if (m_file.isOpen()) m_file.writeLine(ForumLine(level, title, address));
}

bool ForumFile::close(QString* error) {
    if (!m_file.isOpen()) return true;
    return m_file.commit(error);
}

} // namespace qmr
