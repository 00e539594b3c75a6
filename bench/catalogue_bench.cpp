// Times recoding and loading of catalogues from a few thousand items up to 200,000, to show
// that the cost grows in step with the number of lines.

#include "ScrapbookGenerator.h"

#include "catalogue/Catalogue.h"
#include "catalogue/RdfReader.h"

#include "BenchMain.h"

#include <benchmark/benchmark.h>

#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>
#include <map>
#include <vector>

namespace {

using qmr::CatalogueLimits;
using qmr::GeneratorOptions;

struct Case {
    GeneratorOptions options;
    CatalogueLimits limits;
};

CatalogueLimits raisedLimits() {
    CatalogueLimits limits;
    limits.maxLines = 2'000'000;
    limits.maxItems = 250'000;
    return limits;
}

// Keyed by the lines the reader counts, which is also the benchmark's argument.
const std::map<qint64, Case>& cases() {
    static const std::map<qint64, Case> all = [] {
        std::vector<Case> list = {
            {qmr::ForLineBudget(20'000), {}},
            {qmr::ForLineBudget(50'000), {}},
            // The largest catalogue that the default limits let through.
            {qmr::ForLineBudget(CatalogueLimits::kDefaultLines), {}},
            {qmr::ForLineBudget(500'000), raisedLimits()},
            {GeneratorOptions{200'000, 20'000}, raisedLimits()},
        };
        std::map<qint64, Case> byLines;
        for (const Case& c : list)
            byLines.emplace(qmr::WorkingCopyLineCount(c.options), c);
        return byLines;
    }();
    return all;
}

QTemporaryDir* scrapbooks = nullptr;

// The folder of the scrapbook for `lines`, generated on first use and kept for the run.
QString scrapbookFor(qint64 lines, QString* error) {
    static std::map<qint64, QString> made;
    const auto found = made.find(lines);
    if (found != made.end()) return found->second;
    const QString folder = scrapbooks->path() + QStringLiteral("/lines-%1/").arg(lines);
    QElapsedTimer timer;
    timer.start();
    if (!qmr::GenerateScrapbook(folder, cases().at(lines).options, error)) return {};
    std::fprintf(stderr, "generated %lld lines (%.1f MB) in %.1f s\n", lines,
                 double(QFileInfo(folder + QStringLiteral("scrapbook.rdf")).size()) / 1e6,
                 double(timer.elapsed()) / 1000.0);
    made.emplace(lines, folder);
    return folder;
}

// Recodes scrapbook.rdf into scrapbook.txt and loads it, as every build starts.
void RecodeAndLoad(benchmark::State& state) {
    const qint64 lines = state.range(0);
    const Case& c = cases().at(lines);
    QString error;
    const QString folder = scrapbookFor(lines, &error);
    if (folder.isEmpty()) {
        state.SkipWithError(error.toLocal8Bit().constData());
        return;
    }
    qmr::Catalogue catalogue;
    qmr::InputError failure;
    for (auto _ : state) {
        if (!qmr::RecodeAndLoadCatalogue(folder, catalogue, &failure, c.limits)) {
            state.SkipWithError(failure.text().toLocal8Bit().constData());
            return;
        }
        benchmark::DoNotOptimize(catalogue.items.data());
    }
    if (catalogue.lineCount + 1 != lines || catalogue.itemCount != c.options.items) {
        state.SkipWithError("the loaded catalogue does not match the generated one");
        return;
    }
    state.SetComplexityN(lines);
    state.SetBytesProcessed(state.iterations() *
                            QFileInfo(folder + QStringLiteral("scrapbook.rdf")).size());
    state.counters["items"] = double(c.options.items);
}

// The load alone, from a working copy made once before timing.
void LoadOnly(benchmark::State& state) {
    const qint64 lines = state.range(0);
    const Case& c = cases().at(lines);
    QString error;
    const QString folder = scrapbookFor(lines, &error);
    qmr::InputError failure;
    if (folder.isEmpty() ||
        !qmr::ConvertCatalogueToText(folder + QStringLiteral("scrapbook.rdf"),
                                     folder + QStringLiteral("scrapbook.txt"), &failure)) {
        state.SkipWithError(folder.isEmpty() ? error.toLocal8Bit().constData()
                                             : failure.text().toLocal8Bit().constData());
        return;
    }
    qmr::Catalogue catalogue;
    for (auto _ : state) {
        if (!qmr::LoadAllRdfNodes(folder, catalogue, &failure, c.limits)) {
            state.SkipWithError(failure.text().toLocal8Bit().constData());
            return;
        }
        benchmark::DoNotOptimize(catalogue.items.data());
    }
    state.SetComplexityN(lines);
    state.counters["items"] = double(c.options.items);
}

void everySize(benchmark::internal::Benchmark* bench) {
    for (const auto& entry : cases())
        bench->Arg(entry.first);
}

BENCHMARK(RecodeAndLoad)
    ->Apply(everySize)
    ->ArgName("lines")
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);
BENCHMARK(LoadOnly)
    ->Apply(everySize)
    ->ArgName("lines")
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

} // namespace

int main(int argc, char** argv) {
    return qmr::bench::RunInTemporaryHome(argc, argv, scrapbooks);
}
