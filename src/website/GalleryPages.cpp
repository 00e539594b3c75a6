#include "website/GalleryPages.h"

#include "catalogue/PathSafety.h"
#include "host/BuildHost.h"
#include "website/IconCells.h"
#include "website/PageFragments.h"
#include "website/PageWriter.h"

#include <QDir>
#include <QFile>

namespace qmr {
namespace {

constexpr int kRowsPerPage = 5;
constexpr int kCellsPerPage = kRowsPerPage * kCellsPerRow;

const QString kPrefix = QStringLiteral("./../../");
const QString kTable = QStringLiteral("      <table border=\"0\" width=\"1000\" id=\"table110\">");

QString advertBlock(const PageChrome& chrome) {
    QString text;
    AppendAdvertBlock(chrome, text);
    return text;
}

} // namespace

bool QualifiesForPhotoPage(const QString& scrapbookFolder, const CatalogueItem& item) {
    return item.isCapture() && IsSafePathComponent(item.id) &&
           QFile::exists(ItemFolder(scrapbookFolder, item.id) + QStringLiteral("index.dat"));
}

QList<const CatalogueItem*> PhotoPageItems(BuildHost& host, const Catalogue& catalogue,
                                           const QString& scrapbookFolder) {
    QList<const CatalogueItem*> items;
    for (const CatalogueItem& item : catalogue.items) {
        if (!item.isCapture()) continue;
        if (!IsSafePathComponent(item.id)) {
            host.add2loglist(
                QStringLiteral("Skipped item \"%1\": its identifier cannot name a folder")
                    .arg(item.id));
            continue;
        }
        if (QualifiesForPhotoPage(scrapbookFolder, item)) items.append(&item);
    }
    return items;
}

QString GalleryPageName(int page) {
    return QStringLiteral("PhotoIcons%1.html").arg(page, 3, 10, QLatin1Char('0'));
}

QString PageNumberBar(int pageCount, int currentPage) {
    QString bar = QStringLiteral("  <table border=\"0\" width=\"1000\" id=\"table1\" "
                                 "cellspacing=\"0\">") +
                  QStringLiteral("      <tr>") +
                  QStringLiteral("          <td bgcolor=\"#008080\"><font color=\"#FFFFFF\"><b>") +
                  QStringLiteral("<div align=\"center\">");
    for (int page = 1; page <= pageCount; ++page) {
        bar += QStringLiteral("<a href=\"") + GalleryPageName(page) + QStringLiteral("\">");
        bar += page == currentPage ? QStringLiteral("  <font color=\"#FFFFFF\" size=5 >&nbsp;")
                                   : QStringLiteral("  <font color=\"#FFFFFF\">&nbsp;");
        bar += QLatin1Char(' ') + QString::number(page) + QStringLiteral("</font></a>");
    }
    return bar + QStringLiteral("  </div>") + QStringLiteral("</b></font></td>") +
           QStringLiteral("      </tr>") + QStringLiteral("  </table>");
}

bool BuildGallery(const PageChrome& chrome, const QList<const CatalogueItem*>& items,
                  const QString& scrapbookFolder, bool linkToSourceURL, QString* error) {
    QStringList cells;
    for (const CatalogueItem* item : items)
        cells.append(GalleryIconCell(*item, linkToSourceURL));
    const int count = int(cells.size());
    const int pageCount = 1 + count / kCellsPerPage;
    const QString folder = scrapbookFolder + QStringLiteral("data/qmr/");
    QDir().mkpath(folder);
    const QString adverts = advertBlock(chrome);
    PageWriter page(chrome);
    int row = 0; // runs on from page to page
    for (int p = 1; p <= pageCount; ++p) {
        page.OpenPage(folder + GalleryPageName(p));
        page.WritePageLine(HtmlHead(chrome, QStringLiteral("Photos for"), QStringLiteral("BIG5")));
        page.WritePageLine(HtmlTitleBar(chrome, kPrefix));
        page.WritePageLine(HtmlNavigationBar(kPrefix));
        page.WritePageLine(QStringLiteral("<div align=\"center\">"));
        page.WritePageLine(adverts);
        page.WritePageLine(PageNumberBar(pageCount, p));
        page.WritePageLine(kTable);
        for (int r = 0; r < kRowsPerPage; ++r) {
            const int start = kCellsPerRow * row++;
            // A count that ends a row exactly still gets the empty row after it.
            if (start <= count) IconRow(page, start, cells, count);
        }
        page.WritePageLine(QStringLiteral("      </table>"));
        page.WritePageLine(PageNumberBar(pageCount, p));
        page.WritePageLine(adverts);
        page.WritePageLine(QStringLiteral("  </div>"));
        if (!page.ClosePageWithFooter(error)) return false;
    }
    return true;
}

} // namespace qmr
