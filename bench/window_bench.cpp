// A timing program for the desktop window, drawn offscreen: how long start-up takes to list
// many scrapbooks, and how promptly the window answers while an e-book of the largest
// catalogue is built (the longest gap between two ticks of a 5 ms timer on the window's
// thread, against the same gaps with the window idle).
//
//   window_bench [--scrapbooks N] [--lines L] [--no-compile]
#include "ScrapbookGenerator.h"

#include "ui/BuildRunner.h"
#include "ui/DesktopServices.h"
#include "ui/MainWindow.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QListWidget>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>

namespace {

// Answers OK, starts and opens nothing.
class QuietDesktop : public qmr::DesktopServices {
  public:
    void information(QWidget*, const QString&) override {}
    bool askOkCancel(QWidget*, const QString&) override { return true; }
    QString chooseFolder(QWidget*, const QString&) override { return {}; }
    bool startProgram(const QStringList&) override { return true; }
    bool openDocument(const QString&) override { return true; }
};

// The gaps between ticks of a 5 ms timer while `busy` holds, in milliseconds.
QList<qint64> tickGaps(const std::function<bool()>& busy) {
    QList<qint64> gaps;
    QElapsedTimer clock;
    clock.start();
    qint64 last = 0;
    QTimer ticker;
    ticker.setTimerType(Qt::PreciseTimer);
    QObject::connect(&ticker, &QTimer::timeout, [&] {
        gaps << clock.elapsed() - last;
        last = clock.elapsed();
    });
    ticker.start(5);
    while (busy())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    return gaps;
}

void report(const char* what, QList<qint64> gaps) {
    std::sort(gaps.begin(), gaps.end());
    if (gaps.isEmpty()) return;
    std::printf("%-28s ticks %6lld  median %3lld ms  99%% %4lld ms  longest %5lld ms\n", what,
                qint64(gaps.size()), gaps.at(gaps.size() / 2), gaps.at(gaps.size() * 99 / 100),
                gaps.last());
}

int argument(const QStringList& arguments, const QString& name, int fallback) {
    const qsizetype at = arguments.indexOf(name);
    return at >= 0 && at + 1 < arguments.size() ? arguments.at(at + 1).toInt() : fallback;
}

} // namespace

int main(int argc, char* argv[]) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QTemporaryDir home;
    qputenv("QUILLMERE_HOME", (home.path() + QStringLiteral("/app")).toLocal8Bit());
    qputenv("HOME", (home.path() + QStringLiteral("/home")).toLocal8Bit());
    qputenv("XDG_DATA_HOME", (home.path() + QStringLiteral("/home/.local/share")).toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", (home.path() + QStringLiteral("/home/.config")).toLocal8Bit());
    QApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int count = argument(arguments, QStringLiteral("--scrapbooks"), 300);
    const int lines = argument(arguments, QStringLiteral("--lines"), 80001);

    // The store lists `count` small scrapbooks, each with its item folders to count.
    QByteArray store;
    for (int i = 0; i < count; ++i) {
        const QString folder = home.path() + QStringLiteral("/books/book%1/").arg(i);
        qmr::GeneratorOptions small;
        small.items = 40;
        small.folders = 4;
        small.itemFolders = true;
        small.seed = quint32(i + 1);
        if (!qmr::GenerateScrapbook(folder, small)) return 1;
        store += QStringLiteral("Book %1*%2\r\n").arg(i).arg(folder).toUtf8();
    }
    QDir().mkpath(home.path() + QStringLiteral("/app"));
    QFile storeFile(home.path() + QStringLiteral("/app/ScrapBookStore.txt"));
    if (!storeFile.open(QIODevice::WriteOnly) || storeFile.write(store) != store.size()) return 1;
    storeFile.close();
    const QString largest = home.path() + QStringLiteral("/largest/");
    qmr::GeneratorOptions big = qmr::ForLineBudget(lines);
    big.itemFolders = true;
    if (!qmr::GenerateScrapbook(largest, big)) return 1;
    if (arguments.contains(QStringLiteral("--no-compile"))) {
        QFile ini(largest + QStringLiteral("ScrapbookPrj.ini"));
        if (!ini.open(QIODevice::WriteOnly)) return 1;
        ini.write("[Content]\r\nMakeChmFile=0\r\n");
    }

    QuietDesktop desktop;
    qmr::MainWindow window(desktop);
    QElapsedTimer clock;
    clock.start();
    window.startUp({QStringLiteral("File=") + largest + QStringLiteral("scrapbook.rdf")});
    std::printf("start-up with %d scrapbooks listed: %lld ms (%d rows)\n", count + 1,
                clock.elapsed(), window.session().list.count());

    QElapsedTimer idle;
    idle.start();
    report("idle window, 3 s", tickGaps([&] { return idle.elapsed() < 3000; }));
    clock.restart();
    window.command(QStringLiteral("Make Ebook"))->trigger();
    report("during Make Ebook", tickGaps([&] { return window.runner().busy(); }));
    std::printf("Make Ebook of %d items (%d catalogue lines): %lld ms\n", big.items, lines,
                clock.elapsed());
    // The build's last lines, to see that it went through.
    auto* log = window.findChild<QListWidget*>(QStringLiteral("log"));
    for (int i = std::max(0, log->count() - 3); i < log->count(); ++i)
        std::printf("  %s\n", qPrintable(log->item(i)->text()));
    return 0;
}
