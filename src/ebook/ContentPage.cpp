#include "ebook/ContentPage.h"

#include "catalogue/PathSafety.h"
#include "ebook/ContentSkins.h"
#include "ebook/ForumFile.h"
#include "website/PageFragments.h"
#include "website/SkinPictures.h"
#include "website/TypeIcons.h"

#include <QDir>
#include <QFileInfo>

namespace qmr {
namespace {

const QString kLogitechMarker = QStringLiteral("Quillmere_Content_Logitech");
const QString kKioskMarker = QStringLiteral("Quillmere_Content_kiosk");
const QString kPageTitle = QStringLiteral("Content View");
const QString kCharset = QStringLiteral("BIG5");
constexpr int kShownTitleLength = 80;

// The first item whose comment is exactly `marker`: the whole field, case and blanks included.
int markedItem(const Catalogue& catalogue, const QString& marker) {
    for (int i = 0; i < catalogue.itemCount && i < catalogue.items.size(); ++i)
        if (catalogue.items.at(i).comment == marker) return i;
    return -1;
}

QString savedCopy(const QString& id) {
    return QStringLiteral("data/") + id + QStringLiteral("/index.html");
}

// A link that cannot open in a reader's browser (local file, web mail, none) is replaced by
// the item's own page in the book.
bool unusableSource(const QString& source) {
    return source.startsWith(QLatin1String("file")) ||
           source.contains(QLatin1String("mail.google.com")) || source.isEmpty();
}

// Modes 0 and 1 choose the link; any other mode keeps the link as given. A ticked box makes
// every choosing mode link the saved copy. A bookmark has no saved copy: it links its address,
// as the table of contents does.
void chooseLink(const CatalogueItem& item, QString& link, int mode, bool savedCopyBox) {
    if (mode != 0 && mode != 1) return;
    if (item.kind == ItemKind::Bookmark) {
        link = item.source.trimmed();
        return;
    }
    if (savedCopyBox) mode = 1;
    const int savedCopyMode = savedCopyBox ? 1 : 0;
    if (mode == savedCopyMode) {
        link = savedCopy(item.id);
        return;
    }
    link = item.source.trimmed();
    if (unusableSource(link))
        link = item.isFolder() ? QStringLiteral("data/qmr/") + item.id + QStringLiteral(".html")
                               : savedCopy(item.id);
}

// Short titles gain "..." and long ones stand whole; the test is kept exactly as the page
// has always shown it.
QString shownTitle(const QString& title) {
    if (kShownTitleLength > title.size())
        return title.left(kShownTitleLength) + QStringLiteral("...");
    return title;
}

// The line that names the entry: a folder page in plain black, a bold title when there is no
// link at all, else a link.
QString entryLine(const QString& link, const QString& title, bool folderPage) {
    if (folderPage)
        return QStringLiteral("<a href=\"") + link +
               QStringLiteral("\"  style=\"text-decoration: none\"><font color=\"#000000\">") +
               title + QStringLiteral("</font></a> </font><br>");
    if (link.isEmpty()) return QStringLiteral("<b>") + title + QStringLiteral("</b></font><br>");
    return QStringLiteral("<a href=\"") + link + QStringLiteral("\">") + title +
           QStringLiteral("</a></font><br>");
}

} // namespace

void ContentPage::ChooseContentTemplate(const PageChrome& chrome, const Catalogue& catalogue,
                                        const QString& folder, const QString& contentMode,
                                        const QString& rootContentName) {
    m_chrome = &chrome;
    m_template = Template::NoPIC1;
    m_pagePath.clear();
    m_file = LocalTextFile();

    if (contentMode == u"ROOT_CONTENT") {
        m_pagePath = folder + rootContentName;
    } else {
        int marked = markedItem(catalogue, kLogitechMarker);
        Template chosen = Template::Logitech;
        if (marked < 0) {
            marked = markedItem(catalogue, kKioskMarker);
            chosen = Template::Kiosk;
        }
        if (marked < 0) return;
        const QString& id = catalogue.items.at(marked).id;
        // The page replaces the marked item's saved page; a name that leaves its folder gives
        // no page at all.
        if (!IsSafePathComponent(id)) return;
        m_template = chosen;
        m_pagePath = ItemFolder(folder, id) + QStringLiteral("index.html");
    }

    m_file.open(m_pagePath);
    m_file.writeLine(HtmlHead(chrome, kPageTitle, kCharset));
    // The decorated skins stand in an item folder two levels below the scrapbook, while every
    // entry links from the scrapbook's root ("data/<id>/index.html"): the base makes them meet.
    if (m_template != Template::NoPIC1)
        m_file.writeLine(QStringLiteral("<base href=\"./../../\">"));
    switch (m_template) {
    case Template::NoPIC1:
        m_file.writeLine(HtmlTitleBar(chrome, QStringLiteral("./")));
        m_file.writeLine(HtmlNavigationBar(QStringLiteral("./")));
        m_file.writeLine(QStringLiteral("<div align=\"Left\">"));
        break;
    case Template::Kiosk:
        for (const QString& line : KioskSkinHeader(chrome))
            m_file.writeLine(line);
        break;
    case Template::Logitech:
        for (const QString& line : LogitechSkinHeader(chrome))
            m_file.writeLine(line);
        break;
    }
}

void ContentPage::ContentItemEntry(const Catalogue& catalogue, int depth, int itemIndex,
                                   QString& link, const QString& fontSize, int mode,
                                   bool savedCopyBox, ForumFile* forum) {
    if (itemIndex < 0 || itemIndex >= catalogue.itemCount || itemIndex >= catalogue.items.size())
        return;
    const CatalogueItem& item = catalogue.items.at(itemIndex);
    chooseLink(item, link, mode, savedCopyBox);
    const QString title = shownTitle(item.title);

    // A folder without a link gets its folder page, handed back to the caller.
    const bool folderPage = link.isEmpty() && item.isFolder();
    if (folderPage) link = QStringLiteral("./data/qmr/") + item.id + QStringLiteral(".html");
    if (m_file.isOpen()) {
        // Four lines, written as one piece: a content page has thousands of entries.
        m_file.writeLine(QStringLiteral("&nbsp;").repeated(5 * qMax(depth, 0)) %
                         QLatin1String("\r\n") %
                         TypeIconTag(IconKindOf(item), QStringLiteral("data/qmr/")) %
                         QLatin1String("\r\n<font size=\"") % fontSize % QLatin1String("\">\r\n") %
                         entryLine(link, title, folderPage));
    }
    // The forum post lists the pages whether or not a content page is being written.
    if (forum) forum->writeLine(depth, title, link);
}

bool ContentPage::CloseContentPage(QString* error) {
    if (!m_file.isOpen()) return true;
    switch (m_template) {
    case Template::NoPIC1:
        for (const char* line :
             {"<hr>",
              "<table id=\"table2\" bgcolor=\"#99ccff\" border=\"0\" cellspacing=\"1\" "
              "width=\"100%\">",
              "  <tr>", "      <td>",
              "      <p align=\"center\"><b><font face=\"Times New Roman\" color=\"#000080\">",
              "   </td>", "  </tr>", "  </table>"})
            m_file.writeLine(QString::fromLatin1(line));
        break;
    case Template::Kiosk:
        for (const QString& line : KioskSkinClosing(*m_chrome))
            m_file.writeLine(line);
        break;
    case Template::Logitech:
        for (const QString& line : LogitechSkinClosing())
            m_file.writeLine(line);
        break;
    }
    m_file.writeLine(HtmlFooter(*m_chrome, QStringLiteral("./")));
    // The marked item's folder is where its saved page belongs, even when ScrapBook left none.
    const QString pageFolder = QFileInfo(m_file.path()).path() + QLatin1Char('/');
    QDir().mkpath(pageFolder);
    if (!m_file.commit(error)) return false;
    // The skins' pictures stand where the page's base address ("./../../") points.
    const QString baseFolder = QDir::cleanPath(pageFolder + QStringLiteral("../..")) + '/';
    if (m_template == Template::Kiosk)
        return WriteSkinPictures(baseFolder, KioskSkinPictures(), error);
    if (m_template == Template::Logitech)
        return WriteSkinPictures(baseFolder, LogitechSkinPictures(), error);
    return true;
}

} // namespace qmr
