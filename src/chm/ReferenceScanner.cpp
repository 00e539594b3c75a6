#include "chm/ReferenceScanner.h"

#include "chm/CharacterReferences.h"
#include "chm/HtmlCharset.h"
#include "chm/HtmlTokenizer.h"
#include "platform/CodePage.h"

#include <QSet>

#include <deque>
#include <functional>
#include <optional>
#include <string_view>
#include <unordered_set>

namespace qmr::chm {
namespace {

using Found = std::function<void(QByteArrayView)>;

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}

bool IsIdentifierChar(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '_' || uchar(c) >= 0x80;
}

bool StartsWithIgnoringCase(QByteArrayView text, qsizetype at, QByteArrayView lowerCase) {
    return at + lowerCase.size() <= text.size() &&
           EqualsIgnoringAsciiCase(text.sliced(at, lowerCase.size()), lowerCase);
}

// A quoted CSS string from the quote at css[p]: its content up to the closing quote (a
// backslash keeps the next character in it); an unclosed string ends at the line's end.
QByteArrayView ReadCssString(QByteArrayView css, qsizetype& p) {
    const char quote = css[p++];
    const qsizetype from = p;
    while (p < css.size() && css[p] != quote && css[p] != '\n')
        p += css[p] == '\\' ? 2 : 1;
    p = qMin(p, css.size());
    const QByteArrayView content = css.sliced(from, p - from);
    if (p < css.size() && css[p] == quote) ++p;
    return content;
}

// url( ... ) from just after "url(": the quoted string, or the text up to ")".
QByteArrayView ReadCssUrl(QByteArrayView css, qsizetype& p) {
    while (p < css.size() && IsBlank(css[p]))
        ++p;
    if (p < css.size() && (css[p] == '"' || css[p] == '\'')) return ReadCssString(css, p);
    const qsizetype from = p;
    while (p < css.size() && css[p] != ')')
        ++p;
    return css.sliced(from, p - from).trimmed();
}

void ScanCss(QByteArrayView css, const Found& found) {
    qsizetype p = 0;
    while (p < css.size()) {
        const char c = css[p];
        if (c == '/' && p + 1 < css.size() && css[p + 1] == '*') {
            const qsizetype end = css.indexOf("*/", p + 2);
            p = end < 0 ? css.size() : end + 2;
        } else if (c == '"' || c == '\'') {
            ReadCssString(css, p);
        } else if (c == '@' && StartsWithIgnoringCase(css, p + 1, "import")) {
            p += 7;
            while (p < css.size() && IsBlank(css[p]))
                ++p;
            if (p < css.size() && (css[p] == '"' || css[p] == '\'')) found(ReadCssString(css, p));
        } else if ((c == 'u' || c == 'U') && StartsWithIgnoringCase(css, p, "url(") &&
                   (p == 0 || !IsIdentifierChar(css[p - 1]))) {
            p += 4;
            found(ReadCssUrl(css, p));
        } else {
            ++p;
        }
    }
}

// The URLs of a srcset: candidates separated by commas, each a URL and its descriptors.
void ScanSrcset(QByteArrayView srcset, const Found& found) {
    qsizetype p = 0;
    while (p < srcset.size()) {
        while (p < srcset.size() && (IsBlank(srcset[p]) || srcset[p] == ','))
            ++p;
        const qsizetype from = p;
        while (p < srcset.size() && !IsBlank(srcset[p]))
            ++p;
        QByteArrayView url = srcset.sliced(from, p - from);
        const bool endsCandidate = url.endsWith(',');
        while (url.endsWith(','))
            url.chop(1);
        if (!url.isEmpty()) found(url);
        if (!endsCandidate)
            while (p < srcset.size() && srcset[p] != ',')
                ++p;
    }
}

// True for a value that obviously names no file (a scheme before anything else), so that
// long "data:" addresses are never copied.
bool HasSchemePrefix(QByteArrayView value) {
    value = value.trimmed();
    qsizetype i = 0;
    while (i < value.size() && i < 32 &&
           (IsIdentifierChar(value[i]) || value[i] == '+' || value[i] == '.') &&
           uchar(value[i]) < 0x80)
        ++i;
    return i > 1 && i < value.size() && value[i] == ':';
}

bool IsAscii(QByteArrayView bytes) {
    for (const char c : bytes)
        if (uchar(c) >= 0x80) return false;
    return true;
}

// Collects the raw values of one page or sheet and turns them into references once its
// character set is known.
class Collector {
  public:
    enum class Source { HtmlAttribute, Css, Utf8Css };

    // Pages name the same file many times: each value is made a reference once.
    void add(QByteArrayView bytes, Source source) {
        if (bytes.trimmed().isEmpty() || HasSchemePrefix(bytes)) return;
        const std::string_view key(bytes.data(), size_t(bytes.size()));
        if (m_added.count(key)) return;
        m_values.push_back({bytes.toByteArray(), source});
        const QByteArray& kept = m_values.back().bytes; // its buffer stays where it is
        m_added.insert(std::string_view(kept.constData(), size_t(kept.size())));
    }

