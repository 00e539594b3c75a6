#include "platform/CodePage.h"

#include <map>
#include <memory>
#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace qmr {
namespace {

struct ConverterCloser {
    void operator()(UConverter* c) const { ucnv_close(c); }
};
using Converter = std::unique_ptr<UConverter, ConverterCloser>;

void U_CALLCONV writeQuestionMark(const void*, UConverterFromUnicodeArgs* args, const UChar*,
                                  int32_t, UChar32, UConverterCallbackReason reason,
                                  UErrorCode* err) {
    if (reason > UCNV_IRREGULAR) return; // reset, close, clone: nothing to write
    *err = U_ZERO_ERROR;
    ucnv_cbFromUWriteBytes(args, "?", 1, 0, err);
}

void U_CALLCONV writeReplacementChar(const void*, UConverterToUnicodeArgs* args, const char*,
                                     int32_t, UConverterCallbackReason reason, UErrorCode* err) {
    if (reason > UCNV_IRREGULAR) return;
    *err = U_ZERO_ERROR;
    const UChar replacement = 0xFFFD;
    ucnv_cbToUWriteUChars(args, &replacement, 1, 0, err);
}

Converter openConverter(const QString& name) {
    if (name.isEmpty()) return nullptr;
    UErrorCode err = U_ZERO_ERROR;
    Converter conv(ucnv_open(name.toLatin1().constData(), &err));
    if (U_FAILURE(err)) return nullptr;
    ucnv_setFromUCallBack(conv.get(), writeQuestionMark, nullptr, nullptr, nullptr, &err);
    ucnv_setToUCallBack(conv.get(), writeReplacementChar, nullptr, nullptr, nullptr, &err);
    if (U_FAILURE(err)) return nullptr;
    return conv;
}

// Converters of this thread, kept open: opening one costs more than converting a page. Each
// use starts from a reset converter; `slot` tells apart two used at the same time.
UConverter* cachedConverter(const QString& name, int slot) {
    thread_local std::map<std::pair<QString, int>, Converter> open;
    auto found = open.find({name, slot});
    if (found == open.end()) found = open.emplace(std::pair{name, slot}, openConverter(name)).first;
    UConverter* conv = found->second.get();
    if (conv) ucnv_reset(conv);
    return conv;
}

// True when the converter writes and reads ASCII as itself and keeps no state between
// characters, so that ASCII runs need no conversion.
bool passesAsciiThrough(UConverter* conv) {
    switch (ucnv_getType(conv)) {
    case UCNV_SBCS:
    case UCNV_DBCS:
    case UCNV_MBCS:
    case UCNV_LATIN_1:
    case UCNV_US_ASCII:
    case UCNV_UTF8:
        break;
    default:
        return false;
    }
    char ascii[128];
    UChar wide[128];
    for (int c = 0; c < 128; ++c)
        wide[c] = UChar(c);
    UErrorCode err = U_ZERO_ERROR;
    const int32_t n = ucnv_fromUChars(conv, ascii, 128, wide, 128, &err);
    if (U_FAILURE(err) || n != 128) return false;
    for (int c = 0; c < 128; ++c)
        if (ascii[c] != char(c)) return false;
    return true;
}

// Decoding for a table whose characters can take more UTF-16 units than bytes.
QString decodeExpanding(UConverter* conv, QByteArrayView bytes) {
    ucnv_resetToUnicode(conv);
    UErrorCode err = U_ZERO_ERROR;
    const int32_t n = ucnv_toUChars(conv, nullptr, 0, bytes.data(), int32_t(bytes.size()), &err);
    QString out;
    out.resize(n + 1);
    err = U_ZERO_ERROR;
    ucnv_toUChars(conv, reinterpret_cast<UChar*>(out.data()), n + 1, bytes.data(),
                  int32_t(bytes.size()), &err);
    out.resize(U_SUCCESS(err) ? n : 0);
    return out;
}

// Copies the ASCII characters at the start of `src` (at most `n`) as bytes; returns how many.
// Eight at a time where the processor has SSE2, as generated pages are mostly ASCII.
qsizetype copyAsciiRun(const char16_t* src, qsizetype n, char* dst) {
    qsizetype i = 0;
#if defined(__SSE2__)
    const __m128i high = _mm_set1_epi16(short(0xFF80));
    for (; i + 8 <= n; i += 8) {
        const __m128i chunk = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src + i));
        if (_mm_movemask_epi8(_mm_cmpeq_epi16(_mm_and_si128(chunk, high), _mm_setzero_si128())) !=
            0xFFFF)
            break;
        _mm_storel_epi64(reinterpret_cast<__m128i*>(dst + i), _mm_packus_epi16(chunk, chunk));
    }
#endif
    for (; i < n && src[i] < 0x80; ++i)
        dst[i] = char(src[i]);
    return i;
}

// Appends the text of whole characters' bytes; a byte never gives more than one UTF-16 unit in
// these tables, and where it would, the longer way is taken.
void appendDecoded(UConverter* conv, QByteArrayView bytes, QString& out) {
    const qsizetype at = out.size();
    out.resize(at + bytes.size());
    ucnv_resetToUnicode(conv);
    UErrorCode err = U_ZERO_ERROR;
    const int32_t n =
        ucnv_toUChars(conv, reinterpret_cast<UChar*>(out.data() + at), int32_t(bytes.size()),
                      bytes.data(), int32_t(bytes.size()), &err);
    if (U_FAILURE(err)) { // the buffer overflowed, or the bytes were not whole characters
        out.resize(at);
        out += decodeExpanding(conv, bytes);
        return;
    }
    out.resize(at + n);
}

} // namespace

