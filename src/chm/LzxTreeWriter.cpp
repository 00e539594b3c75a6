#include "chm/LzxTreeWriter.h"

#include "chm/HuffmanCode.h"
#include "chm/LzxFormat.h"

#include <array>
#include <vector>

namespace qmr::chm {
namespace {

// Pretree symbols 0 to 16 give a length as (previous - length) mod 17; the others start runs.
constexpr int kZeros4To19 = 17;  // 4 more bits: run length - 4
constexpr int kZeros20To51 = 18; // 5 more bits: run length - 20
constexpr int kSame4To5 = 19;    // 1 more bit: run length - 4, then the length's symbol

struct PretreeSymbol {
    uint8_t symbol;
    uint8_t extraBits;
    uint8_t extra;
    uint8_t delta; // the length's symbol after kSame4To5
};

uint8_t Delta(uint8_t previous, uint8_t length) {
    return uint8_t((previous + 17 - length) % 17);
}

std::vector<PretreeSymbol> PretreeSymbols(const uint8_t* lengths, const uint8_t* previous,
                                          int first, int last) {
    std::vector<PretreeSymbol> symbols;
    for (int i = first; i < last;) {
        int run = 1;
        while (i + run < last && lengths[i + run] == lengths[i])
            ++run;
        if (lengths[i] == 0 && run >= 4) {
            while (run >= 20) {
                const int take = std::min(run, 51);
                symbols.push_back({kZeros20To51, 5, uint8_t(take - 20), 0});
                i += take;
                run -= take;
            }
            if (run >= 4) {
                symbols.push_back({kZeros4To19, 4, uint8_t(run - 4), 0});
                i += run;
                run = 0;
            }
        } else if (run >= 4) {
            while (run >= 4) {
                const int take = std::min(run, 5);
                symbols.push_back(
                    {kSame4To5, 1, uint8_t(take - 4), Delta(previous[i], lengths[i])});
                i += take;
                run -= take;
            }
        }
        for (; run > 0; --run, ++i)
            symbols.push_back({Delta(previous[i], lengths[i]), 0, 0, 0});
    }
    return symbols;
}

// The pretree symbols of a range of lengths with the pretree's own code.
struct PretreeCode {
    std::vector<PretreeSymbol> symbols;
    std::array<uint8_t, lzx::kPretreeSymbols> lengths;

    PretreeCode(const uint8_t* treeLengths, const uint8_t* previous, int first, int last)
        : symbols(PretreeSymbols(treeLengths, previous, first, last)) {
        std::array<uint32_t, lzx::kPretreeSymbols> counts = {};
        for (const PretreeSymbol& s : symbols) {
            ++counts[s.symbol];
            if (s.symbol == kSame4To5) ++counts[s.delta];
        }
        BuildCodeLengths(counts, lzx::kMaxPretreeBits, lengths);
    }
};

} // namespace

void WriteLzxTreeLengths(LzxBitWriter& out, const uint8_t* lengths, uint8_t* previous, int first,
                         int last) {
    const PretreeCode pretree(lengths, previous, first, last);
    std::array<uint16_t, lzx::kPretreeSymbols> codes;
    AssignCanonicalCodes(pretree.lengths, codes);
    for (uint8_t length : pretree.lengths)
        out.write(length, 4);
    for (const PretreeSymbol& s : pretree.symbols) {
        out.write(codes[s.symbol], pretree.lengths[s.symbol]);
        if (s.extraBits) out.write(s.extra, s.extraBits);
        if (s.symbol == kSame4To5) out.write(codes[s.delta], pretree.lengths[s.delta]);
    }
    for (int i = first; i < last; ++i)
        previous[i] = lengths[i];
}

int LzxTreeLengthsBits(const uint8_t* lengths, const uint8_t* previous, int first, int last) {
    const PretreeCode pretree(lengths, previous, first, last);
    int bits = lzx::kPretreeSymbols * 4;
    for (const PretreeSymbol& s : pretree.symbols) {
        bits += pretree.lengths[s.symbol] + s.extraBits;
        if (s.symbol == kSame4To5) bits += pretree.lengths[s.delta];
    }
    return bits;
}

} // namespace qmr::chm
