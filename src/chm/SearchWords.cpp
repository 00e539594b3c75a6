#include "chm/SearchWords.h"

#include <QChar>

#include <algorithm>

namespace qmr::chm {

namespace {

constexpr quint32 kUnknown = 0;
constexpr quint32 kLacking = 1;

quint32 PackEncoded(const QByteArray& bytes) {
    quint32 packed = quint32(bytes.size()) << 24;
    for (qsizetype i = 0; i < bytes.size(); ++i)
        packed |= quint32(quint8(bytes[i])) << (16 - 8 * i);
    return packed;
}

void AppendPacked(quint32 packed, QByteArray& out) {
    const int length = int(packed >> 24);
    for (int i = 0; i < length; ++i)
        out.append(char((packed >> (16 - 8 * i)) & 0xFF));
}

} // namespace

SearchWordBreaker::SearchWordBreaker(const QString& codePageName)
    : m_codePage(codePageName), m_encodedBmp(0x10000, kUnknown) {
    m_word.reserve(kLongestWord + 4);
}

SearchWordBreaker::CharKind SearchWordBreaker::kindOf(char32_t c) const {
    switch (QChar::script(c)) {
    case QChar::Script_Han:
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
        return QChar::isLetterOrNumber(c) ? CharKind::EastAsian : CharKind::Separator;
    default:
        break;
    }
    if (QChar::isLetterOrNumber(c) || QChar::isMark(c)) return CharKind::WordPart;
    return CharKind::Separator;
}

bool SearchWordBreaker::encodeLower(char32_t c, QByteArray& out) {
    const char32_t lower = QChar::toLower(c);
    if (lower < 0x80) {
        out.append(char(lower));
        return true;
    }
    if (lower > 0xFFFF) { // rare: encoded each time, never remembered
        const QByteArray bytes = m_codePage.encode(QString::fromUcs4(&lower, 1));
        if (bytes.isEmpty() || bytes == "?") return false;
        out.append(bytes);
        return true;
    }
    quint32& known = m_encodedBmp[lower];
    if (known == kUnknown) {
        const QByteArray bytes = m_codePage.encode(QString(QChar(char16_t(lower))));
        known = bytes.isEmpty() || bytes.size() > 3 || bytes == "?" ? kLacking : PackEncoded(bytes);
    }
    if (known == kLacking) return false;
    AppendPacked(known, out);
    return true;
}

quint32 SearchWordBreaker::breakText(QStringView text, quint32 location, const WordSink& take) {
    for (qsizetype i = 0; i < text.size(); ++i) {
        char32_t c = text[i].unicode();
        if (QChar::isHighSurrogate(c) && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            c = QChar::surrogateToUcs4(text[i], text[i + 1]);
            ++i;
        }
        const CharKind kind = kindOf(c);
        if (kind == CharKind::WordPart) {
            endEastAsianRun(location, take);
            if (!encodeLower(c, m_word)) endWord(location, take);
        } else if (kind == CharKind::EastAsian) {
            endWord(location, take);
            const qsizetype start = m_run.size();
            if (encodeLower(c, m_run))
                m_runStarts.push_back(start);
            else
                endEastAsianRun(location, take);
        } else {
            endWord(location, take);
            endEastAsianRun(location, take);
        }
    }
    endWord(location, take);
    endEastAsianRun(location, take);
    return location;
}

void SearchWordBreaker::endWord(quint32& location, const WordSink& take) {
    if (m_word.isEmpty()) return;
    if (m_word.size() <= kLongestWord) take(m_word, location);
    ++location;
    m_word.clear();
}

void SearchWordBreaker::endEastAsianRun(quint32& location, const WordSink& take) {
    const qsizetype count = qsizetype(m_runStarts.size());
    for (qsizetype i = 0; i < count; ++i) {
        const qsizetype start = m_runStarts[size_t(i)];
        const qsizetype next = i + 1 < count ? m_runStarts[size_t(i + 1)] : m_run.size();
        take(QByteArrayView(m_run).sliced(start, next - start), location);
        if (i + 1 < count) {
            const qsizetype last = std::min(count, i + kEastAsianWordLength);
            const qsizetype end = last < count ? m_runStarts[size_t(last)] : m_run.size();
            take(QByteArrayView(m_run).sliced(start, end - start), location);
        }
        ++location;
    }
    m_run.clear();
    m_runStarts.clear();
}

} // namespace qmr::chm
