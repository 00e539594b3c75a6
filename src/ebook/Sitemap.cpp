#include "ebook/Sitemap.h"

#include "catalogue/LocalTextFile.h"
#include "catalogue/PathSafety.h"
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

bool isIndexedPageType(const QString& type) {
    return type == u"note" || type.isEmpty() || type == u"site" || type == u"file" ||
           type == u"image" || type == u"marked";
}

// The index entry of a placed item; folders and unknown types have none.
void writeIndexEntry(const EbookContext& build, LocalTextFile& file, const CatalogueItem& item) {
    if (item.type == u"bookmark") {
        WritePageEntry(file, item.title, item.source, kSavedCopyImage);
    } else if (isIndexedPageType(item.type)) {
        const bool toSource = build.options.linkToSourceURL && !item.source.isEmpty() &&
                              !item.source.startsWith(QLatin1String("file"));
        WritePageEntry(file, item.title, toSource ? item.source : savedCopy(item.id),
                       kSavedCopyImage);
    }
}

} // namespace

void WriteFolderEntry(LocalTextFile& file, const QString& title, int imageNumber) {
    file.writeLine(QStringLiteral("      <LI><OBJECT type=\"text/sitemap\">"));
    file.writeLine(QStringLiteral("            <param name=\"Name\" value=\"") % title %
                   QStringLiteral("\">"));
    file.writeLine(QStringLiteral("            <param name=\"ImageNumber\" value=\"") %
                   QString::number(imageNumber) % QStringLiteral("\">"));
    file.writeLine(QStringLiteral("          </OBJECT>"));
}

void WritePageEntry(LocalTextFile& file, const QString& name, const QString& target,
                    int imageNumber) {
    file.writeLine(QStringLiteral("         <UL>"));
    file.writeLine(QStringLiteral("            <LI><OBJECT type=\"text/sitemap\">"));
    file.writeLine(QStringLiteral("                  <param name=\"Name\" value=\"") % name %
                   QStringLiteral("\">"));
    file.writeLine(QStringLiteral("                  <param name=\"Local\" value=\"") % target %
                   QStringLiteral("\">"));
    file.writeLine(QStringLiteral("                  <param name=\"ImageNumber\" value=\"") %
                   QString::number(imageNumber) % QStringLiteral("\">"));
    file.writeLine(QStringLiteral("                </OBJECT>"));
    file.writeLine(QStringLiteral("         </UL>"));
}

void WriteTocPageEntry(EbookContext& build, LocalTextFile& file, int index, bool useSource) {
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
    build.walk = WalkState{};
    if (!WalkCatalogueTree(build, file, QStringLiteral("root"), error)) return false;
    file.writeLine(HtmlFooter(build.chrome, QStringLiteral("./")));
    return file.commit(error);
}

bool hhk2(EbookContext& build, const QString& path, QString* error) {
    LocalTextFile file(path);
    writeSitemapHead(file, build.options.language, SitemapKind::Index);
    file.writeLine(QStringLiteral("<UL>"));
    const Catalogue& catalogue = build.catalogue;
    for (int i = 0; i < catalogue.itemCount && i < catalogue.items.size(); ++i) {
        const CatalogueItem& item = catalogue.items.at(i);
        // The walk places only items whose identifiers can name their folders. An item without
        // a title gives no keyword: an empty keyword can crash the compiler's binary index.
        if (item.placed && IsSafePathComponent(item.id) && !item.title.isEmpty())
            writeIndexEntry(build, file, item);
    }
    file.writeLine(QStringLiteral("      </UL>"));
    file.writeLine(HtmlFooter(build.chrome, QStringLiteral("./")));
    return file.commit(error);
}

} // namespace qmr
