#include "cli/Command.h"

#include "cli/CatalogueCommand.h"
#include "cli/CompileCommand.h"
#include "cli/ConvertFolderCommand.h"
#include "cli/EbookCommand.h"
#include "cli/ImportTextCommand.h"
#include "cli/ListCommand.h"
#include "cli/MultibookCommand.h"
#include "cli/NewIdCommand.h"
#include "cli/StoreCommand.h"
#include "cli/VideoCommands.h"
#include "cli/WebsiteCommand.h"
#include "library/Settings.h"
#include "platform/AppFolder.h"

#include <QDir>

namespace qmr {

const std::vector<std::unique_ptr<Command>>& Command::all() {
    static const std::vector<std::unique_ptr<Command>> commands = [] {
        std::vector<std::unique_ptr<Command>> list;
        list.push_back(std::make_unique<CatalogueCommand>());
        list.push_back(std::make_unique<NewIdCommand>());
        list.push_back(std::make_unique<EbookCommand>());
        list.push_back(std::make_unique<CompileCommand>());
        list.push_back(std::make_unique<ListCommand>());
        list.push_back(std::make_unique<StoreCommand>());
        list.push_back(std::make_unique<MultibookCommand>());
        list.push_back(std::make_unique<ConvertFolderCommand>());
        list.push_back(std::make_unique<ImportTextCommand>());
        list.push_back(std::make_unique<WebsiteCommand>());
        list.push_back(std::make_unique<WebsitesCommand>());
        list.push_back(std::make_unique<VideosCommand>());
        list.push_back(std::make_unique<PlaylistsCommand>());
        return list;
    }();
    return commands;
}

Command* Command::find(const QString& name) {
    for (const auto& command : all())
        if (command->name() == name) return command.get();
    return nullptr;
}

QString UsageText() {
    QString text = QStringLiteral(
        "Usage: quillmere [--home DIR] COMMAND [ARGUMENTS]\n"
        "Turns ScrapBook collections into publishable documents.\n\n"
        "Options:\n"
        "  --home DIR   use DIR as the application folder (Quillmere.ini, NodeID.txt, chm/);\n"
        "               overrides $QUILLMERE_HOME\n"
        "  --help       show this text\n"
        "  --version    show the version\n\n"
        "Commands:\n");
    for (const auto& command : Command::all()) {
        const QString head = command->name() + QLatin1Char(' ') + command->arguments();
        QString description = command->description();
        description.replace(QLatin1Char('\n'), QStringLiteral("\n      "));
        text += QStringLiteral("  %1\n      %2\n").arg(head.trimmed(), description);
    }
    text += QStringLiteral("\nExit codes: 0 done, 1 failed, 2 bad input or usage.");
    return text;
}

QString ScrapbookFolderArgument(const QString& argument) {
    QString folder = QDir::fromNativeSeparators(QDir(argument).absolutePath());
    if (!folder.endsWith(QLatin1Char('/'))) folder += QLatin1Char('/');
    return folder;
}

bool PrepareEnvironment() {
    QString error;
    ConsoleHost host;
    if (AppSettings(host).applyCodePage(&error)) return true;
    PrintError(QStringLiteral("quillmere: ") + error);
    return false;
}

int RunQuillmere(const QStringList& arguments) {
    QStringList rest = arguments;
    while (!rest.isEmpty() && rest.first().startsWith(QLatin1String("--"))) {
        const QString option = rest.takeFirst();
        if (option == u"--help") {
            PrintLine(UsageText());
            return ExitOk;
        }
        if (option == u"--version") {
            PrintLine(QStringLiteral("quillmere " QMR_VERSION));
            return ExitOk;
        }
        if (option == u"--home" && !rest.isEmpty()) {
            SetApplicationFolderOverride(rest.takeFirst());
            continue;
        }
        PrintError(
            QStringLiteral("quillmere: unknown option %1 (see quillmere --help)").arg(option));
        return ExitBadInput;
    }
    if (rest.isEmpty()) {
        PrintError(UsageText());
        return ExitBadInput;
    }
    const QString name = rest.takeFirst();
    Command* command = Command::find(name);
    if (!command) {
        PrintError(
            QStringLiteral("quillmere: unknown command %1 (see quillmere --help)").arg(name));
        return ExitBadInput;
    }
    if (rest.contains(QStringLiteral("--help"))) {
        PrintLine(QStringLiteral("Usage: quillmere %1 %2\n%3")
                      .arg(command->name(), command->arguments(), command->description()));
        return ExitOk;
    }
    if (!PrepareEnvironment()) return ExitBadInput;
    ConsoleHost host;
    return command->execute(rest, host);
}

} // namespace qmr
