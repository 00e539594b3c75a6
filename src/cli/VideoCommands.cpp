#include "cli/VideoCommands.h"

#include "cli/WebsiteArguments.h"

#include <QTextStream>

#include <cstdio>

#include <unistd.h>

namespace qmr {
namespace {

// Asks the question on the terminal, or takes --yes as the answer.
class TerminalHost : public ConsoleHost {
  public:
    explicit TerminalHost(bool yes) : m_yes(yes) {}
    bool askOkCancel(const QString& text) override {
        if (m_yes) return ConsoleHost::askOkCancel(text);
        std::fputs(qPrintable(text + QStringLiteral("\nOK or Cancel? [ok/cancel] ")), stdout);
        std::fflush(stdout);
        QTextStream in(stdin);
        const QString answer = in.readLine().trimmed().toLower();
        return answer == u"ok" || answer == u"o" || answer == u"yes" || answer == u"y";
    }

  private:
    bool m_yes;
};

// The request for the scrapbook FOLDER names, with its own settings; false when there is none.
bool requestFor(ConsoleHost& host, const WebsiteArguments& parsed, WebsiteRequest& request) {
    const QString folder = CheckedScrapbookFolder(parsed.folder);
    if (folder.isEmpty()) return false;
    AppSettings settings(host);
    request =
        WebsiteRequestFor(settings, folder, QString(), CommandLineWebsiteOptions(settings, parsed));
    return true;
}

} // namespace

QString VideosCommand::description() const {
    return QStringLiteral(
        "Writes a player page org.html into the folder of every file item that holds a .wmv\n"
        "clip (its first clip), replacing the org.html there. Asks first, on the terminal;\n"
        "--yes answers OK (needed where there is no terminal).");
}

int VideosCommand::execute(const QStringList& arguments, ConsoleHost& host) {
    WebsiteArguments parsed;
    if (!ParseWebsiteArguments(name(), arguments, {QStringLiteral("--yes")}, true, parsed))
        return ExitBadInput;
    WebsiteRequest request;
    if (!requestFor(host, parsed, request)) return ExitBadInput;
    if (!parsed.yes && !isatty(STDIN_FILENO)) {
        PrintError(QStringLiteral("quillmere videos: there is no terminal to ask before pages "
                                  "are replaced. Run it again with --yes to answer OK."));
        return ExitBadInput;
    }
    TerminalHost asking(parsed.yes);
    return WebsiteExitCode(MakeVideoPages(asking, request));
}

QString PlaylistsCommand::description() const {
    return QStringLiteral(
        "Writes the Windows Media Player playlists of the scrapbook in FOLDER into data/qmr/:\n"
        "WMV_Play_List_local.wpl and WMV_Play_List.wpl (the .wmv clips; the local pass\n"
        "sets each clip's time from a name such as clip-D(2008-0309-142530).wmv), and\n"
        "WMV_Play__PIC_List_local.wpl and WMV_Play_PIC_List.wpl (the 640x480 pictures).\n"
        "Website addresses start with [Site] VideoSiteBase of Quillmere.ini. Exit 2 when\n"
        "a clip name holds -D( but no date.");
}

int PlaylistsCommand::execute(const QStringList& arguments, ConsoleHost& host) {
    WebsiteArguments parsed;
    if (!ParseWebsiteArguments(name(), arguments, {}, true, parsed)) return ExitBadInput;
    WebsiteRequest request;
    if (!requestFor(host, parsed, request)) return ExitBadInput;
    const WebsiteResult result = CreateMediaPlayerLists(host, request);
    if (result.ok && result.undatedClips > 0) {
        PrintError(QStringLiteral("quillmere: %1 clip names hold \"-D(\" but no date; those "
                                  "clips keep their times. Rename them as "
                                  "name-D(yyyy-mmdd-hhmmss).wmv.")
                       .arg(result.undatedClips));
        return ExitBadInput;
    }
    return WebsiteExitCode(result);
}

} // namespace qmr
