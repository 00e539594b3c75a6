#pragma once

#include "chm/Lzx.h"

#include <QByteArray>
#include <QString>

#include <gtest/gtest.h>

namespace qmr::test {

// Two LZX decoders we did not write read a compressed stream back. Each returns the bytes it
// decoded, and what it refused in `error`.
struct Decoded {
    QByteArray bytes;
    QString error; // empty when the decoder accepted the stream
};

// libmspack's decoder, reading the whole stream at once and resetting every framesPerReset
// frames, as its .chm reader does from the start of the section.
Decoded DecodeWithLibmspack(const QByteArray& compressed, qint64 outputLength,
                            const chm::LzxSettings& settings);

// chmlib's decoder, one whole frame at a time from the frame starts, resetting at every
// interval, as chmlib reads a book's reset table.
Decoded DecodeWithChmlib(const chm::LzxInterval& compressed, const chm::LzxSettings& settings);

// Compresses `input` with `settings` and checks that both decoders give it back byte for byte
// (and the last frame's padding as zeros), and that the frame starts are what a reset table
// needs: one per 32 KB frame, the first 0, rising, each on a 16-bit boundary.
::testing::AssertionResult ReadersRestore(const QByteArray& input,
                                          const chm::LzxSettings& settings);

// The same for a stream already compressed.
::testing::AssertionResult ReadersRestore(const QByteArray& input,
                                          const chm::LzxInterval& compressed,
                                          const chm::LzxSettings& settings);

} // namespace qmr::test
