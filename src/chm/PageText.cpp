#include "chm/PageText.h"

#include "chm/CharacterReferences.h"
#include "chm/HtmlCharset.h"
#include "chm/HtmlTokenizer.h"
#include "platform/CodePage.h"

#include <utility>

namespace qmr::chm {
namespace {

// Elements that sit inside a line of text: no blank is put where they start or end.
bool IsInline(QByteArrayView name) {
    if (name.isEmpty() || name.size() > 6) return false; // longer than any of them
    static const QByteArrayView kInline[] = {
        "a",      "abbr",   "b",   "bdi",   "bdo",  "big",  "cite", "code", "data", "dfn",   "em",
        "font",   "i",      "kbd", "label", "mark", "nobr", "q",    "s",    "samp", "small", "span",
        "strike", "strong", "sub", "sup",   "time", "tt",   "u",    "var",  "wbr"};
    const char first = name[0] >= 'A' && name[0] <= 'Z' ? char(name[0] + ('a' - 'A')) : name[0];
    for (QByteArrayView candidate : kInline) // the first letter settles most, without a call
        if (candidate[0] == first && EqualsIgnoringAsciiCase(name, candidate)) return true;
    return false;
}

QString Resolved(QString text) {
    return text.contains(u'&') ? ResolveCharacterReferences(text) : text;
}

// Resolves references and makes every run of blanks one blank, without blanks at the ends, in
// the decoded text's own buffer.
QString VisibleText(QString decoded) {
    QString text = Resolved(std::move(decoded));
    char16_t* const start = reinterpret_cast<char16_t*>(text.data());
    const char16_t* const stop = start + text.size();
    char16_t* end = start;
    bool afterBlank = true; // no blank at the start
    for (const char16_t* in = start; in != stop; ++in) {
        const char16_t c = *in;
        const bool blank = c < 0x80 ? c <= 0x20 : QChar::isSpace(c);
        *end = blank ? u' ' : c;
        end += !(blank && afterBlank); // a blank after a blank is dropped
        afterBlank = blank;
    }
    if (end != start && end[-1] == u' ') --end;
    text.truncate(end - start);
    return text;
}

struct CollectedText {
    QByteArray title;
    QByteArray text;
};

// The bytes of the first <title> outside any <svg>, and of the text a reader sees.
CollectedText Collect(QByteArrayView html) {
    CollectedText collected;
    bool titleSeen = false;
    int svgDepth = 0;
    HtmlTokenizer tokens(html);
    HtmlToken token;
    while (tokens.next(token)) {
        switch (token.kind) {
        case HtmlToken::Kind::Text:
        case HtmlToken::Kind::CData:
            if (svgDepth == 0) collected.text += token.text;
            break;
        case HtmlToken::Kind::RawText:
            if (EqualsIgnoringAsciiCase(token.rawTextOf, "title")) {
                if (!titleSeen && svgDepth == 0) collected.title = token.text.toByteArray();
                titleSeen = titleSeen || svgDepth == 0;
            } else if (EqualsIgnoringAsciiCase(token.rawTextOf, "textarea")) {
                collected.text += ' ' + token.text.toByteArray() + ' ';
            }
            break;
        case HtmlToken::Kind::StartTag:
        case HtmlToken::Kind::EndTag:
            if (token.isStartTag("svg") && !token.selfClosing) ++svgDepth;
            if (token.isEndTag("svg") && svgDepth > 0) --svgDepth;
            if (!IsInline(token.text) && !collected.text.endsWith(' ')) collected.text += ' ';
            break;
        case HtmlToken::Kind::Comment:
            break;
        }
    }
    return collected;
}

} // namespace

PageText ExtractPageText(QByteArrayView html, const CodePage& fallback) {
    const PageBytes page(html);
    const CodePage& codePage = CodePageOfCharset(DeclaredCharset(page), fallback);
    const CollectedText collected = Collect(page.bytes());
    return {VisibleText(codePage.decode(collected.title)),
            Resolved(codePage.decode(collected.text))};
}

} // namespace qmr::chm
