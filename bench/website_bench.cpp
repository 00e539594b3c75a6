// Times the whole website build, as `quillmere website FOLDER` runs it (the pages the site
// links, both picture copies, the photo pages and the gallery), on a generated scrapbook with
// photos; then an unchanged second build, which looks at each picture's time and writes the
// pages again, and should cost under 5 % of the first:
//
//   website_bench [--items 2000] [--pictures 200] [--jobs 0] [--photos DIR]
//
// The photos are picture_bench's (3000x2000, about 3.5 MB each), five to an item folder.
#include "BenchPhotos.h"
#include "ScrapbookGenerator.h"

#include "ebook/LinkedPages.h"
#include "host/BuildHost.h"
#include "website/PictureSources.h"
#include "website/WebsiteCommands.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <cstdio>

namespace {

constexpr int kPerFolder = 5;

class QuietHost : public qmr::BuildHost {
  public:
    void add2loglist(const QString& line) override { log.append(line); }
    void messageBox(const QString&) override {}
    bool askOkCancel(const QString&) override { return true; }
    void openDocument(const QString&) override {}
    QStringList log;
};

// Five photos in each of the first item folders, until `count` are placed.
void placePhotos(const QString& root, const QString& photos, int count) {
    const QStringList folders = qmr::ItemFolders(root);
    for (int i = 0; i < count && i / kPerFolder < folders.size(); ++i)
        QFile::copy(photos + QStringLiteral("photo%1.jpg").arg(i % qmr::bench::kDrawnPhotos + 1),
                    folders.at(i / kPerFolder) + QStringLiteral("IMG_%1.JPG").arg(i));
}

struct Timing {
    double seconds = 0;
    double cpu = 0;
    bool ok = false;
};

Timing build(QuietHost& host, const qmr::WebsiteRequest& request) {
    const double cpuBefore = qmr::bench::CpuSeconds(RUSAGE_SELF);
    QElapsedTimer timer;
    timer.start();
    qmr::WebsiteResult result = qmr::WriteMissingLinkedPages(
        host, request, qmr::EbookLanguage::English, QStringLiteral("index.html"));
    if (result.ok) result = qmr::BuildWebsite(host, request);
    return {timer.nsecsElapsed() / 1e9, qmr::bench::CpuSeconds(RUSAGE_SELF) - cpuBefore, result.ok};
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    const auto option = [&](const char* name, const QString& fallback) {
        return qmr::bench::Option(args, name, fallback);
    };
    QTemporaryDir work;
    qputenv("QUILLMERE_HOME", work.path().toLocal8Bit() + "/home/");
    const QString photos = option("--photos", work.path() + "/photos") + u'/';
    if (!work.isValid() || !qmr::bench::DrawPhotos(photos)) {
        std::fprintf(stderr, "cannot draw the photos (ImageMagick's convert is needed)\n");
        return 1;
    }
    qmr::GeneratorOptions generated;
    generated.items = option("--items", "2000").toInt();
    generated.folders = generated.items / 10;
    generated.itemFolders = true;
    const QString root = work.path() + QStringLiteral("/scrapbook/");
    QString error;
    if (!qmr::GenerateScrapbook(root, generated, &error)) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }
    const int pictures = option("--pictures", "200").toInt();
    placePhotos(root, photos, pictures);

    qmr::WebsiteRequest request;
    request.folder = root;
    request.chrome.scrapbookName = QStringLiteral("Benchmark");
    request.jobs = option("--jobs", "0").toInt();
    QuietHost host;
    const Timing first = build(host, request);
    const QString firstCopies = host.log.filter(QStringLiteral("Picture copies")).value(0);
    host.log.clear();
    const Timing second = build(host, request);
    const QString secondCopies = host.log.filter(QStringLiteral("Picture copies")).value(0);

    std::printf("%d items (%d folders), %d photos of 3000x2000\n", generated.items,
                generated.folders, pictures);
    std::printf("first website build:            %8.3f s  %8.3f processor-s  (%s)\n", first.seconds,
                first.cpu, qPrintable(firstCopies));
    std::printf("unchanged second website build: %8.3f s  %8.3f processor-s  (%s)\n",
                second.seconds, second.cpu, qPrintable(secondCopies));
    std::printf("second / first: %.2f %% by the clock, %.2f %% by processor time; target under "
                "5 %%: %s\n",
                100 * second.seconds / first.seconds, 100 * second.cpu / first.cpu,
                second.seconds < 0.05 * first.seconds ? "met" : "NOT met");
    return first.ok && second.ok ? 0 : 1;
}
