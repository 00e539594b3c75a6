#include "cli/Command.h"
#include "platform/ProcessMemory.h"

#include <QCoreApplication>

int main(int argc, char* argv[]) {
    qmr::KeepLargeBlocksForReuse();
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("quillmere"));
    QStringList arguments = QCoreApplication::arguments();
    arguments.removeFirst();
    return qmr::RunQuillmere(arguments);
}
