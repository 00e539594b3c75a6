#include "cli/WebsiteCommand.h"

#include "cli/ListCommand.h"
#include "cli/WebsiteArguments.h"
#include "platform/Processes.h"

namespace qmr {
namespace {

const QStringList kBuildOptions = {QStringLiteral("--jobs"), QStringLiteral("--no-open"),
                                   QStringLiteral("--google-ad")};

WebsiteResult runStep(ConsoleHost& host, AppSettings& settings, const QString& step,
                      const WebsiteRequest& request) {
    if (step == u"icons") return CreateIcons(host, request);
    if (step == u"icons640") return CreateIcons640x480(host, request);
    // Every page links the content, list and video pages: they are made first where missing.
    const WebsiteResult prepared = PrepareLinkedPages(host, settings, request);
    if (!prepared.ok) return prepared;
    if (step == u"photos") return CreatePhotoPages(host, request);
    if (step == u"home") return CreateHomePage(host, request);
    return BuildWebsite(host, request);
}

} // namespace

QString WebsiteCommand::arguments() const {
    return QStringLiteral("FOLDER [--step icons|icons640|photos|home] [--jobs N] [--no-open]\n"
                          "      [--google-ad]");
}

QString WebsiteCommand::description() const {
    return QStringLiteral(
        "Builds the website of the scrapbook in FOLDER: picture copies (100x75/ and 640x480/\n"
        "in each item folder), a photo page per item, the gallery "
        "data/qmr/PhotoIcons001.html\n"
        "and on, which it then opens. The list, folder and video pages the site links are\n"
        "written first where missing. --step runs one step only: icons, icons640, photos\n"
        "(the photo pages) or home (the gallery).");
}

int WebsiteCommand::execute(const QStringList& arguments, ConsoleHost& host) {
    WebsiteArguments parsed;
    if (!ParseWebsiteArguments(name(), arguments,
                               kBuildOptions + QStringList{QStringLiteral("--step")}, true, parsed))
        return ExitBadInput;
    const QString folder = CheckedScrapbookFolder(parsed.folder);
    if (folder.isEmpty()) return ExitBadInput;
    AppSettings settings(host);
    const WebsiteRequest request =
        WebsiteRequestFor(settings, folder, QString(), CommandLineWebsiteOptions(settings, parsed));
    host.allowOpeningDocuments = parsed.open && HasDisplay();
    return WebsiteExitCode(runStep(host, settings, parsed.step, request));
}

QString WebsitesCommand::arguments() const {
    return QStringLiteral("[--no-open] [--jobs N] [--google-ad]");
}

QString WebsitesCommand::description() const {
    return QStringLiteral(
        "Builds the website of every scrapbook of the list (as quillmere list prints it), one\n"
        "after another, as quillmere website does; meant for cron or a systemd timer.\n"
        "A scrapbook that fails is reported and the others are still built.");
}

int WebsitesCommand::execute(const QStringList& arguments, ConsoleHost& host) {
    WebsiteArguments parsed;
    if (!ParseWebsiteArguments(name(), arguments, kBuildOptions, false, parsed))
        return ExitBadInput;
    Session session(host);
    const bool clean = LoadListAtStartUp(session);
    WebsiteOptions options = CommandLineWebsiteOptions(session.settings, parsed);
    options.prepare = [&](const WebsiteRequest& request) {
        return PrepareLinkedPages(host, session.settings, request);
    };
    host.allowOpeningDocuments = parsed.open && HasDisplay();
    WebsiteStatus status; // the log lines already name each scrapbook
    const AllWebsitesResult all =
        BuildAllWebsites(host, status, session.list.rows(), session.settings, options);
    if (!all.failed.isEmpty()) {
        PrintError(QStringLiteral("quillmere: these websites failed: ") +
                   all.failed.join(QStringLiteral(", ")));
        return ExitFailed;
    }
    return clean ? ExitOk : ExitBadInput;
}

} // namespace qmr
