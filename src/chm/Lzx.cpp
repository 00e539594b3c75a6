#include "chm/Lzx.h"

#include "chm/HuffmanCode.h"
#include "chm/LzxBitWriter.h"
#include "chm/LzxFormat.h"
#include "chm/LzxMatchFinder.h"
#include "chm/LzxTreeWriter.h"

#include <algorithm>
#include <array>

namespace qmr::chm {

using namespace lzx;

namespace {

// A block's length is stored in 24 bits; blocks of whole frames stay well below that.
constexpr int kMaxBlockFrames = 64;

// The most bytes one item takes: main code, length code and 17 footer bits.
constexpr int kWorstItemBytes = (kMaxCodeBits * 2 + 17 + 7) / 8;

struct BlockCodes {
    std::array<uint32_t, kMaxMainSymbols> mainCounts;
    std::array<uint32_t, kLengthSymbols> lengthCounts;
    std::array<uint32_t, kAlignedSymbols> alignedCounts;
    std::array<uint8_t, kMaxMainSymbols> mainLengths;
    std::array<uint8_t, kLengthSymbols> lengthLengths;
    std::array<uint8_t, kAlignedSymbols> alignedLengths;
    std::array<uint16_t, kMaxMainSymbols> mainCodes;
    std::array<uint16_t, kLengthSymbols> lengthCodes;
    std::array<uint16_t, kAlignedSymbols> alignedCodes;
    bool aligned = false;
};

} // namespace

struct LzxCompressor::State {
    explicit State(const LzxSettings& s)
        : settings{std::clamp(s.windowBits, kMinWindowBits, kMaxWindowBits),
                   std::max(s.framesPerReset, 1)},
          mainSymbols(kLiteralSymbols + PositionSlotCount(settings.windowBits) * kLengthHeaders),
          finder(settings.windowBits) {}

    void compressInterval(const uint8_t* data, int size, LzxInterval& out);
    void countBlock(int firstItem, int endItem);
    void buildCodes();
    void writeBlockHeader(LzxBitWriter& writer, qsizetype blockBytes);
    void writeItems(LzxBitWriter& writer, int firstItem, int endItem) const;