// ICU takes "cp950" as IBM-950, a different table from the one these files use, so the
// familiar names are mapped to the Windows tables first.
QString CodePage::converterName(const QString& requested) {
    const QString key =
        requested.trimmed().toLower().remove(QLatin1Char('-')).remove(QLatin1Char('_'));
    if (key == u"big5" || key == u"cp950" || key == u"950" || key == u"windows950")
        return QStringLiteral("windows-950");
    if (key == u"gb2312" || key == u"gbk" || key == u"cp936" || key == u"936" ||
        key == u"windows936")
        return QStringLiteral("windows-936");
    return requested.trimmed();
}

CodePage::CodePage(const QString& name) {
    const QString converter = converterName(name);
    Converter conv = openConverter(converter);
    if (!conv) return;
    m_name = converter;
    UErrorCode err = U_ZERO_ERROR;
    m_conversion = QString::fromLatin1(ucnv_getName(conv.get(), &err));
    m_asciiRuns = passesAsciiThrough(conv.get());
}

// Generated files are mostly ASCII markup with the odd title in Chinese: ASCII runs are copied
// directly and only the other runs go through the converter, the same bytes several times
// faster.
QByteArray CodePage::encode(QStringView text) const {
    return encode(text, nullptr);
}

QByteArray CodePage::encode(QStringView text, QString* asRead) const {
    if (asRead) asRead->clear();
    if (text.isEmpty()) return {};
    UConverter* conv = cachedConverter(m_name, 0);
    UConverter* back = asRead ? cachedConverter(m_name, 1) : nullptr;
    if (!conv || (asRead && !back)) return {};
    QByteArray out;
    out.resize(UCNV_GET_MAX_BYTES_FOR_STRING(text.size(), ucnv_getMaxCharSize(conv)));
    if (asRead) asRead->reserve(text.size());
    const char16_t* src = text.utf16();
    const qsizetype n = text.size();
    char* dst = out.data();
    qsizetype written = 0;
    for (qsizetype i = 0; i < n;) {
        qsizetype j = i;
        if (m_asciiRuns) {
            j = i + copyAsciiRun(src + i, n - i, dst + written);
            written += j - i;
        }
        if (asRead) asRead->append(text.sliced(i, j - i));
        if (j == n) break;
        qsizetype k = m_asciiRuns ? j : n;
        while (k < n && src[k] >= 0x80)
            ++k;
        UErrorCode err = U_ZERO_ERROR;
        const int32_t made =
            ucnv_fromUChars(conv, dst + written, int32_t(out.size() - written),
                            reinterpret_cast<const UChar*>(src + j), int32_t(k - j), &err);
        if (U_FAILURE(err)) return {};
        // A run ends on a whole character, so it decodes back on its own.
        if (asRead) appendDecoded(back, QByteArrayView(dst + written, made), *asRead);
        written += made;
        i = k;
    }
    out.resize(written);
    return out;
}

// The converter keeps its state from one run to the next, so a character whose second byte
// looks like ASCII (GBK's 0x81 0x40) is never cut in two.
QString CodePage::decode(QByteArrayView bytes) const {
    if (bytes.isEmpty()) return {};
    UConverter* conv = cachedConverter(m_name, 0);
    if (!conv) return {};
    QString out;
    out.resize(bytes.size() + 1); // a byte never makes more than one UTF-16 unit here
    const char* src = bytes.data();
    const char* const end = src + bytes.size();
    auto* dst = reinterpret_cast<UChar*>(out.data());
    auto* const start = dst;
    UChar* const dstEnd = dst + out.size();
    auto convert = [&](const char* until) {
        UErrorCode err = U_ZERO_ERROR;
        ucnv_toUnicode(conv, &dst, dstEnd, &src, until, nullptr, until == end, &err);
        return err;
    };
    while (src < end) {
        UErrorCode pendingErr = U_ZERO_ERROR;
        const bool pending = ucnv_toUCountPending(conv, &pendingErr) > 0;
        if (m_asciiRuns && !pending) {
            while (src < end && static_cast<unsigned char>(*src) < 0x80)
                *dst++ = UChar(*src++);
            if (src == end) break;
        }
        const char* runEnd = src;
        if (!m_asciiRuns)
            runEnd = end;
        else if (pending)
            runEnd = src + 1; // the byte the converter waits for
        else
            while (runEnd < end && static_cast<unsigned char>(*runEnd) >= 0x80)
                ++runEnd;
        const UErrorCode err = convert(runEnd);
        if (err == U_BUFFER_OVERFLOW_ERROR) return decodeExpanding(conv, bytes);
        if (U_FAILURE(err)) return {};
    }
    // A lead byte at the very end still waits: flushing turns it into U+FFFD.
    UErrorCode pendingErr = U_ZERO_ERROR;
    if (ucnv_toUCountPending(conv, &pendingErr) > 0) {
        const UErrorCode err = convert(end);
        if (err == U_BUFFER_OVERFLOW_ERROR) return decodeExpanding(conv, bytes);
    }
    out.resize(dst - start);
    return out;
}

} // namespace qmr
