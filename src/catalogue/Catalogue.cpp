#include "catalogue/Catalogue.h"

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

} // namespace qmr
