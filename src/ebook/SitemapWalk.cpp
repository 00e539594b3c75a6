#include "catalogue/LocalTextFile.h"
#include "catalogue/PathSafety.h"
#include "ebook/CatalogueTree.h"
#include "ebook/Sitemap.h"
#include "website/ListPage.h"

#include <vector>

namespace qmr {
namespace {

const QString kRoot = QStringLiteral("root");
const QString kContentFontSize = QStringLiteral("2");
// Content entries of folders keep the link they are given (none), so they link their folder
// page; pages choose theirs.
constexpr int kFolderContentMode = 2;
constexpr int kFolderImage = 1;
// How often the walk lets the window repaint.
constexpr qint64 kEntriesPerYield = 256;
// Lists that name the same folders over and over make a book that never ends; a tree, even
// with items listed in several folders, stays far below this many entries a catalogue line.
constexpr qint64 kEntriesPerLine = 16;
constexpr qint64 kSpareEntries = 1024;

bool isPrivate(const CatalogueItem& item) {
    return item.comment.toUpper().contains(QLatin1String("PRIVATE"));
}

bool isSavedPageType(const QString& type) {
    return type.isEmpty() || type == u"image" || type == u"site" || type == u"marked" ||
           type == u"file";
}

// The table-of-contents walk, one folder list at a time. It keeps its own stack instead of
// recursing, so a catalogue nested thousands of folders deep cannot exhaust the call stack;
// the order of everything it writes is the order of the recursive walk.
class TocWalk {
  public:
    TocWalk(EbookContext& build, LocalTextFile& file)
        : m_build(build), m_catalogue(build.catalogue), m_file(file), m_tree(build.catalogue),
          m_onPath(m_catalogue.items.size(), false), m_reported(m_catalogue.items.size(), false),
          m_entryLimit(kEntriesPerLine * (qint64(m_catalogue.lineCount) + 1) + kSpareEntries) {}

    bool run(const QString& name, QString* error);

  private:
    // An open folder: its item (-1 for the root), its name, its children and how far they
    // have been taken.
    struct Frame {
        int folder = -1;
        QString name;
        std::vector<int> children;
        std::size_t next = 0;
    };

    bool enterFolder(const QString& name);
    void leaveFolder();
    void placeChild(int parentFolder, const QString& parentName, int child);
    bool mayPlace(int child);
    void listOnFolderPage(int parentFolder, const CatalogueItem& item, const QString& link);
    void contentEntry(int child, int mode);
    void reportOnce(int child, const QString& line);

