#include "website/VideoPage.h"

#include "catalogue/LocalTextFile.h"
#include "website/PageFragments.h"

#include <QDir>
#include <QFileInfo>

namespace qmr {
namespace {

// The player's settings that never change, between its address and autoStart.
const char* const kLeadingParams = "<param name=\"rate\" value=\"1\">"
                                   "<param name=\"balance\" value=\"0\">"
                                   "<param name=\"currentPosition\" value=\"True\">"
                                   "<param name=\"defaultFrame\" value=\"10\">"
                                   "<param name=\"playCount\" value=\"9999\">";

// The rest of them; a bare `value` leaves the setting to the player.
const char* const kTrailingParams = "<param name=\"currentMarker\" value=\"50\">"
                                    "<param name=\"invokeURLs\" value=\"-1\">"
                                    "<param name=\"baseURL\" value>"
                                    "<param name=\"volume\" value=\"50\">"
                                    "<param name=\"mute\" value=\"0\">"
                                    "<param name=\"uiMode\" value=\"full\">"
                                    "<param name=\"stretchToFit\" value=\"True\">"
                                    "<param name=\"windowlessVideo\" value=\"0\">"
                                    "<param name=\"enabled\" value=\"1\">"
                                    "<param name=\"enableContextMenu\" value=\"1\">"
                                    "<param name=\"fullScreen\" value=\"0\">"
                                    "<param name=\"SAMIStyle\" value>"
                                    "<param name=\"SAMILang\" value>"
                                    "<param name=\"SAMIFilename\" value>"
                                    "<param name=\"ShowControls\" value=\"True\">"
                                    "<param name=\"ShowStatusBar\" value=\"True\">"
                                    "<param name=\"ShowDisplay\" value=\"True\">"
                                    "<param name=\"captioningID\" value>"
                                    "<param name=\"enableErrorDialogs\" value=\"0\">"
                                    "<param name=\"AutoRewind\" value=\"True\">"
                                    "<param name=\"PreviewMode\" value=\"True\">";

constexpr int kPlayerWidth = 640;
constexpr int kPlayerHeight = 480;

} // namespace

QString BuildPlayerHtml(QString text, const QString& videoUrl, const QString& caption,
                        const QString& autoStart, int width, int height) {
    const QString w = QString::number(width);
    const QString h = QString::number(height);
    text += QStringLiteral("<table border=\"1\" width=\"100%\" id=\"table2\" cellspacing=\"0\" "
                           "cellpadding=\"0\">") +
            QStringLiteral("<tr>") + QStringLiteral("<td bgcolor=\"#000000\">") +
            QStringLiteral("<p align=\"center\">");
    text += QStringLiteral("<object classid=\"clsid:6BF52A52-394A-11d3-B153-00C04F79FAA6\"  "
                           "width=\"") +
            w + QStringLiteral("\" height=\"") + h + QStringLiteral("\">");
    text += QStringLiteral("<param name=\"URL\" ref value=\"") + videoUrl + QStringLiteral("\">");
    text += QLatin1String(kLeadingParams);
    text +=
        QStringLiteral("<param name=\"autoStart\" value=\"") + autoStart + QStringLiteral("\">");
    text += QLatin1String(kTrailingParams);
    text += QStringLiteral("<embed src=\"") + videoUrl +
            QStringLiteral("\" type=\"video/x-ms-wmv\"  width=\"") + w +
            QStringLiteral("\" height=\"") + h + QStringLiteral("\"") +
            QStringLiteral(" autoStart=\"") + autoStart +
            QStringLiteral("\" showControls=\"True\" stretchToFit=\"True\"   AutoRewind=\"True\" "
                           "playCount=\"9999\"></embed>");
    text += QStringLiteral("</object>") + QStringLiteral("</td>") + QStringLiteral("</tr>") +
            QStringLiteral("<tr>") + QStringLiteral("<td align=\"center\">") + caption +
            QStringLiteral("</td>") + QStringLiteral("</tr>") + QStringLiteral("</table>");
    return text;
}

bool WriteVideoPage(const PageChrome& chrome, const QString& pagePath, const QString& title,
                    const QString& videoUrl, QString* error) {
    const QString prefix = QStringLiteral("./../../");
    QDir().mkpath(QFileInfo(pagePath).path());
    LocalTextFile page(pagePath);
    page.writeLine(HtmlHead(chrome, title, QStringLiteral("BIG5")));
    page.writeLine(HtmlTitleBar(chrome, prefix));
    page.writeLine(HtmlNavigationBar(prefix));
    page.writeLine(QString());
    page.writeLine(QStringLiteral("<br>"));
    page.writeLine(QStringLiteral("</p>"));
    page.writeLine(QStringLiteral(
        "<table border=\"1\" width=\"100%\" id=\"table1\" cellspacing=\"0\" cellpadding=\"0\">"));
    page.writeLine(QStringLiteral("<tr>"));
    page.writeLine(QStringLiteral("<td align=\"center\" >"));
    page.writeLine(BuildPlayerHtml(QString(), videoUrl, QString(), QStringLiteral("True"),
                                   kPlayerWidth, kPlayerHeight));
    page.writeLine(QStringLiteral("</td>"));
    page.writeLine(QStringLiteral("</tr>"));
    page.writeLine(QStringLiteral("</table>"));
    page.writeLine(HtmlFooter(chrome, prefix));
    return page.commit(error);
}

} // namespace qmr
