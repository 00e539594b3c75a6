// Times our HTML Help compiler beside chmcmd on generated projects shaped as the e-book build
// writes them (BookProject.h), each compile a process of its own so that its processor time and
// peak memory are its own:
//   chm_bench [--pages 2000,20000] [--big5] [--no-full-text] [--plain-body] [--jobs 2]
//             [--repeat 3] [--chmcmd-up-to 2000] [--folder DIR]
// Projects are generated once into DIR (default: a temporary folder) and kept there. chmcmd
// runs as `chmcmd --no-html-scan Index.hhp` in the project folder, so both compilers pack the
// same [FILES].

#include "BookProject.h"

#include "chm/ChmCompiler.h"
#include "platform/ProcessMemory.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>
#include <QTemporaryDir>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace {

struct Measure {
    bool ok = false;
    double wall = 0, cpu = 0, peakMb = 0, bookMb = 0;
};

// Runs `program` with `arguments` in `folder` and waits for it; its own times and peak memory.
Measure Run(const QString& folder, const QStringList& arguments, const QString& book, bool quiet) {
    QFile::remove(book);
    std::vector<QByteArray> storage;
    for (const QString& argument : arguments)
        storage.push_back(argument.toLocal8Bit());
    std::vector<char*> argv;
    for (QByteArray& argument : storage)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    const QByteArray directory = folder.toLocal8Bit();
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        // chmcmd's notes and banner are not wanted; our compiler's errors are.
        const int null = ::open("/dev/null", O_WRONLY);
        dup2(null, 1);
        if (quiet) dup2(null, 2);
        if (chdir(directory.constData()) == 0) execvp(argv[0], argv.data());
        _exit(127);
    }
    Measure measure;
    int status = 0;
    rusage usage{};
    if (child < 0 || wait4(child, &status, 0, &usage) != child) return measure;
    measure.wall = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    measure.cpu = double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
                  double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
    measure.peakMb = double(usage.ru_maxrss) / 1024.0;
    measure.bookMb = double(QFileInfo(book).size()) / 1e6;
    measure.ok = WIFEXITED(status) && WEXITSTATUS(status) == 0 && measure.bookMb > 0;
    return measure;
}

// The child's side: compiles one project and exits 0 when the book was written.
int CompileOnly(const QString& project, const QString& book, int jobs) {
    qmr::chm::CompileOptions options;
    options.outputPath = book;
    options.jobs = jobs;
    qmr::chm::CompileLog log;
    const bool ok = qmr::chm::CompileHelpProject(project, options, log);
    for (const QString& line : log.lines())
        if (!line.startsWith(QLatin1String("Note"))) std::fprintf(stderr, "%s\n", qPrintable(line));
    return ok ? 0 : 1;
}

QString ProjectFolder(const QString& root, int pages, bool big5, bool fullText, bool plainBody) {
    const QString folder = root + QStringLiteral("/%1-%2%3%4/")
                                      .arg(big5 ? "big5" : "english")
                                      .arg(pages)
                                      .arg(fullText ? "" : "-no-fts")
                                      .arg(plainBody ? "-plain-body" : "");
    if (QFile::exists(folder + QStringLiteral("complete"))) return folder;
    QDir(folder).removeRecursively();
    std::printf("generating %s ...\n", qPrintable(folder));
    std::fflush(stdout);
    qmr::bench::BookProjectSize size;
    QString error;
    if (!qmr::bench::WriteBookProject(folder, {pages, big5, fullText, plainBody, 1}, &size,
                                      &error)) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return {};
    }
    QFile complete(folder + QStringLiteral("complete"));
    if (!complete.open(QIODevice::WriteOnly)) return {};
    complete.write(QByteArray::number(size.bytes));
    return folder;
}

qint64 ContentBytes(const QString& folder) {
    QFile complete(folder + QStringLiteral("complete"));
    return complete.open(QIODevice::ReadOnly) ? complete.readAll().toLongLong() : 0;
}

