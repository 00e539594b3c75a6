#pragma once

#include "host/BuildHost.h"
#include "platform/AppFolder.h"
#include "website/PageChrome.h"

#include <QDate>
#include <QString>

#include <functional>

namespace qmr {

// What a command that makes a new scrapbook needs from whoever runs it: where NodeID.txt is
// kept, which day it is (fixed in tests so that identifiers are stable), the host that shows
// log lines, and the chrome of the pages it writes.
struct AuthoringContext {
    explicit AuthoringContext(BuildHost& buildHost) : host(buildHost) {}

    BuildHost& host;
    // Folder of NodeID.txt, ending in "/".
    QString applicationFolder = ApplicationFolder();
    // Asked once for every identifier drawn.
    std::function<QDate()> today = [] { return QDate::currentDate(); };
    PageChrome chrome;
};

} // namespace qmr
