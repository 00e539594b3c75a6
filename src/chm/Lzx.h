#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <memory>
#include <vector>

namespace qmr::chm {

// LZX as compiled help files use it: the input is cut into frames of 32 KB; every
// `framesPerReset` frames the decoder starts afresh (new window, new tables), so the intervals
// between resets are compressed independently, and on as many threads as there are cores.
inline constexpr qsizetype kLzxFrameSize = 0x8000;

// The defaults are what other compilers write and every reader is known to read: a 64 KB window
// and a reset every 64 KB. Larger intervals compress better (about 6 % at four frames) but make
// a reader decode more to reach a page. Values outside the ranges below are brought within them.
struct LzxSettings {
    int windowBits = 16;    // the window is 2^windowBits bytes (15 to 21)
    int framesPerReset = 2; // frames between two resets of the decoder (1 to 1024)
    qsizetype intervalSize() const { return kLzxFrameSize * framesPerReset; }
};

// One reset interval compressed: its bytes, and where each of its frames starts in them (the
// first is 0). Every frame ends on a 16-bit boundary, as the decoder expects. Every frame holds
// 32 KB, since readers (7-Zip, chmlib) decode the last frame whole too: a short last frame is
// padded with zero bytes, and a reader told the input's true length (the reset table's) stops
// exactly there.
struct LzxInterval {
    QByteArray bytes;
    std::vector<qint64> frameStarts;
};

// A compressor that keeps its tables from one interval to the next, so a thread compressing
// many intervals allocates once. One object per thread.
class LzxCompressor {
  public:
    explicit LzxCompressor(const LzxSettings& settings = {});
    ~LzxCompressor();
    LzxCompressor(const LzxCompressor&) = delete;
    LzxCompressor& operator=(const LzxCompressor&) = delete;

    // Compresses `input` as consecutive reset intervals of settings.intervalSize() bytes,
    // concatenated, with frameStarts listing every frame (one interval when the input is no
    // longer). Input that does not fill its last frame is taken to end the stream: a caller
    // cutting a stream passes whole intervals but at its end. Empty input gives no bytes and no
    // frame.
    LzxInterval compress(QByteArrayView input);

  private:
    struct State;
    std::unique_ptr<State> m_state;
};

// The same with a compressor of its own.
LzxInterval CompressLzxInterval(QByteArrayView input, const LzxSettings& settings);

} // namespace qmr::chm
