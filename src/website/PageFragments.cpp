#include "website/PageFragments.h"

#include "catalogue/LocalTextFile.h"

#include <QStringList>

namespace qmr {

QString HtmlHead(const PageChrome& chrome, const QString& title, const QString& charset) {
    return QStringLiteral("<html>") + QStringLiteral("<head>") +
           QStringLiteral("<meta http-equiv=\"Content-Type\" content=\"text/html; charset=") +
           charset + QStringLiteral("\">") +
           QStringLiteral("<meta name=\"keywords\" content=\"Taiwan, MFC, Scrapbook, Video, \">") +
           QStringLiteral("<title>") + title + QStringLiteral("-(") + chrome.scrapbookName +
           QStringLiteral(")</title>") +
           QStringLiteral(
               "<link rel=\"stylesheet\" type=\"text/css\" href=\"index.css\" media=\"all\">") +
           QStringLiteral("</head>") +
           QStringLiteral("<body topmargin=\"0\" leftmargin=\"0\" rightmargin=\"0\" "
                          "bottommargin=\"0\" marginwidth=\"0\" marginheight=\"0\">") +
           QStringLiteral("<p align=\"center\">") + QStringLiteral("<div align=\"center\">");
}

QString HtmlTitleBar(const PageChrome& chrome, const QString& prefix) {
    return QStringLiteral("<table border=\"0\" width=\"100%\" id=\"table2\" cellspacing=\"0\" "
                          "cellpadding=\"0\" bgcolor=\"#0099FF\">") +
           QStringLiteral("  <tr>") + QStringLiteral("      <td><b>") +
           QStringLiteral("<a href=\"") + prefix +
           QStringLiteral("index.html\"><font size=\"4\" color=\"#FFFFFF\">") +
           chrome.scrapbookName + QStringLiteral("</font></a></b></td>") +
           QStringLiteral("  </tr>") + QStringLiteral("</table>");
}

namespace {

// One "[label]" link of the navigation bar, in white on the bar's blue.
QString navigationLink(const QString& prefix, const QString& target, const QString& label) {
    return QStringLiteral("[<a style=\"color: #FFFFFF\" href=\"") + prefix + target +
           QStringLiteral("\">") + label + QStringLiteral("</a>]");
}

} // namespace

QString HtmlNavigationBar(const QString& prefix) {
    return QStringLiteral("<div align=\"center\">") +
           QStringLiteral("  <table border=\"0\" width=\"100%\" id=\"table1\" cellspacing=\"0\">") +
           QStringLiteral("      <tr>") +
           QStringLiteral("          <td align=\"center\" bgcolor=\"#3399FF\">") +
           QStringLiteral("          <p align=\"left\"><b><font color=\"#FFFFFF\">") +
           QStringLiteral("<a name=\"PageTop\"></a> ") +
           navigationLink(prefix, QStringLiteral("index.html"), QStringLiteral("Content View")) +
           navigationLink(prefix, QStringLiteral("data/qmr/list.html"),
                          QStringLiteral("List View")) +
           navigationLink(prefix, QStringLiteral("data/qmr/PhotoIcons001.html"),
                          QStringLiteral("Photo View")) +
           navigationLink(prefix, QStringLiteral("data/qmr/PlayAllVideos.html"),
                          QStringLiteral("Videos")) +
           QStringLiteral("</font></b></td>") + QStringLiteral("      </tr>") +
           QStringLiteral("  </table>") + QStringLiteral("  </div>");
}

QString HtmlFooter(const PageChrome& chrome, const QString& prefix) {
    const SiteAddresses& site = chrome.addresses;
    return QStringLiteral("\u3000<hr>") + QStringLiteral("<div align=\"center\">") +
           QStringLiteral("<a href=\"") + prefix +
           QStringLiteral("index.html\"><font size=\"3\" >[") + chrome.scrapbookName +
           QStringLiteral("]</font>") + QStringLiteral("</a>") +
           QStringLiteral("<font size=\"2\" >  created by free ebook tool:<a href=\"") +
           site.projectHomePage + QStringLiteral("\">") +
           QStringLiteral("Quillmere</a> and <a href=\"") + site.makerSite + QStringLiteral("\">") +
           site.makerSite + QStringLiteral("</a></font>") + QStringLiteral("</BODY></HTML>");
}

void AppendAdvertBlock(const PageChrome& chrome, QString& text) {
    if (!chrome.advertising) return;
    const QStringList lines = {
        QStringLiteral("<!-- ***************************************** -->"),
        QStringLiteral("<script type=\"text/javascript\"><!--"),
        QStringLiteral("google_ad_client = \"") + chrome.addresses.adPublisherId +
            QStringLiteral("\";"),
        QStringLiteral("google_ad_width = 728;"),
        QStringLiteral("google_ad_height = 90;"),
        QStringLiteral("google_ad_format = \"728x90_as\";"),
        QStringLiteral("google_ad_type = \"text_image\";"),
        QStringLiteral("google_ad_channel = \"\";"),
        QStringLiteral("//-->"),
        QStringLiteral("</script>"),
        QStringLiteral("<script type=\"text/javascript\""),
        QStringLiteral("  src=\"") + chrome.addresses.adScript + QStringLiteral("\">"),
        QStringLiteral("</script>"),
    };
    for (const QString& line : lines)
        text += QStringLiteral("\r\n") + line;
}

bool WriteRedirectIndex(const PageChrome& chrome, const QString& folder, const QString& target,
                        QString* error) {
    LocalTextFile page(folder + QStringLiteral("index.html"));
    page.writeLine(QStringLiteral("<html><head><meta http-equiv=\"refresh\" content=\"0;URL=./") +
                   target + QStringLiteral("\"></head><body>"));
    page.writeLine(HtmlFooter(chrome, QStringLiteral("./")));
    return page.commit(error);
}

} // namespace qmr
