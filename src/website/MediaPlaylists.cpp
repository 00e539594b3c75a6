#include "website/MediaPlaylists.h"

#include "catalogue/LocalTextFile.h"
#include "catalogue/PathSafety.h"
#include "host/BuildHost.h"
#include "platform/FileTimes.h"
#include "platform/PathSeparators.h"
#include "website/FolderFiles.h"
#include "website/GalleryPages.h"
#include "website/PhotoPage.h"
#include "website/PictureSources.h"

#include <QDir>

namespace qmr {
namespace {

// The head every playlist has, its duration and count included: the player recounts them.
const char* const kHead[] = {
    "<?wpl version=\"1.0\"?>",
    "<smil>",
    "    <head>",
    "        <meta name=\"Generator\" content=\"Microsoft Windows Media Player -- "
    "11.0.5721.5145\"/>",
    "        <meta name=\"AverageRating\" content=\"0\"/>",
    "        <meta name=\"TotalDuration\" content=\"389\"/>",
    "        <meta name=\"ItemCount\" content=\"13\"/>",
    "        <title>WMV-Play-List</title>",
    "    </head>",
    "    <body>",
    "        <seq>",
};
const char* const kTail[] = {"        </seq>", "    </body>", "</smil>"};

void openPlaylist(LocalTextFile& file, const QString& path) {
    QDir().mkpath(QFileInfo(path).path());
    file.open(path);
    for (const char* line : kHead)
        file.writeLine(QString::fromLatin1(line));
}

PlaylistReport closePlaylist(LocalTextFile& file, PlaylistReport report) {
    for (const char* line : kTail)
        file.writeLine(QString::fromLatin1(line));
    report.written = file.commit(&report.problem);
    return report;
}

QString mediaLine(const QString& address) {
    return QStringLiteral("            <media src=\"") + address + QStringLiteral("\" />");
}

// The scrapbook's own address: the site base of its "data/" folder without that folder.
QString siteRoot(const QString& siteBase) {
    const QString data = QStringLiteral("data/");
    return siteBase.endsWith(data) ? siteBase.chopped(data.size()) : siteBase;
}

// A field of digits at `from` of exactly `length` characters; -1 otherwise.
int digits(const QString& text, qsizetype from, int length) {
    const QString field = text.mid(from, length);
    if (field.size() != length) return -1;
    for (const QChar c : field)
        if (!c.isDigit() || c.unicode() > 127) return -1;
    return field.toInt();
}

// Stamps a clip with the time its name holds; a name whose fields form no time is logged.
bool stampClip(BuildHost& host, const QString& path, const QString& clip) {
    if (!clip.contains(QLatin1String("-D("), Qt::CaseInsensitive)) return true;
    const std::optional<QDateTime> time = ClipNameTime(clip);
    if (!time) {
        host.add2loglist(
            QStringLiteral("Clip time not set: the name of %1 holds no date after \"-D(\" (a name "
                           "such as clip-D(2008-0309-142530).wmv holds 2008-03-09 14:25:30)")
                .arg(ToNativePath(path)));
        return false;
    }
    // Local calendar time with the zone's standard bias, as item times are stamped.
    const QDateTime utc(time->date(), time->time(), Qt::UTC);
    if (!SetLastWriteTime(path, utc.addSecs(qint64(StandardTimeBiasMinutes()) * 60)))
        host.add2loglist(
            QStringLiteral("Clip time not set: %1 cannot be stamped").arg(ToNativePath(path)));
    return true;
}

} // namespace

QList<VideoItem> VideoItems(BuildHost& host, const Catalogue& catalogue,
                            const QString& scrapbookFolder) {
    QList<VideoItem> videos;
    for (const CatalogueItem& item : catalogue.items) {
        if (item.type.toLower() != u"file") continue;
        if (!IsSafePathComponent(item.id)) {
            host.add2loglist(
                QStringLiteral("Skipped item \"%1\": its identifier cannot name a folder")
                    .arg(item.id));
            continue;
        }
        const QStringList clips =
            FilesEndingIn(ItemFolder(scrapbookFolder, item.id), QStringLiteral(".wmv"));
        if (!clips.isEmpty()) videos.append({&item, clips.first()});
    }
    return videos;
}

PlaylistVariant PlaylistVariantOf(const QString& mode) {
    return mode == u"website" ? PlaylistVariant::Website : PlaylistVariant::Local;
}

QString VideoPlaylistPath(const QString& scrapbookFolder, PlaylistVariant variant) {
    return scrapbookFolder + (variant == PlaylistVariant::Local
                                  ? QStringLiteral("data/qmr/WMV_Play_List_local.wpl")
                                  : QStringLiteral("data/qmr/WMV_Play_List.wpl"));
}

QString PicturePlaylistPath(const QString& scrapbookFolder, PlaylistVariant variant) {
    return scrapbookFolder + (variant == PlaylistVariant::Local
                                  ? QStringLiteral("data/qmr/WMV_Play__PIC_List_local.wpl")
                                  : QStringLiteral("data/qmr/WMV_Play_PIC_List.wpl"));
}

std::optional<QDateTime> ClipNameTime(const QString& clipName) {
    const qsizetype p = clipName.indexOf(QLatin1String("-D("), 0, Qt::CaseInsensitive);
    if (p < 0) return std::nullopt;
    const QDate date(digits(clipName, p + 3, 4), digits(clipName, p + 8, 2),
                     digits(clipName, p + 10, 2));
    const QTime time(digits(clipName, p + 13, 2), digits(clipName, p + 15, 2),
                     digits(clipName, p + 17, 2));
    if (!date.isValid() || !time.isValid()) return std::nullopt;
    return QDateTime(date, time);
}

PlaylistReport WriteVideoPlaylist(BuildHost& host, const QList<VideoItem>& videos,
                                  const QString& scrapbookFolder, PlaylistVariant variant,
                                  const QString& siteBase) {
    PlaylistReport report;
    LocalTextFile file;
    openPlaylist(file, VideoPlaylistPath(scrapbookFolder, variant));
    for (const VideoItem& video : videos) {
        const QString& id = video.item->id;
        if (variant == PlaylistVariant::Website) {
            file.writeLine(mediaLine(siteBase + id + QLatin1Char('/') + video.clip));
            continue;
        }
        file.writeLine(mediaLine(QStringLiteral("../") + id + QLatin1Char('/') + video.clip));
        if (!stampClip(host, ItemFolder(scrapbookFolder, id) + video.clip, video.clip))
            ++report.undatedClips;
    }
    return closePlaylist(file, report);
}

PlaylistReport WritePicturePlaylist(BuildHost& host, const Catalogue& catalogue,
                                    const QString& scrapbookFolder, PlaylistVariant variant,
                                    const QString& siteBase) {
    PlaylistReport report;
    LocalTextFile file;
    openPlaylist(file, PicturePlaylistPath(scrapbookFolder, variant));
    const QList<const CatalogueItem*> items = PhotoPageItems(host, catalogue, scrapbookFolder);
    for (int i = 0; i < items.size(); ++i) {
        const QString& id = items.at(i)->id;
        const std::optional<QStringList> pictures =
            PictureList(ItemFolder(scrapbookFolder, id) + kScreenCopyFolder, &report.problem);
        if (!pictures) return report;
        for (const QString& name : *pictures)
            file.writeLine(
                mediaLine(variant == PlaylistVariant::Website
                              ? siteRoot(siteBase) + QStringLiteral("data/") + id +
                                    QStringLiteral("/640x480/") + name
                              : QStringLiteral("../") +
                                    ToNativePath(id + QStringLiteral("/640x480/") + name)));
        host.progress(i + 1, items.size());
        host.yield();
    }
    return closePlaylist(file, report);
}

} // namespace qmr
