#include "chm/LzxMatchFinder.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace qmr::chm {
namespace {

using namespace lzx;

// Expected costs in quarter bits, for weighing matches against literals and each other.
constexpr int kLiteralCost = 24;
constexpr int kMatchCost = 36;
constexpr int kRepeatCost = 24;
constexpr int kLengthSymbolCost = 16;
constexpr int kFooterBitCost = 4;

constexpr int kHashBytes = 4;

uint32_t Load32(const uint8_t* p) {
    uint32_t v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

uint64_t Load64(const uint8_t* p) {
    uint64_t v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

uint16_t Load16(const uint8_t* p) {
    uint16_t v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

// How many bytes at `a` and `b` agree, up to `limit`. Called at nearly every position.
[[gnu::always_inline]] inline int MatchLength(const uint8_t* a, const uint8_t* b, int limit) {
    int length = 0;
    if constexpr (std::endian::native == std::endian::little) {
        for (; length + 8 <= limit; length += 8) {
            const uint64_t difference = Load64(a + length) ^ Load64(b + length);
            if (difference) return length + (std::countr_zero(difference) >> 3);
        }
    }
    while (length < limit && a[length] == b[length])
        ++length;
    return length;
}

int LengthCost(int length) {
    return length - kMinMatch >= kLengthHeaderMax ? kLengthSymbolCost : 0;
}

int ExplicitScore(int length, uint32_t offset) {
    const int footerBits = FooterBits(PositionSlot(FormattedOffset(offset)));
    return length * kLiteralCost - kMatchCost - footerBits * kFooterBitCost - LengthCost(length);
}

// Each run of this many fruitless searches makes the step between searches one byte longer.
constexpr int kMissesPerStep = 4;

int RepeatScore(int length, int repeat) {
    return length * kLiteralCost - kRepeatCost - repeat * 2 - LengthCost(length);
}

} // namespace

LzxMatchFinder::LzxMatchFinder(int windowBits, LzxSearch search)
    : m_maxOffset(MaxOffset(windowBits)), m_search(search) {}

void LzxMatchFinder::parse(const uint8_t* data, int size, int inputEnd, LzxParse& out) {
    // A hash table of about half the interval's size is small to clear and rarely shared.
    const int hashBits = std::clamp(int(std::bit_width(uint32_t(size))) - 2, 10, 16);
    m_head.assign(size_t(1) << hashBits, -1);
    m_prev.resize(size_t(size));
    m_hashShift = 32 - hashBits;
    m_data = data;
    m_size = size;
    m_inserted = 0;
    std::fill(std::begin(m_repeats), std::end(m_repeats), 1u);
    // An interval holds at most one item a byte: items are written straight into room made for
    // that many, which is kept from interval to interval.
    if (out.items.size() < size_t(size)) out.items.resize(size_t(size));
    m_items = out.items.data();
    m_itemCount = 0;
    out.frameEnds.clear();
    out.frameCounts.assign(size_t((size + kFrameSize - 1) / kFrameSize), SymbolCounts());

    int misses = 0; // positions searched in vain since the last match
    for (int position = 0; position < size;) {
        const int frame = position / kFrameSize;
        const int frameEnd = std::min(size, (frame + 1) * kFrameSize);
        // Matches stop at the frame's end, and at the input's end before the padding.
        const int stop = position < inputEnd ? std::min(frameEnd, inputEnd) : frameEnd;
        m_counts = &out.frameCounts[size_t(frame)];
        Candidate match = bestMatch(position, stop, m_search.chainDepth);
        if (match.score <= 0) {
            // Where nothing has matched for a while (packed index data, pictures) the
            // search steps over ever more positions, which stay literals.
            const int step = 1 + (++misses >> kMissesPerStep);
            const int end = std::min(position + step, frameEnd);
            addLiterals(position, end);
            position = end;
        } else {
            misses = 0;
            // Lazy matching: a better match one byte on is worth a literal first.
            while (match.length < m_search.lazyLength && position + 1 < stop) {
                const int depth = match.length >= m_search.goodLength ? m_search.chainDepth / 4
                                                                      : m_search.chainDepth;
                const Candidate next = bestMatch(position + 1, stop, depth);
                if (next.score <= match.score) break;
                addLiterals(position, position + 1);
                ++position;
                match = next;
            }
            addMatch(match);
            position += match.length;
        }
        if (position == frameEnd) out.frameEnds.push_back(int(m_itemCount));
    }
}

void LzxMatchFinder::insertUpTo(int position) {
    const int end = std::min(position, m_size - kHashBytes + 1);
    for (int p = m_inserted; p < end; ++p) {
        const uint32_t hash = (Load32(m_data + p) * 2654435761u) >> m_hashShift;
        m_prev[size_t(p)] = m_head[hash];
        m_head[hash] = p;
    }
    m_inserted = std::max(m_inserted, position);
}

LzxMatchFinder::Candidate LzxMatchFinder::bestMatch(int position, int stop, int chainDepth) {
    Candidate best;
    const int limit = std::min(kMaxMatch, stop - position);
    insertUpTo(position);
    if (limit < kMinMatch) return best;
    const uint8_t* current = m_data + position;

    for (int r = 0; r < kRepeatSlots; ++r) {
        const uint32_t offset = m_repeats[r];
        if (offset > uint32_t(position)) continue;
        if ((r > 0 && offset == m_repeats[0]) || (r == 2 && offset == m_repeats[1])) continue;
        if (Load16(current) != Load16(current - offset)) continue; // shorter than any match
        const int length = MatchLength(current, current - offset, limit);
        if (length < kMinMatch) continue;
        const int score = RepeatScore(length, r);
        if (score > best.score) best = {length, offset, r, score};
    }
    int longest = best.length;
    if (longest >= m_search.niceLength || position + kHashBytes > m_size) return best;

    const uint32_t hash = (Load32(current) * 2654435761u) >> m_hashShift;
    int32_t candidate = m_head[hash];
    m_prev[size_t(position)] = candidate;
    m_head[hash] = position;
    m_inserted = position + 1;

    for (int depth = chainDepth; candidate >= 0 && depth > 0;
         --depth, candidate = m_prev[size_t(candidate)]) {
        const uint32_t offset = uint32_t(position - candidate);
        if (offset > m_maxOffset || longest >= limit) break;
        const uint8_t* earlier = m_data + candidate;
        if (earlier[longest] != current[longest]) continue;
        const int length = MatchLength(current, earlier, limit);
        if (length <= longest) continue;
        longest = length;
        const int score = ExplicitScore(length, offset);
        if (score > best.score) best = {length, offset, -1, score};
        if (length >= m_search.niceLength) break;
    }
    return best;
}

void LzxMatchFinder::addLiterals(int position, int end) {
    Item* item = m_items + m_itemCount;
    for (int p = position; p < end; ++p, ++item) {
        *item = {m_data[p], 0, 0, 0};
        ++m_counts->main[m_data[p]];
    }
    m_itemCount += size_t(end - position);
}

void LzxMatchFinder::addMatch(const Candidate& match) {
    Item item = {};
    int slot = match.repeat;
    if (slot >= 0) {
        // The decoder moves a used repeated offset to the front.
        std::swap(m_repeats[0], m_repeats[slot]);
    } else {
        const uint32_t formatted = FormattedOffset(match.offset);
        slot = PositionSlot(formatted);
        item.footerBits = uint8_t(FooterBits(slot));
        item.footer = formatted - SlotBase(slot);
        m_repeats[2] = m_repeats[1];
        m_repeats[1] = m_repeats[0];
        m_repeats[0] = match.offset;
    }
    item.mainSymbol = uint16_t(MainSymbol(slot, match.length));
    if (HasLengthSymbol(item.mainSymbol))
        item.lengthSymbol = uint8_t(match.length - kMinMatch - kLengthHeaderMax);
    m_items[m_itemCount++] = item;
    m_counts->add(item);
}

} // namespace qmr::chm
