#pragma once

#include "library/cInifile.h"

#include <QRect>
#include <QSize>

namespace qmr {

// A window's placement as the settings file keeps it: its frame in pixels and its state.
struct FormPlacement {
    QRect frame;
    bool maximised = false;
    bool minimised = false;
};

// Placements are stored in twips, fifteen to a pixel on a common screen.
inline constexpr int kTwipsPerPixel = 15;

// Stores the placement under ini.Section: nothing for a minimised window; else "Maximised"
// ("1" or "0") and, for a window that is not maximised, "Left", "Top", "Width" and "Height".
// ini.Key is kept; a failed write leaves LastReturnCode 0.
void SaveFormPosition(cInifile& ini, const FormPlacement& form);

// The placement stored under ini.Section, each missing or unreadable value taken from
// `current`; the size raised to `minimum` and the frame kept at least 4 pixels inside every
// edge of `screen` (moved first, then shrunk). ini.Key and ini.Default are kept.
FormPlacement LoadFormPosition(cInifile& ini, const FormPlacement& current, QSize minimum,
                               const QRect& screen);

} // namespace qmr