    QList<Reference> references(const QString& charset, const CodePage& fallback) const {
        const CodePage& declared = CodePageOfCharset(charset, fallback);
        QList<Reference> out;
        QSet<QString> seen;
        for (const Value& value : m_values) {
            const Reference reference = CleanReference(text(value, charset, declared), declared);
            if (reference.path.isEmpty() || IsOutsideAddress(reference.path)) continue;
            if (!seen.contains(reference.asWritten)) {
                seen.insert(reference.asWritten);
                out.append(reference);
            }
        }
        return out;
    }

  private:
    struct Value {
        QByteArray bytes;
        Source source;
    };

    static QString text(const Value& value, const QString& charset, const CodePage& declared) {
        QString decoded;
        if (IsAscii(value.bytes))
            decoded = QString::fromLatin1(value.bytes);
        else if (value.source == Source::Utf8Css)
            decoded = QString::fromUtf8(value.bytes);
        else if (!charset.isEmpty() || !IsValidUtf8(value.bytes))
            decoded = declared.decode(value.bytes);
        else
            decoded = QString::fromUtf8(value.bytes);
        return value.source == Source::HtmlAttribute ? ResolveCharacterReferences(decoded)
                                                     : decoded;
    }

    std::deque<Value> m_values;
    std::unordered_set<std::string_view> m_added;
};

bool IsPlayerParam(QByteArrayView name) {
    name = name.trimmed();
    return EqualsIgnoringAsciiCase(name, "movie") || EqualsIgnoringAsciiCase(name, "src") ||
           EqualsIgnoringAsciiCase(name, "url") || EqualsIgnoringAsciiCase(name, "filename");
}

void ScanTag(const HtmlToken& token, Collector& collector) {
    using Source = Collector::Source;
    const auto addAttribute = [&](QByteArrayView v) { collector.add(v, Source::HtmlAttribute); };
    const bool isBase = token.isStartTag("base");
    for (const HtmlToken::Attribute& a : token.attributes) {
        if (!a.hasValue) continue;
        const QByteArrayView name = a.name;
        if (EqualsIgnoringAsciiCase(name, "src") || EqualsIgnoringAsciiCase(name, "background") ||
            EqualsIgnoringAsciiCase(name, "poster") ||
            (!isBase && (EqualsIgnoringAsciiCase(name, "href") ||
                         EqualsIgnoringAsciiCase(name, "xlink:href"))) ||
            (EqualsIgnoringAsciiCase(name, "data") && token.isStartTag("object"))) {
            addAttribute(a.value);
        } else if (EqualsIgnoringAsciiCase(name, "srcset")) {
            ScanSrcset(a.value, addAttribute);
        } else if (EqualsIgnoringAsciiCase(name, "style")) {
            if (a.value.contains('&')) { // references first, as browsers read attributes
                const QByteArray css =
                    ResolveCharacterReferences(QString::fromUtf8(a.value)).toUtf8();
                ScanCss(css, [&](QByteArrayView v) { collector.add(v, Source::Utf8Css); });
            } else {
                ScanCss(a.value, [&](QByteArrayView v) { collector.add(v, Source::Css); });
            }
        } else if (EqualsIgnoringAsciiCase(name, "value") && token.isStartTag("param")) {
            const HtmlToken::Attribute* param = token.attribute("name");
            if (param && IsPlayerParam(param->value)) addAttribute(a.value);
        }
    }
}

QString CssCharset(QByteArrayView css) {
    if (css.startsWith("\xEF\xBB\xBF")) return QStringLiteral("UTF-8");
    if (!css.startsWith("@charset \"")) return {};
    const qsizetype end = css.indexOf('"', 10);
    return end < 0 ? QString() : QString::fromLatin1(css.sliced(10, end - 10));
}

} // namespace

QList<Reference> ScanHtmlReferences(QByteArrayView html, const CodePage& fallback, QString* base) {
    const PageBytes page(html);
    QString charset = page.markedCharset();
    Collector collector;
    std::optional<QByteArray> baseHref;
    HtmlTokenizer tokens(page.bytes());
    HtmlToken token;
    while (tokens.next(token)) {
        if (token.kind == HtmlToken::Kind::StartTag) {
            if (charset.isEmpty()) charset = QString::fromLatin1(MetaCharset(token));
            if (!baseHref && token.isStartTag("base"))
                if (const HtmlToken::Attribute* href = token.attribute("href"))
                    baseHref = href->value.toByteArray();
            ScanTag(token, collector);
        } else if (token.kind == HtmlToken::Kind::RawText &&
                   EqualsIgnoringAsciiCase(token.rawTextOf, "style")) {
            ScanCss(token.text,
                    [&](QByteArrayView v) { collector.add(v, Collector::Source::Css); });
        }
    }
    if (base) base->clear();
    if (baseHref && !baseHref->trimmed().isEmpty()) {
        if (HasSchemePrefix(*baseHref)) return {};
        const CodePage& declared = CodePageOfCharset(charset, fallback);
        const QString path =
            CleanReference(ResolveCharacterReferences(declared.decode(*baseHref)), declared).path;
        if (IsOutsideAddress(path)) return {};
        if (base) *base = path;
    }
    return collector.references(charset, fallback);
}

QList<Reference> ScanCssReferences(QByteArrayView css, const CodePage& fallback) {
    Collector collector;
    ScanCss(css, [&](QByteArrayView v) { collector.add(v, Collector::Source::Css); });
    return collector.references(CssCharset(css), fallback);
}

} // namespace qmr::chm
