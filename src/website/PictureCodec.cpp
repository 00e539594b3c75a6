#include "website/PictureCodec.h"

#include "website/PictureFit.h"

#include <FreeImage.h>

#include <memory>
#include <mutex>
#include <string>

namespace qmr {
namespace {

struct BitmapDeleter {
    void operator()(FIBITMAP* bitmap) const { FreeImage_Unload(bitmap); }
};
using Bitmap = std::unique_ptr<FIBITMAP, BitmapDeleter>;

struct MemoryDeleter {
    void operator()(FIMEMORY* memory) const { FreeImage_CloseMemory(memory); }
};
using Memory = std::unique_ptr<FIMEMORY, MemoryDeleter>;

constexpr int kJpegQuality = 85;

// The library reports trouble through one process-wide callback; each thread keeps what was
// said about the picture it is decoding.
thread_local std::string t_messages;

void collectMessage(FREE_IMAGE_FORMAT, const char* message) {
    if (!t_messages.empty()) t_messages += "; ";
    t_messages += message ? message : "";
}

void prepareLibrary() {
    static std::once_flag prepared;
    std::call_once(prepared, [] { FreeImage_SetOutputMessage(collectMessage); });
}

FREE_IMAGE_FORMAT libraryFormat(const PictureHeader& header, const QByteArray& bytes) {
    switch (header.format) {
    case PictureFormat::Jpeg:
        return FIF_JPEG;
    case PictureFormat::Png:
        return FIF_PNG;
    case PictureFormat::Gif:
        return FIF_GIF;
    case PictureFormat::Bmp:
        return FIF_BMP;
    case PictureFormat::Webp:
        return FIF_WEBP;
    case PictureFormat::PortableBitmap:
        break;
    }
    static const FREE_IMAGE_FORMAT family[] = {FIF_PBM,    FIF_PGM,    FIF_PPM,
                                               FIF_PBMRAW, FIF_PGMRAW, FIF_PPMRAW};
    return family[bytes.at(1) - '1'];
}

// The library reads BMP info headers up to the 40-byte one and refuses the 108- and 124-byte
// ones that newer programs write. Those begin with the 40-byte header and keep the colour masks
// where it keeps them, and the pixels are found through the file header, so the file reads as
// the older kind once its header says so.
QByteArray readableBytes(const QByteArray& bytes, const PictureHeader& header) {
    if (header.format != PictureFormat::Bmp || bytes.size() < 18) return bytes;
    const int infoSize = quint8(bytes.at(14)) | quint8(bytes.at(15)) << 8;
    if ((infoSize != 108 && infoSize != 124) || bytes.at(16) != 0 || bytes.at(17) != 0)
        return bytes;
    QByteArray older = bytes;
    older[14] = 40;
    older[15] = 0;
    return older;
}

QString decoderMessages() {
    return QString::fromLatin1(t_messages.data(), qsizetype(t_messages.size()));
}

Bitmap decode(const QByteArray& bytes, const PictureHeader& header, int decodeAtLeast,
              QString* problem) {
    const QByteArray readable = readableBytes(bytes, header);
    t_messages.clear();
    // The library only reads from this memory, whatever its signature says.
    Memory memory(FreeImage_OpenMemory(
        reinterpret_cast<BYTE*>(const_cast<char*>(readable.constData())), DWORD(readable.size())));
    const int flags = header.format == PictureFormat::Jpeg
                          ? JPEG_FAST | JPEG_EXIFROTATE | (decodeAtLeast << 16)
                          : 0;
    Bitmap bitmap(memory
                      ? FreeImage_LoadFromMemory(libraryFormat(header, bytes), memory.get(), flags)
                      : nullptr);
    const QString messages = decoderMessages();
    if (!bitmap || !FreeImage_HasPixels(bitmap.get())) {
        *problem = messages.isEmpty()
                       ? QStringLiteral("the decoder cannot read it")
                       : QStringLiteral("the decoder cannot read it (%1)").arg(messages);
        return nullptr;
    }
    // A JPEG cut short still decodes, its missing part grey; it is no picture to copy.
    if (messages.contains(QLatin1String("premature end"), Qt::CaseInsensitive)) {
        *problem = QStringLiteral("the file is cut short (%1)").arg(messages);
        return nullptr;
    }
    return bitmap;
}

// 8-bit RGB with any transparency laid over white: what a JPEG can hold.
Bitmap opaqueRgb(Bitmap bitmap) {
    const FREE_IMAGE_TYPE type = FreeImage_GetImageType(bitmap.get());
    if (type == FIT_RGBA16)
        bitmap.reset(FreeImage_ConvertTo32Bits(bitmap.get()));
    else if (type == FIT_RGB16)
        bitmap.reset(FreeImage_ConvertTo24Bits(bitmap.get()));
    else if (type != FIT_BITMAP)
        bitmap.reset(FreeImage_ConvertToStandardType(bitmap.get(), TRUE));
    if (!bitmap) return nullptr;
    if (FreeImage_IsTransparent(bitmap.get())) {
        Bitmap withAlpha(FreeImage_ConvertTo32Bits(bitmap.get()));
        if (!withAlpha) return nullptr;
        RGBQUAD white = {255, 255, 255, 0};
        bitmap.reset(FreeImage_Composite(withAlpha.get(), FALSE, &white, nullptr));
        if (!bitmap) return nullptr;
    }
    if (FreeImage_GetBPP(bitmap.get()) != 24) bitmap.reset(FreeImage_ConvertTo24Bits(bitmap.get()));
    return bitmap;
}

QByteArray encodeJpeg(FIBITMAP* bitmap) {
    Memory memory(FreeImage_OpenMemory());
    if (!memory || !FreeImage_SaveToMemory(FIF_JPEG, bitmap, memory.get(),
                                           kJpegQuality | JPEG_OPTIMIZE | JPEG_BASELINE))
        return QByteArray();
    BYTE* data = nullptr;
    DWORD size = 0;
    if (!FreeImage_AcquireMemory(memory.get(), &data, &size)) return QByteArray();
    return QByteArray(reinterpret_cast<const char*>(data), qsizetype(size));
}

QByteArray fittedCopy(FIBITMAP* picture, QSize box) {
    const QSize size =
        FitInside(QSize(int(FreeImage_GetWidth(picture)), int(FreeImage_GetHeight(picture))), box);
    if (size.width() == int(FreeImage_GetWidth(picture)) &&
        size.height() == int(FreeImage_GetHeight(picture)))
        return encodeJpeg(picture);
    // Catmull-Rom keeps the screen copy sharp; a copy many times smaller averages whole areas,
    // which is as sharp there and a third of the cost.
    const bool farSmaller = size.width() * 4 < int(FreeImage_GetWidth(picture));
    Bitmap scaled(FreeImage_Rescale(picture, size.width(), size.height(),
                                    farSmaller ? FILTER_BOX : FILTER_CATMULLROM));
    return scaled ? encodeJpeg(scaled.get()) : QByteArray();
}

} // namespace

bool MakeJpegCopies(const QByteArray& bytes, const PictureHeader& header, const QList<QSize>& boxes,
                    int decodeAtLeast, QList<QByteArray>* copies, QString* problem) {
    prepareLibrary();
    Bitmap picture = decode(bytes, header, decodeAtLeast, problem);
    if (!picture) return false;
    picture = opaqueRgb(std::move(picture));
    if (!picture) {
        *problem = QStringLiteral("its colours cannot be converted");
        return false;
    }
    copies->clear();
    for (const QSize& box : boxes) {
        copies->append(fittedCopy(picture.get(), box));
        if (copies->last().isEmpty()) {
            *problem = QStringLiteral("the copy cannot be encoded");
            return false;
        }
    }
    return true;
}

} // namespace qmr
