#pragma once

#include <cstdint>
#include <span>

namespace qmr::chm {

// Code lengths of a prefix code for symbols counted `counts` (at most 2^maxBits of them), none
// longer than `maxBits`, the more frequent no longer than the rarer. Whenever a symbol is
// counted the code is complete, as readers demand: a lone symbol is given a partner of the same
// length. With no symbol counted every length is 0.
void BuildCodeLengths(std::span<const uint32_t> counts, int maxBits, std::span<uint8_t> lengths);

// The canonical codes for `lengths`: shorter codes first, equal lengths in symbol order, each
// to be written from its highest bit.
void AssignCanonicalCodes(std::span<const uint8_t> lengths, std::span<uint16_t> codes);

} // namespace qmr::chm
