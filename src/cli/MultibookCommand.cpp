#include "cli/MultibookCommand.h"

#include "authoring/MultiBook.h"
#include "catalogue/TextFiles.h"
#include "cli/ListCommand.h"
#include "library/ScrapbookList.h"
#include "platform/PathSeparators.h"

#include <QFileInfo>

namespace qmr {
namespace {

void printProblems(const QStringList& problems) {
    for (const QString& problem : problems)
        PrintError(QStringLiteral("quillmere: ") + problem);
}

int addScrapbook(const QString& argument, ConsoleHost& host) {
    const QString folder = ScrapbookFolderArgument(argument);
    if (!HoldsScrapbookCatalogue(folder)) {
        PrintError(QStringLiteral("quillmere: %1 holds no scrapbook.rdf. Name a ScrapBook folder "
                                  "(the one holding scrapbook.rdf).")
                       .arg(ToNativePath(folder)));
        return ExitBadInput;
    }
    Session session(host);
    LoadListAtStartUp(session);
    const QString path = RemoveBackslash(folder);
    const MultiBookResult result =
        AddToMultiScrapbookList(session.list, GetLastFolderName(path), path, session.folders);
    if (result.written)
        for (const QString& entry : result.entries)
            host.add2loglist(entry);
    printProblems(result.problems);
    return result.copied ? ExitOk : ExitFailed;
}

int scanFolder(const QString& base, ConsoleHost& host) {
    const MultiBookResult result =
        Menu_Dir2MultiScrapbook_Click(base, LibraryFolders::current(), host);
    printProblems(result.problems);
    if (result.badInput) return ExitBadInput;
    return result.copied ? ExitOk : ExitFailed;
}

} // namespace

QString MultibookCommand::description() const {
    return QStringLiteral(
        "add FOLDER: adds the scrapbook in FOLDER to ScrapBookStore.txt and writes every\n"
        "listed scrapbook to multibook.txt in Firefox's ScrapBook folder (name, TAB,\n"
        "folder), printing the lines. scan FOLDER: lists each subfolder of FOLDER and each\n"
        "store line that holds a scrapbook.rdf, then the extension's own scrapbook, in\n"
        "FOLDER/multibook.txt, and copies it to Firefox's ScrapBook folder.");
}

int MultibookCommand::execute(const QStringList& arguments, ConsoleHost& host) {
    const QString action = arguments.value(0);
    if (arguments.size() != 2 || (action != u"add" && action != u"scan") ||
        arguments.at(1).trimmed().isEmpty()) {
        PrintError(QStringLiteral("Usage: quillmere multibook add FOLDER | scan FOLDER"));
        return ExitBadInput;
    }
    if (action == u"add") return addScrapbook(arguments.at(1), host);
    return scanFolder(ScrapbookFolderArgument(arguments.at(1)), host);
}

} // namespace qmr
