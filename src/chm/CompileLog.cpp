#include "chm/CompileLog.h"

#include "platform/PathSeparators.h"

namespace qmr::chm {

void CompileLog::note(const QString& file, const QString& text) {
    m_lines.append(QStringLiteral("Note: %1: %2").arg(ToNativePath(file), text));
}

void CompileLog::warning(const QString& file, const QString& text) {
    ++m_warnings;
    m_lines.append(QStringLiteral("Warning: %1: %2").arg(ToNativePath(file), text));
}

void CompileLog::error(const QString& file, int line, const QString& text) {
    ++m_errors;
    if (line > 0)
        m_lines.append(
            QStringLiteral("Error: %1: line %2: %3").arg(ToNativePath(file)).arg(line).arg(text));
    else
        m_lines.append(QStringLiteral("Error: %1: %2").arg(ToNativePath(file), text));
}

void CompileLog::append(const CompileLog& other) {
    m_lines += other.m_lines;
    m_errors += other.m_errors;
    m_warnings += other.m_warnings;
}

} // namespace qmr::chm
