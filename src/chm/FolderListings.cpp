#include "chm/FolderListings.h"

#include <QDirIterator>
#include <QStringList>

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
    QDirIterator it(m_root + folder,
                    QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    while (it.hasNext()) {
        it.next();
        const QString name = it.fileName();
        made->isFolder.insert(name, it.fileInfo().isDir());
        QString& holder = made->byFolding[name.toCaseFolded()];
        if (holder.isEmpty() || name < holder) holder = name;
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    auto& slot = m_listings[folder];
    if (!slot) slot = std::move(made);
    return *slot; // listings are never removed, so it stays where it is
}

const QString* FolderListings::entry(const Listing& listing, const QString& name, bool& isFolder) {
    auto exact = listing.isFolder.constFind(name);
    if (exact == listing.isFolder.cend()) {
        const auto folded = listing.byFolding.constFind(name.toCaseFolded());
        if (folded == listing.byFolding.cend()) return nullptr;
        exact = listing.isFolder.constFind(*folded);
    }
    isFolder = exact.value();
    return &exact.key();
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
