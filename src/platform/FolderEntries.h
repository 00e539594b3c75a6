#pragma once

#include <QString>

#include <vector>

namespace qmr {

struct FolderEntry {
    QString name;
    bool isFolder = false;
};

// The entries of `folder` (its path; "." and ".." left out), hidden ones too, in the order the
// file system gives them; empty when it cannot be read. Meant for reading thousands of small
// folders, so it asks the system for nothing but the names and whether each is a folder.
std::vector<FolderEntry> ListFolderEntries(const QString& folder);

} // namespace qmr
