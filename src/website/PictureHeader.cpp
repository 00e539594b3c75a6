#include "website/PictureHeader.h"

namespace qmr {
namespace {

// Bounds-checked reads of little- and big-endian numbers; every read past the end gives
// nothing, so a short file can never be read beyond its last byte.
class ByteReader {
  public:
    explicit ByteReader(const QByteArray& bytes) : m_bytes(bytes) {}
    qsizetype size() const { return m_bytes.size(); }
    bool has(qsizetype at, qsizetype count) const {
        return at >= 0 && count >= 0 && at <= m_bytes.size() - count;
    }
    std::optional<quint32> big(qsizetype at, int count) const { return read(at, count, true); }
    std::optional<quint32> little(qsizetype at, int count) const { return read(at, count, false); }
    bool startsWith(const char* text) const { return m_bytes.startsWith(text); }
    char at(qsizetype i) const { return m_bytes.at(i); }

  private:
    std::optional<quint32> read(qsizetype at, int count, bool bigEndian) const {
        if (!has(at, count)) return std::nullopt;
        quint32 value = 0;
        for (int i = 0; i < count; ++i) {
            const quint32 byte = quint8(m_bytes.at(at + (bigEndian ? i : count - 1 - i)));
            value = (value << 8) | byte;
        }
        return value;
    }

