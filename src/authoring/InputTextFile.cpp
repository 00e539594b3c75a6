#include "authoring/InputTextFile.h"

#include "platform/LocalCodePage.h"

#include <QFile>

namespace qmr {

bool ReadLocalInputLines(const QString& path, QStringList& lines, QString* error) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (error) *error = file.errorString();
        return false;
    }
    const QString text = LocalCodePage::decode(file.readAll());
    lines.clear();
    qsizetype start = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c != QLatin1Char('\r') && c != QLatin1Char('\n')) continue;
        lines.append(text.mid(start, i - start));
        if (c == QLatin1Char('\r') && i + 1 < text.size() && text.at(i + 1) == QLatin1Char('\n'))
            ++i;
        start = i + 1;
    }
    if (start < text.size()) lines.append(text.mid(start));
    return true;
}

} // namespace qmr
