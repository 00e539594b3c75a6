// Times how the compiler gathers a book's files: a generated scrapbook of 20,000 saved pages
// (about 230 MB of HTML, each page with its style sheet, script and pictures) with the project
// the e-book build would write for it, gathered on one thread and on two. Also times reading
// the title and text of every page, which the compiler does for the topics and the search.

#include "ScrapbookGenerator.h"

#include "chm/BookFiles.h"
#include "chm/PageText.h"
#include "platform/CodePage.h"

#include "BenchMain.h"

#include <benchmark/benchmark.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>

namespace {

constexpr int kPages = 20'000;

QTemporaryDir* scrapbooks = nullptr;

bool writeFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// About 11.5 KB of a saved page: text with inline markup, links to other pages, pictures by
// src, srcset and style, a style sheet, a script and the markup around them.
QByteArray pageFor(const QByteArray& id, const QByteArray& otherId) {
    QByteArray page = "<!DOCTYPE html>\n<html><head><meta charset=\"UTF-8\"><title>Page " + id +
                      " &amp; notes</title>\n<link rel=\"stylesheet\" href=\"index.css\">"
                      "<script src=\"app.js\"></script>\n<style>.hero{background:url('hero.jpg')}"
                      "</style><script>var seen = \"<b>\" + 1;</script></head>\n<body>\n";
    for (int p = 0; p < 38; ++p)
        page += "<p class=\"para\">Saved text of the page, <b>with</b> some <i>inline</i> markup "
                "&amp; a <a href=\"../" +
                otherId +
                "/index.html\">link to another page</a>, "
                "a picture <img src=\"pic1.png\" srcset=\"pic1.png 1x, pic2.png 2x\" alt=\"p\"> "
                "and \xE4\xB8\xAD\xE6\x96\x87 words. <span style=\"color:red\">Red</span> and "
                "<a href=\"https://example.org/a?b=c\">away</a>.</p>\n";
    return page + "</body></html>\n";
}

// The generated scrapbook with rich item folders and its project; empty on failure.
// QMR_CHM_BENCH_FOLDER keeps it in a folder of one's choosing, to be made only once.
QString makeProject(QString* error) {
    const QString kept = qEnvironmentVariable("QMR_CHM_BENCH_FOLDER");
    const QString folder = kept.isEmpty() ? scrapbooks->path() + QStringLiteral("/book/")
                                          : QDir(kept).absolutePath() + u'/';
    if (!kept.isEmpty() && QFile::exists(folder + QStringLiteral("Index.hhp")))
        return folder + QStringLiteral("Index.hhp");
    // About seven items in ten have a saved page.
    qmr::GeneratorOptions options;
    options.items = kPages * 10 / 7 + kPages / 10;
    options.folders = kPages / 10;
    options.itemFolders = true;
    if (!qmr::GenerateScrapbook(folder, options, error)) return {};
    QStringList ids =
        QDir(folder + QStringLiteral("data")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    if (ids.size() < kPages) {
        *error = QStringLiteral("the generator made only %1 pages").arg(ids.size());
        return {};
    }
    ids.resize(kPages);
    QByteArray hhp = "[OPTIONS]\r\nCompiled file=Index.chm\r\nDefault topic=data/" +
                     ids.value(0).toLatin1() + "/index.html\r\n[FILES]\r\n";
    for (qsizetype i = 0; i < ids.size(); ++i) {
        const QByteArray id = ids[i].toLatin1();
        const QString item = folder + QStringLiteral("data/") + ids[i] + u'/';
        const bool ok =
            writeFile(item + QStringLiteral("index.html"),
                      pageFor(id, ids[(i + 1) % ids.size()].toLatin1())) &&
            writeFile(item + QStringLiteral("index.css"), "body{background:url(bg.png)}\n") &&
            writeFile(item + QStringLiteral("app.js"), "var x;\n") &&
            writeFile(item + QStringLiteral("hero.jpg"), "") &&
            writeFile(item + QStringLiteral("pic1.png"), "") &&
            writeFile(item + QStringLiteral("pic2.png"), "") &&
            writeFile(item + QStringLiteral("bg.png"), "");
        if (!ok) {
            *error = QStringLiteral("cannot write the files of ") + item;
            return {};
        }
        for (const char* name :
             {"app.js", "bg.png", "index.css", "index.html", "pic1.png", "pic2.png"})
            hhp += "data/" + id + '/' + name + "\r\n";
    }
    const QString project = folder + QStringLiteral("Index.hhp");
    return writeFile(project, hhp) ? project : QString();
}

const QString& projectOrSkip(benchmark::State& state) {
    static QString error;
    static const QString project = makeProject(&error);
    if (project.isEmpty()) state.SkipWithError(error.toLocal8Bit().constData());
    return project;
}

// GatherBookFiles over the whole project; the argument is the number of threads.
void GatherBookFiles(benchmark::State& state) {
    const QString& path = projectOrSkip(state);
    if (path.isEmpty()) return;
    qmr::chm::HelpProject project;
    qmr::chm::CompileLog log;
    qmr::chm::ReadHelpProject(path, project, log);
    qsizetype files = 0;
    for (auto _ : state) {
        qmr::chm::CompileLog gatherLog;
        files = qmr::chm::GatherBookFiles(project, gatherLog, int(state.range(0))).size();
        if (gatherLog.warningCount() || gatherLog.errorCount())
            state.SkipWithError(gatherLog.lines().value(0).toLocal8Bit().constData());
    }
    state.counters["files"] = double(files);
}

// ExtractPageText of every page, one thread; the pages are read before timing.
void PageTextOfEveryPage(benchmark::State& state) {
    const QString& path = projectOrSkip(state);
    if (path.isEmpty()) return;
    const QString data = QFileInfo(path).absolutePath() + QStringLiteral("/data/");
    QList<QByteArray> pages;
    qint64 bytes = 0;
    for (const QString& id : QDir(data).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile file(data + id + QStringLiteral("/index.html"));
        if (pages.size() == kPages || !file.open(QIODevice::ReadOnly)) continue;
        pages.append(file.readAll());
        bytes += pages.last().size();
    }
    const qmr::CodePage fallback(QStringLiteral("windows-1252"));
    for (auto _ : state)
        for (const QByteArray& page : pages)
            benchmark::DoNotOptimize(qmr::chm::ExtractPageText(page, fallback));
    state.SetBytesProcessed(state.iterations() * bytes);
    state.counters["pages"] = double(pages.size());
}

BENCHMARK(GatherBookFiles)->Arg(1)->Arg(2)->ArgName("jobs")->Unit(benchmark::kMillisecond);
BENCHMARK(PageTextOfEveryPage)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    return qmr::bench::RunInTemporaryHome(argc, argv, scrapbooks);
}
