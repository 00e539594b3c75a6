#include "cli/EbookCommand.h"

#include "catalogue/TextFiles.h"
#include "ebook/EbookBuild.h"
#include "library/Session.h"
#include "platform/AppFolder.h"
#include "platform/PathSeparators.h"
#include "platform/Processes.h"

#include <QFileInfo>

#include <optional>

namespace qmr {
namespace {

struct EbookArguments {
    QString folder;
    std::optional<EbookLanguage> language;
    std::optional<bool> linkToSource;
    std::optional<bool> compile;
    bool googleAD = false;
    bool index2org = false;
    bool appendFolderPage = false;
    bool view = true;
};

bool parse(const QStringList& arguments, EbookArguments& parsed, QString* error) {
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& a = arguments.at(i);
        if (a == u"--language" && i + 1 < arguments.size()) {
            const QString value = arguments.at(++i);
            if (value != u"1" && value != u"2" && value != u"3") {
                *error = QStringLiteral("--language takes 1 (English), 2 (Chinese Traditional) "
                                        "or 3 (Chinese Simplified), not \"%1\"")
                             .arg(value);
                return false;
            }
            parsed.language = EbookLanguage(value.toInt());
        } else if (a == u"--link-to-source" || a == u"--no-link-to-source") {
            parsed.linkToSource = a == u"--link-to-source";
        } else if (a == u"--compile" || a == u"--no-compile") {
            parsed.compile = a == u"--compile";
        } else if (a == u"--google-ad") {
            parsed.googleAD = true;
        } else if (a == u"--index2org") {
            parsed.index2org = true;
        } else if (a == u"--append-folder-page") {
            parsed.appendFolderPage = true;
        } else if (a == u"--no-view") {
            parsed.view = false;
        } else if (a.startsWith(QLatin1String("--")) || !parsed.folder.isEmpty()) {
            *error = QStringLiteral("unexpected argument %1").arg(a);
            return false;
        } else {
            parsed.folder = a;
        }
    }
    if (parsed.folder.isEmpty()) *error = QStringLiteral("name the scrapbook FOLDER");
    return !parsed.folder.isEmpty();
}

// The options as the window would hold them for this scrapbook, then the command line's.
EbookRequest makeRequest(ConsoleHost& host, const EbookArguments& parsed, const QString& folder) {
    Session session(host);
    session.useScrapbook(folder);
    EbookRequest request = EbookRequestFor(session);
    if (parsed.language) request.options.language = *parsed.language;
    if (parsed.linkToSource) request.options.linkToSourceURL = *parsed.linkToSource;
    if (parsed.compile) request.options.makeChmFile = *parsed.compile;
    request.options.googleAD = parsed.googleAD;
    request.options.index2org = parsed.index2org;
    request.options.appendFolderPage = parsed.appendFolderPage;
    request.view = parsed.view && HasDisplay();
    return request;
}

} // namespace

QString EbookCommand::arguments() const {
    return QStringLiteral("FOLDER [--language 1|2|3] [--link-to-source|--no-link-to-source]\n"
                          "      [--compile|--no-compile] [--google-ad] [--index2org]\n"
                          "      [--append-folder-page] [--no-view]");
}

QString EbookCommand::description() const {
    return QStringLiteral(
        "Builds the e-book of the scrapbook in FOLDER: content, list and folder pages,\n"
        "Index.hhc, Index.hhk and Index.hhp, then compiles Index.chm into the application\n"
        "folder's chm/ and opens it. Options not given come from the scrapbook's\n"
        "ScrapbookPrj.ini and Quillmere.ini.");
}

int EbookCommand::execute(const QStringList& arguments, ConsoleHost& host) {
    EbookArguments parsed;
    QString error;
    if (!parse(arguments, parsed, &error)) {
        PrintError(QStringLiteral("quillmere ebook: %1. See quillmere ebook --help.").arg(error));
        return ExitBadInput;
    }
    const QString folder = ScrapbookFolderArgument(parsed.folder);
    if (!QFileInfo(folder + QStringLiteral("scrapbook.rdf")).isFile()) {
        PrintError(QStringLiteral("quillmere: %1 holds no scrapbook.rdf. Name a ScrapBook "
                                  "folder (the one holding scrapbook.rdf).")
                       .arg(ToNativePath(folder)));
        return ExitBadInput;
    }
    const EbookRequest request = makeRequest(host, parsed, folder);
    host.allowOpeningDocuments = request.view;
    const EbookResult result = StartCreateChmEbook(host, request);
    if (!result.ok) {
        PrintError(QStringLiteral("quillmere: ") + result.problem);
        return result.badInput ? ExitBadInput : ExitFailed;
    }
    if (result.chmPath.isEmpty())
        PrintLine(QStringLiteral("No e-book was compiled (Make Chm file is off); the pages and "
                                 "project files are in ") +
                  ToNativePath(folder));
    else
        PrintLine(QStringLiteral("E-book: ") + ToNativePath(result.chmPath));
    return ExitOk;
}

} // namespace qmr
