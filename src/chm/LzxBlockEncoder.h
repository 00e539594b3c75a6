#pragma once

#include "chm/LzxBitWriter.h"
#include "chm/LzxFormat.h"

#include <array>
#include <cstdint>

namespace qmr::chm {

// The trees of one block: code lengths, codes once the block is written, and whether the low
// footer bits of far matches get a tree of their own (an aligned-offset block).
struct LzxBlockCodes {
    std::array<uint8_t, lzx::kMaxMainSymbols> mainLengths;
    std::array<uint8_t, lzx::kLengthSymbols> lengthLengths;
    std::array<uint8_t, lzx::kAlignedSymbols> alignedLengths;
    std::array<uint16_t, lzx::kMaxMainSymbols> mainCodes;
    std::array<uint16_t, lzx::kLengthSymbols> lengthCodes;
    std::array<uint16_t, lzx::kAlignedSymbols> alignedCodes;
    bool aligned = false;
    // The bits the block takes, header included, less the footer bits that any block holding
    // the same items spends alike: enough to choose between ways of cutting items into blocks.
    uint64_t bits = 0;
};

// Codes and writes the blocks of one reset interval. A block's code lengths are written as
// changes from the previous block's, so the blocks are planned and written in order.
class LzxBlockEncoder {
  public:
    explicit LzxBlockEncoder(int windowBits);

    // A new interval: the decoder has forgotten every previous length.
    void startInterval();

    // The trees for a block of items counted `counts`, and its price.
    void plan(const lzx::SymbolCounts& counts, LzxBlockCodes& codes) const;

    // The block's type, its length in bytes and its trees; the next block's lengths are then
    // written against these.
    void writeHeader(LzxBitWriter& writer, LzxBlockCodes& codes, qsizetype blockBytes);

    // Items of the block whose header was written last; room for them must be reserved.
    static void writeItems(LzxBitWriter& writer, const LzxBlockCodes& codes, const lzx::Item* begin,
                           const lzx::Item* end);

    // The most bytes writeHeader() writes, and writeItems() writes for one item.
    int worstHeaderBytes() const;
    static constexpr int kWorstItemBytes = (lzx::kMaxCodeBits * 2 + 17 + 7) / 8;

  private:
    int m_mainSymbols;
    std::array<uint8_t, lzx::kMaxMainSymbols> m_previousMain;
    std::array<uint8_t, lzx::kLengthSymbols> m_previousLength;
};

} // namespace qmr::chm
