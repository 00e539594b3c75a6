#include "website/ListPage.h"

#include "catalogue/PathSafety.h"
#include "catalogue/TextFiles.h"
#include "website/PageFragments.h"
#include "website/TypeIcons.h"
#include "website/WebSource.h"

#include <QDir>

#include <algorithm>

namespace qmr {
namespace {

const QString kLineEnd = QStringLiteral("\r\n");
const QString kRootPrefix = QStringLiteral("./../../");

// The "parent >" part of a folder's path, or nothing when the parent is no titled folder.
QString parentLink(const Catalogue& catalogue, const CatalogueItem& folder) {
    const int parent = FindItemById(catalogue, folder.parentId);
    if (parent < 0 || catalogue.items.at(parent).title.isEmpty()) return QString();
    return QStringLiteral("<a href=\"../qmr/") + folder.parentId + QStringLiteral(".html\">") +
           catalogue.items.at(parent).title + QStringLiteral("</a>&gt;") + kLineEnd;
}

// Writes one folder page as UTF-8, with the text it would have after a round trip through the
// local code page (the page is made in memory, not through a scratch file on disk).
bool writeFolderPage(const PageChrome& chrome, const CatalogueItem& folder,
                     const QString& pageFolder, QString* error) {
    // The body's lines carry their own line ends.
    const QString text = HtmlHead(chrome, folder.title, QStringLiteral("UTF-8")) + kLineEnd +
                         folder.folderBody + HtmlFooter(chrome, kRootPrefix) + kLineEnd;
    return WriteFileAtomically(pageFolder + folder.id + QStringLiteral(".html"),
                               LocalTextAsUtf8(text), error);
}

} // namespace

QString FolderPathHeader(const PageChrome& chrome, const Catalogue& catalogue, int folderIndex) {
    const CatalogueItem& folder = catalogue.items.at(folderIndex);
    return HtmlTitleBar(chrome, kRootPrefix) + kLineEnd + HtmlNavigationBar(kRootPrefix) +
           kLineEnd + QStringLiteral("<hr size=\"1\" noshade>") + kLineEnd +
           QStringLiteral("<font size=\"4\"><b>") + kLineEnd + parentLink(catalogue, folder) +
           folder.title + QStringLiteral("</b></font><br>") + kLineEnd +
           QStringLiteral("<p align=\"left\">") + kLineEnd +
           QStringLiteral("<div align=\"left\">") + kLineEnd;
}

QString FolderItemLine(const CatalogueItem& item, const QString& link) {
    const bool toSource = IsWebSource(item.source);
    const QString icon =
        TypeIconTag(toSource ? QStringLiteral("bookmark") : item.type, QStringLiteral("../qmr/"));
    return icon + QStringLiteral("<a href=\"") + (toSource ? item.source : link) +
           QStringLiteral("\">") + item.title + QStringLiteral("</a>") + QStringLiteral("<br>") +
           kLineEnd;
}

bool WriteFolderPages(const PageChrome& chrome, const Catalogue& catalogue, const QString& root,
                      QString* error) {
    const QString pageFolder = root + QStringLiteral("data/qmr/");
    QDir().mkpath(pageFolder);
    const int count = int(std::min<qsizetype>(catalogue.itemCount, catalogue.items.size()));
    for (int i = 0; i < count; ++i) {
        const CatalogueItem& item = catalogue.items.at(i);
        if (item.type != u"folder" || !IsSafePathComponent(item.id)) continue;
        if (!writeFolderPage(chrome, item, pageFolder, error)) return false;
    }
    return true;
}

} // namespace qmr
