#include "cli/ListCommand.h"

#include "platform/PathSeparators.h"

#include <QDir>

namespace qmr {

bool LoadListAtStartUp(ScrapbookList& list, const LibraryFolders& folders, ConsoleHost& host,
                       const QString& commandLineFolder) {
    const ListLoadReport report = LoadAllScrapbooksIntoList(list, folders, host, commandLineFolder);
    for (const CatalogueError& skipped : report.skippedStoreLines)
        PrintError(QStringLiteral("quillmere: ") + skipped.text());
    if (!report.storeProblem.isEmpty())
        PrintError(QStringLiteral("quillmere: ") + report.storeProblem);
    return report.skippedStoreLines.isEmpty();
}

QString ListCommand::description() const {
    return QStringLiteral(
        "Prints the scrapbook list as the window shows it after start-up: Firefox's\n"
        "      multibook.txt (or Firefox's own scrapbook), then ScrapBookStore.txt. One line a\n"
        "      row: name, page count, directory; then the count. With File=CATALOGUE (as the\n"
        "      desktop passes a .rdf file it opens) that scrapbook is added to the store when\n"
        "      new.");
}

int ListCommand::execute(const QStringList& arguments, ConsoleHost& host) {
    // The shell passes File=<catalogue> unquoted, so a path with blanks arrives in pieces.
    const QString commandLine = arguments.join(QLatin1Char(' '));
    QString folder = CommandLineFolder(commandLine);
    if (!commandLine.isEmpty() && folder.isEmpty()) {
        PrintError(QStringLiteral("Usage: quillmere list [File=CATALOGUE]\nquillmere list: %1 is "
                                  "not File= followed by the path of a .rdf file")
                       .arg(commandLine));
        return ExitBadInput;
    }
    if (!folder.isEmpty() && QDir::isRelativePath(folder)) folder = ScrapbookFolderArgument(folder);

    AppSettings settings(host);
    ScrapbookList list(settings);
    const bool clean = LoadListAtStartUp(list, LibraryFolders::current(), host, folder);
    for (const ScrapbookRow& row : list.rows())
        PrintLine(QStringList{row.name, row.pageCount, ToNativePath(row.directory)}.join(
            QLatin1Char('\t')));
    PrintLine(list.StatusShowScrapbookCount());
    return clean ? ExitOk : ExitBadInput;
}

} // namespace qmr
