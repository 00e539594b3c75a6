#pragma once

#include "support/TempFolder.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>

#include <ostream>

// Test failures show texts as UTF-8, and bytes as text with C escapes.
inline void PrintTo(const QString& text, std::ostream* os) {
    *os << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QByteArray& bytes, std::ostream* os) {
    *os << '"';
    for (const char c : bytes) {
        if (c == '\r')
            *os << "\\r";
        else if (c == '\n')
            *os << "\\n";
        else if (c == '\t')
            *os << "\\t";
        else
            *os << c;
    }
    *os << '"';
}

namespace qmr::test {

// A scrapbook below `root`: a scrapbook.rdf, `items` item folders in data/ (none: no data/)
// and, when `iniName` is given, a ScrapbookPrj.ini naming it (bytes in the local code page).
// Returns the folder, ending in "/".
inline QString MakeScrapbook(const TempFolder& root, const QString& relative, int items,
                             const QByteArray& iniName = QByteArray()) {
    const QString folder = root.path() + relative + QLatin1Char('/');
    root.write(relative + QStringLiteral("/scrapbook.rdf"), "<RDF:RDF/>\n");
    QDir data(folder + QStringLiteral("data"));
    if (items > 0) data.mkpath(data.path());
    for (int i = 0; i < items; ++i)
        data.mkdir(QStringLiteral("200803090%1").arg(i, 5, 10, QLatin1Char('0')));
    if (!iniName.isEmpty())
        root.write(relative + QStringLiteral("/ScrapbookPrj.ini"),
                   "[Scrapbook]\r\nScrapbookName=" + iniName + "\r\n");
    return folder;
}

// A golden file, with every `placeholder` replaced by `replacement`.
inline QByteArray Golden(const QString& relative, const QByteArray& placeholder = QByteArray(),
                         const QByteArray& replacement = QByteArray()) {
    QFile file(QStringLiteral(QMR_GOLDEN_DIR "/") + relative);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray("missing golden file ") + relative.toUtf8();
    QByteArray bytes = file.readAll();
    if (!placeholder.isEmpty()) bytes.replace(placeholder, replacement);
    return bytes;
}

} // namespace qmr::test
