#include "ebook/ContentSkins.h"

namespace qmr {

QStringList KioskSkinHeader(const PageChrome& chrome) {
    return {
        QStringLiteral("<table border=\"0\" width=\"100%\" cellspacing=\"0\" cellpadding=\"0\" "
                       "bgcolor=\"#1F4E79\">"),
        QStringLiteral("  <tr>"),
        QStringLiteral("    <td width=\"114\" height=\"116\" bgcolor=\"#1F4E79\" align=\"center\">"
                       "<a href=\"") +
            chrome.addresses.projectHomePage +
            QStringLiteral("\"><img border=\"0\" src=\"logo.gif\" width=\"114\" height=\"116\" "
                           "alt=\"Quillmere\" style=\"color: #FFFFFF\"></a></td>"),
        QStringLiteral("    <td background=\"topbg_right.gif\" bgcolor=\"#2E75B6\" "
                       "align=\"left\" valign=\"middle\">&nbsp;<font size=\"6\" "
                       "color=\"#FFFFFF\"><b>") +
            chrome.scrapbookName + QStringLiteral("</b></font></td>"),
        QStringLiteral("  </tr>"),
        QStringLiteral("</table>"),
        QStringLiteral("<table border=\"0\" width=\"100%\" cellspacing=\"0\" cellpadding=\"0\">"),
        QStringLiteral("  <tr>"),
        QStringLiteral("    <td height=\"28\" background=\"topbg.gif\" bgcolor=\"#9DC3E6\">"
                       "&nbsp;</td>"),
        QStringLiteral("  </tr>"),
        QStringLiteral("</table>"),
        QStringLiteral("<br>"),
        QStringLiteral("<table border=\"0\" width=\"90%\" align=\"center\" cellspacing=\"0\" "
                       "cellpadding=\"8\" bgcolor=\"#FFFFFF\" "
                       "style=\"border: 1px solid #9DC3E6\">"),
        QStringLiteral("  <tr>"),
        QStringLiteral("    <td bgcolor=\"#DEEBF7\" align=\"left\"><font size=\"4\" "
                       "color=\"#1F4E79\"><b>Content View</b></font></td>"),
        QStringLiteral("  </tr>"),
        QStringLiteral("  <tr>"),
        QStringLiteral("    <td align=\"left\" valign=\"top\">"),
    };
}

QStringList KioskSkinClosing(const PageChrome& chrome) {
    return {
        QStringLiteral("    </td>"),
        QStringLiteral("  </tr>"),
        QStringLiteral("</table>"),
        QStringLiteral("<br>"),
        QStringLiteral("<table border=\"0\" width=\"100%\" cellspacing=\"0\" cellpadding=\"0\">"),
        QStringLiteral("  <tr>"),
        QStringLiteral("    <td height=\"32\" background=\"foot-bg.gif\" bgcolor=\"#1F4E79\" "
                       "align=\"center\"><font size=\"2\" color=\"#FFFFFF\">") +
            chrome.scrapbookName + QStringLiteral("</font></td>"),
        QStringLiteral("    <td width=\"12\" background=\"right-bg.gif\" bgcolor=\"#163A5C\">"
                       "<img border=\"0\" src=\"right-1.gif\" width=\"12\" height=\"32\" "
                       "alt=\"\"></td>"),
        QStringLiteral("  </tr>"),
        QStringLiteral("</table>"),
        QStringLiteral("<a name=\"#bottom\"></a>"),
    };
}

QStringList LogitechSkinHeader(const PageChrome& chrome) {
    return {
        QStringLiteral("<style type=\"text/css\">#D5title { font: bold 16px Arial, sans-serif; "
                       "color: #333333; padding: 6px 8px; text-align: left; }</style>"),
        QStringLiteral("<div align=\"center\">"),
        QStringLiteral("<table border=\"0\" width=\"100%\" cellspacing=\"0\" cellpadding=\"0\" "
                       "bgcolor=\"#333333\"><tbody>"),
        QStringLiteral("  <tr>"),
        QStringLiteral("    <td width=\"61\" height=\"52\" bgcolor=\"#333333\"><a href=\"") +
            chrome.addresses.makerSite +
            QStringLiteral("\"><img border=\"0\" src=\"logo.jpg\" width=\"61\" height=\"52\" "
                           "alt=\"Home\" style=\"color: #FFFFFF\"></a></td>"),
        QStringLiteral("    <td background=\"strip_bg5_333333.gif\" bgcolor=\"#333333\" "
                       "align=\"left\"><img border=\"0\" src=\"strip5_a_util.jpg\" alt=\"\">"
                       "</td>"),
        QStringLiteral("    <td background=\"strip_bg5_333333.gif\" bgcolor=\"#333333\" "
                       "align=\"right\"><font size=\"4\" color=\"#FFFFFF\"><b>") +
            chrome.scrapbookName + QStringLiteral("</b></font>&nbsp;</td>"),
        QStringLiteral("  </tr>"),
        QStringLiteral("</tbody></table>"),
        QStringLiteral("<br>"),
        QStringLiteral("<table border=\"0\" width=\"90%\" cellspacing=\"0\" cellpadding=\"0\" "
                       "bgcolor=\"#FFFFFF\" style=\"border: 1px solid #CCCCCC\"><tbody>"),
        QStringLiteral("  <tr>"),
        QStringLiteral("    <td width=\"8\" background=\"d5_a.gif\" bgcolor=\"#E6E6E6\">"
                       "<img border=\"0\" src=\"spacer.gif\" width=\"8\" height=\"1\" alt=\"\">"
                       "</td>"),
        QStringLiteral("    <td background=\"d5_b.gif\" bgcolor=\"#E6E6E6\" align=\"left\">"),
        QStringLiteral("<div id=\"D5title\"> Content View</div>"),
        QStringLiteral("    </td>"),
        QStringLiteral("  </tr>"),
        QStringLiteral("  <tr>"),
        QStringLiteral("    <td colspan=\"2\" height=\"1\" "
                       "background=\"grey_table_background_line.gif\" bgcolor=\"#CCCCCC\">"
                       "<img border=\"0\" src=\"spacer.gif\" width=\"1\" height=\"1\" alt=\"\">"
                       "</td>"),
        QStringLiteral("  </tr>"),
        QStringLiteral("  <tr>"),
        QStringLiteral("    <td colspan=\"2\" align=\"left\" valign=\"top\" "
                       "style=\"padding: 8px\">"),
    };
}

QStringList LogitechSkinClosing() {
    return {
        QStringLiteral("    </td>"),
        QStringLiteral("  </tr>"),
        QStringLiteral("  <tr>"),
        QStringLiteral("    <td colspan=\"2\" height=\"1\" "
                       "background=\"grey_table_background_line.gif\" bgcolor=\"#CCCCCC\">"
                       "<img border=\"0\" src=\"spacer.gif\" width=\"1\" height=\"1\" alt=\"\">"
                       "</td>"),
        QStringLiteral("  </tr>"),
        QStringLiteral("</tbody></table>"),
        QStringLiteral("</div>"),
    };
}

} // namespace qmr
