// Times the building of the full-text search index ($FIftiMain) over generated page text:
// English-like words and Chinese text, both drawn with Zipf's law.

#include "SearchText.h"

#include "chm/FullTextIndex.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>

namespace {

using qmr::bench::SearchTextGenerator;

void BuildIndex(benchmark::State& state, SearchTextGenerator::Language language,
                quint32 languageId) {
    const int pages = int(state.range(0));
    SearchTextGenerator generator(language, 200000);
    std::vector<QString> texts;
    qint64 bytes = 0;
    for (int i = 0; i < pages; ++i) {
        texts.push_back(generator.page(1000));
        bytes += texts.back().toUtf8().size();
    }
    qint64 indexSize = 0;
    for (auto _ : state) {
        qmr::chm::FullTextIndex index(languageId);
        for (int i = 0; i < pages; ++i)
            index.addTopic(quint32(i), QStringLiteral("Page %1").arg(i), texts[size_t(i)]);
        indexSize = index.finish().size();
    }
    state.SetBytesProcessed(state.iterations() * bytes);
    state.counters["index_MB"] = double(indexSize) / 1e6;
    state.counters["text_MB"] = double(bytes) / 1e6;
}

void English(benchmark::State& state) {
    BuildIndex(state, SearchTextGenerator::Language::English, 0x409);
}
void Chinese(benchmark::State& state) {
    BuildIndex(state, SearchTextGenerator::Language::Chinese, 0x804);
}

BENCHMARK(English)->Arg(200)->Arg(2000)->Unit(benchmark::kMillisecond);
BENCHMARK(Chinese)->Arg(200)->Arg(2000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
