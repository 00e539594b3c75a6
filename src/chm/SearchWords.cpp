#include "chm/SearchWords.h"

#include <QChar>

#include <algorithm>

#include <unicode/ubrk.h>

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
    : m_codePage(codePageName), m_encodedBmp(0x10000, kUnknown) {}

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

// Every code page a book is written in keeps ASCII as it is, so ASCII letters and digits are
// read without asking the converter or the character tables: most text is ASCII.
quint32 SearchWordBreaker::breakText(QStringView text, quint32 location, const WordSink& take) {
    const char16_t* units = text.utf16();
    const qsizetype size = text.size();
    for (qsizetype i = 0; i < size; ++i) {
        const char16_t unit = units[i];
        if (unit < 0x80) {
            const char lower = unit >= 'A' && unit <= 'Z' ? char(unit + ('a' - 'A')) : char(unit);
            if ((lower >= 'a' && lower <= 'z') || (lower >= '0' && lower <= '9')) {
                if (!m_runStarts.empty()) endEastAsianRun(location, take);
                if (m_wordLength < kLongestWord) m_word[m_wordLength] = lower;
                ++m_wordLength; // as appendToWord, which is not folded into this loop
            } else {
                endWord(location, take);
                if (!m_runStarts.empty()) endEastAsianRun(location, take);
            }
            continue;
        }
        char32_t c = unit;
        if (QChar::isHighSurrogate(c) && i + 1 < size && QChar::isLowSurrogate(units[i + 1]))
            c = QChar::surrogateToUcs4(unit, units[++i]);
        takeNonAscii(c, location, take);
    }
    endWord(location, take);
    endEastAsianRun(location, take);
    return location;
}

void SearchWordBreaker::takeNonAscii(char32_t c, quint32& location, const WordSink& take) {
    const CharKind kind = kindOf(c);
    if (kind == CharKind::WordPart) {
        endEastAsianRun(location, take);
        m_encoded.clear();
        if (encodeLower(c, m_encoded))
            appendToWord(m_encoded.constData(), m_encoded.size());
        else
            endWord(location, take);
    } else if (kind == CharKind::EastAsian) {
        endWord(location, take);
        const qsizetype start = m_run.size();
        if (encodeLower(c, m_run)) {
            m_runStarts.push_back(start);
            m_runText.append(QChar::fromUcs4(c));
        } else {
            endEastAsianRun(location, take);
        }
    } else {
        endWord(location, take);
        endEastAsianRun(location, take);
    }
}

// A word longer than the index keeps is counted (it takes a place) but never stored.
void SearchWordBreaker::appendToWord(const char* bytes, qsizetype size) {
    if (m_wordLength + size <= kLongestWord)
        for (qsizetype i = 0; i < size; ++i)
            m_word[m_wordLength + i] = bytes[i];
    m_wordLength += size;
}

void SearchWordBreaker::endWord(quint32& location, const WordSink& take) {
    if (m_wordLength == 0) return;
    if (m_wordLength <= kLongestWord) take(QByteArrayView(m_word, m_wordLength), location);
    ++location;
    m_wordLength = 0;
}

// Where the dictionary sees words of two or more characters in the run: per character, the
// number of characters of the word starting there (0 where none starts).
std::vector<int> SearchWordBreaker::dictionaryWords() {
    std::vector<int> lengths(m_runStarts.size(), 0);
    UErrorCode status = U_ZERO_ERROR;
    if (!m_dictionary) {
        m_dictionary.reset(ubrk_open(UBRK_WORD, "zh", nullptr, 0, &status));
        if (U_FAILURE(status)) m_dictionary.reset();
    }
    if (!m_dictionary) return lengths;
    ubrk_setText(m_dictionary.get(), reinterpret_cast<const UChar*>(m_runText.utf16()),
                 int32_t(m_runText.size()), &status);
    if (U_FAILURE(status)) return lengths;
    // The run's characters by the UTF-16 unit they start at.
    std::vector<int> charAt(size_t(m_runText.size()) + 1, -1);
    for (int i = 0, unit = 0; i < int(m_runStarts.size()); ++i) {
        charAt[size_t(unit)] = i;
        unit += QChar::isHighSurrogate(m_runText[unit].unicode()) ? 2 : 1;
    }
    charAt.back() = int(m_runStarts.size());
    int from = ubrk_first(m_dictionary.get());
    for (int to = ubrk_next(m_dictionary.get()); to != UBRK_DONE;
         from = to, to = ubrk_next(m_dictionary.get())) {
        const int first = charAt[size_t(from)], end = charAt[size_t(to)];
        if (first >= 0 && end > first + 1) lengths[size_t(first)] = end - first;
    }
    return lengths;
}

void SearchWordBreaker::endEastAsianRun(quint32& location, const WordSink& take) {
    if (m_runStarts.empty()) return;
    const int count = int(m_runStarts.size());
    const std::vector<int> words = count > 1 ? dictionaryWords() : std::vector<int>(1, 0);
    auto bytesOf = [&](int first, int end) {
        const qsizetype from = m_runStarts[size_t(first)];
        const qsizetype to = end < count ? m_runStarts[size_t(end)] : m_run.size();
        return QByteArrayView(m_run).sliced(from, to - from);
    };
    for (int i = 0; i < count; ++i) {
        take(bytesOf(i, i + 1), location);
        if (words[size_t(i)] > 0) {
            const QByteArrayView word = bytesOf(i, i + words[size_t(i)]);
            if (word.size() <= kLongestWord) take(word, location);
        }
        ++location;
    }
    m_run.clear();
    m_runStarts.clear();
    m_runText.clear();
}

} // namespace qmr::chm
