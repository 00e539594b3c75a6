// Builds the full-text index of a generated book of many pages, one page of text made at a
// time, and prints the time taken and the index's size. Run it under /usr/bin/time -v to see
// the index's peak memory:
//   qmr-fts-index-pages --pages 20000 [--words 1000] [--chinese]

#include "SearchText.h"

#include "chm/FullTextIndex.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    auto option = [&](const char* name, int fallback) {
        const qsizetype at = args.indexOf(QLatin1String(name));
        return at >= 0 && at + 1 < args.size() ? args[at + 1].toInt() : fallback;
    };
    const int pages = option("--pages", 20000), words = option("--words", 1000);
    const bool chinese = args.contains(QStringLiteral("--chinese"));
    using qmr::bench::SearchTextGenerator;
    SearchTextGenerator generator(chinese ? SearchTextGenerator::Language::Chinese
                                          : SearchTextGenerator::Language::English,
                                  200000);
    qmr::chm::FullTextIndex index(chinese ? 0x804 : 0x409);
    QElapsedTimer timer;
    timer.start();
    qint64 textBytes = 0;
    for (int i = 0; i < pages; ++i) {
        const QString text = generator.page(words);
        textBytes += text.toUtf8().size();
        index.addTopic(quint32(i), QStringLiteral("Page %1").arg(i), text);
    }
    const qint64 added = timer.elapsed();
    const qint64 size = index.finish().size();
    std::printf("%d pages, %.1f MB of text: added in %.1f s, written in %.1f s, index %.1f MB\n",
                pages, double(textBytes) / 1e6, double(added) / 1e3,
                double(timer.elapsed() - added) / 1e3, double(size) / 1e6);
    return 0;
}
