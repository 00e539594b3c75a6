#pragma once

#include "cli/ConsoleHost.h"
#include "library/Settings.h"
#include "website/WebsiteCommands.h"

#include <QString>
#include <QStringList>

namespace qmr {

// What the website commands (website, websites, videos, playlists) read from their arguments.
struct WebsiteArguments {
    QString folder;
    QString step;          // --step: one step of the build instead of all of it
    int jobs = 0;          // --jobs N: picture-copy workers, 0 for one a core
    bool open = true;      // not --no-open: show the gallery in the browser
    bool googleAD = false; // --google-ad: the advert block in every page
    bool yes = false;      // --yes: answer OK to the question before pages are replaced
};

// Reads `arguments` for `command`, which takes the options named in `options` and, when
// `takesFolder`, one FOLDER. Prints what is wrong and returns false otherwise.
bool ParseWebsiteArguments(const QString& command, const QStringList& arguments,
                           const QStringList& options, bool takesFolder, WebsiteArguments& parsed);

// The scrapbook folder an argument names, made absolute, when it holds a scrapbook.rdf;
// otherwise empty, after printing why.
QString CheckedScrapbookFolder(const QString& argument);

// The options Quillmere.ini and the arguments give every scrapbook of a run.
WebsiteOptions CommandLineWebsiteOptions(const AppSettings& settings,
                                         const WebsiteArguments& arguments);

// Writes the pages every website page links where they are missing (see LinkedPages.h), with
// the e-book language and the home page the scrapbook's settings name.
WebsiteResult PrepareLinkedPages(ConsoleHost& host, AppSettings& settings,
                                 const WebsiteRequest& request);

// The exit code of a result, its problem printed on stderr: 0 done, 2 bad input, 1 failed.
int WebsiteExitCode(const WebsiteResult& result);

} // namespace qmr
