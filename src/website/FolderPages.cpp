#include "website/FolderPages.h"

#include "website/ListPage.h"

#include "catalogue/PathSafety.h"
#include "catalogue/TextFiles.h"
#include "website/PageFragments.h"
#include "website/TypeIcons.h"
#include "website/WebSource.h"

#include <QDir>
#include <QHash>

#include <algorithm>
#include <optional>

namespace qmr {
namespace {

const QString kLineEnd = QStringLiteral("\r\n");
const QString kRootPrefix = QStringLiteral("./../../");

// The "parent >" part of a folder's path, or nothing when the parent is no titled folder.
QString parentLink(const Catalogue& catalogue, const QString& parentId) {
    const int parent = FindItemById(catalogue, parentId);
    if (parent < 0 || catalogue.items.at(parent).title.isEmpty()) return QString();
    return QStringLiteral("<a href=\"../qmr/") + parentId + QStringLiteral(".html\">") +
           catalogue.items.at(parent).title + QStringLiteral("</a>&gt;") + kLineEnd;
}

// Writes one folder page as UTF-8, with the text it would have after a round trip through the
// local code page (the page is made in memory, not through a scratch file on disk).
bool writeFolderPage(const PageChrome& chrome, const CatalogueItem& folder, const QString& body,
                     const QString& pageFolder, QString* error) {
    // The body's lines carry their own line ends.
    const QString text = HtmlHead(chrome, folder.title, QStringLiteral("UTF-8")) + kLineEnd + body +
                         HtmlFooter(chrome, kRootPrefix) + kLineEnd;
    return WriteFileAtomically(pageFolder + folder.id + QStringLiteral(".html"),
                               LocalTextAsUtf8(text), error);
}

// The link a folder page gives an item its folder lists; notes and unknown kinds are not
// listed.
std::optional<QString> itemLink(const CatalogueItem& item) {
    if (item.isFolder()) return QStringLiteral("../qmr/") + item.id + QStringLiteral(".html");
    if (item.kind == ItemKind::Bookmark) return item.source;
    if (item.isCapture()) return QStringLiteral("../") + item.id + QStringLiteral("/index.html");
    return std::nullopt;
}

// The title and navigation bars every folder page opens with.
QString barsOfFolderPages(const PageChrome& chrome) {
    return HtmlTitleBar(chrome, kRootPrefix) % kLineEnd % HtmlNavigationBar(kRootPrefix) % kLineEnd;
}

// A folder page's head below its bars: the path "parent > folder" and the opening of the list.
QString pathHeader(const QString& bars, const Catalogue& catalogue, int folderIndex,
                   const QString& parentId) {
    const CatalogueItem& folder = catalogue.items.at(folderIndex);
    return bars % QLatin1String("<hr size=\"1\" noshade>\r\n<font size=\"4\"><b>\r\n") %
           parentLink(catalogue, parentId) % folder.title %
           QLatin1String("</b></font><br>\r\n<p align=\"left\">\r\n<div align=\"left\">\r\n");
}

// Each folder's body as the walk leaves it: started anew each time the folder is entered, one
// line for each item its list places.
QHash<int, QString> folderBodies(const PageChrome& chrome, const Catalogue& catalogue,
                                 const CatalogueWalk& walk) {
    QHash<int, QString> bodies;
    for (const WalkStep& step : walk.steps()) {
        if (step.kind == WalkStep::Kind::Enter) {
            bodies[step.item] =
                FolderPathHeader(chrome, catalogue, step.item, walk.parentName(step.parent));
        } else if (step.kind == WalkStep::Kind::Place && step.parent >= 0) {
            const CatalogueItem& item = catalogue.items.at(step.item);
            if (const auto link = itemLink(item))
                bodies[step.parent] += FolderItemLine(item, *link);
        }
    }
    return bodies;
}

} // namespace

QString FolderPathHeader(const PageChrome& chrome, const Catalogue& catalogue, int folderIndex,
                         const QString& parentId) {
    return pathHeader(barsOfFolderPages(chrome), catalogue, folderIndex, parentId);
}

QString FolderItemLine(const CatalogueItem& item, const QString& link) {
    const bool toSource = IsWebSource(item.source);
    const QString icon =
        TypeIconTag(toSource ? ItemKind::Bookmark : IconKindOf(item), QStringLiteral("../qmr/"));
    return icon + QStringLiteral("<a href=\"") + (toSource ? item.source : link) +
           QStringLiteral("\">") + item.title + QStringLiteral("</a>") + QStringLiteral("<br>") +
           kLineEnd;
}

bool WriteFolderPages(const PageChrome& chrome, const Catalogue& catalogue,
                      const CatalogueWalk& walk, const QString& root, QString* error) {
    const QString pageFolder = root + QStringLiteral("data/qmr/");
    QDir().mkpath(pageFolder);
    const QHash<int, QString> bodies = folderBodies(chrome, catalogue, walk);
    const int count = int(std::min<qsizetype>(catalogue.itemCount, catalogue.items.size()));
    for (int i = 0; i < count; ++i) {
        const CatalogueItem& item = catalogue.items.at(i);
        if (!item.isFolder() || !IsSafePathComponent(item.id)) continue;
        if (!writeFolderPage(chrome, item, bodies.value(i), pageFolder, error)) return false;
    }
    return true;
}

} // namespace qmr
