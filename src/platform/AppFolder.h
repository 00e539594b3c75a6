#pragma once

#include <QString>

namespace qmr {

// The application folder holds Quillmere.ini, ScrapBookStore.txt, NodeID.txt, chm/ and
// GoogleAD/. It is $QUILLMERE_HOME when set, else the executable's folder on Windows, else
// $XDG_DATA_HOME/quillmere (default ~/.local/share/quillmere). The result ends in "/".
QString ApplicationFolder();

// Makes ApplicationFolder() answer `folder` for the rest of the run (the --home option).
void SetApplicationFolderOverride(const QString& folder);

// The global settings file inside the application folder.
QString GlobalIniPath();

} // namespace qmr