    EbookContext& m_build;
    Catalogue& m_catalogue;
    LocalTextFile& m_file;
    const CatalogueTree m_tree;
    std::vector<Frame> m_stack;
    std::vector<bool> m_onPath;   // folders open on the stack
    std::vector<bool> m_reported; // items already named in the log
    const qint64 m_entryLimit;
    qint64 m_entries = 0;
};

bool TocWalk::run(const QString& name, QString* error) {
    if (!enterFolder(name)) return true;
    while (!m_stack.empty()) {
        Frame& top = m_stack.back();
        if (top.next == top.children.size()) {
            leaveFolder();
            continue;
        }
        const int child = top.children.at(top.next++);
        // Copies: placing a folder opens it on the stack, which may move `top`.
        const int parentFolder = top.folder;
        const QString parentName = top.name;
        if (++m_entries > m_entryLimit) {
            if (error)
                *error = QStringLiteral("The table of contents stops after %1 entries: the "
                                        "catalogue's lists name the same folders over and over")
                             .arg(m_entryLimit);
            return false;
        }
        if (m_entries % kEntriesPerYield == 0) m_build.host.yield();
        placeChild(parentFolder, parentName, child);
    }
    return true;
}

// Opens a folder: its entry in the table of contents, and the head of its folder page once
// its parent is known. A private folder writes nothing and leaves the depth one higher, as
// the walk always has; its caller never opens one.
bool TocWalk::enterFolder(const QString& name) {
    WalkState& walk = m_build.walk;
    ++walk.TreeDepth;
    int folder = -1;
    if (name != kRoot) {
        folder = m_tree.itemIndex(name);
        if (folder < 0 || isPrivate(m_catalogue.items.at(folder))) return false;
        CatalogueItem& item = m_catalogue.items[folder];
        if (walk.FirstFolderTitle.isEmpty()) walk.FirstFolderTitle = item.title;
        m_file.writeLine(QStringLiteral("   <UL>"));
        WriteFolderEntry(m_file, item.title, kFolderImage);
        // A folder listed twice keeps the page of its last listing.
        item.folderBody = FolderPathHeader(m_build.chrome, m_catalogue, folder);
        m_onPath[folder] = true;
    }
    m_stack.push_back({folder, name, m_tree.children(name), 0});
    return true;
}

void TocWalk::leaveFolder() {
    const int folder = m_stack.back().folder;
    if (folder >= 0) {
        --m_build.walk.TreeDepth;
        m_file.writeLine(QStringLiteral("      </UL>"));
        m_onPath[folder] = false;
    }
    m_stack.pop_back();
}

// An item whose identifier cannot name a folder is never linked, and a folder inside its own
// list would be walked for ever: both are left out, with a log line.
bool TocWalk::mayPlace(int child) {
    const CatalogueItem& item = m_catalogue.items.at(child);
    if (!IsSafePathComponent(item.id)) {
        reportOnce(
            child,
            QStringLiteral("Skipped item %1: its identifier cannot name a folder").arg(item.id));
        return false;
    }
    const bool opens = item.type == u"folder" && !isPrivate(item);
    if (opens && (m_onPath.at(child) || item.id == kRoot)) {
        reportOnce(child,
                   QStringLiteral("Skipped folder %1: it is listed inside itself").arg(item.id));
        return false;
    }
    return true;
}

void TocWalk::placeChild(int parentFolder, const QString& parentName, int child) {
    if (!mayPlace(child)) return;
    CatalogueItem& item = m_catalogue.items[child];
    item.placed = true;
    item.parentId = parentName;
    const QString& type = item.type;
    if (type == u"folder") {
        listOnFolderPage(parentFolder, item,
                         QStringLiteral("../qmr/") + item.id + QStringLiteral(".html"));
        if (isPrivate(item)) return;
        contentEntry(child, kFolderContentMode);
        enterFolder(item.id);
    } else if (type == u"bookmark") {
        listOnFolderPage(parentFolder, item, item.source);
        WriteTocPageEntry(m_build, m_file, child, true);
        contentEntry(child, m_build.options.linkToSourceURL ? 1 : 0);
    } else if (type == u"note") {
        WriteTocPageEntry(m_build, m_file, child, false);
        contentEntry(child, m_build.options.linkToSourceURL ? 1 : 0);
    } else if (isSavedPageType(type)) {
        listOnFolderPage(parentFolder, item,
                         QStringLiteral("../") + item.id + QStringLiteral("/index.html"));
        WriteTocPageEntry(m_build, m_file, child, false);
        contentEntry(child, m_build.options.linkToSourceURL ? 1 : 0);
    }
}

// The top-level list has no folder page.
void TocWalk::listOnFolderPage(int parentFolder, const CatalogueItem& item, const QString& link) {
    if (parentFolder >= 0) m_catalogue.items[parentFolder].folderBody += FolderItemLine(item, link);
}

void TocWalk::contentEntry(int child, int mode) {
    QString link;
    m_build.content.ContentItemEntry(m_catalogue, m_build.walk.TreeDepth - 1, child, link,
                                     kContentFontSize, mode, m_build.options.makeChmFile,
                                     &m_build.forum);
    if (m_build.walk.FirstPage.isEmpty()) m_build.walk.FirstPage = link;
}

void TocWalk::reportOnce(int child, const QString& line) {
    if (m_reported.at(child)) return;
    m_reported[child] = true;
    m_build.host.add2loglist(line);
}

} // namespace

bool WalkCatalogueTree(EbookContext& build, LocalTextFile& file, const QString& name,
                       QString* error) {
    return TocWalk(build, file).run(name, error);
}

} // namespace qmr
