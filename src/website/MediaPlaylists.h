#pragma once

#include "catalogue/Catalogue.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

namespace qmr {

class BuildHost;

// A clip to play: a "file" item (its type in any case) whose folder holds a Windows Media
// clip, and the first such clip in name order.
struct VideoItem {
    const CatalogueItem* item = nullptr;
    QString clip;
};

// The video items of a catalogue in catalogue order. An item whose identifier cannot name a
// folder is left out with a log line.
QList<VideoItem> VideoItems(BuildHost& host, const Catalogue& catalogue,
                            const QString& scrapbookFolder);

// Each playlist comes in two forms: "local" addresses relative to "data/qmr/", for the folder
// on disk, and "website" addresses under the published copy of the scrapbook.
enum class PlaylistVariant { Local, Website };
// "website" gives the website form; any other mode the local one.
PlaylistVariant PlaylistVariantOf(const QString& mode);

QString VideoPlaylistPath(const QString& scrapbookFolder, PlaylistVariant variant);
QString PicturePlaylistPath(const QString& scrapbookFolder, PlaylistVariant variant);

// The recording time a clip's name holds after "-D(", as "clip-D(2008-0309-142530).wmv"
// holds 2008-03-09 14:25:30 (local time); nothing when there is no "-D(" or its fields form no
// date and time.
std::optional<QDateTime> ClipNameTime(const QString& clipName);

// What writing a playlist met that the user should see: clips whose names hold "-D(" but no
// date, each with a log line.
struct PlaylistReport {
    bool written = false;
    QString problem; // why the playlist could not be written
    int undatedClips = 0;
};

// Writes the video playlist of one variant. The local pass also sets each clip's
// last-write time to the time its name holds, so that players sort the clips as recorded.
// `siteBase` is the published address of the scrapbook's "data/" folder, ending in "/".
PlaylistReport WriteVideoPlaylist(BuildHost& host, const QList<VideoItem>& videos,
                                  const QString& scrapbookFolder, PlaylistVariant variant,
                                  const QString& siteBase);

// Writes the picture playlist of one variant: the screen-sized copies of every item that has
// a photo page, in catalogue order.
PlaylistReport WritePicturePlaylist(BuildHost& host, const Catalogue& catalogue,
                                    const QString& scrapbookFolder, PlaylistVariant variant,
                                    const QString& siteBase);

} // namespace qmr
