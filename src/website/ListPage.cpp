#include "website/ListPage.h"

#include "catalogue/LocalTextFile.h"
#include "website/PageFragments.h"
#include "website/TypeIcons.h"
#include "website/WebSource.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace qmr {
namespace {

// Items actually held, in case a catalogue's count runs ahead of its list.
int heldItemCount(const Catalogue& catalogue) {
    return int(std::min<qsizetype>(catalogue.itemCount, catalogue.items.size()));
}

constexpr int kShownTitleLength = 50;

QString shownTitle(const QString& title) {
    if (title.size() <= kShownTitleLength) return title;
    return title.left(kShownTitleLength) + QStringLiteral("...");
}

void writeHeaderRow(LocalTextFile& page) {
    const char* const lines[] = {
        "<table border=\"1\" width=\"90%\" id=\"table1\" cellspacing=\"1\">",
        "  <tr>",
        "      <td align=\"center\" width=\"5%\" bgcolor=\"#008080\"><font color=\"#FFFFFF\">",
        "      <b>SN</b></font></td>",
        "      <td align=\"center\" width=\"55%\" bgcolor=\"#008080\"><font color=\"#FFFFFF\">",
        "      <b>Title</b></font></td>",
        "      <td width=\"20%\" bgcolor=\"#008080\" align=\"center\"><font color=\"#FFFFFF\">",
        "      <b>Created Date</b></font></td>",
    };
    for (const char* line : lines)
        page.writeLine(QString::fromLatin1(line));
    page.writeLine(QStringLiteral("      <td align=\"left\" width=\"20%\" bgcolor=\"#008080\">"
                                  "\u3000</td>"));
    page.writeLine(QStringLiteral("  </tr>"));
}

// The title cell: a link to the source or to the saved copy, chosen by the kind in use.
QString titleCell(const CatalogueItem& item, ItemKind kind) {
    const QString linked = TypeIconTag(kind) + shownTitle(item.title) + QStringLiteral("</a></td>");
    const bool page = HasSavedPage(kind);
    if (kind == ItemKind::Bookmark || (page && IsWebSource(item.source)))
        return QStringLiteral("<td width=\"55%\"><a href=\"") + item.source +
               QStringLiteral("\">") + linked;
    if (page)
        return QStringLiteral("<td width=\"55%\"><a href=\"../") + item.id +
               QStringLiteral("/index.html\">") + linked;
    return QStringLiteral("<td width=\"55%\">") + shownTitle(item.title) + QStringLiteral("</td>");
}

void writeRow(LocalTextFile& page, const Catalogue& catalogue, const CatalogueItem& item,
              const QString& parentId, bool linkToSourceURL, int serial) {
    // The list compares types in lower case, and with "Link To Source URL" ticked shows every
    // item as a bookmark.
    const ItemKind kind = linkToSourceURL ? ItemKind::Bookmark : IconKindOf(item);
    const int parent = FindItemById(catalogue, parentId);
    const QString parentText = parent >= 0 ? catalogue.items.at(parent).title : QStringLiteral(".");
    page.writeLine(QStringLiteral("  <tr>"));
    page.writeLine(QStringLiteral("      <td width=\"5%\">") +
                   QString(QStringLiteral("00000") + QString::number(serial)).right(5) +
                   QStringLiteral("</td>"));
    page.writeLine(titleCell(item, kind));
    page.writeLine(QStringLiteral("      <td width=\"20%\" align=\"center\">") + item.id +
                   QStringLiteral("</td>"));
    page.writeLine(QStringLiteral("      <td width=\"20%\" align=\"center\">"));
    page.writeLine(QStringLiteral("<a href=\"../qmr/") + parentId + QStringLiteral(".html\">"));
    page.writeLine(parentText + QStringLiteral("</a></td>"));
    page.writeLine(QStringLiteral("  </tr>"));
}

} // namespace

int FindItemById(const Catalogue& catalogue, const QString& id) {
    return catalogue.IndexOfId(id, 1);
}

bool WriteListPage(const PageChrome& chrome, const Catalogue& catalogue, const CatalogueWalk& walk,
                   bool linkToSourceURL, const QString& path, QString* error, QString* asRead) {
    QDir().mkpath(QFileInfo(path).path());
    LocalTextFile page(path);
    page.keepTextAsRead(asRead);
    const QString prefix = QStringLiteral("./../../");
    page.writeLine(HtmlHead(chrome, chrome.scrapbookName, QStringLiteral("UTF-8")));
    page.writeLine(HtmlTitleBar(chrome, prefix));
    page.writeLine(HtmlNavigationBar(prefix));
    writeHeaderRow(page);
    // Position 0 is left out, as FindItemById never finds it either.
    int serial = 0;
    const int count = heldItemCount(catalogue);
    for (int i = 1; i < count; ++i) {
        const CatalogueItem& item = catalogue.items.at(i);
        if (item.isFolder() || !walk.placed(i)) continue;
        writeRow(page, catalogue, item, walk.parentId(i), linkToSourceURL, serial++);
    }
    page.writeLine(QStringLiteral("</table>"));
    page.writeLine(HtmlFooter(chrome, prefix));
    return page.commit(error);
}

} // namespace qmr
