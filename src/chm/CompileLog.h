#pragma once

#include <QString>
#include <QStringList>

namespace qmr::chm {

// What the compiler has to say about a project: one line per problem, naming the file (and
// the line where there is one). Errors mean no book; warnings and notes do not.
class CompileLog {
  public:
    void note(const QString& file, const QString& text);
    void warning(const QString& file, const QString& text);
    void error(const QString& file, int line, const QString& text);
    // Takes another log's lines (a worker thread's), in order.
    void append(const CompileLog& other);

    bool hasErrors() const { return m_errors > 0; }
    int errorCount() const { return m_errors; }
    int warningCount() const { return m_warnings; }
    // "Error: FILE: line N: text", "Warning: FILE: text", "Note: FILE: text".
    const QStringList& lines() const { return m_lines; }

  private:
    QStringList m_lines;
    int m_errors = 0;
    int m_warnings = 0;
};

} // namespace qmr::chm
