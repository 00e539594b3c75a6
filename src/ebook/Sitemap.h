#pragma once

#include "ebook/EbookContext.h"

#include <QString>

namespace qmr {

class LocalTextFile;

// Writes the table of contents to `path` (folder + "Index.hhc"). The walk follows the folders'
// RDF:Seq lists from the root, marks each item it places (placed, parentId), gathers the folder
// page bodies, and writes the content page entries and forum lines in tree order.
bool HHC(EbookContext& build, const QString& path, QString* error = nullptr);

// Writes the index to `path` (folder + "Index.hhk"): every placed item, in catalogue order.
// Runs after HHC.
bool hhk2(EbookContext& build, const QString& path, QString* error = nullptr);

// The walk of the table of contents from `name` ("root" or a folder's identifier) down
// through the folders' lists, writing into `file`. False, with the reason, when the lists
// nest into one another so often that the book would never end.
bool WalkCatalogueTree(EbookContext& build, LocalTextFile& file, const QString& name,
                       QString* error = nullptr);

// The entry writers, exposed for the tests.
void WriteFolderEntry(LocalTextFile& file, const QString& title, int imageNumber);
void WritePageEntry(LocalTextFile& file, const QString& name, const QString& target,
                    int imageNumber);
void WriteTocPageEntry(EbookContext& build, LocalTextFile& file, int index, bool useSource);

} // namespace qmr
