#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace qmr {

// The kinds of picture that get copies. Portable bitmaps stand for the whole family
// (P1 to P6), whatever the file calls itself.
enum class PictureFormat { Jpeg, Png, Gif, Bmp, PortableBitmap, Webp };

struct PictureHeader {
    PictureFormat format = PictureFormat::Jpeg;
    int width = 0;
    int height = 0;
};

// Pictures larger than this are refused before any decoder sees them: no scrapbook holds a
// real photo this size, and a forged header would otherwise ask for gigabytes.
inline constexpr int kMostPixelsASide = 20000;
inline constexpr qint64 kMostPixels = 200'000'000;

// Reads what the file's own bytes say it is (never its name) and how large, checking what is
// cheap to check before decoding: a known signature, a sane size, and for the uncompressed
// kinds that the pixels are all there. Nothing with the reason in `problem` otherwise.
std::optional<PictureHeader> ReadPictureHeader(const QByteArray& bytes, QString* problem);

} // namespace qmr
