#pragma once

#include "cli/Command.h"

namespace qmr {

// quillmere videos FOLDER [--yes]: a player page "org.html" for every video item, as "Make
// Video on Html Page" does, after the same question (asked on the terminal; --yes answers it).
class VideosCommand : public Command {
  public:
    QString name() const override { return QStringLiteral("videos"); }
    QString arguments() const override { return QStringLiteral("FOLDER [--yes]"); }
    QString description() const override;
    int execute(const QStringList& arguments, ConsoleHost& host) override;
};

// quillmere playlists FOLDER: the Windows Media Player playlists of the videos and the
// pictures, as "Create Windows Media Player List for Video" does.
class PlaylistsCommand : public Command {
  public:
    QString name() const override { return QStringLiteral("playlists"); }
    QString arguments() const override { return QStringLiteral("FOLDER"); }
    QString description() const override;
    int execute(const QStringList& arguments, ConsoleHost& host) override;
};

} // namespace qmr
