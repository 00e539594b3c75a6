#include "catalogue/Catalogue.h"

#include <algorithm>

namespace qmr {
namespace {

template <typename Field>
int firstMatching(const QList<CatalogueItem>& items, int count, const QString& wanted,
                  Field field) {
    const QString key = wanted.trimmed().toUpper();
    for (int i = 0; i < count; ++i)
        if ((items.at(i).*field).trimmed().toUpper() == key) return i;
    return -1;
}

} // namespace

int Catalogue::NodeTitleToIndex(const QString& title) const {
    return firstMatching(items, itemCount, title, &CatalogueItem::title);
}

int Catalogue::NodeCommentToIndex(const QString& comment) const {
    return firstMatching(items, itemCount, comment, &CatalogueItem::comment);
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
