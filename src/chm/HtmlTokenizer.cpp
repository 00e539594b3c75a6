#include "chm/HtmlTokenizer.h"

#include <cstring>

namespace qmr::chm {
namespace {

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}

bool IsAsciiLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

char LowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? char(c + ('a' - 'A')) : c;
}

// The elements whose content is text up to their own end tag, never markup.
bool HoldsRawText(QByteArrayView name) {
    static const QByteArrayView kNames[] = {"script", "style",   "title",    "textarea", "xmp",
                                            "iframe", "noembed", "noframes", "plaintext"};
    for (QByteArrayView candidate : kNames)
        if (EqualsIgnoringAsciiCase(name, candidate)) return true;
    return false;
}

qsizetype IndexOf(QByteArrayView in, char c, qsizetype from) {
    if (from >= in.size()) return -1;
    const void* found = std::memchr(in.data() + from, c, size_t(in.size() - from));
    return found ? static_cast<const char*>(found) - in.data() : -1;
}

bool SameIgnoringAsciiCase(QByteArrayView a, QByteArrayView b) {
    if (a.size() != b.size()) return false;
    for (qsizetype i = 0; i < a.size(); ++i)
        if (LowerAscii(a[i]) != LowerAscii(b[i])) return false;
    return true;
}

} // namespace

bool EqualsIgnoringAsciiCase(QByteArrayView text, QByteArrayView lowerCase) {
    if (text.size() != lowerCase.size()) return false;
    for (qsizetype i = 0; i < text.size(); ++i)
        if (LowerAscii(text[i]) != lowerCase[i]) return false;
    return true;
}

const HtmlToken::Attribute* HtmlToken::attribute(QByteArrayView lowerCaseName) const {
    for (const Attribute& a : attributes)
        if (EqualsIgnoringAsciiCase(a.name, lowerCaseName)) return &a;
    return nullptr;
}

bool HtmlTokenizer::next(HtmlToken& token) {
    token.attributes.clear();
    token.selfClosing = false;
    token.rawTextOf = {};
    if (!m_rawTextTag.isEmpty() && readRawText(token)) return true;
    // "</>" is dropped, as browsers drop it.
    while (m_pos + 2 < m_in.size() && m_in[m_pos] == '<' && m_in[m_pos + 1] == '/' &&
           m_in[m_pos + 2] == '>')
        m_pos += 3;
    if (m_pos >= m_in.size()) return false;
    if (m_in[m_pos] != '<') {
        readText(token, m_pos);
        return true;
    }
    const QByteArrayView rest = m_in.sliced(m_pos);
    const char c = rest.size() > 1 ? rest[1] : '\0';
    if (IsAsciiLetter(c)) {
        readStartTag(token);
    } else if (c == '/' && rest.size() > 2 && IsAsciiLetter(rest[2])) {
        readEndTag(token);
    } else if (rest.startsWith("<!--")) {
        // "<!-->" and "<!--->" are whole (empty) comments.
        const QByteArrayView after = rest.sliced(4);
        const bool empty = after.startsWith(">") || after.startsWith("->");
        readUntil(token, HtmlToken::Kind::Comment, m_pos + 4, empty ? ">" : "-->");
    } else if (rest.startsWith("<![CDATA[")) {
        readUntil(token, HtmlToken::Kind::CData, m_pos + 9, "]]>");
    } else if (c == '!' || c == '?' || c == '/') {
        readUntil(token, HtmlToken::Kind::Comment, m_pos + 2, ">");
    } else {
        readText(token, m_pos + 1); // a "<" that starts no markup is text
        token.text = rest.first(token.text.size() + 1);
    }
    return true;
}

void HtmlTokenizer::readText(HtmlToken& token, qsizetype from) {
    const qsizetype lt = IndexOf(m_in, '<', from);
    const qsizetype end = lt < 0 ? m_in.size() : lt;
    token.kind = HtmlToken::Kind::Text;
    token.text = m_in.sliced(from, end - from);
    m_pos = end;
}

void HtmlTokenizer::readUntil(HtmlToken& token, HtmlToken::Kind kind, qsizetype contentFrom,
                              QByteArrayView terminator) {
    contentFrom = qMin(contentFrom, m_in.size());
    const qsizetype end = m_in.indexOf(terminator, contentFrom);
    token.kind = kind;
    if (end < 0) {
        token.text = m_in.sliced(contentFrom);
        m_pos = m_in.size();
    } else {
        token.text = m_in.sliced(contentFrom, end - contentFrom);
        m_pos = end + terminator.size();
    }
}

