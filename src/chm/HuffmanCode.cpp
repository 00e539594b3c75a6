#include "chm/HuffmanCode.h"

#include <algorithm>
#include <vector>

namespace qmr::chm {
namespace {

// Moffat and Katajainen's in-place method: `weights` sorted ascending become the depths of
// their leaves in a Huffman tree (at least two weights).
void HuffmanDepths(std::vector<uint64_t>& a) {
    const int n = int(a.size());
    // Left to right: combine the two lightest of leaves and made nodes, leaving each made node
    // the index of its parent.
    a[0] += a[1];
    int root = 0;
    int leaf = 2;
    for (int next = 1; next < n - 1; ++next) {
        if (leaf >= n || a[root] < a[leaf]) {
            a[next] = a[root];
            a[root++] = uint64_t(next);
        } else {
            a[next] = a[leaf++];
        }
        if (leaf >= n || (root < next && a[root] < a[leaf])) {
            a[next] += a[root];
            a[root++] = uint64_t(next);
        } else {
            a[next] += a[leaf++];
        }
    }
    // Right to left: the depth of every made node from its parent's.
    a[n - 2] = 0;
    for (int next = n - 3; next >= 0; --next)
        a[next] = a[a[next]] + 1;
    // Right to left again: the leaves hang from the nodes level by level.
    int available = 1;
    int used = 0;
    uint64_t depth = 0;
    root = n - 2;
    int next = n - 1;
    while (available > 0) {
        while (root >= 0 && a[root] == depth) {
            ++used;
            --root;
        }
        while (available > used) {
            a[next--] = depth;
            --available;
        }
        available = 2 * used;
        ++depth;
        used = 0;
    }
}

// Brings depths (non-increasing, rarest symbol first) within maxBits and makes the code complete:
// the Kraft sum, counted in units of 2^-maxBits, must end at exactly 2^maxBits.
void LimitDepths(std::vector<uint64_t>& depth, int maxBits) {
    const uint64_t full = uint64_t(1) << maxBits;
    uint64_t kraft = 0;
    for (uint64_t& d : depth) {
        d = std::min<uint64_t>(d, uint64_t(maxBits));
        kraft += uint64_t(1) << (maxBits - d);
    }
    // Over-full: lengthen the rarest codes still below the limit, one bit at a time.
    for (size_t i = 0; kraft > full;) {
        while (depth[i] >= uint64_t(maxBits))
            ++i;
        ++depth[i];
        kraft -= uint64_t(1) << (maxBits - depth[i]);
    }
    // Under-full: shorten the most frequent codes while the room allows. The rarest code's unit
    // divides what is left, so this ends full.
    for (size_t i = depth.size(); i-- > 0;) {
        while (depth[i] > 1 && kraft + (uint64_t(1) << (maxBits - depth[i])) <= full) {
            kraft += uint64_t(1) << (maxBits - depth[i]);
            --depth[i];
        }
    }
}

} // namespace

void BuildCodeLengths(std::span<const uint32_t> counts, int maxBits, std::span<uint8_t> lengths) {
    std::fill(lengths.begin(), lengths.end(), uint8_t(0));
    std::vector<uint64_t> order; // count << 32 | symbol, rarest first
    for (size_t symbol = 0; symbol < counts.size(); ++symbol)
        if (counts[symbol] > 0) order.push_back(uint64_t(counts[symbol]) << 32 | symbol);
    if (order.empty()) return;
    if (order.size() == 1) {
        const size_t symbol = size_t(order[0] & 0xFFFFFFFF);
        lengths[symbol] = 1;
        lengths[symbol == 0 ? 1 : 0] = 1;
        return;
    }
    std::sort(order.begin(), order.end());
    std::vector<uint64_t> depth(order.size());
    for (size_t i = 0; i < order.size(); ++i)
        depth[i] = order[i] >> 32;
    HuffmanDepths(depth);
    if (depth[0] > uint64_t(maxBits)) LimitDepths(depth, maxBits);
    for (size_t i = 0; i < order.size(); ++i)
        lengths[size_t(order[i] & 0xFFFFFFFF)] = uint8_t(depth[i]);
}

void AssignCanonicalCodes(std::span<const uint8_t> lengths, std::span<uint16_t> codes) {
    int perLength[33] = {};
    for (uint8_t length : lengths)
        ++perLength[length];
    perLength[0] = 0;
    uint32_t next[33] = {};
    uint32_t code = 0;
    for (int bits = 1; bits <= 32; ++bits) {
        code = (code + uint32_t(perLength[bits - 1])) << 1;
        next[bits] = code;
    }
    for (size_t symbol = 0; symbol < lengths.size(); ++symbol)
        codes[symbol] = lengths[symbol] ? uint16_t(next[lengths[symbol]]++) : 0;
}

} // namespace qmr::chm
