#pragma once

#include <QByteArray>
#include <QString>
#include <QStringBuilder>

namespace qmr {

// A generated text file written line by line in the local code page with CR LF line ends.
// The lines are gathered in memory and written at commit() to a temporary name that is then
// renamed over the target, so a failed build never leaves a half-written file.
class LocalTextFile {
  public:
    explicit LocalTextFile(QString path = QString()) : m_path(std::move(path)) {}

    const QString& path() const { return m_path; }
    bool isOpen() const { return !m_path.isEmpty(); }

    // Starts the file anew (what is gathered so far is dropped).
    void open(const QString& path);
    // One line and its CR LF.
    void writeLine(const QString& text);
    // A line joined with "%" or "+", appended without a text of its own in between.
    template <typename A, typename B> void writeLine(const QStringBuilder<A, B>& text) {
        m_pending += text;
        m_pending += QLatin1String("\r\n");
    }
    // Text as it stands, no line end added.
    void write(const QString& text);
    // Bytes as they stand (a file name that must keep the file system's bytes).
    void writeBytes(const QByteArray& bytes);
    // From now on, also gathers into `asRead` the text as the file reads back, so a copy in
    // another encoding needs no second reading.
    void keepTextAsRead(QString* asRead) { m_asRead = asRead; }
    // Writes the file; false with the reason when it cannot. The file is closed either way.
    bool commit(QString* error = nullptr);

  private:
    void flushText();
    QString m_path;
    QString m_pending;
    QByteArray m_bytes;
    QString* m_asRead = nullptr;
};

} // namespace qmr
