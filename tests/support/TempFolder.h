#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace qmr::test {

// A temporary folder for one test; path() ends in "/".
class TempFolder {
  public:
    TempFolder();
    QString path() const;
    // Writes bytes to a file below the folder, making its folders; returns the full path.
    QString write(const QString& relative, const QByteArray& bytes) const;

  private:
    QTemporaryDir m_dir;
};

QByteArray ReadBytes(const QString& path);

// Copies a folder with everything below it (hidden files too).
void CopyTree(const QString& from, const QString& to);

// The text with every "|" turned into a NUL character, for the NUL-separated lists of ini files.
QString WithNuls(const char* text);

// The result of running the quillmere program.
struct RunResult {
    int exitCode = -1;
    QString out;
    QString err;
};
RunResult RunQuillmereProgram(const QStringList& arguments,
                              const QStringList& extraEnvironment = {});

} // namespace qmr::test