    const QByteArray& m_bytes;
};

using Header = std::optional<PictureHeader>;

Header fail(QString* problem, const QString& reason) {
    if (problem) *problem = reason;
    return std::nullopt;
}

Header sized(PictureFormat format, qint64 width, qint64 height, QString* problem) {
    if (width <= 0 || height <= 0) return fail(problem, QStringLiteral("the header gives no size"));
    if (width > kMostPixelsASide || height > kMostPixelsASide || width * height > kMostPixels)
        return fail(problem, QStringLiteral("the header says %1 by %2 pixels, more than a "
                                            "picture copy is made from (at most %3 a side, "
                                            "%4 megapixels)")
                                 .arg(width)
                                 .arg(height)
                                 .arg(kMostPixelsASide)
                                 .arg(kMostPixels / 1'000'000));
    return PictureHeader{format, int(width), int(height)};
}

const QString kTruncated = QStringLiteral("the file is cut short");

bool isFrameMarker(quint32 marker) {
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

// Walks the marker segments up to the first frame header, which holds the size.
Header jpegHeader(const ByteReader& in, QString* problem) {
    qsizetype at = 2;
    while (in.has(at, 2)) {
        if (quint8(in.at(at)) != 0xFF) return fail(problem, QStringLiteral("a segment is broken"));
        const quint32 marker = quint8(in.at(at + 1));
        if (marker == 0xFF) { // fill byte
            ++at;
            continue;
        }
        at += 2;
        if (marker == 0x01 || (marker >= 0xD0 && marker <= 0xD7)) continue;
        if (marker == 0xDA || marker == 0xD9)
            return fail(problem, QStringLiteral("there is no frame header"));
        const auto length = in.big(at, 2);
        if (!length || *length < 2) return fail(problem, kTruncated);
        if (isFrameMarker(marker)) {
            const auto height = in.big(at + 3, 2);
            const auto width = in.big(at + 5, 2);
            if (!height || !width) return fail(problem, kTruncated);
            return sized(PictureFormat::Jpeg, *width, *height, problem);
        }
        at += *length;
    }
    return fail(problem, kTruncated);
}

Header pngHeader(const ByteReader& in, QString* problem) {
    if (!in.has(8, 8) || in.big(8, 4) != 13u || in.big(12, 4) != 0x49484452u) // "IHDR"
        return fail(problem, QStringLiteral("the first chunk is not the image header"));
    const auto width = in.big(16, 4);
    const auto height = in.big(20, 4);
    if (!width || !height) return fail(problem, kTruncated);
    return sized(PictureFormat::Png, *width, *height, problem);
}

// The logical screen must be sane, and so must the first image in it, which is what gets
// decoded.
Header gifHeader(const ByteReader& in, QString* problem) {
    const auto screenWidth = in.little(6, 2);
    const auto flags = in.little(10, 1);
    if (!screenWidth || !flags) return fail(problem, kTruncated);
    if (!sized(PictureFormat::Gif, *screenWidth, *in.little(8, 2), problem)) return std::nullopt;
    qsizetype at = 13 + ((*flags & 0x80) ? 3 * (2 << (*flags & 7)) : 0);
    while (in.has(at, 1)) {
        const quint8 block = quint8(in.at(at));
        if (block == 0x2C) {
            const auto width = in.little(at + 5, 2);
            const auto height = in.little(at + 7, 2);
            if (!width || !height) return fail(problem, kTruncated);
            return sized(PictureFormat::Gif, *width, *height, problem);
        }
        if (block != 0x21) return fail(problem, QStringLiteral("a block is broken"));
        at += 2; // introducer and label, then sub-blocks up to an empty one
        while (in.has(at, 1) && in.at(at) != 0)
            at += 1 + quint8(in.at(at));
        ++at;
    }
    return fail(problem, kTruncated);
}

// Uncompressed bitmaps must hold every row the header promises.
Header bmpHeader(const ByteReader& in, QString* problem) {
    const auto pixelsAt = in.little(10, 4);
    const auto infoSize = in.little(14, 4);
    if (!pixelsAt || !infoSize) return fail(problem, kTruncated);
    const bool os2 = *infoSize == 12;
    const auto width = os2 ? in.little(18, 2) : in.little(18, 4);
    const auto rawHeight = os2 ? in.little(20, 2) : in.little(22, 4);
    const auto bitCount = os2 ? in.little(24, 2) : in.little(28, 2);
    const auto compression = os2 ? std::optional<quint32>(0) : in.little(30, 4);
    if (!width || !rawHeight || !bitCount || !compression) return fail(problem, kTruncated);
    const qint64 height = os2 ? qint64(*rawHeight) : qAbs(qint64(qint32(*rawHeight)));
    Header header = sized(PictureFormat::Bmp, qint32(*width), height, problem);
    if (!header) return header;
    if (*compression == 0 || *compression == 3) {
        const qint64 rowBytes = (qint64(header->width) * *bitCount + 31) / 32 * 4;
        if (in.size() < qint64(*pixelsAt) + rowBytes * height) return fail(problem, kTruncated);
    }
    return header;
}

// The next number of a portable bitmap header, past blanks and "#" comments.
std::optional<qint64> pnmNumber(const ByteReader& in, qsizetype& at) {
    while (in.has(at, 1)) {
        const char c = in.at(at);
        if (c == '#') {
            while (in.has(at, 1) && in.at(at) != '\n')
                ++at;
        } else if (c == ' ' || c == '\t' || c == '\r' || c == '\n') {
            ++at;
        } else {
            break;
        }
    }
    qint64 value = 0;
    const qsizetype start = at;
    while (in.has(at, 1) && in.at(at) >= '0' && in.at(at) <= '9' && at - start < 9)
        value = value * 10 + (in.at(at++) - '0');
    if (at == start) return std::nullopt;
    return value;
}

// Binary maps must hold every sample the header promises; plain-text ones are read as text.
Header portableBitmapHeader(const ByteReader& in, QString* problem) {
    const char kind = in.at(1);
    qsizetype at = 2;
    const auto width = pnmNumber(in, at);
    const auto height = pnmNumber(in, at);
    const bool bilevel = kind == '1' || kind == '4';
    const auto maxValue = bilevel ? std::optional<qint64>(1) : pnmNumber(in, at);
    if (!width || !height || !maxValue) return fail(problem, kTruncated);
    Header header = sized(PictureFormat::PortableBitmap, *width, *height, problem);
    if (!header || kind < '4') return header;
    const qint64 sampleBytes = *maxValue > 255 ? 2 : 1;
    const qint64 rowBytes = kind == '4'   ? (*width + 7) / 8
                            : kind == '5' ? *width * sampleBytes
                                          : *width * 3 * sampleBytes;
    if (in.size() < at + 1 + rowBytes * *height) return fail(problem, kTruncated);
    return header;
}

// The canvas size of a lossy, lossless or extended WebP, in a RIFF container that must be
// whole.
Header webpHeader(const ByteReader& in, QString* problem) {
    const auto riffSize = in.little(4, 4);
    const auto chunk = in.big(12, 4);
    if (!riffSize || !chunk) return fail(problem, kTruncated);
    if (in.size() < qint64(*riffSize) + 8) return fail(problem, kTruncated);
    if (*chunk == 0x56503858) { // "VP8X"
        const auto width = in.little(24, 3);
        const auto height = in.little(27, 3);
        if (!width || !height) return fail(problem, kTruncated);
        return sized(PictureFormat::Webp, qint64(*width) + 1, qint64(*height) + 1, problem);
    }
    if (*chunk == 0x5650384C) { // "VP8L"
        const auto bits = in.little(21, 4);
        if (!bits) return fail(problem, kTruncated);
        return sized(PictureFormat::Webp, (*bits & 0x3FFF) + 1, ((*bits >> 14) & 0x3FFF) + 1,
                     problem);
    }
    if (*chunk == 0x56503820) { // "VP8 "
        const auto width = in.little(26, 2);
        const auto height = in.little(28, 2);
        if (!width || !height) return fail(problem, kTruncated);
        return sized(PictureFormat::Webp, *width & 0x3FFF, *height & 0x3FFF, problem);
    }
    return fail(problem, QStringLiteral("the first chunk is not a picture"));
}

} // namespace

std::optional<PictureHeader> ReadPictureHeader(const QByteArray& bytes, QString* problem) {
    const ByteReader in(bytes);
    if (in.startsWith("\xFF\xD8\xFF")) return jpegHeader(in, problem);
    if (in.startsWith("\x89PNG\r\n\x1A\n")) return pngHeader(in, problem);
    if (in.startsWith("GIF87a") || in.startsWith("GIF89a")) return gifHeader(in, problem);
    if (in.startsWith("BM")) return bmpHeader(in, problem);
    if (in.startsWith("RIFF") && bytes.mid(8, 4) == "WEBP") return webpHeader(in, problem);
    if (in.size() >= 3 && in.at(0) == 'P' && in.at(1) >= '1' && in.at(1) <= '6')
        return portableBitmapHeader(in, problem);
    return fail(problem, QStringLiteral("it is not a JPEG, PNG, GIF, BMP, PBM or WebP picture"));
}

} // namespace qmr
