#include "website/IconCells.h"

#include "website/PageWriter.h"
#include "website/WebSource.h"

namespace qmr {
namespace {

constexpr int kGalleryCaptionLimit = 36;
constexpr int kPhotoCaptionLimit = 16;
// What "..." leaves of a file name on a photo page.
constexpr int kPhotoCaptionKept = kPhotoCaptionLimit - 3;

QString beforeDate(const QString& name) {
    const qsizetype at = name.indexOf(QLatin1String("D("));
    return at >= 0 ? name.left(at) : name;
}

// The frame both kinds of cell share: the picture cell, then the caption cell.
const char* const kCellTable =
    "          <table border=\"0\" width=\"100\" id=\"table17\" height=\"100\" cellspacing=\"0\">";
const char* const kRowStart = "              <tr>";
const char* const kRowEnd = "              </tr>";
const char* const kPictureCell = "                  <td width=\"100\" height=\"75\" "
                                 "style=\"border-style: ridge; border-width: 1px\"   "
                                 "align=\"center\">";
const char* const kCaptionCell = "                  <td bgcolor=\"#FFFF99\"   width=\"100\" >";
const char* const kCaptionParagraph = "                  <p align=\"left\">";

QString galleryLink(const CatalogueItem& item, bool linkToSourceURL) {
    const QString source = item.source.trimmed();
    if (linkToSourceURL && IsWebSource(source))
        return QStringLiteral("<a href=\"") + source + QStringLiteral("\">");
    return QStringLiteral("<a href=\"./../") + item.id + QStringLiteral("/photo.html\">");
}

// yyyy/mm/dd from the identifier's first eight digits.
QString identifierDate(const QString& id) {
    return id.mid(0, 4) + QLatin1Char('/') + id.mid(4, 2) + QLatin1Char('/') + id.mid(6, 2);
}

} // namespace

QString GalleryCaption(const QString& title) {
    QString caption = title.size() > kGalleryCaptionLimit
                          ? title.left(kGalleryCaptionLimit) + QStringLiteral("...")
                          : beforeDate(title);
    return caption.replace(QLatin1Char('-'), QLatin1Char(' '));
}

QString PhotoCaption(const QString& fileName) {
    if (fileName.size() > kPhotoCaptionLimit)
        return fileName.left(kPhotoCaptionKept) + QStringLiteral("...");
    return beforeDate(fileName);
}

QString GalleryIconCell(const CatalogueItem& item, bool linkToSourceURL) {
    const QString link = galleryLink(item, linkToSourceURL);
    const QString caption = GalleryCaption(item.title);
    return QLatin1String(kCellTable) + QLatin1String(kRowStart) + QLatin1String(kPictureCell) +
           link + QStringLiteral("                  <img border=\"0\" src=\"./../") + item.id +
           QStringLiteral("/100x75/qmr_icon.jpg\"  alt=\"") + caption +
           QStringLiteral("\" longdesc=\"Tips for icon") +
           QStringLiteral(" lowsrc=\"./images-D(2007-0423-011620).jpg\" ></a></td>") +
           QLatin1String(kRowEnd) + QLatin1String(kRowStart) + QLatin1String(kCaptionCell) +
           QLatin1String(kCaptionParagraph) + link + QStringLiteral("<font size=\"2\">") + caption +
           QStringLiteral("</a>") + QStringLiteral("<br>") + identifierDate(item.id) +
           QStringLiteral("</font>") + QStringLiteral("</td>") + QLatin1String(kRowEnd) +
           QStringLiteral("          </table>");
}

QString PhotoIconCell(const QString& fileName, int index) {
    const QString anchor = QStringLiteral("<a href=\"#PIC(%1)\">").arg(index);
    const QString caption = PhotoCaption(fileName);
    return QLatin1String(kCellTable) + QLatin1String(kRowStart) + QLatin1String(kPictureCell) +
           QStringLiteral("                  ") + anchor +
           QStringLiteral("                  <img border=\"0\" src=\"./100x75/") + fileName +
           QStringLiteral("\"  alt=\"") + caption + QStringLiteral("\" longdesc=\"Tips for icon") +
           QStringLiteral(" lowsrc=\"data/qmr/images-D(2007-0423-011620).jpg\" ></a></td>") +
           QLatin1String(kRowEnd) + QLatin1String(kRowStart) + QLatin1String(kCaptionCell) +
           QStringLiteral("                  <p align=\"left\">") + anchor +
           QStringLiteral("<font size=\"2\">") + caption + QStringLiteral("</a></font></td></tr>") +
           QStringLiteral("   </table>");
}

void IconRow(PageWriter& page, int start, const QStringList& cells, int count) {
    page.WritePageLine(QStringLiteral("<tr>"));
    for (int position = start; position < start + kCellsPerRow; ++position) {
        page.WritePageLine(QStringLiteral(" <td align=\"center\"   valign=\"top\" >"));
        if (position < count && position < cells.size()) page.WritePageLine(cells.at(position));
        page.WritePageLine(QStringLiteral(" </td>"));
    }
    page.WritePageLine(QStringLiteral("</tr>"));
}

} // namespace qmr
