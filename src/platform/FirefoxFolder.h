#pragma once

#include <QString>

namespace qmr {

// Firefox's own folder, the one holding profiles.ini; ends in "/". On Windows
// %USERPROFILE%\Application Data\Mozilla\Firefox, on macOS ~/Library/Application Support/Firefox,
// elsewhere $HOME/.mozilla/firefox. The profile rules inside it are the same everywhere.
QString FirefoxFolder();

} // namespace qmr
