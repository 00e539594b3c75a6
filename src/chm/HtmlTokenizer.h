#pragma once

#include <QByteArrayView>

#include <vector>

namespace qmr::chm {

// True when `text` equals `lowerCase` (ASCII, written in lower case) ignoring ASCII case.
bool EqualsIgnoringAsciiCase(QByteArrayView text, QByteArrayView lowerCase);

// One piece of an HTML page as the tokenizer reads it. Views point into the page's bytes.
struct HtmlToken {
    enum class Kind {
        Text,     // character data between tags; references left as written
        StartTag, // name in `text`, with `attributes`
        EndTag,   // name in `text`
        RawText,  // the content of <script>, <style>, <title>, <textarea>, ... up to its end tag
        Comment,  // comments, <!DOCTYPE ...>, <?...> and other markup declarations
        CData,    // <![CDATA[ ... ]]>
    };
    struct Attribute {
        QByteArrayView name;
        QByteArrayView value; // quotes removed, character references left as written
        bool hasValue = false;
    };

    Kind kind = Kind::Text;
    QByteArrayView text;
    std::vector<Attribute> attributes;
    bool selfClosing = false;
    // For RawText: the name of the element that holds it, as written.
    QByteArrayView rawTextOf;

    bool isStartTag(QByteArrayView lowerCaseName) const {
        return kind == Kind::StartTag && EqualsIgnoringAsciiCase(text, lowerCaseName);
    }
    bool isEndTag(QByteArrayView lowerCaseName) const {
        return kind == Kind::EndTag && EqualsIgnoringAsciiCase(text, lowerCaseName);
    }
    // The first attribute of this name (any case); null when the tag has none.
    const Attribute* attribute(QByteArrayView lowerCaseName) const;
};

// Splits an HTML page into tokens the way browsers do, but tolerantly and flatly: no tree is
// built, nesting is never followed, and each byte is looked at a bounded number of times, so
// the time is linear in the page whatever it holds. Attribute values may be quoted with " or
// ', or not at all; a quote that is never closed ends at the tag's ">". A page cut off inside
// a tag gives the tag as far as it goes. The content of <script>, <style>, <title>,
// <textarea>, <xmp>, <iframe>, <noembed>, <noframes> and <plaintext> is one RawText token.
class HtmlTokenizer {
  public:
    explicit HtmlTokenizer(QByteArrayView html) : m_in(html) {}

    // The next token into `token` (its storage is reused); false at the end of the page.
    bool next(HtmlToken& token);

  private:
    bool readRawText(HtmlToken& token);
    QByteArrayView readTagName(qsizetype& p) const;
    void readStartTag(HtmlToken& token);
    void readAttributes(HtmlToken& token, qsizetype& p);
    QByteArrayView readAttributeValue(qsizetype& p);
    void readEndTag(HtmlToken& token);
    void readUntil(HtmlToken& token, HtmlToken::Kind kind, qsizetype contentFrom,
                   QByteArrayView terminator);
    void readText(HtmlToken& token, qsizetype from);
    qsizetype findQuote(char quote, qsizetype from);

    QByteArrayView m_in;
    qsizetype m_pos = 0;
    QByteArrayView m_rawTextTag; // set after a tag whose content is raw text
    // Positions from which on a search for a closing quote has already failed.
    qsizetype m_noDoubleQuoteFrom = -1;
    qsizetype m_noSingleQuoteFrom = -1;
};

} // namespace qmr::chm
