#include "ebook/Sitemap.h"

#include "catalogue/LocalTextFile.h"
#include "website/PageFragments.h"

#include <QStringBuilder>

namespace qmr {
namespace {

enum class SitemapKind { Contents, Index };

constexpr int kFolderImage = 1;
constexpr int kSavedCopyImage = 11;
constexpr int kSourceImage = 15;

QString savedCopy(const QString& id) {
    return QStringLiteral("data/") + id + QStringLiteral("/index.html");
}

QString charsetLine(EbookLanguage language) {
    switch (language) {
    case EbookLanguage::ChineseTraditional:
        return QStringLiteral(
            "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=Big5\">");
    case EbookLanguage::ChineseSimplified:
        return QStringLiteral(
            "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=gb2312\">");
    default:
        return QString();
    }
}

void writeWindowStyles(LocalTextFile& file, EbookLanguage language) {
    if (language == EbookLanguage::ChineseSimplified) {
        file.writeLine(QStringLiteral("     <param name=\"Window Styles\" value=\"0x800020\">"));
        file.writeLine(QStringLiteral("     <param name=\"Font\" value=\",8,134\">"));
    } else {
        file.writeLine(QStringLiteral("     <param name=\"Window Styles\" value=\"0x800027\">"));
    }
}

// The head both sitemap files share; the index puts its character set first, joins
// "</HEAD><BODY>" and names no font.
void writeSitemapHead(LocalTextFile& file, EbookLanguage language, SitemapKind kind) {
    const QString charset = charsetLine(language);
    const bool contents = kind == SitemapKind::Contents;
    file.writeLine(QStringLiteral("<!DOCTYPE HTML PUBLIC \"-//IETF//DTD HTML//EN\">"));
    file.writeLine(QStringLiteral("<HTML>"));
    file.writeLine(QStringLiteral("<HEAD>"));
    if (!contents && !charset.isEmpty()) file.writeLine(charset);
    file.writeLine(QStringLiteral(
        "<meta name=\"GENERATOR\" content=\"Microsoft&reg; HTML Help Workshop 4.1\">"));
    if (contents && !charset.isEmpty()) file.writeLine(charset);
    file.writeLine(QStringLiteral("<!-- Sitemap 1.0 -->"));
    if (contents) {
        file.writeLine(QStringLiteral("</HEAD>"));
        file.writeLine(QStringLiteral("<BODY>"));
    } else {
        file.writeLine(QStringLiteral("</HEAD><BODY>"));
    }
    file.writeLine(QStringLiteral("   <OBJECT type=\"text/site properties\">"));
    writeWindowStyles(file, language);
    // The font is 新細明體 (PMingLiU), at 10 points, in the Big5 character set (136).
    if (contents && language == EbookLanguage::ChineseTraditional)
        file.writeLine(
            QStringLiteral("     <param name=\"Font\" value=\"\u65B0\u7D30\u660E\u9AD4,10,136\">"));
    file.writeLine(QStringLiteral("     <param name=\"comment\" value=\"title:Online Help\">"));
    file.writeLine(QStringLiteral("     <param name=\"comment\" value=\"base:index.htm\">"));
    file.writeLine(QStringLiteral("   </OBJECT>"));
}

// The index entry of a placed item; folders and unknown types have none.
void writeIndexEntry(const EbookContext& build, LocalTextFile& file, const CatalogueItem& item) {
    if (item.kind == ItemKind::Bookmark) {
        WritePageEntry(file, item.title, item.source, kSavedCopyImage);
    } else if (item.hasSavedPage()) {
        const bool toSource = build.options.linkToSourceURL && !item.source.isEmpty() &&
                              !item.source.startsWith(QLatin1String("file"));
        WritePageEntry(file, item.title, toSource ? item.source : savedCopy(item.id),
                       kSavedCopyImage);
    }
}

const QString kContentFontSize = QStringLiteral("2");
// Content entries of folders keep the link they are given (none), so they link their folder
// page; pages choose theirs.
constexpr int kFolderContentMode = 2;
// How often the table of contents lets the window repaint.
constexpr std::size_t kStepsPerYield = 256;

void contentEntry(EbookContext& build, const WalkStep& step, int mode) {
    QString link;
    build.content.ContentItemEntry(build.catalogue, step.level, step.item, link, kContentFontSize,
                                   mode, build.options.makeChmFile, &build.forum);
}

// A placed item's entries: the table of contents, the content page and the forum post.
void writePlacedItem(EbookContext& build, LocalTextFile& file, const WalkStep& step) {
    const CatalogueItem& item = build.catalogue.items.at(step.item);
    const int pageMode = build.options.linkToSourceURL ? 1 : 0;
    if (item.isFolder()) {
        if (!item.isPrivate()) contentEntry(build, step, kFolderContentMode);
    } else if (item.kind == ItemKind::Bookmark) {
        WriteTocPageEntry(build, file, step.item, true);
        contentEntry(build, step, pageMode);
    } else if (item.hasSavedPage()) {
        WriteTocPageEntry(build, file, step.item, false);
        contentEntry(build, step, pageMode);
    }
}

} // namespace

// Each entry is written as one piece, its lines joined by CR LF: a book has thousands.
void WriteFolderEntry(LocalTextFile& file, const QString& title, int imageNumber) {
    file.writeLine(QLatin1String("      <LI><OBJECT type=\"text/sitemap\">\r\n"
                                 "            <param name=\"Name\" value=\"") %
                   title %
                   QLatin1String("\">\r\n            <param name=\"ImageNumber\" value=\"") %
                   QString::number(imageNumber) % QLatin1String("\">\r\n          </OBJECT>"));
}

void WritePageEntry(LocalTextFile& file, const QString& name, const QString& target,
                    int imageNumber) {
    file.writeLine(QLatin1String("         <UL>\r\n"
                                 "            <LI><OBJECT type=\"text/sitemap\">\r\n"
                                 "                  <param name=\"Name\" value=\"") %
                   name % QLatin1String("\">\r\n                  <param name=\"Local\" value=\"") %
                   target %
                   QLatin1String("\">\r\n                  <param name=\"ImageNumber\" value=\"") %
                   QString::number(imageNumber) %
                   QLatin1String("\">\r\n                </OBJECT>\r\n         </UL>"));
}

void WriteTocPageEntry(const EbookContext& build, LocalTextFile& file, int index, bool useSource) {
    if (build.options.linkToSourceURL) useSource = true;
    const CatalogueItem& item = build.catalogue.items.at(index);
    if (useSource)
        WritePageEntry(file, item.title, item.source, kSourceImage);
    else
        WritePageEntry(file, item.title, savedCopy(item.id), kSavedCopyImage);
}

bool HHC(EbookContext& build, const QString& path, QString* error) {
    LocalTextFile file(path);
    writeSitemapHead(file, build.options.language, SitemapKind::Contents);
    for (const QString& line : build.walk.skipped())
        build.host.add2loglist(line);
    std::size_t done = 0;
    for (const WalkStep& step : build.walk.steps()) {
        switch (step.kind) {
        case WalkStep::Kind::Place:
            writePlacedItem(build, file, step);
            break;
        case WalkStep::Kind::Enter:
            file.writeLine(QStringLiteral("   <UL>"));
            WriteFolderEntry(file, build.catalogue.items.at(step.item).title, kFolderImage);
            break;
        case WalkStep::Kind::Leave:
            file.writeLine(QStringLiteral("      </UL>"));
            break;
        }
        if (++done % kStepsPerYield == 0) {
            build.host.yield();
            if (build.host.cancelled()) {
                if (error) *error = CancelledProblem();
                return false;
            }
        }
    }
    if (!build.walk.ok()) {
        if (error) *error = build.walk.error();
        return false;
    }
    file.writeLine(HtmlFooter(build.chrome, QStringLiteral("./")));
    return file.commit(error);
}

bool hhk2(const EbookContext& build, const QString& path, QString* error) {
    LocalTextFile file(path);
    writeSitemapHead(file, build.options.language, SitemapKind::Index);
    file.writeLine(QStringLiteral("<UL>"));
    const Catalogue& catalogue = build.catalogue;
    for (int i = 0; i < catalogue.itemCount && i < catalogue.items.size(); ++i) {
        const CatalogueItem& item = catalogue.items.at(i);
        // An item without a title gives no keyword: an empty keyword can crash the compiler's
        // binary index.
        if (build.walk.placed(i) && !item.title.isEmpty()) writeIndexEntry(build, file, item);
    }
    file.writeLine(QStringLiteral("      </UL>"));
    file.writeLine(HtmlFooter(build.chrome, QStringLiteral("./")));
    return file.commit(error);
}

} // namespace qmr
