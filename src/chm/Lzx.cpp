#include "chm/Lzx.h"

#include "chm/LzxBitWriter.h"
#include "chm/LzxBlockEncoder.h"
#include "chm/LzxFormat.h"
#include "chm/LzxMatchFinder.h"

#include <algorithm>

namespace qmr::chm {

using namespace lzx;

namespace {

// A block's length is stored in 24 bits; blocks of whole frames stay well below that.
constexpr int kMaxBlockFrames = 64;

// 32 MB intervals: far beyond what pays, and the match finder's tables stay in memory's reach.
constexpr int kMaxFramesPerReset = 1024;

} // namespace

struct LzxCompressor::State {
    explicit State(const LzxSettings& s)
        : settings{std::clamp(s.windowBits, kMinWindowBits, kMaxWindowBits),
                   std::clamp(s.framesPerReset, 1, kMaxFramesPerReset)},
          finder(settings.windowBits), encoder(settings.windowBits) {}

    void compressInterval(const uint8_t* data, int size, int inputEnd, LzxInterval& out);
    int extendBlock(int firstFrame);
    void writeBlock(LzxBitWriter& writer, int firstFrame, int endFrame, int size, LzxInterval& out);

    const LzxSettings settings;
    LzxMatchFinder finder;
    LzxBlockEncoder encoder;
    LzxParse parse;
    // The block being planned, the frame that might join it, and the two together.
    LzxBlockCodes block, frame, joined;
    SymbolCounts blockCounts, joinedCounts;
};

void LzxCompressor::State::compressInterval(const uint8_t* data, int size, int inputEnd,
                                            LzxInterval& out) {
    finder.parse(data, size, inputEnd, parse);
    encoder.startInterval();
    LzxBitWriter writer(out.bytes);
    writer.reserve(4);
    writer.write(0, 1); // no E8 translation
    const int frames = int(parse.frameEnds.size());
    for (int firstFrame = 0; firstFrame < frames;) {
        const int endFrame = extendBlock(firstFrame);
        writeBlock(writer, firstFrame, endFrame, size, out);
        firstFrame = endFrame;
    }
    writer.finish();
}

// Grows a block frame by frame while one block costs less than the two it would replace, as it
// does when the frames use alike symbols. Leaves the chosen block's codes in `block`.
int LzxCompressor::State::extendBlock(int firstFrame) {
    const int frames = int(parse.frameEnds.size());
    blockCounts = parse.frameCounts[size_t(firstFrame)];
    encoder.plan(blockCounts, block);
    int endFrame = firstFrame + 1;
    for (; endFrame < frames && endFrame - firstFrame < kMaxBlockFrames; ++endFrame) {
        const SymbolCounts& next = parse.frameCounts[size_t(endFrame)];
        encoder.plan(next, frame);
        joinedCounts = blockCounts;
        joinedCounts += next;
        encoder.plan(joinedCounts, joined);
        if (joined.bits > block.bits + frame.bits) break;
        std::swap(block, joined);
        std::swap(blockCounts, joinedCounts);
    }
    return endFrame;
}

void LzxCompressor::State::writeBlock(LzxBitWriter& writer, int firstFrame, int endFrame, int size,
                                      LzxInterval& out) {
    const qsizetype blockBytes =
        std::min<qsizetype>(size, qsizetype(endFrame) * kFrameSize) - firstFrame * kFrameSize;
    out.frameStarts.push_back(writer.size());
    encoder.writeHeader(writer, block, blockBytes);
    for (int frame = firstFrame; frame < endFrame; ++frame) {
        if (frame > firstFrame) out.frameStarts.push_back(writer.size());
        const Item* begin =
            parse.items.data() + (frame == 0 ? 0 : parse.frameEnds[size_t(frame - 1)]);
        const Item* end = parse.items.data() + parse.frameEnds[size_t(frame)];
        writer.reserve((end - begin) * LzxBlockEncoder::kWorstItemBytes + 2);
        LzxBlockEncoder::writeItems(writer, block, begin, end);
        // The decoder skips to the next 16-bit boundary after every frame.
        writer.padToWord();
    }
}

LzxCompressor::LzxCompressor(const LzxSettings& settings)
    : m_state(std::make_unique<State>(settings)) {}

LzxCompressor::~LzxCompressor() = default;

LzxInterval LzxCompressor::compress(QByteArrayView input) {
    LzxInterval out;
    const qsizetype interval = m_state->settings.intervalSize();
    const auto* data = reinterpret_cast<const uint8_t*>(input.data());
    for (qsizetype start = 0; start < input.size(); start += interval) {
        const int size = int(std::min(interval, input.size() - start));
        if (size % kFrameSize == 0) {
            m_state->compressInterval(data + start, size, size, out);
        } else {
            // Readers decode every frame whole, the last too: it is padded with zero bytes.
            QByteArray padded = QByteArrayView(data + start, size).toByteArray();
            padded.append(kFrameSize - size % kFrameSize, '\0');
            m_state->compressInterval(reinterpret_cast<const uint8_t*>(padded.constData()),
                                      int(padded.size()), size, out);
        }
    }
    return out;
}

LzxInterval CompressLzxInterval(QByteArrayView input, const LzxSettings& settings) {
    return LzxCompressor(settings).compress(input);
}

} // namespace qmr::chm
