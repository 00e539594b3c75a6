#include "chm/Reference.h"

#include "platform/CodePage.h"

namespace qmr::chm {
namespace {

int HexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

QByteArray PercentDecoded(const QByteArray& bytes) {
    QByteArray out;
    out.reserve(bytes.size());
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        if (bytes[i] == '%' && i + 2 < bytes.size() && HexValue(bytes[i + 1]) >= 0 &&
            HexValue(bytes[i + 2]) >= 0) {
            out += char(HexValue(bytes[i + 1]) * 16 + HexValue(bytes[i + 2]));
            i += 2;
        } else {
            out += bytes[i];
        }
    }
    return out;
}

} // namespace

bool IsValidUtf8(QByteArrayView bytes) {
    for (qsizetype i = 0; i < bytes.size();) {
        const uchar lead = uchar(bytes[i]);
        const int length = lead < 0x80                    ? 1
                           : lead >= 0xC2 && lead <= 0xDF ? 2
                           : lead >= 0xE0 && lead <= 0xEF ? 3
                           : lead >= 0xF0 && lead <= 0xF4 ? 4
                                                          : 0;
        if (length == 0 || i + length > bytes.size()) return false;
        for (int k = 1; k < length; ++k)
            if ((uchar(bytes[i + k]) & 0xC0) != 0x80) return false;
        const uint second = uchar(bytes[i + 1 < bytes.size() ? i + 1 : i]);
        if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
            (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F))
            return false;
        i += length;
    }
    return true;
}

Reference CleanReference(QStringView value, const CodePage& codePage) {
    QString text = value.trimmed().toString();
    text.remove(u'\t').remove(u'\n').remove(u'\r');
    qsizetype cut = text.size();
    for (qsizetype i = 0; i < text.size(); ++i)
        if (text[i] == u'?' || text[i] == u'#') {
            cut = i;
            break;
        }
    text.truncate(cut);
    text.replace(u'\\', u'/');
    Reference reference{text, text};
    if (text.contains(u'%')) {
        const QByteArray decoded = PercentDecoded(text.toUtf8());
        reference.path =
            IsValidUtf8(decoded) ? QString::fromUtf8(decoded) : codePage.decode(decoded);
    }
    return reference;
}

bool IsOutsideAddress(QStringView path) {
    if (path.startsWith(u'/')) return true;
    qsizetype i = 0;
    while (i < path.size() &&
           (path[i].isLetterOrNumber() || path[i] == u'+' || path[i] == u'-' || path[i] == u'.') &&
           path[i].unicode() < 0x80)
        ++i;
    return i > 0 && i < path.size() && path[i] == u':' && path[0].isLetter();
}

} // namespace qmr::chm
