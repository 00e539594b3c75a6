#include "ui/ScrapbookListModel.h"

#include "catalogue/TextFiles.h"
#include "platform/PathSeparators.h"

#include <QFont>

namespace qmr {

ScrapbookListModel::ScrapbookListModel(const ScrapbookList& list, QObject* parent)
    : QAbstractTableModel(parent), m_list(list) {}

void ScrapbookListModel::sync() {
    beginResetModel();
    m_rows = m_list.rows();
    endResetModel();
}

int ScrapbookListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(m_rows.size());
}

int ScrapbookListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(kScrapbookListColumns.size());
}

QVariant ScrapbookListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= m_rows.size()) return {};
    const ScrapbookRow& row = m_rows.at(index.row());
    // A scrapbook whose settings name it not is shown by its folder's name, in italics.
    const bool unnamed = row.name.isEmpty();
    if (role == Qt::FontRole && index.column() == 0 && unnamed) {
        QFont italic;
        italic.setItalic(true);
        return italic;
    }
    if (role == Qt::ToolTipRole) return ToNativePath(row.folder);
    if (role == Qt::TextAlignmentRole && index.column() == 1)
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole) return {};
    switch (index.column()) {
    case 0:
        return unnamed ? GetLastFolderName(RemoveBackslash(row.folder)) : row.name;
    case 1:
        return row.pageCount;
    default:
        return ToNativePath(row.directory);
    }
}

QVariant ScrapbookListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 ||
        section >= int(kScrapbookListColumns.size()))
        return {};
    return QLatin1String(kScrapbookListColumns.at(std::size_t(section)).heading);
}

} // namespace qmr
