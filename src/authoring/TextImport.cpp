#include "authoring/TextImport.h"

#include "authoring/CatalogueWriter.h"
#include "authoring/InputTextFile.h"
#include "catalogue/LocalTextFile.h"
#include "catalogue/PathSafety.h"
#include "catalogue/TextFiles.h"
#include "host/InputError.h"
#include "website/PageFragments.h"

#include <QDir>

namespace qmr {
namespace {

// The title table holds entries 0..10000; an entry's body lines 1..200 (line 0 stays empty).
constexpr int kMaxEntryIndex = 10000;
constexpr int kMaxBodyIndex = 200;
const QString kRootPrefix = QStringLiteral("./../../");

// One entry, closed by the separator line after it.
struct TextEntry {
    QString title;
    QStringList body;
};

QString trimBlanks(const QString& line) {
    const auto blank = [](QChar c) { return c == QLatin1Char(' ') || c == QLatin1Char('\t'); };
    qsizetype start = 0;
    qsizetype end = line.size();
    while (start < end && blank(line.at(start)))
        ++start;
    while (end > start && blank(line.at(end - 1)))
        --end;
    return line.mid(start, end - start);
}

QString escapeTitle(const QString& title) {
    QString escaped;
    for (QChar c : title) {
        if (c == QLatin1Char('"'))
            escaped += QStringLiteral("&quot;");
        else if (c == QLatin1Char('<'))
            escaped += QStringLiteral("&lt;");
        else if (c == QLatin1Char('>'))
            escaped += QStringLiteral("&gt;");
        else
            escaped += c;
    }
    return escaped;
}

bool refuse(InputError& error, const QString& path, int line, const QString& problem,
            const QString& advice) {
    error = InputError{path, line, problem, advice};
    return false;
}

// Splits the text into the entries its separator lines close. A separator sets the next
// non-blank line up as the title (and it is the entry's first body line as well); the text
// after the last separator closes no entry.
bool readEntries(const QString& path, const QStringList& lines, QList<TextEntry>& entries,
                 InputError& error) {
    QString title;
    bool titleFollows = false;
    QStringList body{QString()};
    for (int i = 0; i < lines.size(); ++i) {
        QString line = trimBlanks(lines.at(i));
        if (line.isEmpty()) continue;
        if (titleFollows) {
            if (line.startsWith(QLatin1Char('\''))) line.remove(0, 1);
            title = line;
        }
        if (!line.startsWith(QLatin1String("*****"))) {
            titleFollows = false;
            if (body.size() > kMaxBodyIndex)
                return refuse(error, path, i + 1,
                              QStringLiteral("the entry has more than %1 lines").arg(kMaxBodyIndex),
                              QStringLiteral("Split it with a line of \"*****\""));
            body.append(line);
            continue;
        }
        titleFollows = true;
        if (entries.size() > kMaxEntryIndex)
            return refuse(
                error, path, i + 1,
                QStringLiteral("the text has more than %1 entries").arg(kMaxEntryIndex + 1),
                QStringLiteral("Split it into several files and import each"));
        title = escapeTitle(title);
        entries.append({title, body});
        body = QStringList{QString()};
    }
    return true;
}

QString navigationLine(const QString& prevId, const QString& nextId) {
    return QStringLiteral("        <p align=\"right\"><b>[<a href=\"../") + prevId +
           QStringLiteral("/index.html\">上一篇</a>][<a href=\"../") + nextId +
           QStringLiteral("/index.html\">下一篇</a>]</b></p></td>");
}

} // namespace

bool WriteTextEntryPage(const PageChrome& chrome, const QString& base, const QString& id,
                        const QString& title, const QStringList& bodyLines, const QString& prevId,
                        const QString& nextId, QString* error) {
    if (!IsSafePathComponent(id)) {
        if (error) *error = QStringLiteral("\"%1\" is not an entry identifier").arg(id);
        return false;
    }
    const QString folder = base + QStringLiteral("data/") + id + QLatin1Char('/');
    QDir().mkpath(folder);
    LocalTextFile page(folder + QStringLiteral("index.html"));
    page.writeLine(HtmlHead(chrome, title, QStringLiteral("BIG5")));
    page.writeLine(HtmlTitleBar(chrome, kRootPrefix));
    page.writeLine(HtmlNavigationBar(kRootPrefix));
    page.writeLine(QStringLiteral("<table id=\"table1\" border=\"0\" cellpadding=\"0\" "
                                  "cellspacing=\"0\" height=\"376\" width=\"100%\">"));
    page.writeLine(QStringLiteral("    <tbody><tr>"));
    page.writeLine(QStringLiteral("        <td rowspan=\"4\" background=\"../qmr/bl.jpg\" "
                                  "height=\"376\" width=\"27\">　</td>"));
    page.writeLine(QStringLiteral("        <td align=\"left\" bgcolor=\"#ffffff\" height=\"20\" "
                                  "valign=\"top\" colspan=\"2\"><b>&nbsp; </b><hr></td>"));
    page.writeLine(QStringLiteral("        <td rowspan=\"4\" background=\"../qmr/br.jpg\" "
                                  "height=\"376\" width=\"16\">　</td>"));
    page.writeLine(QStringLiteral("    </tr>"));
    page.writeLine(QStringLiteral("        <tr>"));
    page.writeLine(QStringLiteral(
        "        <td align=\"left\" bgcolor=\"#ffffff\" height=\"19\" valign=\"top\"><b>"));
    page.writeLine(QStringLiteral("        <font size=\"4\">　</font><font size=\"5\">") + title +
                   QStringLiteral("</font></b></td>"));
    page.writeLine(QStringLiteral(
        "        <td align=\"left\" bgcolor=\"#ffffff\" height=\"19\" valign=\"top\">"));
    page.writeLine(navigationLine(prevId, nextId));
    page.writeLine(QStringLiteral("    </tr>"));
    page.writeLine(QStringLiteral("        <tr>"));
    page.writeLine(QStringLiteral("        <td align=\"left\" bgcolor=\"#ffffff\" height=\"294\" "
                                  "valign=\"top\" colspan=\"2\">"));
    for (const QString& line : bodyLines)
        page.writeLine(QStringLiteral("&nbsp;&nbsp;&nbsp;") + line + QStringLiteral("<br><br>"));
    page.writeLine(QStringLiteral("&nbsp;</td>"));
    page.writeLine(QStringLiteral("    </tr>"));
    page.writeLine(QStringLiteral("        <tr>"));
    page.writeLine(QStringLiteral("        <td align=\"left\" bgcolor=\"#ffffff\" height=\"21\" "
                                  "valign=\"top\" colspan=\"2\">"));
    page.writeLine(navigationLine(prevId, nextId));
    page.writeLine(QStringLiteral("    </tr>"));
    page.writeLine(QStringLiteral("</tbody></table>"));
    page.writeLine(HtmlFooter(chrome, kRootPrefix));
    return page.commit(error);
}

ImportResult ImportTextToScrapbook(const AuthoringContext& context, const QString& base) {
    ImportResult result;
    result.scrapbookFolder = AddBackslash(QDir::fromNativeSeparators(base));
    const QString path = result.scrapbookFolder + QStringLiteral("data.txt");
    QStringList lines;
    QString reason;
    if (!ReadLocalInputLines(path, lines, &reason)) {
        result.problem =
            InputError{path, 0, QStringLiteral("cannot read the text to import (%1)").arg(reason),
                       QStringLiteral("Put the text in data.txt in that folder, "
                                      "entries separated by lines of \"*****\"")}
                .text();
        return result;
    }
    QList<TextEntry> entries;
    InputError error;
    if (!readEntries(path, lines, entries, error)) {
        result.problem = error.text();
        return result;
    }

    QStringList titles;
    for (int e = 0; e < entries.size(); ++e) {
        const TextEntry& entry = entries.at(e);
        titles.append(entry.title);
        context.host.add2loglist(QString::number(e) + QStringLiteral("=>") + entry.title);
        if (!WriteTextEntryPage(context.chrome, result.scrapbookFolder, ImportEntryId(e),
                                entry.title, entry.body, ImportEntryId(e - 1), ImportEntryId(e + 1),
                                &reason)) {
            result.problem = reason + QStringLiteral(". Make the folder writable");
            return result;
        }
        ++result.pagesWritten;
        context.host.yield();
        if (context.host.cancelled()) {
            result.problem = CancelledProblem();
            return result;
        }
    }
    // The last page written is left out of the catalogue.
    const int lastListed = int(entries.size()) - 2;
    if (!ImportedTextCatalogue(titles, lastListed).Save(result.scrapbookFolder, &reason)) {
        result.problem = reason + QStringLiteral(". Make the folder writable");
        return result;
    }
    result.catalogued = qMax(lastListed + 1, 0);
    result.ok = true;
    return result;
}

} // namespace qmr
