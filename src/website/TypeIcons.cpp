#include "website/TypeIcons.h"

namespace qmr {

ItemKind IconKindOf(const CatalogueItem& item) {
    return ItemKindOf(item.type.toLower());
}

QString TypeIconFile(ItemKind kind) {
    switch (kind) {
    case ItemKind::Bookmark:
        return QStringLiteral("images-D(2007-0426-225435).jpg");
    case ItemKind::Folder:
        return QStringLiteral("images-D(2007-0423-011620).jpg");
    case ItemKind::Separator:
    case ItemKind::Unknown:
        return QString();
    default:
        return QStringLiteral("images-D(2007-0418-162822).jpg");
    }
}

QString TypeIconTag(ItemKind kind, const QString& prefix) {
    return QStringLiteral("<img border=\"0\" src=\"") + prefix + TypeIconFile(kind) +
           QStringLiteral("\" width=\"20\" height=\"20\">");
}

} // namespace qmr