// A tag's name runs from `p` to a blank, "/" or ">".
QByteArrayView HtmlTokenizer::readTagName(qsizetype& p) const {
    const qsizetype from = p;
    while (p < m_in.size() && !IsBlank(m_in[p]) && m_in[p] != '/' && m_in[p] != '>')
        ++p;
    return m_in.sliced(from, p - from);
}

void HtmlTokenizer::readStartTag(HtmlToken& token) {
    qsizetype p = m_pos + 1;
    token.kind = HtmlToken::Kind::StartTag;
    token.text = readTagName(p);
    readAttributes(token, p);
    m_pos = p;
    if (HoldsRawText(token.text)) m_rawTextTag = token.text;
}

void HtmlTokenizer::readAttributes(HtmlToken& token, qsizetype& p) {
    const qsizetype n = m_in.size();
    while (p < n) {
        const char c = m_in[p];
        if (c == '>') {
            ++p;
            return;
        }
        if (IsBlank(c) || c == '/') {
            token.selfClosing = c == '/' && p + 1 < n && m_in[p + 1] == '>';
            ++p;
            continue;
        }
        HtmlToken::Attribute attribute;
        const qsizetype nameFrom = p++; // a leading "=" belongs to the name
        while (p < n && !IsBlank(m_in[p]) && m_in[p] != '/' && m_in[p] != '>' && m_in[p] != '=')
            ++p;
        attribute.name = m_in.sliced(nameFrom, p - nameFrom);
        qsizetype q = p;
        while (q < n && IsBlank(m_in[q]))
            ++q;
        if (q < n && m_in[q] == '=') {
            p = q + 1;
            while (p < n && IsBlank(m_in[p]))
                ++p;
            attribute.value = readAttributeValue(p);
            attribute.hasValue = true;
        }
        token.attributes.push_back(attribute);
    }
}

QByteArrayView HtmlTokenizer::readAttributeValue(qsizetype& p) {
    const qsizetype n = m_in.size();
    if (p < n && (m_in[p] == '"' || m_in[p] == '\'')) {
        const qsizetype from = p + 1;
        qsizetype end = findQuote(m_in[p], from);
        if (end >= 0) {
            p = end + 1;
        } else { // never closed: the value ends with the tag
            end = IndexOf(m_in, '>', from);
            if (end < 0) end = n;
            p = end;
        }
        return m_in.sliced(from, end - from);
    }
    const qsizetype from = p;
    while (p < n && !IsBlank(m_in[p]) && m_in[p] != '>')
        ++p;
    return m_in.sliced(from, p - from);
}

// A failed search has looked at everything after its start, so it is never repeated.
qsizetype HtmlTokenizer::findQuote(char quote, qsizetype from) {
    qsizetype& noQuoteFrom = quote == '"' ? m_noDoubleQuoteFrom : m_noSingleQuoteFrom;
    if (noQuoteFrom >= 0 && from >= noQuoteFrom) return -1;
    const qsizetype found = IndexOf(m_in, quote, from);
    if (found < 0) noQuoteFrom = from;
    return found;
}

void HtmlTokenizer::readEndTag(HtmlToken& token) {
    qsizetype p = m_pos + 2;
    token.kind = HtmlToken::Kind::EndTag;
    token.text = readTagName(p);
    const qsizetype gt = IndexOf(m_in, '>', p);
    m_pos = gt < 0 ? m_in.size() : gt + 1;
}

// The raw text runs to the first "</name" followed by a blank, "/" or ">" (or the end of the
// page); false when it is empty and there is nothing to give.
bool HtmlTokenizer::readRawText(HtmlToken& token) {
    const QByteArrayView tag = m_rawTextTag;
    m_rawTextTag = {};
    const qsizetype from = m_pos;
    qsizetype end = m_in.size();
    if (!EqualsIgnoringAsciiCase(tag, "plaintext")) {
        for (qsizetype at = m_in.indexOf("</", from); at >= 0; at = m_in.indexOf("</", at + 2)) {
            const qsizetype after = at + 2 + tag.size();
            if (after > m_in.size()) break;
            if (!SameIgnoringAsciiCase(m_in.sliced(at + 2, tag.size()), tag)) continue;
            if (after == m_in.size() || IsBlank(m_in[after]) || m_in[after] == '/' ||
                m_in[after] == '>') {
                end = at;
                break;
            }
        }
    }
    m_pos = end;
    if (end == from) return false;
    token.kind = HtmlToken::Kind::RawText;
    token.text = m_in.sliced(from, end - from);
    token.rawTextOf = tag;
    return true;
}

} // namespace qmr::chm
