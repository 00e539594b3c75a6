// Times the compiling of a generated HTML Help project into a book: pages of English-like text
// with a picture every fourth page, a table of contents and an index naming every page, a
// full-text index. chmcmd on the same project, when it is installed, for comparison.

#include "SearchText.h"

#include "chm/ChmCompiler.h"

#include <benchmark/benchmark.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <sys/resource.h>

namespace {

void Write(const QString& path, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) std::abort();
}

QByteArray SitemapEntry(const QByteArray& name, const QByteArray& local) {
    return "<LI> <OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"" + name +
           "\"><param name=\"Local\" value=\"" + local + "\"></OBJECT>\r\n";
}

// A project of `pages` pages in `folder`; its book goes to folder + "chmcmd.chm".
qint64 MakeProject(const QString& folder, int pages) {
    qmr::bench::SearchTextGenerator text(qmr::bench::SearchTextGenerator::Language::English, 50000);
    QRandomGenerator random(7);
    QByteArray files, entries;
    qint64 bytes = 0;
    for (int i = 0; i < pages; ++i) {
        const QByteArray id = QByteArray::number(20240101000000LL + i);
        const QByteArray page = "data/" + id + "/index.html";
        const QByteArray title = "Page " + QByteArray::number(i);
        QByteArray html = "<html><head><title>" + title + "</title></head><body><h1>" + title +
                          "</h1><p>" + text.page(1500).toUtf8() + "</p>";
        if (i % 4 == 0) {
            QByteArray picture(30000, Qt::Uninitialized);
            random.fillRange(reinterpret_cast<quint32*>(picture.data()), picture.size() / 4);
            Write(folder + "data/" + id + "/picture.jpg", picture);
            html += "<img src=\"picture.jpg\">";
            bytes += picture.size();
        }
        html += "</body></html>";
        Write(folder + page, html);
        bytes += html.size();
        files += page + "\r\n";
        entries += SitemapEntry(title, page);
    }
    const QByteArray sitemap = "<HTML><BODY><UL>\r\n" + entries + "</UL></BODY></HTML>\r\n";
    Write(folder + "Index.hhc", sitemap);
    Write(folder + "Index.hhk", sitemap);
    Write(folder + "Index.hhp",
          "[OPTIONS]\r\nBinary TOC=No\r\nBinary Index=Yes\r\nCompiled file= " + folder.toUtf8() +
              "chmcmd.chm\r\nFull-text search=Yes\r\nContents file=Index.hhc\r\nDefault "
              "topic=data/20240101000000/index.html\r\nIndex file=Index.hhk\r\nLanguage=0x409 "
              "English (United States)\r\nTitle =Bench\r\n[FILES]\r\n" +
              files);
    return bytes;
}

struct Project {
    QTemporaryDir dir;
    QString folder;
    qint64 bytes = 0;
};

Project& ProjectOf(int pages) {
    static std::map<int, std::unique_ptr<Project>> projects;
    auto& project = projects[pages];
    if (!project) {
        project = std::make_unique<Project>();
        project->folder = project->dir.path() + QLatin1Char('/');
        project->bytes = MakeProject(project->folder, pages);
    }
    return *project;
}

double PeakMegabytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_maxrss) / 1024.0;
}

void Compile(benchmark::State& state) {
    Project& project = ProjectOf(int(state.range(0)));
    const QString book = project.folder + QStringLiteral("ours.chm");
    for (auto _ : state) {
        qmr::chm::CompileLog log;
        qmr::chm::CompileOptions options;
        options.outputPath = book;
        options.jobs = int(state.range(1));
        if (!qmr::chm::CompileHelpProject(project.folder + "Index.hhp", options, log))
            state.SkipWithError(log.lines().join('\n').toUtf8().constData());
    }
    state.SetBytesProcessed(state.iterations() * project.bytes);
    state.counters["book_MB"] = double(QFileInfo(book).size()) / 1e6;
    state.counters["content_MB"] = double(project.bytes) / 1e6;
    state.counters["peak_RSS_MB"] = PeakMegabytes();
}
BENCHMARK(Compile)
    ->ArgNames({"pages", "jobs"})
    ->Args({500, 1})
    ->Args({500, 2})
    ->Args({2000, 1})
    ->Args({2000, 2})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

void Chmcmd(benchmark::State& state) {
    if (QStandardPaths::findExecutable(QStringLiteral("chmcmd")).isEmpty()) {
        state.SkipWithError("chmcmd is not installed");
        return;
    }
    Project& project = ProjectOf(int(state.range(0)));
    for (auto _ : state) {
        QProcess chmcmd;
        chmcmd.setWorkingDirectory(project.folder);
        chmcmd.start(QStringLiteral("chmcmd"), {QStringLiteral("Index.hhp")});
        if (!chmcmd.waitForFinished(-1) || chmcmd.exitCode() != 0)
            state.SkipWithError("chmcmd failed");
    }
    state.SetBytesProcessed(state.iterations() * project.bytes);
    state.counters["book_MB"] = double(QFileInfo(project.folder + "chmcmd.chm").size()) / 1e6;
}
BENCHMARK(Chmcmd)
    ->ArgName("pages")
    ->Arg(500)
    ->Arg(2000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

} // namespace

BENCHMARK_MAIN();
