#pragma once

#include "chm/LzxFormat.h"

#include <cstdint>
#include <vector>

namespace qmr::chm {

// How hard the match finder looks for matches. The defaults take the first good match
// (greedily) among 2 candidates, which is what a book of thousands of pages wants: far quicker
// than 32 candidates with lazy matching, for sections a few per cent larger. Going from 4
// candidates to 2 makes the section of 2,000 generated pages 0.408 of the input instead of
// 0.400, and their compile 4 % quicker.
struct LzxSearch {
    int chainDepth = 2;  // candidates examined at one position
    int niceLength = 64; // a match this long is taken without looking further
    int lazyLength = 0;  // a match this long is not weighed against the next position's (0: none)
    int goodLength = 8;  // beyond a match this long, the next position is searched less deeply
};

// One reset interval as literals and matches.
struct LzxParse {
    std::vector<lzx::Item> items;               // the first frameEnds.back() are the interval's
    std::vector<int> frameEnds;                 // items in frames 0 to i
    std::vector<lzx::SymbolCounts> frameCounts; // the symbols of each frame
};

// Cuts one reset interval into literals and matches: hash chains over the interval, the three
// repeated offsets tried first, lazy matching when asked for, each choice weighed by the bits
// it is expected to save. A match never crosses a 32 KB frame boundary, since the decoders finish
// every frame exactly, and never reaches before the interval, where the decoder has reset.
class LzxMatchFinder {
  public:
    explicit LzxMatchFinder(int windowBits, LzxSearch search = {});

    // `data` holds `size` bytes, whole frames but for the stream's last, of which the first
    // `inputEnd` are input and the rest padding: no match crosses from one to the other, so a
    // decoder told the input's length stops cleanly where it ends.
    void parse(const uint8_t* data, int size, int inputEnd, LzxParse& out);

  private:
    struct Candidate {
        int length = 0;
        uint32_t offset = 0;
        int repeat = -1; // 0 to 2 for a repeated offset
        int score = 0;   // bits saved over literals, in quarter bits
    };

    // The best match at `position` ending at `stop` at the latest.
    Candidate bestMatch(int position, int stop, int chainDepth);
    void insertUpTo(int position);
    // The bytes from `position` to `end` as literals.
    void addLiterals(int position, int end);
    void addMatch(const Candidate& match);

    uint32_t m_maxOffset;
    LzxSearch m_search;
    std::vector<int32_t> m_head; // by hash: the latest position, -1 for none
    std::vector<int32_t> m_prev; // by position: the previous one of the same hash
    int m_hashShift = 0;

    // The interval being parsed.
    const uint8_t* m_data = nullptr;
    int m_size = 0;
    int m_inserted = 0; // positions below this are in the chains
    uint32_t m_repeats[lzx::kRepeatSlots] = {1, 1, 1};
    lzx::Item* m_items = nullptr; // the parse's items, with room for one a byte
    size_t m_itemCount = 0;
    lzx::SymbolCounts* m_counts = nullptr; // the current frame's
};

} // namespace qmr::chm
