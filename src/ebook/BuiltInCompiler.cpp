#include "ebook/BuiltInCompiler.h"

#include "catalogue/TextFiles.h"
#include "chm/BookLanguage.h"
#include "chm/ChmCompiler.h"
#include "platform/LocalCodePage.h"
#include "platform/PathSeparators.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>

#include <atomic>
#include <chrono>
#include <future>

namespace qmr {
namespace {

constexpr std::chrono::milliseconds kWaitStep(500);

// Why no book was written: how many errors, the first of them, and where the rest are.
QString problemOf(const chm::CompileLog& log, const QString& errorLog) {
    QString first;
    for (const QString& line : log.lines())
        if (line.startsWith(QLatin1String("Error: "))) {
            first = line.mid(7);
            break;
        }
    return QStringLiteral(
               "The help compiler found %1 error(s), so no book was written: %2. See %3.")
        .arg(log.errorCount())
        .arg(first, ToNativePath(errorLog));
}

} // namespace

CompileResult RunBuiltInCompiler(BuildHost& host, const QString& projectPath,
                                 const QString& outputPath) {
    QDir().mkpath(QFileInfo(outputPath).absolutePath());
    std::atomic<bool> stop = false;
    std::atomic<int> done = 0, total = 0;
    chm::CompileOptions options;
    options.outputPath = outputPath;
    // The e-book's project names no language: its texts are in the local code page.
    options.defaultLanguageId = chm::LanguageOfCodePage(LocalCodePage::name());
    options.cancelled = [&stop] { return stop.load(); };
    options.progress = [&](int packed, int of) {
        total = of;
        done = packed;
    };
    chm::CompileLog log;
    QElapsedTimer timer;
    timer.start();
    std::future<bool> compiled = std::async(
        std::launch::async, [&] { return chm::CompileHelpProject(projectPath, options, log); });
    // A compile that ends within the first step still gives one line.
    int round = 0;
    bool ended = false;
    do {
        ended = compiled.wait_for(kWaitStep) == std::future_status::ready;
        host.add2loglist(QStringLiteral("Creating ebook now...") + QString::number(++round));
        if (total > 0) host.progress(done, total);
        host.yield();
        if (host.cancelled()) stop = true;
    } while (!ended);

    CompileResult result;
    result.ok = compiled.get();
    result.seconds = double(timer.nsecsElapsed()) / 1e9;
    const QString errorLog =
        QFileInfo(projectPath).absolutePath() + QStringLiteral("/ErrorLog.log");
    WriteFileAtomically(errorLog, log.lines().join(QStringLiteral("\r\n")).toUtf8() + "\r\n");
    result.cancelled = !result.ok && stop;
    if (!result.ok)
        result.problem = result.cancelled ? CancelledProblem() : problemOf(log, errorLog);
    return result;
}

} // namespace qmr
