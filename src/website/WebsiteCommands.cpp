#include "website/WebsiteCommands.h"

#include "catalogue/RdfReader.h"
#include "catalogue/TextFiles.h"
#include "platform/PathSeparators.h"
#include "website/GalleryPages.h"
#include "website/MediaPlaylists.h"
#include "website/PhotoPage.h"
#include "website/PictureCopies.h"
#include "website/SiteFiles.h"
#include "website/VideoPage.h"

#include <QDir>
#include <QFile>

namespace qmr {
namespace {

const QString kSelectFirst = QStringLiteral("Please select a scrapbook in the list first!");

WebsiteResult done() {
    WebsiteResult result;
    result.ok = true;
    return result;
}

WebsiteResult failed(BuildHost& host, const QString& problem, bool badInput = false) {
    host.add2loglist(problem);
    WebsiteResult result;
    result.problem = problem;
    result.badInput = badInput;
    return result;
}

WebsiteResult stopped(BuildHost& host) {
    return failed(host, QStringLiteral("Stopped: the website build was cancelled."));
}

// No selection is told in a message box, as every command of the window tells it.
bool selected(BuildHost& host, const WebsiteRequest& request, WebsiteResult& result) {
    if (!request.folder.trimmed().isEmpty()) return true;
    host.messageBox(kSelectFirst);
    result.problem = kSelectFirst;
    result.badInput = true;
    return false;
}

bool load(BuildHost& host, const WebsiteRequest& request, Catalogue& catalogue,
          WebsiteResult& result) {
    InputError error;
    if (RecodeAndLoadCatalogue(request.folder, catalogue, &error, request.limits)) return true;
    // A working copy that cannot be written is the build's failure; the rest is the catalogue's.
    const bool workingCopy = error.file == request.folder + QStringLiteral("scrapbook.txt");
    result = failed(host, error.text(), !workingCopy);
    return false;
}

// The commands that walk the items begin so.
bool loadAllPages(BuildHost& host, const WebsiteRequest& request, Catalogue& catalogue,
                  WebsiteResult& result) {
    host.add2loglist(QStringLiteral("Loading all pages..."));
    return load(host, request, catalogue, result);
}

WebsiteResult makeCopies(BuildHost& host, const WebsiteRequest& request, bool icons, bool screens) {
    WebsiteResult result;
    if (!selected(host, request, result)) return result;
    if (!QFileInfo(request.folder).isDir())
        return failed(host,
                      QStringLiteral("%1 is not there. Choose a scrapbook folder that exists.")
                          .arg(ToNativePath(request.folder)),
                      true);
    const PictureCopyReport report =
        MakePictureCopies(host, request.folder, {icons, screens, request.jobs});
    return report.cancelled ? stopped(host) : done();
}

} // namespace

WebsiteResult CreateIcons(BuildHost& host, const WebsiteRequest& request) {
    return makeCopies(host, request, true, false);
}

WebsiteResult CreateIcons640x480(BuildHost& host, const WebsiteRequest& request) {
    return makeCopies(host, request, false, true);
}

WebsiteResult CreatePhotoPages(BuildHost& host, const WebsiteRequest& request) {
    WebsiteResult result;
    Catalogue catalogue;
    if (!selected(host, request, result) || !loadAllPages(host, request, catalogue, result))
        return result;
    QDir().mkpath(request.folder + QStringLiteral("data/qmr/"));
    const QList<const CatalogueItem*> items = PhotoPageItems(host, catalogue, request.folder);
    for (int i = 0; i < items.size(); ++i) {
        const QString itemFolder = ItemFolder(request.folder, items.at(i)->id);
        QString problem;
        if (!BuildPhotoPage(request.chrome, itemFolder, *items.at(i), &problem) ||
            !WriteSiteStylesheet(itemFolder, &problem))
            return failed(host, problem);
        host.progress(i + 1, items.size());
        host.yield();
        if (host.cancelled()) return stopped(host);
    }
    return done();
}

WebsiteResult CreateHomePage(BuildHost& host, const WebsiteRequest& request) {
    WebsiteResult result;
    if (!selected(host, request, result)) return result;
    Catalogue catalogue;
    if (!load(host, request, catalogue, result)) return result;
    const QList<const CatalogueItem*> items = PhotoPageItems(host, catalogue, request.folder);
    const QString qmr = request.folder + QStringLiteral("data/qmr/");
    QString problem;
    for (const CatalogueItem* item : items)
        if (!WriteNoPictureIcon(ItemFolder(request.folder, item->id), &problem))
            return failed(host, problem);
    if (!BuildGallery(request.chrome, items, request.folder, request.linkToSourceURL, &problem) ||
        !WriteSiteStylesheet(qmr, &problem))
        return failed(host, problem);
    host.openDocument(ToNativePath(qmr + GalleryPageName(1)));
    return done();
}

WebsiteResult BuildWebsite(BuildHost& host, const WebsiteRequest& request) {
    WebsiteResult result = makeCopies(host, request, true, true);
    // The reserved step between the copies and the pages does nothing.
    if (result.ok) result = CreatePhotoPages(host, request);
    if (result.ok) result = CreateHomePage(host, request);
    if (result.ok)
        host.add2loglist(request.chrome.scrapbookName +
                         QStringLiteral("Build all things for this Website ok!"));
    return result;
}

WebsiteResult menu_Build_Website_All(BuildHost& host, WebsiteStatus& status,
                                     const WebsiteRequest& request) {
    status.showBuildFrame();
    host.yield();
    return BuildWebsite(host, request);
}

WebsiteRequest WebsiteRequestFor(AppSettings& settings, const QString& folder, const QString& name,
                                 const WebsiteOptions& options) {
    const ScrapbookProperties properties = settings.load_ScrapbookName(ScrapbookIniPath(folder));
    WebsiteRequest request;
    request.folder = folder;
    request.chrome.scrapbookName = name.trimmed();
    if (request.chrome.scrapbookName.isEmpty()) request.chrome.scrapbookName = properties.name;
    if (request.chrome.scrapbookName.isEmpty())
        request.chrome.scrapbookName = GetLastFolderName(folder);
    settings.ScrapbookName = request.chrome.scrapbookName;
    request.chrome.addresses = options.addresses;
    request.chrome.advertising = options.googleAD && properties.makeChmFile;
    request.linkToSourceURL = properties.linkToSourceURL;
    request.limits = options.limits;
    request.jobs = options.jobs;
    return request;
}

AllWebsitesResult BuildAllWebsites(BuildHost& host, WebsiteStatus& status,
                                   const QList<ScrapbookRow>& rows, AppSettings& settings,
                                   const WebsiteOptions& options) {
    AllWebsitesResult all;
    const int count = int(rows.size());
    for (int i = 0; i < count; ++i) {
        const ScrapbookRow& row = rows.at(i);
        status.showScrapbookFolder(ToNativePath(row.folder));
        status.showScrapbookName(row.name);
        const WebsiteRequest request = WebsiteRequestFor(settings, row.folder, row.name, options);
        host.add2loglist(QStringLiteral("Start Build:%1/%2...%3")
                             .arg(i + 1)
                             .arg(count)
                             .arg(request.chrome.scrapbookName));
        WebsiteResult result = options.prepare ? options.prepare(request) : done();
        if (result.ok) result = BuildWebsite(host, request);
        if (result.ok) {
            ++all.built;
        } else {
            all.failed.append(request.chrome.scrapbookName);
        }
        if (host.cancelled()) {
            all.cancelled = true;
            return all;
        }
    }
    if (all.failed.isEmpty())
        host.add2loglist(QStringLiteral("Build all things for all Websites ok!"));
    else
        host.add2loglist(QStringLiteral("Built %1 of %2 websites; these failed: %3")
                             .arg(all.built)
                             .arg(count)
                             .arg(all.failed.join(QStringLiteral(", "))));
    return all;
}

const QString kVideoPagesWarning = QStringLiteral(
    "The Procedure will Delete and ReCreate the Pages in this scrapook, If the page type=File "
    "and include a WMV file.You can't Undo after this procedure!! ");

WebsiteResult MakeVideoPages(BuildHost& host, const WebsiteRequest& request) {
    WebsiteResult result;
    if (!selected(host, request, result)) return result;
    if (!host.askOkCancel(kVideoPagesWarning)) {
        result.problem = QStringLiteral("Cancelled: no page was changed.");
        return result;
    }
    Catalogue catalogue;
    if (!loadAllPages(host, request, catalogue, result)) return result;
    for (const VideoItem& video : VideoItems(host, catalogue, request.folder)) {
        QString problem;
        if (!WriteVideoPage(request.chrome,
                            ItemFolder(request.folder, video.item->id) + QStringLiteral("org.html"),
                            video.item->title, video.clip, &problem))
            return failed(host, problem);
        host.yield();
    }
    host.messageBox(QStringLiteral("Create Video Page ok!"));
    return done();
}

WebsiteResult CreateMediaPlayerLists(BuildHost& host, const WebsiteRequest& request) {
    WebsiteResult result;
    Catalogue catalogue;
    if (!selected(host, request, result) || !loadAllPages(host, request, catalogue, result))
        return result;
    const QList<VideoItem> videos = VideoItems(host, catalogue, request.folder);
    const QString& siteBase = request.chrome.addresses.videoSiteBase;
    int undated = 0;
    for (const PlaylistVariant variant : {PlaylistVariant::Local, PlaylistVariant::Website}) {
        const PlaylistReport report =
            WriteVideoPlaylist(host, videos, request.folder, variant, siteBase);
        if (!report.written) return failed(host, report.problem);
        undated += report.undatedClips;
    }
    for (const PlaylistVariant variant : {PlaylistVariant::Local, PlaylistVariant::Website}) {
        const PlaylistReport report =
            WritePicturePlaylist(host, catalogue, request.folder, variant, siteBase);
        if (!report.written) return failed(host, report.problem);
    }
    host.messageBox(QStringLiteral("Create windows Media Player List ok!"));
    result = done();
    result.undatedClips = undated;
    return result;
}

} // namespace qmr
