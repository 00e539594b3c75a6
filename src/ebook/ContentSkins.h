#pragma once

#include "website/PageChrome.h"

#include <QStringList>

namespace qmr {

// The fixed markup of the two decorated content page skins. The header lines follow the page
// head and end inside the cell that receives the entries; the closing lines close what the
// header opened. Every image cell also has a colour, so a page without its images still reads
// well.

// "kiosk": logo and banner, a bar, then a centred table headed "Content View".
QStringList KioskSkinHeader(const PageChrome& chrome);
QStringList KioskSkinClosing(const PageChrome& chrome);

// "logitech": a dark strip with the maker's logo, then a "Content View" panel.
QStringList LogitechSkinHeader(const PageChrome& chrome);
QStringList LogitechSkinClosing();

} // namespace qmr
