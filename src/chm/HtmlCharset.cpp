#include "chm/HtmlCharset.h"

#include "platform/CodePage.h"

#include <QHash>
#include <QStringDecoder>

#include <memory>

namespace qmr::chm {
namespace {

// How far into a page its character set is looked for when no <body> comes first.
constexpr qsizetype kCharsetSearchLimit = 64 * 1024;

// Names that browsers read as another table than the one the name says.
QString BrowserCharsetName(const QString& name) {
    const QString key = name.trimmed().toLower();
    if (key == u"iso-8859-1" || key == u"latin1" || key == u"us-ascii" || key == u"ascii" ||
        key == u"iso8859-1" || key == u"l1")
        return QStringLiteral("windows-1252");
    if (key == u"utf-16" || key == u"utf-16le" || key == u"utf-16be" || key == u"unicode")
        return QStringLiteral("UTF-8"); // a page read as bytes cannot be UTF-16
    if (key == u"utf8") return QStringLiteral("UTF-8");
    return name.trimmed();
}

} // namespace

PageBytes::PageBytes(QByteArrayView html) : m_bytes(html) {
    if (html.startsWith("\xEF\xBB\xBF")) {
        m_bytes = html.sliced(3);
        m_marked = QStringLiteral("UTF-8");
    } else if (html.startsWith("\xFF\xFE") || html.startsWith("\xFE\xFF")) {
        const bool little = html[0] == '\xFF';
        auto decoder = QStringDecoder(little ? QStringDecoder::Utf16LE : QStringDecoder::Utf16BE);
        const QString text = decoder(html.sliced(2));
        m_converted = text.toUtf8();
        m_bytes = m_converted;
        m_marked = QStringLiteral("UTF-8");
    }
}

QByteArrayView MetaCharset(const HtmlToken& token) {
    if (!token.isStartTag("meta")) return {};
    if (const HtmlToken::Attribute* charset = token.attribute("charset"))
        return charset->value.trimmed();
    const HtmlToken::Attribute* equiv = token.attribute("http-equiv");
    const HtmlToken::Attribute* content = token.attribute("content");
    if (!equiv || !content || !EqualsIgnoringAsciiCase(equiv->value.trimmed(), "content-type"))
        return {};
    const QByteArrayView value = content->value;
    const qsizetype at = value.toByteArray().toLower().indexOf("charset");
    if (at < 0) return {};
    qsizetype p = at + 7;
    while (p < value.size() &&
           (value[p] == ' ' || value[p] == '=' || value[p] == '"' || value[p] == '\''))
        ++p;
    qsizetype end = p;
    while (end < value.size() && value[end] != ';' && value[end] != ' ' && value[end] != '"' &&
           value[end] != '\'')
        ++end;
    return value.sliced(p, end - p);
}

QString DeclaredCharset(const PageBytes& page) {
    if (!page.markedCharset().isEmpty()) return page.markedCharset();
    HtmlTokenizer tokens(page.bytes().first(qMin(page.bytes().size(), kCharsetSearchLimit)));
    HtmlToken token;
    while (tokens.next(token)) {
        if (token.isStartTag("body")) break;
        const QByteArrayView charset = MetaCharset(token);
        if (!charset.isEmpty()) return QString::fromLatin1(charset);
    }
    return {};
}

const CodePage& CodePageOfCharset(const QString& name, const CodePage& fallback) {
    if (name.isEmpty()) return fallback;
    // Only names the converter knows are kept, so the table stays small whatever pages say.
    thread_local QHash<QString, std::shared_ptr<CodePage>> known;
    if (const auto found = known.constFind(name); found != known.cend()) return **found;
    auto codePage = std::make_shared<CodePage>(BrowserCharsetName(name));
    if (!codePage->isValid()) return fallback;
    return **known.insert(name, std::move(codePage));
}

} // namespace qmr::chm
