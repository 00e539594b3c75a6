#include "catalogue/CatalogueWalk.h"

#include "catalogue/CatalogueTree.h"
#include "catalogue/PathSafety.h"

#include <algorithm>

namespace qmr {

namespace {
const QString kRoot = QStringLiteral("root");
// Lists that name the same folders over and over make a tree that never ends; a real tree,
// even with items listed in several folders, stays far below this many entries a line.
constexpr qint64 kEntriesPerLine = 16;
constexpr qint64 kSpareEntries = 1024;
} // namespace

// The walk keeps its own stack instead of recursing, so a catalogue nested thousands of
// folders deep cannot exhaust the call stack; the steps come in the order of the recursive
// walk.
class CatalogueWalker {
  public:
    CatalogueWalker(CatalogueWalk& walk, const Catalogue& catalogue)
        : m_walk(walk), m_catalogue(catalogue), m_tree(catalogue),
          m_onPath(catalogue.items.size(), false), m_reported(catalogue.items.size(), false),
          m_entryLimit(kEntriesPerLine * (qint64(catalogue.lineCount) + 1) + kSpareEntries) {}

    void run() {
        m_stack.push_back({-1, m_tree.children(kRoot), 0});
        while (!m_stack.empty()) {
            Frame& top = m_stack.back();
            if (top.next == top.children.size()) {
                leave();
                continue;
            }
            const int child = top.children.at(top.next++);
            if (++m_entries > m_entryLimit) {
                m_walk.m_error = QStringLiteral("The table of contents stops after %1 entries: "
                                                "the catalogue's lists name the same folders "
                                                "over and over")
                                     .arg(m_entryLimit);
                return;
            }
            place(top.folder, child);
        }
    }

  private:
    struct Frame {
        int folder = -1; // -1 for the top-level list
        std::vector<int> children;
        std::size_t next = 0;
    };

    // A folder's list is entered by the first item with the folder's identifier; when that one
    // is private the walk writes nothing of it and stays a level deeper from then on, as it
    // always has.
    int level() const { return int(m_stack.size()) - 1 + m_extraLevels; }

    void place(int parent, int child) {
        if (!mayPlace(child)) return;
        const CatalogueItem& item = m_catalogue.items.at(child);
        m_walk.m_steps.push_back({WalkStep::Kind::Place, child, parent, level()});
        m_walk.m_lastParent[child] = parent;
        if (item.isFolder() && !item.isPrivate()) enter(item.id);
    }

    void enter(const QString& id) {
        const int folder = m_tree.itemIndex(id);
        if (folder < 0 || m_catalogue.items.at(folder).isPrivate()) {
            ++m_extraLevels;
            return;
        }
        // The folder's own parent as it stands now: the list that placed it last.
        m_walk.m_steps.push_back(
            {WalkStep::Kind::Enter, folder, m_walk.m_lastParent[folder], level()});
        m_onPath[folder] = true;
        m_stack.push_back({folder, m_tree.children(id), 0});
    }

    void leave() {
        const Frame& top = m_stack.back();
        if (top.folder >= 0) {
            m_onPath[top.folder] = false;
            m_walk.m_steps.push_back({WalkStep::Kind::Leave, top.folder, -1, level() - 1});
        }
        m_stack.pop_back();
    }

    // An item whose identifier cannot name a folder is never linked, and a folder inside its
    // own list would be walked for ever: both are left out, with a log line.
    bool mayPlace(int child) {
        const CatalogueItem& item = m_catalogue.items.at(child);
        if (!IsSafePathComponent(item.id)) {
            reportOnce(child, QStringLiteral("Skipped item %1: its identifier cannot name a folder")
                                  .arg(item.id));
            return false;
        }
        const bool opens = item.isFolder() && !item.isPrivate();
        if (opens && (m_onPath.at(child) || item.id == kRoot)) {
            reportOnce(
                child,
                QStringLiteral("Skipped folder %1: it is listed inside itself").arg(item.id));
            return false;
        }
        return true;
    }

    void reportOnce(int child, const QString& line) {
        if (m_reported.at(child)) return;
        m_reported[child] = true;
        m_walk.m_skipped.append(line);
    }

    CatalogueWalk& m_walk;
    const Catalogue& m_catalogue;
    const CatalogueTree m_tree;
    std::vector<Frame> m_stack;
    std::vector<bool> m_onPath;
    std::vector<bool> m_reported;
    const qint64 m_entryLimit;
    qint64 m_entries = 0;
    int m_extraLevels = 0;
};

CatalogueWalk::CatalogueWalk(const Catalogue& catalogue)
    : m_catalogue(catalogue), m_lastParent(catalogue.items.size(), kNeverPlaced) {
    CatalogueWalker(*this, catalogue).run();
}

bool CatalogueWalk::placed(int item) const {
    return item >= 0 && std::size_t(item) < m_lastParent.size() &&
           m_lastParent[item] != kNeverPlaced;
}

QString CatalogueWalk::parentId(int item) const {
    return placed(item) ? parentName(m_lastParent[item]) : QString();
}

QString CatalogueWalk::parentName(int parent) const {
    if (parent == kNeverPlaced) return QString();
    return parent < 0 ? kRoot : m_catalogue.items.at(parent).id;
}

} // namespace qmr
