#pragma once

#include "chm/Lzx.h"

#include <QByteArray>

#include <gtest/gtest.h>

namespace qmr::test {

// Checks a compressed stream with two LZX decoders we did not write: libmspack's, reading the
// whole stream and resetting every framesPerReset frames as its .chm reader does, told the
// input's length and told the whole frames' length; and chmlib's, one whole frame at a time from
// the frame starts as chmlib reads a book's reset table. Each must give the input back byte for
// byte (and the last frame's padding as zeros), and the frame starts must be what a reset table
// needs: one per 32 KB frame, the first 0, rising, each on a 16-bit boundary.
::testing::AssertionResult ReadersRestore(const QByteArray& input,
                                          const chm::LzxInterval& compressed,
                                          const chm::LzxSettings& settings);

// The same for the input compressed with `settings`.
inline ::testing::AssertionResult ReadersRestore(const QByteArray& input,
                                                 const chm::LzxSettings& settings) {
    return ReadersRestore(input, chm::LzxCompressor(settings).compress(input), settings);
}

} // namespace qmr::test
