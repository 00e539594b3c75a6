// Times the e-book stage that walks the catalogue tree: recode and load the catalogue, write
// the table of contents (with the forum file and folder page bodies) and the index, and then
// the list page and folder pages, at the largest catalogue the default limits allow and at
// 100,000 items.

#include "ScrapbookGenerator.h"

#include "catalogue/RdfReader.h"
#include "ebook/EbookBuild.h"
#include "ebook/EbookContext.h"
#include "ebook/Sitemap.h"
#include "host/BuildHost.h"
#include "website/ListPage.h"

#include "BenchMain.h"

#include <benchmark/benchmark.h>

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

bool load(qmr::EbookContext& build, const Case& c, QString* error) {
    qmr::InputError failure;
    if (qmr::RecodeAndLoadCatalogue(build.folder, build.catalogue, &failure, c.limits)) return true;
    *error = failure.text();
    return false;
}

// The walk and the index over a loaded catalogue, as the build runs them.
bool writeSitemaps(qmr::EbookContext& build, QString* error) {
    build.content.ChooseContentTemplate(build.chrome, build.catalogue, build.folder);
    build.forum.open(build.folder + QStringLiteral("forum.txt"));
    return qmr::HHC(build, build.folder + QStringLiteral("Index.hhc"), error) &&
           build.forum.close(error) && build.content.CloseContentPage(error) &&
           qmr::hhk2(build, build.folder + QStringLiteral("Index.hhk"), error);
}

bool writeListPages(qmr::EbookContext& build, QString* error) {
    return qmr::WriteListPage(build.chrome, build.catalogue, build.options.linkToSourceURL,
                              build.folder + QStringLiteral("data/qmr/temp.html"), error) &&
           qmr::WriteFolderPages(build.chrome, build.catalogue, build.folder, error);
}

// The generated scrapbook of the benchmark's size; empty, with the benchmark skipped, when it
// cannot be made.
QString scrapbookOrSkip(benchmark::State& state) {
    QString error;
    const QString folder = scrapbookFor(state.range(0), &error);
    if (folder.isEmpty()) state.SkipWithError(error.toLocal8Bit().constData());
    return folder;
}

enum class Stages { Sitemaps, SitemapsAndListPages, SitemapsOfALoadedCatalogue };

void run(benchmark::State& state, Stages stages) {
    const Case& c = cases().at(state.range(0));
    QString error;
    const QString folder = scrapbookOrSkip(state);
    if (folder.isEmpty()) return;
    QuietHost host;
    qmr::EbookContext loaded(host);
    loaded.folder = folder;
    if (stages == Stages::SitemapsOfALoadedCatalogue && !load(loaded, c, &error)) {
        state.SkipWithError(error.toLocal8Bit().constData());
        return;
    }
    for (auto _ : state) {
        qmr::EbookContext build(host);
        build.folder = folder;
        build.chrome.scrapbookName = QStringLiteral("Bench");
        bool ok = true;
        if (stages == Stages::SitemapsOfALoadedCatalogue)
            build.catalogue = loaded.catalogue; // each walk starts from the loaded state
        else
            ok = load(build, c, &error);
        ok = ok && writeSitemaps(build, &error);
        if (stages == Stages::SitemapsAndListPages) ok = ok && writeListPages(build, &error);
        if (!ok) {
            state.SkipWithError(error.toLocal8Bit().constData());
            return;
        }
        benchmark::DoNotOptimize(build.catalogue.items.data());
    }
    state.counters["items"] = double(c.options.items);
    state.counters["folders"] = double(c.options.folders);
}

// Recode, load, Index.hhc (with forum.txt and the folder bodies) and Index.hhk.
void TableOfContents(benchmark::State& state) {
    run(state, Stages::Sitemaps);
}
// The same, then the list page and one page a folder.
void TableOfContentsAndListPages(benchmark::State& state) {
    run(state, Stages::SitemapsAndListPages);
}
// Index.hhc and Index.hhk alone, from a catalogue loaded before timing.
void TableOfContentsOnly(benchmark::State& state) {
    run(state, Stages::SitemapsOfALoadedCatalogue);
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

void everySize(benchmark::internal::Benchmark* bench) {
    for (const auto& entry : cases())
        bench->Arg(entry.first);
}

BENCHMARK(TableOfContents)->Apply(everySize)->ArgName("items")->Unit(benchmark::kMillisecond);
BENCHMARK(TableOfContentsOnly)->Apply(everySize)->ArgName("items")->Unit(benchmark::kMillisecond);
BENCHMARK(TableOfContentsAndListPages)
    ->Apply(everySize)
    ->ArgName("items")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(WholeProject)->Apply(everySize)->ArgName("items")->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    return qmr::bench::RunInTemporaryHome(argc, argv, scrapbooks);
}
