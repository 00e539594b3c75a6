#include "ebook/EbookBuild.h"

#include "catalogue/RdfReader.h"
#include "catalogue/TextFiles.h"
#include "ebook/EbookContext.h"
#include "ebook/ProjectFile.h"
#include "ebook/SavedPages.h"
#include "ebook/Sitemap.h"
#include "platform/AppFolder.h"
#include "platform/LocalCodePage.h"
#include "website/FolderPages.h"
#include "website/ListPage.h"
#include "website/TypeIconFiles.h"
#include "website/VideoPage.h"

#include <QDir>
#include <QFile>

namespace qmr {
namespace {

const QString kSelectFirst = QStringLiteral("Please select a scrapbook in the list first!");

QStringList readAdvertLines(const QString& name) {
    QFile file(ApplicationFolder() + QStringLiteral("GoogleAD/") + name);
    if (!file.open(QIODevice::ReadOnly)) return {};
    return SplitLocalLines(LocalCodePage::decode(file.readAll()));
}

// "Make Chm ok! Time=" shows the seconds as a single-precision number prints.
QString secondsText(double seconds) {
    return QString::number(double(float(seconds)), 'g', 7);
}

// A stage that ends early because the user asked says so, whatever the stage reported.
EbookResult failed(BuildHost& host, const QString& problem) {
    EbookResult result;
    result.cancelled = host.cancelled();
    result.problem = result.cancelled ? CancelledProblem() : problem;
    host.add2loglist(result.problem);
    return result;
}

// The working copy, recoded from scrapbook.rdf and loaded once for the whole build.
bool recodeAndLoad(BuildHost& host, const QString& folder, const CatalogueLimits& limits,
                   Catalogue& catalogue, QString* problem) {
    InputError error;
    QString workingText;
    if (!ConvertCatalogueToText(folder + QStringLiteral("scrapbook.rdf"),
                                folder + QStringLiteral("scrapbook.txt"), &error, &workingText)) {
        *problem = error.text();
        return false;
    }
    host.add2loglist(QStringLiteral("Loading all pages..."));
    if (!LoadCatalogueWorkingCopy(folder, workingText, catalogue, &error, limits)) {
        *problem = error.text();
        return false;
    }
    return true;
}

// The pages written beside the table of contents: the content page, forum.txt, then the list
// page and the folder pages.
bool writeTableOfContents(EbookContext& build, QString* problem) {
    build.content.ChooseContentTemplate(build.chrome, build.catalogue, build.folder);
    build.host.add2loglist(QStringLiteral("create chm content..."));
    build.forum.open(build.folder + QStringLiteral("forum.txt"));
    return HHC(build, build.folder + QStringLiteral("Index.hhc"), problem) &&
           build.forum.close(problem) && build.content.CloseContentPage(problem);
}

bool writeListPages(const EbookContext& build, QString* problem) {
    build.host.add2loglist(QStringLiteral("Create Page List page...(List.html)"));
    const QString qmr = build.folder + QStringLiteral("data/qmr/");
    QDir().mkpath(qmr);
    // list.html is temp.html in UTF-8, made from the page as it reads back.
    QString listAsRead;
    return WriteTypeIcons(qmr, problem) &&
           WriteListPage(build.chrome, build.catalogue, build.walk, build.options.linkToSourceURL,
                         qmr + QStringLiteral("temp.html"), problem, &listAsRead) &&
           WriteFileAtomically(qmr + QStringLiteral("list.html"), LocalLinesAsUtf8(listAsRead),
                               problem) &&
           WriteFolderPages(build.chrome, build.catalogue, build.walk, build.folder, problem);
}

// The worker's stages, from the loaded catalogue to the compiled book. A compiler that fails
// ends only this stage: the build goes on after it, and the failure is reported at the end.
bool BuildChm(EbookContext& build, const EbookRequest& request, EbookResult& result) {
    QString problem;
    if (!writeTableOfContents(build, &problem) ||
        !hhp(build, build.folder + QStringLiteral("Index.hhp"), GatherScrapbookFiles(build.folder),
             &problem)) {
        result.problem = problem;
        return false;
    }
    build.host.add2loglist(QStringLiteral("create chm index..."));
    if (!hhk2(build, build.folder + QStringLiteral("Index.hhk"), &problem) ||
        !writeListPages(build, &problem)) {
        result.problem = problem;
        return false;
    }
    build.host.add2loglist(QStringLiteral("Pack all file to chm..."));
    double seconds = 0;
    if (build.options.makeChmFile) {
        const CompileResult compiled =
            RunHelpCompiler(build.host, request.tools, build.folder + QStringLiteral("Index.hhp"),
                            build.outputPath);
        seconds = compiled.seconds;
        if (compiled.cancelled) {
            result.problem = compiled.problem;
            return false;
        }
        if (compiled.ok)
            result.chmPath = build.outputPath;
        else
            result.problem = compiled.problem;
    }
    build.host.add2loglist(QStringLiteral("Make Chm ok! Time=") + secondsText(seconds) +
                           QStringLiteral(" Sec."));
    return true;
}

bool prepareSavedPages(const EbookContext& build, QString* problem) {
    if (build.options.index2org) Index2ORG(build.host, build.catalogue, build.folder);
    if (!build.options.appendFolderPage) return true;
    return AppendFolderPage(build.host, build.catalogue, build.walk, build.folder,
                            build.options.googleAD, readAdvertLines(QStringLiteral("MID_as.TXT")),
                            problem);
}

} // namespace

EbookRequest EbookRequestFor(Session& session) {
    const BuildOptions& live = session.options();
    EbookRequest request;
    request.folder = session.currentFolder();
    request.options.language = live.language;
    request.options.linkToSourceURL = live.properties.linkToSourceURL;
    request.options.makeChmFile = live.properties.makeChmFile;
    request.options.googleAD = live.googleAD;
    request.options.homePageFilename = session.settings.HomePageFilename;
    request.chrome.scrapbookName = session.displayName();
    request.chrome.addresses = session.settings.siteAddresses();
    request.tools = session.settings.helpTools();
    request.limits = session.settings.catalogueLimits();
    return request;
}

EbookResult StartCreateChmEbook(BuildHost& host, const EbookRequest& request) {
    if (request.folder.trimmed().isEmpty()) {
        host.messageBox(kSelectFirst);
        EbookResult result;
        result.problem = kSelectFirst;
        return result;
    }
    host.add2loglist(QStringLiteral("Starting Build Quillmere ebook..."));
    if (request.options.googleAD) { // the advert texts a build may place in its pages
        readAdvertLines(QStringLiteral("GoogleAD-Search.txt"));
        readAdvertLines(QStringLiteral("GoogleAD-recommand.txt"));
    }
    // The saved pages are prepared before the pages are written, but nothing they change is in
    // the catalogue: one load serves the whole build.
    Catalogue catalogue;
    QString problem;
    if (!recodeAndLoad(host, request.folder, request.limits, catalogue, &problem)) {
        EbookResult result = failed(host, problem);
        result.badInput = !result.cancelled;
        return result;
    }
    const CatalogueWalk walk(catalogue);
    EbookContext build(host, catalogue, walk);
    build.folder = request.folder;
    build.options = request.options;
    build.chrome = request.chrome;
    build.chrome.advertising = request.options.googleAD && request.options.makeChmFile;
    if (!prepareSavedPages(build, &problem) || host.cancelled()) return failed(host, problem);

    EbookResult result;
    if (!BuildChm(build, request, result)) return failed(host, result.problem);
    result.contentPage = build.content.pagePath();
    if (!WriteVideoPage(build.chrome, build.folder + QStringLiteral("data/qmr/PlayAllVideos.html"),
                        QStringLiteral("Play All Videos on this Scrapbook"),
                        QStringLiteral("WMV_Play_List.wpl"), &problem))
        return failed(host, problem);
    host.add2loglist(QStringLiteral("View Chm ebook..."));
    if (request.view && !result.chmPath.isEmpty()) ViewChm(host, request.tools, result.chmPath);
    host.add2loglist(QStringLiteral("ok!"));
    // A failed compile is told last, after everything else the build makes.
    if (!result.problem.isEmpty()) {
        host.add2loglist(result.problem);
        return result;
    }
    result.ok = true;
    return result;
}

} // namespace qmr
