#include "cli/StoreCommand.h"

#include "library/ScrapbookList.h"
#include "library/ScrapbookStore.h"
#include "platform/AppFolder.h"
#include "platform/PathSeparators.h"

#include <QDir>
#include <QFile>

namespace qmr {
namespace {

// The store adds only to a file that exists: this command's purpose is to add, so it makes an
// empty one first.
bool ensureStoreExists(const QString& storePath) {
    if (QFile::exists(storePath)) return true;
    QDir().mkpath(ApplicationFolder());
    QFile file(storePath);
    if (!file.open(QIODevice::WriteOnly)) {
        PrintError(QStringLiteral("quillmere: cannot create %1: %2. Make the application folder "
                                  "writable or choose another with --home.")
                       .arg(ToNativePath(storePath), file.errorString()));
        return false;
    }
    PrintLine(QStringLiteral("Created ") + ToNativePath(storePath));
    return true;
}

} // namespace

QString StoreCommand::description() const {
    return QStringLiteral(
        "Appends the line NAME*FOLDER to ScrapBookStore.txt in the application folder (made\n"
        "when missing) unless FOLDER is already in it. The list shows the name kept in\n"
        "the scrapbook's own ScrapbookPrj.ini, not NAME.");
}

int StoreCommand::execute(const QStringList& arguments, ConsoleHost&) {
    if (arguments.size() != 3 || arguments.first() != u"add") {
        PrintError(QStringLiteral("Usage: quillmere store add NAME FOLDER"));
        return ExitBadInput;
    }
    const QString name = arguments.at(1).trimmed();
    if (name.isEmpty() || name.contains(QLatin1Char('*'))) {
        PrintError(QStringLiteral("quillmere: \"%1\" cannot be a store name: the store separates "
                                  "name and folder by the first \"*\". Choose a name without "
                                  "\"*\".")
                       .arg(arguments.at(1)));
        return ExitBadInput;
    }
    const QString folder = ScrapbookFolderArgument(arguments.at(2));
    if (!HoldsScrapbookCatalogue(folder)) {
        PrintError(QStringLiteral("quillmere: %1 holds no scrapbook.rdf. Name a ScrapBook folder "
                                  "(the one holding scrapbook.rdf).")
                       .arg(ToNativePath(folder)));
        return ExitBadInput;
    }
    const QString storePath = ScrapbookStorePath(ApplicationFolder());
    if (!ensureStoreExists(storePath)) return ExitFailed;
    QString message;
    switch (AddToScrapbookStore(storePath, name, folder, &message)) {
    case StoreAddResult::Added:
        PrintLine(QStringLiteral("Added %1*%2 to %3")
                      .arg(name, ToNativePath(folder), ToNativePath(storePath)));
        return ExitOk;
    case StoreAddResult::AlreadyIn:
        PrintLine(message);
        return ExitOk;
    case StoreAddResult::NoStoreFile:
    case StoreAddResult::WriteFailed:
        break;
    }
    PrintError(QStringLiteral("quillmere: ") + message);
    return ExitFailed;
}

} // namespace qmr
