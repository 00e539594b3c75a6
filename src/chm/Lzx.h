#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <vector>

namespace qmr::chm {

// LZX as compiled help files use it: the input is cut into frames of 32 KB; every
// `framesPerReset` frames the decoder starts afresh (new window, new tables), so the intervals
// between resets are compressed independently, and on as many threads as there are cores.
inline constexpr qsizetype kLzxFrameSize = 0x8000;

struct LzxSettings {
    int windowBits = 16;    // the window is 2^windowBits bytes (15 to 21)
    int framesPerReset = 2; // frames between two resets of the decoder
    qsizetype intervalSize() const { return kLzxFrameSize * framesPerReset; }
};

// One reset interval compressed: its bytes, and where each of its frames starts in them (the
// first is 0). Every frame ends on a 16-bit boundary, as the decoder expects.
struct LzxInterval {
    QByteArray bytes;
    std::vector<qint64> frameStarts;
};

// Compresses one interval of at most settings.intervalSize() bytes (only the last interval of
// a stream may be shorter, and only its last frame may be short of 32 KB).
LzxInterval CompressLzxInterval(QByteArrayView input, const LzxSettings& settings);

} // namespace qmr::chm
