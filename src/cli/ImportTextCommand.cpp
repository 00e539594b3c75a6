#include "cli/ImportTextCommand.h"

#include "authoring/TextImport.h"
#include "catalogue/TextFiles.h"
#include "library/Settings.h"
#include "platform/AppFolder.h"
#include "platform/PathSeparators.h"

#include <QFileInfo>

namespace qmr {

QString ImportTextCommand::description() const {
    return QStringLiteral(
        "Turns FOLDER/data.txt (entries separated by lines starting \"*****\") into one page\n"
        "an entry under FOLDER/data/ and the catalogue FOLDER/scrapbook.rdf, logging\n"
        "each entry as n=>title.");
}

int ImportTextCommand::execute(const QStringList& arguments, ConsoleHost& host) {
    if (arguments.size() != 1) {
        PrintError(QStringLiteral("Usage: quillmere import-text FOLDER"));
        return ExitBadInput;
    }
    const QString base = ScrapbookFolderArgument(arguments.first());
    const QString dataFile = base + QStringLiteral("data.txt");
    if (!QFileInfo(dataFile).isFile()) {
        PrintError(QStringLiteral("quillmere: %1: no such file. Put the text to import in "
                                  "data.txt in that folder.")
                       .arg(ToNativePath(dataFile)));
        return ExitBadInput;
    }
    AuthoringContext context(host);
    context.chrome.scrapbookName = GetLastFolderName(base);
    context.chrome.addresses = AppSettings(host).siteAddresses();
    const ImportResult imported = ImportTextToScrapbook(context, base);
    if (!imported.ok) {
        PrintError(QStringLiteral("quillmere: ") + imported.problem);
        return ExitFailed;
    }
    host.add2loglist(QStringLiteral("Imported %1 pages into %2; scrapbook.rdf lists %3")
                         .arg(imported.pagesWritten)
                         .arg(ToNativePath(imported.scrapbookFolder))
                         .arg(imported.catalogued));
    return ExitOk;
}

} // namespace qmr
