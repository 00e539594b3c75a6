#pragma once

#include "authoring/AuthoringContext.h"
#include "catalogue/Catalogue.h"

#include <QByteArray>
#include <QDateTime>
#include <QMap>
#include <QString>
#include <QStringList>

namespace qmr::test {

// The day every identifier in these tests is drawn on, so the golden files stay stable.
inline const QDate kIdentifierDay(2008, 3, 9);

// A context that draws identifiers on kIdentifierDay from a counter in `appFolder`.
AuthoringContext FixedContext(BuildHost& host, const QString& appFolder,
                              const QString& scrapbookName);

// A golden file below tests/golden/authoring/.
QByteArray Golden(const QString& relative);

// Every file below `folder`, by path relative to it ("data/x/index.html").
QMap<QString, QByteArray> FilesBelow(const QString& folder);

// Compares two files line by line (at "\n"), naming the first line that differs.
void ExpectSameFile(const QByteArray& actual, const QByteArray& expected, const QString& name);

// Each list of the loaded catalogue ("root" or a folder id) with the ids it holds, in order.
QMap<QString, QStringList> CatalogueTree(const Catalogue& catalogue);

// Whether xmllint is installed, and whether it accepts the file; `output` gets its complaints.
bool XmllintInstalled();
bool XmllintAccepts(const QString& path, QString* output = nullptr);

// Bytes and last-write time of every file below a folder, to show that nothing changed them.
struct FileSnapshot {
    QByteArray bytes;
    QDateTime modified;
    bool operator==(const FileSnapshot&) const = default;
};
QMap<QString, FileSnapshot> SnapshotFiles(const QString& folder, const QString& skipFolder = {});

} // namespace qmr::test
