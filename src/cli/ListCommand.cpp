#include "cli/ListCommand.h"

#include "platform/PathSeparators.h"

#include <QDir>

namespace qmr {
namespace {

// The scrapbook folder of File=<catalogue>, made absolute; empty without arguments. False,
// told on stderr, for anything else or a folder that holds no catalogue: the window would add
// any folder to the store, a command line is told instead.
bool readCommandLineFolder(const QStringList& arguments, QString& folder) {
    // The shell passes File=<catalogue> unquoted, so a path with blanks arrives in pieces.
    const QString commandLine = arguments.join(QLatin1Char(' '));
    folder = CommandLineFolder(commandLine);
    if (commandLine.isEmpty()) return true;
    if (folder.isEmpty()) {
        PrintError(QStringLiteral("Usage: quillmere list [File=CATALOGUE]\nquillmere list: %1 is "
                                  "not File= followed by the path of a .rdf file")
                       .arg(commandLine));
        return false;
    }
    if (QDir::isRelativePath(folder)) folder = ScrapbookFolderArgument(folder);
    if (HoldsScrapbookCatalogue(folder)) return true;
    PrintError(QStringLiteral("quillmere: %1 holds no scrapbook.rdf. Name the catalogue of a "
                              "ScrapBook folder.")
                   .arg(ToNativePath(folder)));
    return false;
}

} // namespace

bool LoadListAtStartUp(Session& session) {
    const ListLoadReport report = session.loadList();
    for (const InputError& skipped : report.skippedStoreLines)
        PrintError(QStringLiteral("quillmere: ") + skipped.text());
    if (!report.storeProblem.isEmpty())
        PrintError(QStringLiteral("quillmere: ") + report.storeProblem);
    return report.skippedStoreLines.isEmpty();
}

QString ListCommand::description() const {
    return QStringLiteral(
        "Prints the scrapbook list as the window shows it after start-up: Firefox's\n"
        "multibook.txt (or Firefox's own scrapbook), then ScrapBookStore.txt. One line a\n"
        "row: name, page count, directory; then the count. With File=CATALOGUE (as the\n"
        "desktop passes a .rdf file it opens) that scrapbook is added to the store when\n"
        "new.");
}

int ListCommand::execute(const QStringList& arguments, ConsoleHost& host) {
    QString folder;
    if (!readCommandLineFolder(arguments, folder)) return ExitBadInput;
    Session session(host);
    session.commandLineFolder = folder;
    const bool clean = LoadListAtStartUp(session);
    for (const ScrapbookRow& row : session.list.rows())
        PrintLine(QStringList{row.name, row.pageCount, ToNativePath(row.directory)}.join(
            QLatin1Char('\t')));
    PrintLine(session.list.StatusShowScrapbookCount());
    return clean ? ExitOk : ExitBadInput;
}

} // namespace qmr
