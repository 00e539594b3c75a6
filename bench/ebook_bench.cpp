// Times the e-book build: the tree walk with the table of contents and the index, and the whole
// build without the compiler, at the largest catalogue the default limits allow and at 100,000
// items.

#include "ScrapbookGenerator.h"

#include "catalogue/CatalogueWalk.h"
#include "catalogue/RdfReader.h"
#include "ebook/EbookBuild.h"
#include "ebook/EbookContext.h"
#include "ebook/Sitemap.h"
#include "host/BuildHost.h"

#include "BenchMain.h"

#include <benchmark/benchmark.h>

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <map>

namespace {

using qmr::CatalogueLimits;
using qmr::GeneratorOptions;

class QuietHost : public qmr::BuildHost {
  public:
    void add2loglist(const QString&) override {}
    void messageBox(const QString&) override {}
    bool askOkCancel(const QString&) override { return true; }
    void openDocument(const QString&) override {}
};

struct Case {
    GeneratorOptions options;
    CatalogueLimits limits;
};

// Keyed by the number of items, the benchmark's argument.
const std::map<qint64, Case>& cases() {
    static const std::map<qint64, Case> all = [] {
        CatalogueLimits raised;
        raised.maxLines = 2'000'000;
        raised.maxItems = 250'000;
        // The largest catalogue that the default limits let through: 80,001 lines.
        const GeneratorOptions largestDefault = qmr::ForLineBudget(CatalogueLimits::kDefaultLines);
        std::map<qint64, Case> byItems;
        byItems.emplace(largestDefault.items, Case{largestDefault, {}});
        byItems.emplace(100'000, Case{GeneratorOptions{100'000, 10'000}, raised});
        return byItems;
    }();
    return all;
}

QTemporaryDir* scrapbooks = nullptr;

QString scrapbookFor(qint64 items, QString* error) {
    static std::map<qint64, QString> made;
    const auto found = made.find(items);
    if (found != made.end()) return found->second;
    const QString folder = scrapbooks->path() + QStringLiteral("/items-%1/").arg(items);
    if (!qmr::GenerateScrapbook(folder, cases().at(items).options, error)) return {};
    made.emplace(items, folder);
    return folder;
}

// The walk, Index.hhc (with forum.txt and the content page) and Index.hhk over a loaded
// catalogue, as the build runs them.
bool writeSitemaps(qmr::EbookContext& build, QString* error) {
    build.content.ChooseContentTemplate(build.chrome, build.catalogue, build.folder);
    build.forum.open(build.folder + QStringLiteral("forum.txt"));
    return qmr::HHC(build, build.folder + QStringLiteral("Index.hhc"), error) &&
           build.forum.close(error) && build.content.CloseContentPage(error) &&
           qmr::hhk2(build, build.folder + QStringLiteral("Index.hhk"), error);
}

// The generated scrapbook of the benchmark's size; empty, with the benchmark skipped, when it
// cannot be made.
QString scrapbookOrSkip(benchmark::State& state) {
    QString error;
    const QString folder = scrapbookFor(state.range(0), &error);
    if (folder.isEmpty()) state.SkipWithError(error.toLocal8Bit().constData());
    return folder;
}

// The tree walk and the two sitemap files from a catalogue loaded before timing.
void TableOfContentsOnly(benchmark::State& state) {
    const Case& c = cases().at(state.range(0));
    const QString folder = scrapbookOrSkip(state);
    if (folder.isEmpty()) return;
    QuietHost host;
    qmr::Catalogue catalogue;
    qmr::InputError failure;
    if (!qmr::RecodeAndLoadCatalogue(folder, catalogue, &failure, c.limits)) {
        state.SkipWithError(failure.text().toLocal8Bit().constData());
        return;
    }
    for (auto _ : state) {
        const qmr::CatalogueWalk walk(catalogue);
        qmr::EbookContext build(host, catalogue, walk);
        build.folder = folder;
        build.chrome.scrapbookName = QStringLiteral("Bench");
        QString error;
        if (!writeSitemaps(build, &error)) {
            state.SkipWithError(error.toLocal8Bit().constData());
            return;
        }
    }
    state.counters["items"] = double(c.options.items);
    state.counters["folders"] = double(c.options.folders);
}

// The whole "Make Ebook" run without the compiler: every file of the project, as
// `quillmere ebook FOLDER --no-compile` writes them.
void WholeProject(benchmark::State& state) {
    const Case& c = cases().at(state.range(0));
    const QString folder = scrapbookOrSkip(state);
    if (folder.isEmpty()) return;
    QuietHost host;
    qmr::EbookRequest request;
    request.folder = folder;
    request.options.makeChmFile = false;
    request.chrome.scrapbookName = QStringLiteral("Bench");
    request.limits = c.limits;
    request.view = false;
    for (auto _ : state) {
        const qmr::EbookResult result = qmr::StartCreateChmEbook(host, request);
        if (!result.ok) {
            state.SkipWithError(result.problem.toLocal8Bit().constData());
            return;
        }
    }
    state.counters["items"] = double(c.options.items);
    state.counters["folders"] = double(c.options.folders);
}

// The whole `quillmere ebook FOLDER --no-compile --no-view` process beside `xmllint --noout`
// reading the same scrapbook.rdf, run in turn so that both meet the same machine. The time
// shown is quillmere's; the counters give both and their ratio.
void WholeProcessBesideXmllint(benchmark::State& state) {
    const QString folder = scrapbookOrSkip(state);
    if (folder.isEmpty()) return;
    if (QStandardPaths::findExecutable(QStringLiteral("xmllint")).isEmpty()) {
        state.SkipWithError("xmllint is not installed (Debian libxml2-utils)");
        return;
    }
    QTemporaryDir home;
    const Case& c = cases().at(state.range(0));
    if (c.limits.maxItems != CatalogueLimits::kDefaultItems) {
        QFile ini(home.path() + QStringLiteral("/Quillmere.ini"));
        if (ini.open(QIODevice::WriteOnly))
            ini.write(QStringLiteral("[Limits]\r\nCatalogueLines=%1\r\nCatalogueItems=%2\r\n")
                          .arg(c.limits.maxLines)
                          .arg(c.limits.maxItems)
                          .toLatin1());
    }
    double quillmere = 0, xmllint = 0;
    auto timed = [&](const QString& program, const QStringList& arguments) {
        QElapsedTimer timer;
        timer.start();
        QProcess process;
        process.start(program, arguments);
        const bool ended = process.waitForFinished(600000) && process.exitCode() == 0;
        if (!ended)
            state.SkipWithError((program + QStringLiteral(" failed")).toLocal8Bit().constData());
        return double(timer.nsecsElapsed()) / 1e9;
    };
    for (auto _ : state) {
        const double q =
            timed(QStringLiteral(QMR_QUILLMERE_EXE),
                  {QStringLiteral("--home"), home.path(), QStringLiteral("ebook"), folder,
                   QStringLiteral("--no-compile"), QStringLiteral("--no-view")});
        xmllint += timed(QStringLiteral("xmllint"),
                         {QStringLiteral("--noout"), folder + QStringLiteral("scrapbook.rdf")});
        quillmere += q;
        state.SetIterationTime(q);
    }
    state.counters["quillmere_s"] =
        benchmark::Counter(quillmere, benchmark::Counter::kAvgIterations);
    state.counters["xmllint_s"] = benchmark::Counter(xmllint, benchmark::Counter::kAvgIterations);
    state.counters["ratio"] = xmllint > 0 ? quillmere / xmllint : 0;
    state.counters["items"] = double(c.options.items);
}

void everySize(benchmark::internal::Benchmark* bench) {
    for (const auto& entry : cases())
        bench->Arg(entry.first);
}

BENCHMARK(TableOfContentsOnly)->Apply(everySize)->ArgName("items")->Unit(benchmark::kMillisecond);
BENCHMARK(WholeProject)->Apply(everySize)->ArgName("items")->Unit(benchmark::kMillisecond);
BENCHMARK(WholeProcessBesideXmllint)
    ->Apply(everySize)
    ->ArgName("items")
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    return qmr::bench::RunInTemporaryHome(argc, argv, scrapbooks);
}
