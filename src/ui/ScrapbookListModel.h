#pragma once

#include "library/ScrapbookList.h"

#include <QAbstractTableModel>
#include <QList>

namespace qmr {

// The scrapbook list as the window's report view shows it: three columns in the list's own
// order. It holds a copy of the rows, taken by sync(), so that the view never reads the list
// while a load is changing it between two entries.
class ScrapbookListModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    explicit ScrapbookListModel(const ScrapbookList& list, QObject* parent = nullptr);

    // Takes the list's rows again.
    void sync();

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

  private:
    const ScrapbookList& m_list;
    QList<ScrapbookRow> m_rows;
};

} // namespace qmr
