#pragma once

#include "ebook/EbookContext.h"

#include <QString>
#include <QStringList>

namespace qmr {

// Every file under the scrapbook folder, full paths with "/", in the order the project lists
// them: a folder's files by name, then its sub-folders by name.
QStringList GatherScrapbookFiles(const QString& folder);

// The book's name: the title is empty, so every book is "Index".
QString GetChmTitle();

// Writes the project file `path` (folder + "Index.hhp") from the placed items and `files`, and
// sets build.outputPath. An empty folder writes nothing.
bool hhp(EbookContext& build, const QString& path, const QStringList& files,
         QString* error = nullptr);

} // namespace qmr
