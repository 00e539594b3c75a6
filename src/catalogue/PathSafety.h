#pragma once

#include <QString>

namespace qmr {

// True when a name read from a catalogue (an item identifier, a file name) can be used as one
// component of a path inside its scrapbook: not empty, no separator of any platform, no "..",
// no drive colon and no NUL. Builders skip an item whose name fails, with a log line.
bool IsSafePathComponent(const QString& name);

} // namespace qmr
