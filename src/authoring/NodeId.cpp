#include "authoring/NodeId.h"

#include "catalogue/TextFiles.h"
#include "platform/LocalCodePage.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace qmr {
namespace {

QString lastDigits(const QString& zeros, qint64 value) {
    const QString text = zeros + QString::number(value);
    return text.right(zeros.size());
}

QString readFirstLine(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return QString();
    const QStringList lines = SplitLocalLines(LocalCodePage::decode(file.readAll()));
    return lines.isEmpty() ? QString() : lines.first();
}

// The numeric value of the last six characters; 0 when they are not six digits.
int counterOf(const QString& id) {
    const QString tail = id.right(6);
    if (tail.size() != 6) return 0;
    for (QChar c : tail)
        if (c < QLatin1Char('0') || c > QLatin1Char('9')) return 0;
    return tail.toInt();
}

} // namespace

QString FormatNodeID(int counter, const QDate& date) {
    return lastDigits(QStringLiteral("0000"), date.year()) +
           lastDigits(QStringLiteral("00"), date.month()) +
           lastDigits(QStringLiteral("00"), date.day()) +
           lastDigits(QStringLiteral("000000"), counter);
}

NodeIdGenerator::NodeIdGenerator(QString applicationFolder)
    : m_counterFile(std::move(applicationFolder) + QStringLiteral("NodeID.txt")) {}

QString NodeIdGenerator::NewNodeID(const QDate& today, QString* error) {
    const QString first = FormatNodeID(0, today);
    QString next = first;
    if (QFile::exists(m_counterFile)) {
        const QString last = readFirstLine(m_counterFile);
        if (last.left(8) == first.left(8)) next = FormatNodeID(counterOf(last) + 1, today);
    }
    QDir().mkpath(QFileInfo(m_counterFile).absolutePath());
    if (!WriteFileAtomically(m_counterFile, LocalCodePage::encode(next + QStringLiteral("\r\n")),
                             error))
        return QString();
    return next;
}

} // namespace qmr