    const LzxSettings settings;
    const int mainSymbols;
    LzxMatchFinder finder;
    std::vector<Item> items;
    std::vector<int> frameEnds;
    BlockCodes codes;
    // The previous block's code lengths, which the next block's are written against.
    std::array<uint8_t, kMaxMainSymbols> previousMain;
    std::array<uint8_t, kLengthSymbols> previousLength;
};

void LzxCompressor::State::compressInterval(const uint8_t* data, int size, LzxInterval& out) {
    finder.parse(data, size, items, frameEnds);
    previousMain.fill(0);
    previousLength.fill(0);
    LzxBitWriter writer(out.bytes);
    writer.reserve(4);
    writer.write(0, 1); // no E8 translation

    const int frames = int(frameEnds.size());
    for (int firstFrame = 0; firstFrame < frames; firstFrame += kMaxBlockFrames) {
        const int endFrame = std::min(frames, firstFrame + kMaxBlockFrames);
        const int firstItem = firstFrame == 0 ? 0 : frameEnds[size_t(firstFrame - 1)];
        countBlock(firstItem, frameEnds[size_t(endFrame - 1)]);
        buildCodes();
        const qsizetype blockBytes =
            std::min<qsizetype>(size, qsizetype(endFrame) * kFrameSize) - firstFrame * kFrameSize;
        out.frameStarts.push_back(writer.size());
        writeBlockHeader(writer, blockBytes);
        for (int frame = firstFrame; frame < endFrame; ++frame) {
            if (frame > firstFrame) out.frameStarts.push_back(writer.size());
            const int begin = frame == 0 ? 0 : frameEnds[size_t(frame - 1)];
            const int end = frameEnds[size_t(frame)];
            writer.reserve(qsizetype(end - begin) * kWorstItemBytes + 2);
            writeItems(writer, begin, end);
            writer.padToWord();
        }
    }
    writer.finish();
}

void LzxCompressor::State::countBlock(int firstItem, int endItem) {
    codes.mainCounts.fill(0);
    codes.lengthCounts.fill(0);
    codes.alignedCounts.fill(0);
    for (int i = firstItem; i < endItem; ++i) {
        const Item& item = items[size_t(i)];
        ++codes.mainCounts[item.mainSymbol];
        if (HasLengthSymbol(item.mainSymbol)) ++codes.lengthCounts[item.lengthSymbol];
        if (item.footerBits >= kAlignedBits) ++codes.alignedCounts[item.footer & 7];
    }
}

void LzxCompressor::State::buildCodes() {
    const std::span<uint32_t> mainCounts(codes.mainCounts.data(), size_t(mainSymbols));
    const std::span<uint8_t> mainLengths(codes.mainLengths.data(), size_t(mainSymbols));
    std::fill(codes.mainLengths.begin(), codes.mainLengths.end(), uint8_t(0));
    BuildCodeLengths(mainCounts, kMaxCodeBits, mainLengths);
    AssignCanonicalCodes(mainLengths, std::span(codes.mainCodes.data(), size_t(mainSymbols)));
    BuildCodeLengths(codes.lengthCounts, kMaxCodeBits, codes.lengthLengths);
    AssignCanonicalCodes(codes.lengthLengths, codes.lengthCodes);

    // An aligned-offset block codes the low three footer bits of the far matches with a tree
    // of their own; it pays when those bits are far from uniform.
    BuildCodeLengths(codes.alignedCounts, kMaxAlignedCodeBits, codes.alignedLengths);
    uint64_t verbatimBits = 0;
    uint64_t alignedBits = kAlignedSymbols * 3;
    for (int s = 0; s < kAlignedSymbols; ++s) {
        verbatimBits += uint64_t(codes.alignedCounts[size_t(s)]) * kAlignedBits;
        alignedBits += uint64_t(codes.alignedCounts[size_t(s)]) * codes.alignedLengths[size_t(s)];
    }
    codes.aligned = verbatimBits > 0 && alignedBits < verbatimBits;
    if (codes.aligned) AssignCanonicalCodes(codes.alignedLengths, codes.alignedCodes);
}

void LzxCompressor::State::writeBlockHeader(LzxBitWriter& writer, qsizetype blockBytes) {
    writer.reserve(16 + WorstLzxTreeBytes(kLiteralSymbols) +
                   WorstLzxTreeBytes(mainSymbols - kLiteralSymbols) +
                   WorstLzxTreeBytes(kLengthSymbols));
    writer.write(codes.aligned ? kBlockAligned : kBlockVerbatim, 3);
    writer.write(uint32_t(blockBytes), 24);
    if (codes.aligned)
        for (uint8_t length : codes.alignedLengths)
            writer.write(length, 3);
    WriteLzxTreeLengths(writer, codes.mainLengths.data(), previousMain.data(), 0, kLiteralSymbols);
    WriteLzxTreeLengths(writer, codes.mainLengths.data(), previousMain.data(), kLiteralSymbols,
                        mainSymbols);
    WriteLzxTreeLengths(writer, codes.lengthLengths.data(), previousLength.data(), 0,
                        kLengthSymbols);
}

void LzxCompressor::State::writeItems(LzxBitWriter& writer, int firstItem, int endItem) const {
    for (int i = firstItem; i < endItem; ++i) {
        const Item& item = items[size_t(i)];
        writer.write(codes.mainCodes[item.mainSymbol], codes.mainLengths[item.mainSymbol]);
        if (item.mainSymbol < kLiteralSymbols) continue;
        if (HasLengthSymbol(item.mainSymbol))
            writer.write(codes.lengthCodes[item.lengthSymbol],
                         codes.lengthLengths[item.lengthSymbol]);
        if (codes.aligned && item.footerBits >= kAlignedBits) {
            writer.write(item.footer >> kAlignedBits, item.footerBits - kAlignedBits);
            const uint32_t low = item.footer & 7;
            writer.write(codes.alignedCodes[low], codes.alignedLengths[low]);
        } else {
            writer.write(item.footer, item.footerBits);
        }
    }
}

LzxCompressor::LzxCompressor(const LzxSettings& settings)
    : m_state(std::make_unique<State>(settings)) {}

LzxCompressor::~LzxCompressor() = default;

LzxInterval LzxCompressor::compress(QByteArrayView input) {
    LzxInterval out;
    const qsizetype interval = m_state->settings.intervalSize();
    const auto* data = reinterpret_cast<const uint8_t*>(input.data());
    for (qsizetype start = 0; start < input.size(); start += interval)
        m_state->compressInterval(data + start, int(std::min(interval, input.size() - start)), out);
    return out;
}

LzxInterval CompressLzxInterval(QByteArrayView input, const LzxSettings& settings) {
    return LzxCompressor(settings).compress(input);
}

} // namespace qmr::chm
