#include "cli/NewIdCommand.h"

#include "authoring/NodeId.h"
#include "platform/AppFolder.h"

namespace qmr {

QString NewIdCommand::description() const {
    return QStringLiteral("Prints the next item identifier (yyyymmdd + a day counter kept in\n"
                          "NodeID.txt in the application folder).");
}

int NewIdCommand::execute(const QStringList& arguments, ConsoleHost&) {
    if (!arguments.isEmpty()) {
        PrintError(QStringLiteral("Usage: quillmere new-id"));
        return ExitBadInput;
    }
    QString error;
    const QString id = NodeIdGenerator(ApplicationFolder()).NewNodeID(QDate::currentDate(), &error);
    if (id.isEmpty()) {
        PrintError(QStringLiteral("quillmere: ") + error +
                   QStringLiteral(
                       ". Make the application folder writable or choose another with --home."));
        return ExitFailed;
    }
    PrintLine(id);
    return ExitOk;
}

} // namespace qmr
