#include "platform/LocalCodePage.h"

#include <QMutex>
#include <QMutexLocker>

#include <algorithm>
#include <memory>
#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace qmr {
namespace {

QMutex nameMutex;
QString& currentName() {
    static QString name = LocalCodePage::systemDefaultName();
    return name;
}

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

// ICU takes "cp950" as IBM-950, a different table from the one these files use, so the
// familiar names are mapped to the Windows tables first.
QString icuNameFor(const QString& requested) {
    const QString key =
        requested.trimmed().toLower().remove(QLatin1Char('-')).remove(QLatin1Char('_'));
    if (key == u"big5" || key == u"cp950" || key == u"950" || key == u"windows950")
        return QStringLiteral("windows-950");
    if (key == u"gb2312" || key == u"gbk" || key == u"cp936" || key == u"936" ||
        key == u"windows936")
        return QStringLiteral("windows-936");
    return requested.trimmed();
}

Converter openConverter(const QString& name) {
    UErrorCode err = U_ZERO_ERROR;
    Converter conv(ucnv_open(name.toLatin1().constData(), &err));
    if (U_FAILURE(err)) return nullptr;
    ucnv_setFromUCallBack(conv.get(), writeQuestionMark, nullptr, nullptr, nullptr, &err);
    ucnv_setToUCallBack(conv.get(), writeReplacementChar, nullptr, nullptr, nullptr, &err);
    if (U_FAILURE(err)) return nullptr;
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

Converter openCurrent() {
    QString name;
    {
        QMutexLocker lock(&nameMutex);
        name = currentName();
    }
    return openConverter(name);
}

} // namespace

QString LocalCodePage::systemDefaultName() {
#ifdef Q_OS_WIN
    return QStringLiteral("windows-%1").arg(GetACP());
#else
    return QStringLiteral("windows-950");
#endif
}

bool LocalCodePage::systemDefaultAllowsChoice() {
#ifdef Q_OS_WIN
    return false;
#else
    return true;
#endif
}

QString LocalCodePage::name() {
    QMutexLocker lock(&nameMutex);
    return currentName();
}

bool LocalCodePage::select(const QString& requested, QString* error) {
    const QString icuName =
        requested.trimmed().isEmpty() ? systemDefaultName() : icuNameFor(requested);
    if (!openConverter(icuName)) {
        if (error)
            *error = QStringLiteral("unknown code page \"%1\"; use a name such as Big5, GB2312 "
                                    "or windows-1252")
                         .arg(requested);
        return false;
    }
    QMutexLocker lock(&nameMutex);
    currentName() = icuName;
    return true;
}

// Generated files are mostly ASCII markup with the odd title in Chinese. For code pages that
// write ASCII as themselves and keep no state between characters, ASCII runs are copied
// directly and only the other runs go through the converter: the same bytes, several times
// faster.
QByteArray LocalCodePage::encode(QStringView text) {
    if (text.isEmpty()) return {};
    Converter conv = openCurrent();
    const bool runs = passesAsciiThrough(conv.get());
    QByteArray out;
    out.resize(UCNV_GET_MAX_BYTES_FOR_STRING(text.size(), ucnv_getMaxCharSize(conv.get())));
    const char16_t* src = text.utf16();
    const qsizetype n = text.size();
    char* dst = out.data();
    qsizetype written = 0;
    for (qsizetype i = 0; i < n;) {
        qsizetype j = i;
        if (runs)
            for (; j < n && src[j] < 0x80; ++j)
                dst[written++] = char(src[j]);
        if (j == n) break;
        qsizetype k = runs ? j : n;
        while (k < n && src[k] >= 0x80)
            ++k;
        UErrorCode err = U_ZERO_ERROR;
        written += ucnv_fromUChars(conv.get(), dst + written, int32_t(out.size() - written),
                                   reinterpret_cast<const UChar*>(src + j), int32_t(k - j), &err);
        if (U_FAILURE(err)) return {};
        i = k;
    }
    out.resize(written);
    return out;
}

QString LocalCodePage::decode(QByteArrayView bytes) {
    if (bytes.isEmpty()) return {};
    Converter conv = openCurrent();
    const bool runs = passesAsciiThrough(conv.get());
    QString out;
    out.resize(bytes.size() + 1); // a byte never makes more than one UTF-16 unit here
    const auto* src = reinterpret_cast<const unsigned char*>(bytes.data());
    const qsizetype n = bytes.size();
    char16_t* dst = reinterpret_cast<char16_t*>(out.data());
    qsizetype written = 0;
    for (qsizetype i = 0; i < n;) {
        qsizetype j = i;
        if (runs)
            for (; j < n && src[j] < 0x80; ++j)
                dst[written++] = char16_t(src[j]);
        if (j == n) break;
        // A lead byte takes the byte after it along, whatever that is.
        qsizetype k = runs ? j : n;
        while (k < n && src[k] >= 0x80)
            k += 2;
        k = std::min(k, n);
        UErrorCode err = U_ZERO_ERROR;
        written += ucnv_toUChars(conv.get(), reinterpret_cast<UChar*>(dst + written),
                                 int32_t(out.size() - written),
                                 reinterpret_cast<const char*>(src + j), int32_t(k - j), &err);
        if (err == U_BUFFER_OVERFLOW_ERROR) return decodeExpanding(conv.get(), bytes);
        if (U_FAILURE(err)) return {};
        i = k;
    }
    out.resize(written);
    return out;
}

} // namespace qmr
