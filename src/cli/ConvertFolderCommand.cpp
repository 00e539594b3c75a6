#include "cli/ConvertFolderCommand.h"

#include "authoring/FolderConversion.h"
#include "authoring/MultiBook.h"
#include "catalogue/TextFiles.h"
#include "cli/ListCommand.h"
#include "library/Settings.h"
#include "platform/AppFolder.h"
#include "platform/PathSeparators.h"

#include <QFileInfo>

namespace qmr {

QString ConvertFolderCommand::description() const {
    return QStringLiteral(
        "Turns the files directly in FOLDER into a new scrapbook FOLDER/scrapbook/ (one item\n"
        "a file, sources from FOLDER/File-Source.TXT), then adds it to ScrapBookStore.txt\n"
        "and to multibook.txt in Firefox's ScrapBook folder. What could not be registered\n"
        "is told on stderr; the new scrapbook stays.");
}

int ConvertFolderCommand::execute(const QStringList& arguments, ConsoleHost& host) {
    if (arguments.size() != 1) {
        PrintError(QStringLiteral("Usage: quillmere convert-folder FOLDER"));
        return ExitBadInput;
    }
    const QString folder = RemoveBackslash(ScrapbookFolderArgument(arguments.first()));
    if (!QFileInfo(folder).isDir()) {
        PrintError(QStringLiteral("quillmere: %1: no such folder. Name the folder whose files "
                                  "become the scrapbook.")
                       .arg(ToNativePath(folder)));
        return ExitBadInput;
    }
    // The list is loaded as at start-up, so that the new scrapbook joins the known ones.
    Session session(host);
    LoadListAtStartUp(session);

    AuthoringContext context(host);
    context.chrome.scrapbookName = GetLastFolderName(folder);
    context.chrome.addresses = session.settings.siteAddresses();
    const ConversionResult converted =
        ConvertFolderToScrapbook(context, folder, ListFolderFiles(folder));
    if (!converted.ok) {
        PrintError(QStringLiteral("quillmere: ") + converted.problem);
        return ExitFailed;
    }
    host.add2loglist(QStringLiteral("Converted %1 files into %2")
                         .arg(converted.itemCount)
                         .arg(ToNativePath(converted.scrapbookFolder)));

    const MultiBookResult registered =
        RegisterNewScrapbook(session.list, converted.scrapbookName,
                             RemoveBackslash(converted.scrapbookFolder), session.folders);
    for (const QString& problem : registered.problems)
        PrintError(QStringLiteral("quillmere: the scrapbook was made, but ") + problem);
    return ExitOk;
}

} // namespace qmr
