#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

// The numbers of the LZX format that the match finder and the encoder share.
namespace qmr::chm::lzx {

inline constexpr int kMinMatch = 2;
inline constexpr int kMaxMatch = 257;
inline constexpr int kFrameSize = 0x8000;

inline constexpr int kLiteralSymbols = 256;
// The low three bits of a match's main symbol hold its length less 2, 7 meaning "7 or more,
// a length symbol follows".
inline constexpr int kLengthHeaders = 8;
inline constexpr int kLengthHeaderMax = kLengthHeaders - 1;
inline constexpr int kLengthSymbols = 249;
inline constexpr int kAlignedSymbols = 8;
inline constexpr int kAlignedBits = 3;
inline constexpr int kPretreeSymbols = 20;
inline constexpr int kRepeatSlots = 3;
inline constexpr int kMaxPositionSlots = 50;
inline constexpr int kMaxMainSymbols = kLiteralSymbols + kMaxPositionSlots * kLengthHeaders;

// Code lengths as the block header can store them: main and length trees through the pretree
// (0 to 16), pretree lengths in 4 bits, aligned-offset lengths in 3 bits.
inline constexpr int kMaxCodeBits = 16;
inline constexpr int kMaxPretreeBits = 15;
inline constexpr int kMaxAlignedCodeBits = 7;

inline constexpr int kBlockVerbatim = 1;
inline constexpr int kBlockAligned = 2;

inline constexpr int kMinWindowBits = 15;
inline constexpr int kMaxWindowBits = 21;

// Slots 36 and above all carry 17 footer bits, so their bases step by 2^17.
inline constexpr int kFirstLinearSlot = 36;
inline constexpr uint32_t kFirstLinearBase = 1u << 18;

inline constexpr int FooterBits(int slot) {
    if (slot < 4) return 0;
    return slot >= kFirstLinearSlot ? 17 : (slot - 2) >> 1;
}

inline constexpr uint32_t SlotBase(int slot) {
    if (slot < 4) return uint32_t(slot);
    if (slot >= kFirstLinearSlot)
        return kFirstLinearBase + (uint32_t(slot - kFirstLinearSlot) << 17);
    return (2u | uint32_t(slot & 1)) << ((slot >> 1) - 1);
}

// Position slots the window needs: the first slot whose base reaches the window size.
inline constexpr int PositionSlotCount(int windowBits) {
    int slot = 0;
    while (SlotBase(slot) < (1u << windowBits))
        ++slot;
    return slot;
}

// A match offset is sent as offset + 2, leaving slots 0 to 2 for the repeated offsets.
inline constexpr uint32_t FormattedOffset(uint32_t offset) {
    return offset + 2;
}

inline constexpr int PositionSlot(uint32_t formatted) {
    if (formatted < 4) return int(formatted);
    if (formatted >= kFirstLinearBase)
        return kFirstLinearSlot + int((formatted - kFirstLinearBase) >> 17);
    const int high = std::bit_width(formatted) - 1;
    return 2 * high + int((formatted >> (high - 1)) & 1);
}

// The largest offset a window allows: the formatted offset must stay below the window size.
inline constexpr uint32_t MaxOffset(int windowBits) {
    return (1u << windowBits) - 3;
}

inline constexpr int MainSymbol(int slot, int length) {
    const int header =
        length - kMinMatch < kLengthHeaderMax ? length - kMinMatch : kLengthHeaderMax;
    return kLiteralSymbols + slot * kLengthHeaders + header;
}

// One element of the coded stream: a literal (mainSymbol below 256) or a match, with the
// length symbol that follows a main symbol of length header 7 and the offset's footer bits.
struct Item {
    uint16_t mainSymbol;
    uint8_t lengthSymbol;
    uint8_t footerBits;
    uint32_t footer;
};

inline constexpr bool HasLengthSymbol(int mainSymbol) {
    return mainSymbol >= kLiteralSymbols &&
           ((mainSymbol - kLiteralSymbols) & kLengthHeaderMax) == kLengthHeaderMax;
}

// How often each symbol of the three trees occurs in a stretch of items.
struct SymbolCounts {
    std::array<uint32_t, kMaxMainSymbols> main{};
    std::array<uint32_t, kLengthSymbols> length{};
    std::array<uint32_t, kAlignedSymbols> aligned{}; // low footer bits of the far matches

    void add(const Item& item) {
        ++main[item.mainSymbol];
        if (HasLengthSymbol(item.mainSymbol)) ++length[item.lengthSymbol];
        if (item.footerBits >= kAlignedBits) ++aligned[item.footer & 7];
    }

    SymbolCounts& operator+=(const SymbolCounts& other) {
        for (std::size_t i = 0; i < main.size(); ++i)
            main[i] += other.main[i];
        for (std::size_t i = 0; i < length.size(); ++i)
            length[i] += other.length[i];
        for (std::size_t i = 0; i < aligned.size(); ++i)
            aligned[i] += other.aligned[i];
        return *this;
    }
};

} // namespace qmr::chm::lzx