double Median(std::vector<double> values) {
    if (values.empty()) return 0;
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void PrintRow(const char* who, int pages, double contentMb, const std::vector<Measure>& runs) {
    std::vector<double> wall, cpu;
    double peak = 0, book = 0;
    for (const Measure& run : runs) {
        wall.push_back(run.wall);
        cpu.push_back(run.cpu);
        peak = std::max(peak, run.peakMb);
        book = run.bookMb;
    }
    std::printf("%-8s %6d pages %7.1f MB | wall %7.2f s (min %7.2f) | cpu %7.2f s | %5.1f MB/s "
                "of cpu | peak %6.0f MB | book %6.1f MB (%.3f)\n",
                who, pages, contentMb, Median(wall), *std::min_element(wall.begin(), wall.end()),
                Median(cpu), contentMb / Median(cpu), peak, book, book / contentMb);
    std::fflush(stdout);
}

QList<int> Numbers(const QString& list) {
    QList<int> numbers;
    for (const QString& item : list.split(u','))
        numbers.append(item.toInt());
    return numbers;
}

} // namespace

int main(int argc, char** argv) {
    QStringList args;
    for (int i = 0; i < argc; ++i)
        args << QString::fromLocal8Bit(argv[i]);
    if (args.value(1) == QLatin1String("--compile")) {
        qmr::KeepLargeBlocksForReuse(); // as the programs' main() does
        return CompileOnly(args.value(2), args.value(3), args.value(4).toInt());
    }
    auto option = [&](const char* name, const QString& fallback) {
        const qsizetype at = args.indexOf(QLatin1String(name));
        return at >= 0 && at + 1 < args.size() ? args[at + 1] : fallback;
    };
    const QList<int> pageCounts = Numbers(option("--pages", QStringLiteral("2000")));
    const int jobs = option("--jobs", QStringLiteral("2")).toInt();
    const int repeat = std::max(1, option("--repeat", QStringLiteral("3")).toInt());
    const int chmcmdUpTo = option("--chmcmd-up-to", QStringLiteral("2000")).toInt();
    const bool big5 = args.contains(QStringLiteral("--big5"));
    const bool fullText = !args.contains(QStringLiteral("--no-full-text"));
    const bool plainBody = args.contains(QStringLiteral("--plain-body"));
    QTemporaryDir temporary;
    const QString root = option("--folder", temporary.path());
    const bool haveChmcmd = !QStandardPaths::findExecutable(QStringLiteral("chmcmd")).isEmpty();
    const QString self = QFileInfo(QString::fromLocal8Bit(argv[0])).absoluteFilePath();

    for (int pages : pageCounts) {
        const QString folder =
            ProjectFolder(QDir(root).absolutePath(), pages, big5, fullText, plainBody);
        if (folder.isEmpty()) return 1;
        const double contentMb = double(ContentBytes(folder)) / 1e6;
        std::vector<Measure> ours, theirs;
        for (int r = 0; r < repeat; ++r) {
            const QString book = folder + QStringLiteral("ours.chm");
            ours.push_back(Run(folder,
                               {self, QStringLiteral("--compile"), folder + "Index.hhp", book,
                                QString::number(jobs)},
                               book, false));
            if (!ours.back().ok) {
                std::fprintf(stderr, "our compiler failed on %s\n", qPrintable(folder));
                return 1;
            }
            if (haveChmcmd && pages <= chmcmdUpTo) {
                theirs.push_back(Run(folder,
                                     {QStringLiteral("chmcmd"), QStringLiteral("--no-html-scan"),
                                      QStringLiteral("Index.hhp")},
                                     folder + QStringLiteral("chmcmd.chm"), true));
                if (!theirs.back().ok) {
                    std::fprintf(stderr, "chmcmd failed on %s\n", qPrintable(folder));
                    return 1;
                }
            }
        }
        PrintRow("ours", pages, contentMb, ours);
        if (!theirs.empty()) {
            PrintRow("chmcmd", pages, contentMb, theirs);
            std::vector<double> oursWall, theirWall, oursCpu, theirCpu;
            for (const Measure& m : ours) {
                oursWall.push_back(m.wall);
                oursCpu.push_back(m.cpu);
            }
            for (const Measure& m : theirs) {
                theirWall.push_back(m.wall);
                theirCpu.push_back(m.cpu);
            }
            std::printf("chmcmd / ours: %.1fx by the clock, %.1fx by processor time; book "
                        "%+.1f %%\n",
                        Median(theirWall) / Median(oursWall), Median(theirCpu) / Median(oursCpu),
                        100.0 * (ours.back().bookMb / theirs.back().bookMb - 1.0));
        }
    }
    return 0;
}
