#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace qmr::test {

// A temporary folder for one test; path() ends in "/".
class TempFolder {
  public:
    QString path() const;
    // Writes bytes to a file below the folder, making its folders; returns the full path.
    QString write(const QString& relative, const QByteArray& bytes) const;

  private:
    QTemporaryDir m_dir;
};

QByteArray ReadBytes(const QString& path);

// Copies a folder with everything below it (hidden files too).
void CopyTree(const QString& from, const QString& to);

// A copy of the bundled example scrapbook below `folder`, so that a build writes nothing into
// the source tree; ends in "/".
QString CopyOfExample(const TempFolder& folder);

// A scrapbook below `root`: a scrapbook.rdf, `items` item folders in data/ (none: no data/)
// and, when `iniName` is given, a ScrapbookPrj.ini naming it (bytes in the local code page).
// Returns the folder, ending in "/".
QString MakeScrapbook(const TempFolder& root, const QString& relative, int items,
                      const QByteArray& iniName = QByteArray());

} // namespace qmr::test
