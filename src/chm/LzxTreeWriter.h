#pragma once

#include "chm/LzxBitWriter.h"

#include <cstdint>

namespace qmr::chm {

// Writes the code lengths lengths[first, last) of a tree as the decoder reads them: the twenty
// 4-bit lengths of a pretree, then each length as a pretree symbol telling its change from the
// same tree's lengths in the previous block of the interval (`previous`, all 0 after a reset),
// with runs of zeros and of equal lengths shortened. `previous` becomes `lengths` over the range.
// The writer must have room for WorstLzxTreeBytes(last - first) bytes.
void WriteLzxTreeLengths(LzxBitWriter& out, const uint8_t* lengths, uint8_t* previous, int first,
                         int last);

// The bits WriteLzxTreeLengths would write for the same lengths, for weighing block layouts.
int LzxTreeLengthsBits(const uint8_t* lengths, const uint8_t* previous, int first, int last);

// The most bytes WriteLzxTreeLengths writes for `count` lengths.
constexpr int WorstLzxTreeBytes(int count) {
    return 16 + count * 3;
}

} // namespace qmr::chm
