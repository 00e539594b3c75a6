#pragma once

#include "ebook/EbookContext.h"

#include <QString>

namespace qmr {

class LocalTextFile;

// Writes the table of contents to `path` (folder + "Index.hhc") from the walk of the
// catalogue's tree, and in the same order the content page entries and forum lines. False, with
// the reason, when the walk could not end.
bool HHC(EbookContext& build, const QString& path, QString* error = nullptr);

// Writes the index to `path` (folder + "Index.hhk"): every placed item, in catalogue order.
bool hhk2(const EbookContext& build, const QString& path, QString* error = nullptr);

// The entry writers of both files.
void WriteFolderEntry(LocalTextFile& file, const QString& title, int imageNumber);
void WritePageEntry(LocalTextFile& file, const QString& name, const QString& target,
                    int imageNumber);
void WriteTocPageEntry(const EbookContext& build, LocalTextFile& file, int index, bool useSource);

} // namespace qmr
