#pragma once

#include <QString>

namespace qmr {

// True when a source address leads to the web: not empty and not a local "file" address. The
// list and folder pages link such an item to its source instead of its saved copy.
inline bool IsWebSource(const QString& source) {
    return !source.isEmpty() && !source.startsWith(QLatin1String("file"));
}

} // namespace qmr
