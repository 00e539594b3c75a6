#include "catalogue/Catalogue.h"

#include <algorithm>

namespace qmr {

ItemKind ItemKindOf(QStringView type) {
    if (type.isEmpty()) return ItemKind::Page;
    if (type == u"folder") return ItemKind::Folder;
    if (type == u"image") return ItemKind::Image;
    if (type == u"note") return ItemKind::Note;
    if (type == u"bookmark") return ItemKind::Bookmark;
    if (type == u"site") return ItemKind::Site;
    if (type == u"marked") return ItemKind::Marked;
    if (type == u"file") return ItemKind::File;
    if (type == u"separator") return ItemKind::Separator;
    return ItemKind::Unknown;
}

bool CatalogueItem::isPrivate() const {
    return comment.toUpper().contains(QLatin1String("PRIVATE"));
}

QString ItemFolder(const QString& scrapbookFolder, const QString& id) {
    return scrapbookFolder + QStringLiteral("data/") + id + QLatin1Char('/');
}

void Catalogue::indexIds() const {
    m_idIndex.clear();
    const int count = std::min(itemCount, int(items.size()));
    for (int i = count - 1; i >= 0; --i) {
        IdPositions& positions = m_idIndex[items.at(i).id];
        positions.first = i;
        if (i >= 1) positions.firstAfterTop = i;
    }
    m_indexedItems = count;
}

int Catalogue::IndexOfId(const QString& id, int from) const {
    if (m_indexedItems != std::min(itemCount, int(items.size()))) indexIds();
    auto found = m_idIndex.constFind(id);
    if (found == m_idIndex.constEnd()) return -1;
    const int index = from >= 1 ? found->firstAfterTop : found->first;
    if (index >= 0 && items.at(index).id != id) { // the items changed since the index was made
        indexIds();
        return IndexOfId(id, from);
    }
    return index;
}

} // namespace qmr
