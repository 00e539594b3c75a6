#include "website/PhotoPage.h"

#include "catalogue/TextFiles.h"
#include "platform/PathSeparators.h"
#include "website/FolderFiles.h"
#include "website/IconCells.h"
#include "website/PageFragments.h"
#include "website/PageWriter.h"
#include "website/PictureSources.h"
#include "website/VideoPage.h"

#include <QDir>
#include <QFile>

namespace qmr {
namespace {

const QString kPrefix = QStringLiteral("./../../");
constexpr int kRowsPerPage = 100;
constexpr int kPicturesPerPage = kRowsPerPage * kCellsPerRow;
constexpr int kPlayerWidth = 640;
constexpr int kPlayerHeight = 480;

QString advertBlock(const PageChrome& chrome) {
    QString text;
    AppendAdvertBlock(chrome, text);
    return text;
}

void writeIcons(PageWriter& page, const QStringList& names, int firstRow) {
    QStringList cells;
    for (int i = 0; i < names.size(); ++i)
        cells.append(PhotoIconCell(names.at(i), i));
    const int count = int(cells.size());
    for (int row = firstRow; row < firstRow + kRowsPerPage; ++row) {
        const int start = kCellsPerRow * row;
        if (start <= count) IconRow(page, start, cells, count);
    }
}

void writePictures(PageWriter& page, const QStringList& names, int first) {
    page.WritePageLine(QStringLiteral("<p align=\"center\">\u3000</p>"));
    page.WritePageLine(QStringLiteral(
        "<table border=\"0\" width=\"800\" id=\"table1\" cellspacing=\"0\" cellpadding=\"0\">"));
    const int count = int(names.size());
    for (int i = first; i < count; ++i)
        page.WritePageLine(PictureBlock(names.at(i), i, count));
    page.WritePageLine(QStringLiteral("</table>"));
}

// Every Windows Media clip, then every AVI clip, in a player of its own.
void writeClips(PageWriter& page, const QString& itemFolder) {
    for (const char* suffix : {".wmv", ".avi"})
        for (const QString& clip : FilesEndingIn(itemFolder, QLatin1String(suffix)))
            page.WritePageLine(BuildPlayerHtml(QString(), clip, QString(), QStringLiteral("True"),
                                               kPlayerWidth, kPlayerHeight));
}

bool holdsExactName(const QString& folder, const QString& name) {
    return QDir(folder).entryList({name}, QDir::Files | QDir::Hidden).contains(name);
}

// The gallery links "photo.html": where the file system tells it from "Photo.html", the page
// is there under both names. The saved page's place is taken only when it is empty.
bool writeOtherNames(const QString& itemFolder, QString* error) {
    QFile written(itemFolder + QStringLiteral("Photo.html"));
    if (!written.open(QIODevice::ReadOnly)) {
        if (error)
            *error =
                ToNativePath(written.fileName()) + QStringLiteral(": ") + written.errorString();
        return false;
    }
    const QByteArray bytes = written.readAll();
    const QString lower = itemFolder + QStringLiteral("photo.html");
    if ((!QFile::exists(lower) || holdsExactName(itemFolder, QStringLiteral("photo.html"))) &&
        !WriteFileAtomically(lower, bytes, error))
        return false;
    const QString index = itemFolder + QStringLiteral("index.html");
    return QFile::exists(index) || WriteFileAtomically(index, bytes, error);
}

} // namespace

std::optional<QStringList> PictureList(const QString& copyFolder, QString* error) {
    QStringList names;
    for (const QString& name : FilesEndingIn(copyFolder, QStringLiteral(".jpg")))
        if (!name.toLower().contains(QLatin1String("qmr"))) names.append(name);
    if (names.size() <= kMostPicturesListed) return names;
    if (error)
        *error = QStringLiteral("%1 holds %2 pictures; a photo page lists at most %3. Move some "
                                "of them into another item.")
                     .arg(ToNativePath(copyFolder))
                     .arg(names.size())
                     .arg(kMostPicturesListed);
    return std::nullopt;
}

QString PictureBlock(const QString& fileName, int index, int count) {
    const int previous = index == 0 ? count - 1 : index - 1;
    const int next = index == count - 1 ? 0 : index + 1;
    const QString nextLink = QStringLiteral("<a href=\"#PIC(%1)\">").arg(next);
    return QStringLiteral("  <tr>") + QStringLiteral("      <td>") +
           QStringLiteral("      <p align=\"right\">") +
           QStringLiteral("<a name=\"PIC(%1)\">%2/%3</a> ").arg(index).arg(index + 1).arg(count) +
           QStringLiteral("[<a href=\"./../qmr/PhotoIcons001.html\">All Photos</a>]") +
           QStringLiteral("[<a href=\"#PageTop\">Top</a>]") +
           QStringLiteral("[<a href=\"#PIC(%1)\">Previous</a>]").arg(previous) +
           QStringLiteral("[") + nextLink + QStringLiteral("Next</a>]") + QStringLiteral("</td>") +
           QStringLiteral("  </tr>") + QStringLiteral("  <tr>") + QStringLiteral("      <td>") +
           QStringLiteral("      <p align=\"center\">") + nextLink +
           QStringLiteral("      <img border=\"0\" src=\"./640x480/") + fileName +
           QStringLiteral("\" >") + QStringLiteral("</a>") + QStringLiteral("</td>") +
           QStringLiteral("  </tr>") + QStringLiteral("  <tr>") + QStringLiteral("      <td>") +
           QStringLiteral("      <p align=\"center\">") + fileName + QStringLiteral("</td>") +
           QStringLiteral("  </tr>");
}

bool BuildPhotoPage(const PageChrome& chrome, const QString& itemFolder, const CatalogueItem& item,
                    QString* error) {
    const std::optional<QStringList> icons = PictureList(itemFolder + kIconCopyFolder, error);
    const std::optional<QStringList> pictures =
        icons ? PictureList(itemFolder + kScreenCopyFolder, error) : std::nullopt;
    if (!pictures) return false;
    // Each part of 800 pictures used to be written over the one before; the last one stays.
    const int part = int(icons->size()) / kPicturesPerPage;
    const QString adverts = advertBlock(chrome);
    PageWriter page(chrome);
    page.OpenPage(itemFolder + QStringLiteral("Photo.html"));
    page.WritePageLine(
        HtmlHead(chrome, QStringLiteral("Photos for:") + item.title, QStringLiteral("BIG5")));
    page.WritePageLine(HtmlTitleBar(chrome, kPrefix));
    page.WritePageLine(HtmlNavigationBar(kPrefix));
    page.WritePageLine(QStringLiteral("<div align=\"center\">"));
    page.WritePageLine(adverts);
    page.WritePageLine(QStringLiteral("      <table border=\"0\" width=\"1000\" id=\"table110\">"));
    writeIcons(page, *icons, part * kRowsPerPage);
    page.WritePageLine(QStringLiteral("      </table>"));
    page.WritePageLine(adverts);
    writePictures(page, *pictures, part * kPicturesPerPage);
    writeClips(page, itemFolder);
    page.WritePageLine(QStringLiteral("  </div>"));
    return page.ClosePageWithFooter(error) && writeOtherNames(itemFolder, error);
}

} // namespace qmr
