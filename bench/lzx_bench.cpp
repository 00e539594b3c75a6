// Times the LZX compressor of the HTML Help compiler on one core: generated HTML pages (as a
// book of saved pages holds them) at the default window and reset interval and at larger ones,
// and the example scrapbook's files. "ratio" is compressed bytes over input bytes; speeds are
// per second of the thread's own time, which other work on a shared machine disturbs least.

#include "HtmlPages.h"

#include "chm/Lzx.h"

#include "BenchMain.h"

#include <benchmark/benchmark.h>

#include <QDirIterator>
#include <QFile>

#include <cstdio>

namespace {

using qmr::chm::LzxSettings;

const QByteArray& htmlPages() {
    static const QByteArray pages = qmr::GenerateHtmlPages(16 << 20);
    return pages;
}

const QByteArray& exampleScrapbook() {
    static const QByteArray bytes = [] {
        QStringList paths;
        QDirIterator it(QStringLiteral(QMR_SOURCE_DIR "/examples/sample-scrapbook"), QDir::Files,
                        QDirIterator::Subdirectories);
        while (it.hasNext())
            paths << it.next();
        paths.sort();
        QByteArray all;
        for (const QString& path : paths) {
            QFile file(path);
            if (file.open(QIODevice::ReadOnly)) all += file.readAll();
        }
        return all;
    }();
    return bytes;
}

void compress(benchmark::State& state, const QByteArray& input, const LzxSettings& settings) {
    qmr::chm::LzxCompressor compressor(settings);
    qsizetype compressed = 0;
    for (auto _ : state) {
        const qmr::chm::LzxInterval out = compressor.compress(input);
        compressed = out.bytes.size();
        benchmark::DoNotOptimize(out.bytes.constData());
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * input.size());
    state.counters["ratio"] = double(compressed) / double(input.size());
}

// Arguments: window bits, frames per reset.
void GeneratedHtml(benchmark::State& state) {
    compress(state, htmlPages(), {int(state.range(0)), int(state.range(1))});
}
BENCHMARK(GeneratedHtml)
    ->Args({16, 2})
    ->Args({16, 4})
    ->Args({17, 4})
    ->Args({18, 8})
    ->Unit(benchmark::kMillisecond);

void ExampleScrapbook(benchmark::State& state) {
    compress(state, exampleScrapbook(), {});
}
BENCHMARK(ExampleScrapbook)->Unit(benchmark::kMillisecond);

// QMR_LZX_INPUT=FILE times one more input: a book's uncompressed section, for instance.
void registerInputFile() {
    const QString path = qEnvironmentVariable("QMR_LZX_INPUT");
    if (path.isEmpty()) return;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "cannot read %s\n", qPrintable(path));
        return;
    }
    static const QByteArray bytes = file.readAll();
    benchmark::RegisterBenchmark("InputFile", [](benchmark::State& state) {
        compress(state, bytes, {});
    })->Unit(benchmark::kMillisecond);
}

} // namespace

int main(int argc, char** argv) {
    registerInputFile();
    QTemporaryDir* unused = nullptr;
    return qmr::bench::RunInTemporaryHome(argc, argv, unused);
}
