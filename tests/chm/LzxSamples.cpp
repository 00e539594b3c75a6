#include "chm/LzxSamples.h"

#include "support/TempFolder.h"

#include <QDirIterator>

namespace qmr::test {
namespace {

const QList<QByteArray> kWords =
    QByteArray("the teapot garden of leaves water and steeping a minutes clay terrace picked in "
               "rolling factory hillside spring oolong is green black to cup with aroma harvest")
        .split(' ');
const QList<QByteArray> kTags = QByteArray("<p> </p>\r\n <li> </li>\r\n <b> </b> </a> <h2> "
                                           "</h2>\r\n &nbsp; <a\thref=\"../2024/index.html\">")
                                    .replace('\t', ' ')
                                    .split(' ');

QByteArray Cut(QByteArray bytes, qsizetype size) {
    bytes.truncate(size);
    return bytes;
}

} // namespace

QByteArray SampleText(SampleRandom& random, qsizetype size) {
    QByteArray text;
    while (text.size() < size) {
        if (random() % 64 == 0 && text.size() > 200) {
            // A phrase said before, as pages repeat their navigation and their names.
            text += text.mid(qsizetype(random() % uint64_t(text.size() - 100)), 10 + random() % 90);
        } else {
            text += random() % 16 ? kWords[qsizetype(random() % kWords.size())]
                                  : kTags[qsizetype(random() % kTags.size())];
            text += random() % 9 ? " " : ". ";
        }
    }
    return Cut(text, size);
}

QByteArray SampleNoise(SampleRandom& random, qsizetype size) {
    QByteArray bytes(size, Qt::Uninitialized);
    for (char& byte : bytes)
        byte = char(random());
    return bytes;
}

QByteArray SampleRuns(SampleRandom& random, qsizetype size) {
    QByteArray bytes;
    while (bytes.size() < size) {
        const QByteArray pattern = SampleNoise(random, random() % 2 ? 1 : 1 + random() % 7);
        bytes += pattern.repeated(1 + qsizetype(random() % 5000) / pattern.size());
    }
    return Cut(bytes, size);
}

QByteArray SampleRecords(SampleRandom& random, qsizetype size) {
    const QByteArray records = SampleNoise(random, 16 * 300);
    QByteArray bytes;
    while (bytes.size() < size)
        bytes += records.mid(16 * qsizetype(random() % 300), 16);
    return Cut(bytes, size);
}

QByteArray ExampleScrapbookFiles(bool picturesOnly) {
    const QStringList pictures = {QStringLiteral("*.jpg"), QStringLiteral("*.png"),
                                  QStringLiteral("*.wmv")};
    QDirIterator it(QStringLiteral(QMR_SOURCE_DIR "/examples/sample-scrapbook"),
                    picturesOnly ? pictures : QStringList(), QDir::Files,
                    QDirIterator::Subdirectories);
    QStringList paths;
    while (it.hasNext())
        paths << it.next();
    paths.sort();
    QByteArray bytes;
    for (const QString& path : paths)
        bytes += ReadBytes(path);
    return bytes;
}

} // namespace qmr::test
