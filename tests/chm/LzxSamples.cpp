#include "chm/LzxSamples.h"

#include "support/TempFolder.h"

#include <QDir>
#include <QDirIterator>

#include <iterator>

namespace qmr::test {
namespace {

const char* const kWords[] = {
    "the",     "teapot",  "garden", "of",      "leaves",  "water",   "and",     "steeping",
    "a",       "minutes", "clay",   "terrace", "picked",  "rolling", "factory", "hillside",
    "in",      "spring",  "oolong", "is",      "green",   "black",   "to",      "temperature",
    "cup",     "with",    "aroma",  "harvest", "morning", "mist",    "slowly",  "Formosa",
    "roasted", "fresh",   "for",    "notes",   "honey",   "orchid",  "bitter",  "sweet",
};

const char* const kTags[] = {
    "<p>",
    "</p>\r\n",
    "<li>",
    "</li>\r\n",
    "<b>",
    "</b>",
    "<a href=\"../20240302103010/index.html\">",
    "</a>",
    "<h2>",
    "</h2>\r\n",
    "<br>\r\n",
    "&nbsp;",
    "<span class=\"note\">",
    "</span>",
};

template <typename T, size_t N> const T& Pick(SampleRandom& random, const T (&list)[N]) {
    return list[random() % N];
}

QByteArray Cut(QByteArray bytes, qsizetype size) {
    bytes.truncate(size);
    return bytes;
}

} // namespace

QByteArray SampleText(SampleRandom& random, qsizetype size) {
    QByteArray text;
    text.reserve(size + 64);
    while (text.size() < size) {
        if (random() % 16 == 0) {
            text += Pick(random, kTags);
        } else if (random() % 64 == 0 && text.size() > 200) {
            // A phrase said before, as pages repeat their navigation and their names.
            const qsizetype from = qsizetype(random() % uint64_t(text.size() - 100));
            text += text.mid(from, 10 + qsizetype(random() % 90));
        } else {
            text += Pick(random, kWords);
            text += random() % 9 == 0 ? ". " : " ";
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
        const qsizetype length = 1 + qsizetype(random() % 5000);
        if (random() % 2) {
            bytes += QByteArray(length, char(random()));
        } else {
            const QByteArray pattern = SampleNoise(random, 1 + qsizetype(random() % 7));
            for (qsizetype i = 0; i < length; i += pattern.size())
                bytes += pattern;
        }
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
    QStringList paths;
    const QStringList pictures = {QStringLiteral("*.jpg"), QStringLiteral("*.png"),
                                  QStringLiteral("*.wmv")};
    QDirIterator it(QStringLiteral(QMR_SOURCE_DIR "/examples/sample-scrapbook"),
                    picturesOnly ? pictures : QStringList(), QDir::Files,
                    QDirIterator::Subdirectories);
    while (it.hasNext())
        paths << it.next();
    paths.sort();
    QByteArray bytes;
    for (const QString& path : paths)
        bytes += ReadBytes(path);
    return bytes;
}

} // namespace qmr::test
