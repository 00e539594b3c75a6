#include "chm/FolderListings.h"

#include "platform/FolderEntries.h"

#include <QFileInfo>
#include <QStringList>

#include <algorithm>

namespace qmr::chm {

FolderListings::FolderListings(const QString& root) : m_root(root) {}

FolderListings::~FolderListings() = default;

const FolderListings::Listing& FolderListings::listing(const QString& folder) {
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto found = m_listings.constFind(folder);
        if (found != m_listings.cend()) return **found;
    }
    // Listed without the lock, so threads read folders side by side; a folder listed twice at
    // once keeps the first listing.
    auto made = std::make_shared<Listing>();
    for (FolderEntry& entry : ListFolderEntries(m_root + folder)) {
        QString folded = entry.name.toCaseFolded();
        made->entries.push_back({std::move(entry.name), std::move(folded), entry.isFolder});
    }
    std::sort(made->entries.begin(), made->entries.end(), [](const Entry& a, const Entry& b) {
        return a.folded != b.folded ? a.folded < b.folded : a.name < b.name;
    });
    made->entries.shrink_to_fit();
    const std::lock_guard<std::mutex> lock(m_mutex);
    auto& slot = m_listings[folder];
    if (!slot) slot = std::move(made);
    return *slot; // listings are never removed, so it stays where it is
}

// Entries differing only in case stand together, the first in code-point order first.
const QString* FolderListings::entry(const Listing& listing, const QString& name, bool& isFolder) {
    const QString folded = name.toCaseFolded();
    auto first =
        std::lower_bound(listing.entries.begin(), listing.entries.end(), folded,
                         [](const Entry& e, const QString& key) { return e.folded < key; });
    if (first == listing.entries.end() || first->folded != folded) return nullptr;
    auto chosen = first;
    for (auto it = first; it != listing.entries.end() && it->folded == folded; ++it)
        if (it->name == name) chosen = it;
    isFolder = chosen->isFolder;
    return &chosen->name;
}

QString FolderListings::findFile(const QString& relative) {
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto known = m_found.constFind(relative);
        if (known != m_found.cend()) return *known;
    }
    const QString found = walkTo(relative);
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_found.insert(relative, found);
    return found;
}

QString FolderListings::walkTo(const QString& relative) {
    // Nearly every path is spelled as on disk: one look at the file answers it without listing
    // the folders on its way.
    if (QFileInfo(m_root + relative).isFile()) return relative;
    const QStringList parts = relative.split(u'/');
    QString path;
    for (qsizetype i = 0; i < parts.size(); ++i) {
        bool isFolder = false;
        const QString* name = entry(listing(path), parts[i], isFolder);
        const bool last = i + 1 == parts.size();
        if (!name || isFolder != !last) return {};
        path += *name;
        if (!last) path += u'/';
    }
    return path;
}

} // namespace qmr::chm
