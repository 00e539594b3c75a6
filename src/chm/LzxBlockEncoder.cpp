#include "chm/LzxBlockEncoder.h"

#include "chm/HuffmanCode.h"
#include "chm/LzxTreeWriter.h"

#include <span>

namespace qmr::chm {

using namespace lzx;

LzxBlockEncoder::LzxBlockEncoder(int windowBits)
    : m_mainSymbols(kLiteralSymbols + PositionSlotCount(windowBits) * kLengthHeaders) {
    startInterval();
}

void LzxBlockEncoder::startInterval() {
    m_previousMain.fill(0);
    m_previousLength.fill(0);
}

void LzxBlockEncoder::plan(const SymbolCounts& counts, LzxBlockCodes& codes) const {
    const size_t mainSymbols = size_t(m_mainSymbols);
    codes.mainLengths.fill(0);
    BuildCodeLengths(std::span(counts.main.data(), mainSymbols), kMaxCodeBits,
                     std::span(codes.mainLengths.data(), mainSymbols));
    BuildCodeLengths(counts.length, kMaxCodeBits, codes.lengthLengths);
    BuildCodeLengths(counts.aligned, kMaxAlignedCodeBits, codes.alignedLengths);

    uint64_t bits = 3 + 24;
    for (size_t s = 0; s < mainSymbols; ++s)
        bits += uint64_t(counts.main[s]) * codes.mainLengths[s];
    for (size_t s = 0; s < counts.length.size(); ++s)
        bits += uint64_t(counts.length[s]) * codes.lengthLengths[s];
    // The low three footer bits of far matches: as they are, or through the aligned tree.
    uint64_t verbatimBits = 0;
    uint64_t alignedBits = kAlignedSymbols * 3;
    for (size_t s = 0; s < counts.aligned.size(); ++s) {
        verbatimBits += uint64_t(counts.aligned[s]) * kAlignedBits;
        alignedBits += uint64_t(counts.aligned[s]) * codes.alignedLengths[s];
    }
    codes.aligned = verbatimBits > 0 && alignedBits < verbatimBits;
    bits += codes.aligned ? alignedBits : verbatimBits;
    bits += LzxTreeLengthsBits(codes.mainLengths.data(), m_previousMain.data(), 0, kLiteralSymbols);
    bits += LzxTreeLengthsBits(codes.mainLengths.data(), m_previousMain.data(), kLiteralSymbols,
                               m_mainSymbols);
    bits +=
        LzxTreeLengthsBits(codes.lengthLengths.data(), m_previousLength.data(), 0, kLengthSymbols);
    codes.bits = bits;
}

int LzxBlockEncoder::worstHeaderBytes() const {
    return 16 + WorstLzxTreeBytes(kLiteralSymbols) +
           WorstLzxTreeBytes(m_mainSymbols - kLiteralSymbols) + WorstLzxTreeBytes(kLengthSymbols);
}

void LzxBlockEncoder::writeHeader(LzxBitWriter& writer, LzxBlockCodes& codes,
                                  qsizetype blockBytes) {
    AssignCanonicalCodes(std::span(codes.mainLengths.data(), size_t(m_mainSymbols)),
                         std::span(codes.mainCodes.data(), size_t(m_mainSymbols)));
    AssignCanonicalCodes(codes.lengthLengths, codes.lengthCodes);
    if (codes.aligned) AssignCanonicalCodes(codes.alignedLengths, codes.alignedCodes);

    writer.reserve(worstHeaderBytes());
    writer.write(codes.aligned ? kBlockAligned : kBlockVerbatim, 3);
    writer.write(uint32_t(blockBytes), 24);
    if (codes.aligned)
        for (uint8_t length : codes.alignedLengths)
            writer.write(length, 3);
    WriteLzxTreeLengths(writer, codes.mainLengths.data(), m_previousMain.data(), 0,
                        kLiteralSymbols);
    WriteLzxTreeLengths(writer, codes.mainLengths.data(), m_previousMain.data(), kLiteralSymbols,
                        m_mainSymbols);
    WriteLzxTreeLengths(writer, codes.lengthLengths.data(), m_previousLength.data(), 0,
                        kLengthSymbols);
}

void LzxBlockEncoder::writeItems(LzxBitWriter& writer, const LzxBlockCodes& codes,
                                 const Item* begin, const Item* end) {
    for (const Item* item = begin; item != end; ++item) {
        writer.write(codes.mainCodes[item->mainSymbol], codes.mainLengths[item->mainSymbol]);
        if (item->mainSymbol < kLiteralSymbols) continue;
        if (HasLengthSymbol(item->mainSymbol))
            writer.write(codes.lengthCodes[item->lengthSymbol],
                         codes.lengthLengths[item->lengthSymbol]);
        if (codes.aligned && item->footerBits >= kAlignedBits) {
            writer.write(item->footer >> kAlignedBits, item->footerBits - kAlignedBits);
            const uint32_t low = item->footer & 7;
            writer.write(codes.alignedCodes[low], codes.alignedLengths[low]);
        } else {
            writer.write(item->footer, item->footerBits);
        }
    }
}

} // namespace qmr::chm
