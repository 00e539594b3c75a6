#include "ebook/LinkedPages.h"

#include "catalogue/LocalTextFile.h"
#include "catalogue/RdfReader.h"
#include "ebook/ContentPage.h"
#include "ebook/EbookBuild.h"
#include "website/MediaPlaylists.h"
#include "website/PageFragments.h"
#include "website/SiteFiles.h"

#include <QFile>
#include <QFileInfo>

namespace qmr {
namespace {

WebsiteResult failed(BuildHost& host, const QString& problem, bool badInput) {
    host.add2loglist(problem);
    WebsiteResult result;
    result.problem = problem;
    result.badInput = badInput;
    return result;
}

WebsiteResult writeEbookPages(BuildHost& host, const WebsiteRequest& website,
                              EbookLanguage language, const QString& homePageFilename) {
    EbookRequest request;
    request.folder = website.folder;
    request.options.language = language;
    request.options.linkToSourceURL = website.linkToSourceURL;
    request.options.makeChmFile = false;
    request.options.homePageFilename = homePageFilename;
    request.chrome = website.chrome;
    request.limits = website.limits;
    request.view = false;
    const EbookResult built = StartCreateChmEbook(host, request);
    if (!built.ok) return failed(host, built.problem, built.badInput);
    return WebsiteResult{true, {}, false, 0};
}

// The page the scrapbook's own "index.html" opens, relative to the scrapbook folder.
QString contentPage(const WebsiteRequest& request, const QString& markedPage,
                    const QString& homePageFilename) {
    if (homePageFilename != u"index.html" && QFile::exists(request.folder + homePageFilename))
        return homePageFilename;
    if (!markedPage.isEmpty() && QFile::exists(markedPage))
        return markedPage.mid(request.folder.size());
    return QStringLiteral("data/qmr/list.html");
}

// Where the e-book build puts the content page: over the page of the item marked for it.
QString markedContentPage(const WebsiteRequest& request, const Catalogue& catalogue) {
    ContentPage probe;
    probe.ChooseContentTemplate(request.chrome, catalogue, request.folder);
    return probe.pagePath();
}

// "data/qmr/root.html": the catalogue's root as a folder, which is the content view.
bool writeRootFolderPage(const WebsiteRequest& request, const QString& path, QString* problem) {
    LocalTextFile page(path);
    page.writeLine(QStringLiteral("<html><head><meta http-equiv=\"refresh\" "
                                  "content=\"0;URL=./../../index.html\"></head><body>"));
    page.writeLine(HtmlFooter(request.chrome, QStringLiteral("./../../")));
    return page.commit(problem);
}

} // namespace

WebsiteResult WriteMissingLinkedPages(BuildHost& host, const WebsiteRequest& request,
                                      EbookLanguage language, const QString& homePageFilename) {
    const QString qmr = request.folder + QStringLiteral("data/qmr/");
    if (!QFile::exists(qmr + QStringLiteral("list.html")) ||
        !QFile::exists(qmr + QStringLiteral("PlayAllVideos.html"))) {
        host.add2loglist(QStringLiteral("Writing the list, folder and video pages the website "
                                        "links (the e-book build without compiling)..."));
        const WebsiteResult written = writeEbookPages(host, request, language, homePageFilename);
        if (!written.ok) return written;
    }
    Catalogue catalogue;
    InputError error;
    if (!RecodeAndLoadCatalogue(request.folder, catalogue, &error, request.limits))
        return failed(host, error.text(), true);
    const QString playlist = VideoPlaylistPath(request.folder, PlaylistVariant::Website);
    QString problem;
    if (!QFile::exists(playlist)) {
        const PlaylistReport report =
            WriteVideoPlaylist(host, VideoItems(host, catalogue, request.folder), request.folder,
                               PlaylistVariant::Website, request.chrome.addresses.videoSiteBase);
        if (!report.written) return failed(host, report.problem, false);
    }
    // The content page links "index.css" beside it (its base address comes after the link).
    const QString marked = markedContentPage(request, catalogue);
    const bool written =
        (QFile::exists(request.folder + QStringLiteral("index.html")) ||
         WriteRedirectIndex(request.chrome, request.folder,
                            contentPage(request, marked, homePageFilename), &problem)) &&
        (QFile::exists(qmr + QStringLiteral("root.html")) ||
         writeRootFolderPage(request, qmr + QStringLiteral("root.html"), &problem)) &&
        WriteSiteStylesheet(request.folder, &problem) && WriteSiteStylesheet(qmr, &problem) &&
        (marked.isEmpty() || WriteSiteStylesheet(QFileInfo(marked).path() + u'/', &problem));
    if (!written) return failed(host, problem, false);
    return WebsiteResult{true, {}, false, 0};
}

} // namespace qmr
