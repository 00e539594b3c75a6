#include "cli/CatalogueCommand.h"

#include "catalogue/RdfReader.h"
#include "library/Settings.h"
#include "platform/AppFolder.h"
#include "platform/PathSeparators.h"

#include <QFileInfo>
#include <QTemporaryDir>

namespace qmr {

QString CatalogueCommand::description() const {
    return QStringLiteral(
        "Recodes FOLDER/scrapbook.rdf into scrapbook.txt, loads it and prints one tab-separated\n"
        "line per item (index, id, type, title, source, comment), then the counts.");
}

int CatalogueCommand::execute(const QStringList& arguments, ConsoleHost& host) {
    if (arguments.size() != 1) {
        PrintError(QStringLiteral("Usage: quillmere catalogue FOLDER"));
        return ExitBadInput;
    }
    const QString folder = ScrapbookFolderArgument(arguments.first());
    if (!QFileInfo(folder).isDir()) {
        PrintError(QStringLiteral("quillmere: %1: no such folder. Name a ScrapBook folder (the "
                                  "one holding scrapbook.rdf).")
                       .arg(ToNativePath(folder)));
        return ExitBadInput;
    }
    // A scrapbook on read-only media still lists: its working copy is then made elsewhere.
    QTemporaryDir elsewhere;
    QString workingFolder;
    if (!QFileInfo(folder).isWritable() && elsewhere.isValid()) {
        workingFolder = elsewhere.path() + QLatin1Char('/');
        PrintError(QStringLiteral("quillmere: %1 cannot be written to; the working copy "
                                  "scrapbook.txt is made in a temporary folder instead")
                       .arg(ToNativePath(folder)));
    }
    Catalogue catalogue;
    InputError error;
    if (!RecodeAndLoadCatalogue(folder, catalogue, &error, AppSettings(host).catalogueLimits(),
                                workingFolder)) {
        PrintError(QStringLiteral("quillmere: ") + error.text());
        return ExitBadInput;
    }
    for (int i = 0; i < catalogue.itemCount; ++i) {
        const CatalogueItem& item = catalogue.items.at(i);
        PrintLine(QStringList{QString::number(i), item.id, item.type, item.title, item.source,
                              item.comment}
                      .join(QLatin1Char('\t')));
    }
    PrintLine(QStringLiteral("itemCount=%1 lineCount=%2")
                  .arg(catalogue.itemCount)
                  .arg(catalogue.lineCount));
    return ExitOk;
}

} // namespace qmr
