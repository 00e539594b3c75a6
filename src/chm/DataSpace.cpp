#include "chm/DataSpace.h"

#include "chm/ByteWriter.h"

#include <QString>

#include <algorithm>

namespace qmr::chm {

namespace {

constexpr char kLzxTransformGuid[] = "{7FC28940-9D31-11D0-9B27-00A0C91E9C7C}";

void AppendSectionName(ByteWriter& out, QStringView name) {
    out.u16(quint16(name.size()));
    out.utf16(name);
    out.u16(0);
}

bool IsPowerOfTwo(int n) {
    return n > 0 && (n & (n - 1)) == 0;
}

} // namespace

QByteArray MakeNameList() {
    QByteArray bytes;
    ByteWriter out(bytes);
    out.u16(0); // the length in 16-bit words, filled in below
    out.u16(2);
    AppendSectionName(out, u"Uncompressed");
    AppendSectionName(out, u"MSCompressed");
    bytes[0] = char(bytes.size() / 2);
    return bytes;
}

QByteArray MakeControlData(const LzxSettings& settings) {
    const quint32 windowFrames = quint32(1) << (settings.windowBits - 15);
    QByteArray bytes;
    ByteWriter out(bytes);
    out.u32(6); // double words that follow
    out.bytes("LZXC");
    out.u32(2); // version 2: sizes in 32 KB units
    out.u32(quint32(settings.framesPerReset));
    out.u32(windowFrames);
    // Windows per reset, so that a reader that counts resets in half windows finds the same
    // interval as one that counts frames.
    out.u32(std::max<quint32>(1, windowFrames / 2));
    out.u32(0);
    return bytes;
}

QByteArray MakeSpanInfo(quint64 uncompressedLength) {
    QByteArray bytes;
    ByteWriter(bytes).u64(uncompressedLength);
    return bytes;
}

QByteArray MakeTransformList() {
    QByteArray bytes;
    ByteWriter(bytes).utf16(QString::fromLatin1(kLzxTransformGuid));
    return bytes;
}

QByteArray MakeResetTable(quint64 uncompressedLength, quint64 compressedLength,
                          const std::vector<quint64>& frameOffsets) {
    const size_t frames = size_t((uncompressedLength + kLzxFrameSize - 1) / kLzxFrameSize);
    QByteArray bytes;
    ByteWriter out(bytes);
    out.u32(2); // version
    out.u32(quint32(frames + 1));
    out.u32(8);    // bytes an entry
    out.u32(0x28); // header length
    out.u64(uncompressedLength);
    out.u64(compressedLength);
    out.u64(quint64(kLzxFrameSize));
    for (size_t i = 0; i < frames; ++i)
        out.u64(frameOffsets[i]);
    out.u64(compressedLength);
    return bytes;
}

bool ReadersAccept(const LzxSettings& settings) {
    if (settings.windowBits < 16 || settings.windowBits > 21) return false;
    if (!IsPowerOfTwo(settings.framesPerReset) || settings.framesPerReset > 64) return false;
    const qsizetype halfWindow = (qsizetype(1) << settings.windowBits) / 2;
    return settings.intervalSize() % halfWindow == 0;
}

} // namespace qmr::chm
