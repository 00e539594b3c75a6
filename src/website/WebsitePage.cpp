#include "website/WebsitePage.h"

#include "website/PageFragments.h"
#include "website/PageWriter.h"

namespace qmr {

QString AdvertLine(const PageChrome& chrome) {
    QString text;
    AppendAdvertBlock(chrome, text);
    return text;
}

void OpenWebsitePage(PageWriter& page, const PageChrome& chrome, const QString& path,
                     const QString& title) {
    const QString prefix = QStringLiteral("./../../");
    page.OpenPage(path);
    page.WritePageLine(HtmlHead(chrome, title, QStringLiteral("BIG5")));
    page.WritePageLine(HtmlTitleBar(chrome, prefix));
    page.WritePageLine(HtmlNavigationBar(prefix));
    page.WritePageLine(QStringLiteral("<div align=\"center\">"));
    page.WritePageLine(AdvertLine(chrome));
}

} // namespace qmr
