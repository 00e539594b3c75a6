#include "catalogue/IndexDat.h"

#include "catalogue/TextFiles.h"

namespace qmr {

QString ReadIndexDatTitle(const QString& path) {
    const QString text = ReadUtf8File(path);
    const qsizetype t = text.indexOf(QLatin1String("title")) + 1; // 1-based, 0 for none
    const qsizetype c = text.indexOf(QLatin1String("chars")) + 1;
    const qsizetype length = c - t - 7;
    if (t == 0 || c == 0 || length < 0) return QString();
    return text.mid(t + 6 - 1, length).trimmed();
}

} // namespace qmr
