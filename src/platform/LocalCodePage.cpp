#include "platform/LocalCodePage.h"

#include <QMutex>
#include <QMutexLocker>

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

QByteArray LocalCodePage::encode(QStringView text) {
    if (text.isEmpty()) return {};
    Converter conv = openCurrent();
    QByteArray out;
    out.resize(UCNV_GET_MAX_BYTES_FOR_STRING(text.size(), ucnv_getMaxCharSize(conv.get())));
    UErrorCode err = U_ZERO_ERROR;
    const int32_t n =
        ucnv_fromUChars(conv.get(), out.data(), int32_t(out.size()),
                        reinterpret_cast<const UChar*>(text.utf16()), int32_t(text.size()), &err);
    out.resize(U_SUCCESS(err) ? n : 0);
    return out;
}

QString LocalCodePage::decode(QByteArrayView bytes) {
    if (bytes.isEmpty()) return {};
    Converter conv = openCurrent();
    QString out;
    out.resize(bytes.size() + 1); // a byte never makes more than one UTF-16 unit here
    UErrorCode err = U_ZERO_ERROR;
    const int32_t n = ucnv_toUChars(conv.get(), reinterpret_cast<UChar*>(out.data()),
                                    int32_t(out.size()), bytes.data(), int32_t(bytes.size()), &err);
    if (err == U_BUFFER_OVERFLOW_ERROR) { // a rare table that does expand: size exactly
        out.resize(n + 1);
        err = U_ZERO_ERROR;
        ucnv_toUChars(conv.get(), reinterpret_cast<UChar*>(out.data()), n + 1, bytes.data(),
                      int32_t(bytes.size()), &err);
        out.resize(U_SUCCESS(err) ? n : 0);
        return out;
    }
    out.resize(U_SUCCESS(err) ? n : 0);
    return out;
}

} // namespace qmr
