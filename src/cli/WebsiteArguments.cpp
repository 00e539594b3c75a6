#include "cli/WebsiteArguments.h"

#include "cli/Command.h"
#include "ebook/LinkedPages.h"
#include "platform/PathSeparators.h"
#include "platform/Processes.h"

#include <QFileInfo>

namespace qmr {
namespace {

const QStringList kSteps = {QStringLiteral("icons"), QStringLiteral("icons640"),
                            QStringLiteral("photos"), QStringLiteral("home")};

bool usage(const QString& command, const QString& problem) {
    PrintError(QStringLiteral("quillmere %1: %2. See quillmere %1 --help.").arg(command, problem));
    return false;
}

} // namespace

bool ParseWebsiteArguments(const QString& command, const QStringList& arguments,
                           const QStringList& options, bool takesFolder, WebsiteArguments& parsed) {
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& a = arguments.at(i);
        const bool valued = a == u"--step" || a == u"--jobs";
        if (a.startsWith(QLatin1String("--")) && !options.contains(a))
            return usage(command, QStringLiteral("unknown option %1").arg(a));
        if (valued && i + 1 >= arguments.size())
            return usage(command, QStringLiteral("%1 needs a value").arg(a));
        if (a == u"--step") {
            parsed.step = arguments.at(++i);
            if (!kSteps.contains(parsed.step))
                return usage(command, QStringLiteral("--step takes icons, icons640, photos or "
                                                     "home, not \"%1\"")
                                          .arg(parsed.step));
        } else if (a == u"--jobs") {
            bool number = false;
            parsed.jobs = arguments.at(++i).toInt(&number);
            if (!number || parsed.jobs < 0)
                return usage(command, QStringLiteral("--jobs takes a number of workers, not "
                                                     "\"%1\"")
                                          .arg(arguments.at(i)));
        } else if (a == u"--no-open") {
            parsed.open = false;
        } else if (a == u"--google-ad") {
            parsed.googleAD = true;
        } else if (a == u"--yes") {
            parsed.yes = true;
        } else if (!takesFolder || !parsed.folder.isEmpty()) {
            return usage(command, QStringLiteral("unexpected argument %1").arg(a));
        } else {
            parsed.folder = a;
        }
    }
    if (takesFolder && parsed.folder.isEmpty())
        return usage(command, QStringLiteral("name the scrapbook FOLDER"));
    return true;
}

QString CheckedScrapbookFolder(const QString& argument) {
    const QString folder = ScrapbookFolderArgument(argument);
    if (!QFileInfo(folder).isDir()) {
        PrintError(QStringLiteral("quillmere: %1 is not there. Name a ScrapBook folder (the one "
                                  "holding scrapbook.rdf).")
                       .arg(ToNativePath(folder)));
        return QString();
    }
    if (!QFileInfo(folder + QStringLiteral("scrapbook.rdf")).isFile()) {
        PrintError(QStringLiteral("quillmere: %1 holds no scrapbook.rdf. Name a ScrapBook "
                                  "folder (the one holding scrapbook.rdf).")
                       .arg(ToNativePath(folder)));
        return QString();
    }
    return folder;
}

WebsiteOptions CommandLineWebsiteOptions(const AppSettings& settings,
                                         const WebsiteArguments& arguments) {
    WebsiteOptions options;
    options.addresses = settings.siteAddresses();
    options.limits = settings.catalogueLimits();
    options.googleAD = arguments.googleAD;
    options.jobs = arguments.jobs;
    return options;
}

WebsiteResult PrepareLinkedPages(ConsoleHost& host, AppSettings& settings,
                                 const WebsiteRequest& request) {
    // The request has just loaded the scrapbook's properties, its home page among them.
    return WriteMissingLinkedPages(host, request, settings.Load_Settings(),
                                   settings.HomePageFilename);
}

int WebsiteExitCode(const WebsiteResult& result) {
    if (result.ok) return ExitOk;
    PrintError(QStringLiteral("quillmere: ") + result.problem);
    return result.badInput ? ExitBadInput : ExitFailed;
}

} // namespace qmr
