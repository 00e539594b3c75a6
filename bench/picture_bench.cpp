// Times the picture-copy maker on a scrapbook of large photos, beside vipsthumbnail doing the
// same two sizes on both cores, in the same run:
//
//   picture_bench [--pictures 200] [--jobs 0] [--photos DIR]
//
// The photos are 3000x2000 JPEGs of smooth colour under grain, which costs a decoder what a
// camera's photo does (about 3.5 MB each). ImageMagick draws eight different ones and they are
// repeated over the scrapbook's item folders, ten pictures a folder; --photos keeps them for
// the next run.
#include "BenchPhotos.h"

#include "host/BuildHost.h"
#include "website/PictureCopies.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>

namespace {

using qmr::bench::CpuSeconds;
using qmr::bench::kDrawnPhotos;
constexpr int kPerFolder = 10;

class QuietHost : public qmr::BuildHost {
  public:
    void add2loglist(const QString& line) override { last = line; }
    void messageBox(const QString&) override {}
    bool askOkCancel(const QString&) override { return true; }
    void openDocument(const QString&) override {}
    QString last;
};

// The scrapbook: item folders of ten photos each; returns every photo's path.
QStringList fillScrapbook(const QString& root, const QString& photos, int count) {
    QStringList paths;
    for (int i = 0; i < count; ++i) {
        const QString folder =
            root +
            QStringLiteral("data/2024010100%1/").arg(i / kPerFolder, 4, 10, QLatin1Char('0'));
        QDir().mkpath(folder);
        paths.append(folder + QStringLiteral("IMG_%1.JPG").arg(i, 4, 10, QLatin1Char('0')));
        QFile::copy(photos + QStringLiteral("photo%1.jpg").arg(i % kDrawnPhotos + 1), paths.last());
    }
    return paths;
}

// vipsthumbnail over every photo for one size, two processes at a time, ten photos each, each
// process on one thread: two cores, as the maker's two workers have.
double vipsSeconds(const QStringList& photos, const QString& size, const QString& out) {
    QDir().mkpath(out);
    QFile list(out + QStringLiteral("list.txt"));
    if (!list.open(QIODevice::WriteOnly)) return -1;
    list.write(photos.join(u'\n').toLocal8Bit() + '\n');
    list.close();
    QElapsedTimer timer;
    timer.start();
    const bool ok = qmr::bench::RunToEnd(
        QStringLiteral("sh"),
        {"-c", QStringLiteral("VIPS_CONCURRENCY=1 xargs -P 2 -n 10 vipsthumbnail --size %1 -o "
                              "'%2%s.jpg[Q=85,optimize_coding,strip]' < '%3'")
                   .arg(size, out, list.fileName())});
    return ok ? timer.nsecsElapsed() / 1e9 : -1;
}

double makerSeconds(const QString& root, int jobs, QuietHost& host) {
    QElapsedTimer timer;
    timer.start();
    qmr::MakePictureCopies(host, root, {true, true, jobs});
    return timer.nsecsElapsed() / 1e9;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    const auto option = [&](const char* name, const QString& fallback) {
        return qmr::bench::Option(args, name, fallback);
    };
    const int count = option("--pictures", "200").toInt();
    const int jobs = option("--jobs", "0").toInt();
    QTemporaryDir work;
    const QString photos = option("--photos", work.path() + "/photos") + u'/';
    if (!work.isValid() || !qmr::bench::DrawPhotos(photos)) {
        std::fprintf(stderr, "cannot draw the photos (ImageMagick's convert is needed)\n");
        return 1;
    }
    const QString root = work.path() + QStringLiteral("/scrapbook/");
    const QStringList paths = fillScrapbook(root, photos, count);

    const double vipsCpuBefore = CpuSeconds(RUSAGE_CHILDREN);
    const double vips = vipsSeconds(paths, "640x480", work.path() + "/vips640/") +
                        vipsSeconds(paths, "100x75", work.path() + "/vips100/");
    const double vipsCpu = CpuSeconds(RUSAGE_CHILDREN) - vipsCpuBefore;
    QuietHost host;
    const double cpuBefore = CpuSeconds(RUSAGE_SELF);
    const double first = makerSeconds(root, jobs, host);
    const double firstCpu = CpuSeconds(RUSAGE_SELF) - cpuBefore;
    const QString firstLog = host.last;
    const double second = makerSeconds(root, jobs, host);

    std::printf("%d photos of 3000x2000, both copies each\n", count);
    std::printf("vipsthumbnail, 2 passes, xargs -P 2: %7.2f s  %6.1f pictures/s  "
                "%6.1f pictures/processor-s\n",
                vips, count / vips, count / vipsCpu);
    std::printf("Quillmere, first run:                %7.2f s  %6.1f pictures/s  "
                "%6.1f pictures/processor-s  (%s)\n",
                first, count / first, count / firstCpu, qPrintable(firstLog));
    std::printf("Quillmere, unchanged second run:     %7.3f s  %5.1f %% of the first  (%s)\n",
                second, 100 * second / first, qPrintable(host.last));
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("Quillmere, peak resident memory:     %7.1f MB\n", usage.ru_maxrss / 1024.0);
    std::printf("Quillmere / vips: %.2fx by the clock, %.2fx by processor time (target at least "
                "1.8x); second run %s 5 %%\n",
                vips / first, vipsCpu / firstCpu, second < 0.05 * first ? "under" : "NOT under");
    return vips > 0 ? 0 : 1;
}
