#include "support/Golden.h"

#include "platform/LocalCodePage.h"
#include "support/TempFolder.h"

#include <QFileInfo>

void PrintTo(const QByteArray& bytes, std::ostream* os) {
    *os << '"' << QByteArray(bytes).replace('\r', "\\r").replace('\n', "\\n").toStdString() << '"';
}

namespace qmr::test {

QByteArray Golden(const QString& relative, const QByteArray& placeholder,
                  const QByteArray& replacement) {
    const QString path = QStringLiteral(QMR_GOLDEN_DIR "/") + relative;
    EXPECT_TRUE(QFileInfo(path).isFile()) << "missing golden file " << path.toStdString();
    QByteArray bytes = ReadBytes(path);
    if (!placeholder.isEmpty()) bytes.replace(placeholder, replacement);
    return bytes;
}

QByteArray Fixture(const QString& relative) {
    return ReadBytes(QStringLiteral(QMR_SOURCE_DIR "/tests/fixtures/") + relative);
}

::testing::AssertionResult SameText(const QByteArray& expected, const QByteArray& actual) {
    if (expected == actual) return ::testing::AssertionSuccess();
    if (expected.isEmpty()) return ::testing::AssertionFailure() << "no expected bytes";
    const QList<QByteArray> want = expected.split('\n');
    const QList<QByteArray> got = actual.split('\n');
    for (qsizetype i = 0;; ++i) {
        const QByteArray w = i < want.size() ? want.at(i) : QByteArray("<none>");
        const QByteArray g = i < got.size() ? got.at(i) : QByteArray("<none>");
        if (w != g)
            return ::testing::AssertionFailure()
                   << "line " << i + 1 << "\n  expected: " << LocalCodePage::decode(w).toStdString()
                   << "\n  actual:   " << LocalCodePage::decode(g).toStdString();
    }
}

} // namespace qmr::test
