#pragma once

#include "catalogue/Catalogue.h"

#include <QHash>
#include <QString>

#include <vector>

namespace qmr {

// The folders' lists of a loaded catalogue, indexed once so that a folder's children are found
// without reading every line again for every folder.
//
// A folder's children are the child lines ("<RDF:li RDF:resource=...") read while a flag is
// set: any list line ("<RDF:Seq RDF:about=...") whose name begins with the folder's key ("root",
// or "item" + identifier) sets it, and only a "</RDF:Seq>" line clears it. So a key also
// matches longer names that begin with it, a list line of another name in between changes
// nothing, and overlapping lists give each child line once.
class CatalogueTree {
  public:
    explicit CatalogueTree(const Catalogue& catalogue);

    // The items named by the children of `name` ("root" or a folder's identifier), in line
    // order; child lines that name no item are left out.
    std::vector<int> children(const QString& name) const;

    // The first item with that identifier; -1 when there is none.
    int itemIndex(const QString& id) const { return m_firstItemById.value(id, -1); }

  private:
    struct ListLine {
        QString name;       // the text after `<RDF:Seq RDF:about="urn:scrapbook:`
        int segment = 0;    // how many "</RDF:Seq>" lines come before it
        int firstChild = 0; // ordinal of the first child line after it
    };

    QHash<QString, int> m_firstItemById;
    std::vector<ListLine> m_listsByName; // sorted by name
    std::vector<int> m_childItems;       // per child line, in line order: its item or -1
    std::vector<int> m_segmentEnds;      // per segment: ordinal of the first child line after it
};

} // namespace qmr
