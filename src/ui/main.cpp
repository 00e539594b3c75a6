#include "library/Settings.h"
#include "platform/ProcessMemory.h"
#include "ui/DesktopServices.h"
#include "ui/MainWindow.h"

#include <QApplication>

int main(int argc, char* argv[]) {
    qmr::KeepLargeBlocksForReuse();
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("quillmere"));
    QApplication::setApplicationDisplayName(qmr::ApplicationTitle());
    QApplication::setApplicationVersion(QStringLiteral(QMR_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("quillmere"));
    QApplication::setWindowIcon(qmr::ApplicationIcon());

    qmr::SystemDesktop desktop;
    qmr::MainWindow window(desktop);
    QStringList arguments = QApplication::arguments();
    arguments.removeFirst();
    QString problem;
    if (!window.session().settings.applyCodePage(&problem)) window.add2loglist(problem);
    window.startUp(arguments);
    return app.exec();
}
