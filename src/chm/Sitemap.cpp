#include "chm/Sitemap.h"

#include "chm/CharacterReferences.h"
#include "chm/HtmlCharset.h"
#include "chm/HtmlTokenizer.h"
#include "platform/CodePage.h"

#include <vector>

namespace qmr::chm {
namespace {

// One open <UL>: the level of the entries directly in it, and whether it holds one yet.
struct OpenList {
    int level = 1;
    bool holdsEntry = false;
};

// The level of a list opened now. A list inside a list that holds an entry is one level
// deeper (the usual nesting below an entry); a list inside a list that holds none only wraps
// entries of its parent's level, as the e-book build wraps every page entry in a list of its
// own.
int LevelOfNewList(const std::vector<OpenList>& lists) {
    if (lists.empty()) return 1;
    return lists.back().level + (lists.back().holdsEntry ? 1 : 0);
}

class SitemapReader {
  public:
    explicit SitemapReader(const CodePage& codePage) : m_codePage(codePage) {}

    void read(QByteArrayView html) {
        HtmlTokenizer tokens(html);
        HtmlToken token;
        while (tokens.next(token)) {
            if (token.kind == HtmlToken::Kind::StartTag)
                startTag(token);
            else if (token.kind == HtmlToken::Kind::EndTag)
                endTag(token);
        }
    }

    Sitemap result() { return std::move(m_sitemap); }

  private:
    enum class Open { Nothing, Entry, Properties };

    void startTag(const HtmlToken& token) {
        if (token.isStartTag("param")) {
            addParam(token);
        } else if (token.isStartTag("object")) {
            openObject(token);
        } else if (token.isStartTag("ul")) {
            m_open = Open::Nothing;
            m_lists.push_back({LevelOfNewList(m_lists), false});
        } else if (token.isStartTag("li")) {
            m_open = Open::Nothing;
        }
    }

    void endTag(const HtmlToken& token) {
        if (token.isEndTag("object") || token.isEndTag("li")) {
            m_open = Open::Nothing;
        } else if (token.isEndTag("ul")) {
            m_open = Open::Nothing;
            if (!m_lists.empty()) m_lists.pop_back();
        }
    }

    void openObject(const HtmlToken& token) {
        const HtmlToken::Attribute* type = token.attribute("type");
        const QByteArrayView kind = type ? type->value.trimmed() : QByteArrayView();
        m_open = Open::Nothing;
        if (EqualsIgnoringAsciiCase(kind, "text/sitemap")) {
            SitemapEntry entry;
            entry.level = m_lists.empty() ? 1 : m_lists.back().level;
            if (!m_lists.empty()) m_lists.back().holdsEntry = true;
            m_sitemap.entries.append(entry);
            m_open = Open::Entry;
        } else if (EqualsIgnoringAsciiCase(kind, "text/site properties")) {
            m_open = Open::Properties;
        }
    }

    void addParam(const HtmlToken& token) {
        if (m_open == Open::Nothing) return;
        const HtmlToken::Attribute* name = token.attribute("name");
        const HtmlToken::Attribute* value = token.attribute("value");
        SitemapParam param{text(name ? name->value : QByteArrayView()),
                           text(value ? value->value : QByteArrayView())};
        if (m_open == Open::Entry)
            m_sitemap.entries.last().params.append(std::move(param));
        else
            m_sitemap.properties.append(std::move(param));
    }

    QString text(QByteArrayView bytes) const {
        return ResolveCharacterReferences(m_codePage.decode(bytes));
    }

    const CodePage& m_codePage;
    Sitemap m_sitemap;
    std::vector<OpenList> m_lists;
    Open m_open = Open::Nothing;
};

} // namespace

QString SitemapEntry::value(QStringView name) const {
    for (const SitemapParam& param : params)
        if (param.name.compare(name, Qt::CaseInsensitive) == 0) return param.value;
    return {};
}

Sitemap ReadSitemap(QByteArrayView bytes, const CodePage& codePage) {
    const PageBytes page(bytes);
    SitemapReader reader(CodePageOfCharset(DeclaredCharset(page), codePage));
    reader.read(page.bytes());
    return reader.result();
}

} // namespace qmr::chm
