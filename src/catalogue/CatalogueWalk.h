#pragma once

#include "catalogue/Catalogue.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace qmr {

// One step of the walk, in the order the table of contents is written.
struct WalkStep {
    enum class Kind : quint8 {
        Place, // an item named by the list being walked
        Enter, // a folder's own list starts (right after the folder is placed)
        Leave, // that list ends
    };
    Kind kind = Kind::Place;
    int item = -1; // the item placed, entered or left
    // Place: the folder whose list names the item, -1 for the top-level list. Enter: the
    // folder's own parent as the walk last placed it (-2 when it never did).
    int parent = -1;
    int level = 0; // 0 for the top-level list, 1 for a list one folder down, ...

    bool operator==(const WalkStep&) const = default;
};

// The catalogue's tree as every builder shows it: the walk from the top-level list down through
// the folders' lists, each in its own order. An item named by two lists is placed twice; a
// private folder is placed but never entered; an item no list names is never placed. Items
// whose identifiers cannot name a folder, and folders named inside their own lists, are left
// out and named once each in skipped(). The catalogue itself is never changed.
class CatalogueWalk {
  public:
    explicit CatalogueWalk(const Catalogue& catalogue);

    // False when the lists name the same folders over and over, so that a book of them would
    // never end; error() says so. The steps up to that point stay.
    bool ok() const { return m_error.isEmpty(); }
    const QString& error() const { return m_error; }

    const std::vector<WalkStep>& steps() const { return m_steps; }
    // Log lines naming what was left out.
    const QStringList& skipped() const { return m_skipped; }

    // True once some list has placed the item.
    bool placed(int item) const;
    // "root" or the identifier of the folder whose list placed the item last; empty when none
    // did.
    QString parentId(int item) const;
    // What a step's parent stands for: "root" for -1, empty for -2, else the folder's identifier.
    QString parentName(int parent) const;

    static constexpr int kNeverPlaced = -2;

  private:
    const Catalogue& m_catalogue;
    std::vector<WalkStep> m_steps;
    std::vector<int> m_lastParent; // per item: -2 never placed, -1 the top-level list
    QStringList m_skipped;
    QString m_error;

    friend class CatalogueWalker;
};

} // namespace qmr
