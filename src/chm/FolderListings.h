#pragma once

#include <QHash>
#include <QString>

#include <memory>
#include <mutex>
#include <vector>

namespace qmr::chm {

// Finds files below one root folder by their path, as the folders' listings spell them. Each
// folder is listed once, when first needed; any number of threads may ask at once.
class FolderListings {
  public:
    explicit FolderListings(const QString& root); // absolute, ending in "/"
    FolderListings(const FolderListings&) = delete;
    FolderListings& operator=(const FolderListings&) = delete;
    ~FolderListings();

    // The file at `relative` ("data/1/a.png": below the root, "/" between folders, no "." or
    // ".." parts): as given when a file has that very name; otherwise with the spelling on
    // disk, where each folder or file without an entry of exactly its name is the entry
    // differing only in case (the first in code-point order when several do). Empty when there
    // is no such file (or it is a folder).
    QString findFile(const QString& relative);

  private:
    struct Entry {
        QString name;
        QString folded; // case-folded
        bool isFolder = false;
    };
    // A folder's entries by their folded name, then their name: a project of thousands of item
    // folders keeps thousands of listings, so they are kept small.
    struct Listing {
        std::vector<Entry> entries;
    };
    const Listing& listing(const QString& folder);
    // findFile without the memory of earlier answers.
    QString walkTo(const QString& relative);
    // The entry of `listing` named `name`, or differing only in case; null when none.
    static const QString* entry(const Listing& listing, const QString& name, bool& isFolder);

    QString m_root;
    std::mutex m_mutex;
    QHash<QString, std::shared_ptr<const Listing>> m_listings;
    QHash<QString, QString> m_found; // every path asked for, and the answer
};

} // namespace qmr::chm
