#include "BookProject.h"

#include "platform/CodePage.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cmath>
#include <optional>
#include <random>
#include <vector>

namespace qmr::bench {
namespace {

constexpr int kEnglishVocabulary = 300000;
constexpr int kChineseVocabulary = 40000;
constexpr int kPagesPerFolder = 40;

// The commonest words of English prose, most common first: real text spends about half its
// words on these.
const char* const kCommonWords[] = {
    "the",   "of",    "and",    "to",    "a",       "in",      "is",    "that",  "for",   "it",
    "as",    "was",   "with",   "be",    "by",      "on",      "not",   "he",    "this",  "are",
    "or",    "his",   "from",   "at",    "which",   "but",     "have",  "an",    "had",   "they",
    "you",   "were",  "their",  "one",   "all",     "we",      "can",   "her",   "has",   "there",
    "been",  "if",    "more",   "when",  "will",    "would",   "who",   "so",    "no",    "she",
    "other", "its",   "may",    "these", "what",    "them",    "than",  "some",  "him",   "time",
    "into",  "only",  "do",     "could", "new",     "about",   "two",   "first", "then",  "also",
    "after", "any",   "like",   "our",   "should",  "very",    "where", "most",  "such",  "made",
    "over",  "many",  "before", "must",  "through", "years",   "way",   "well",  "even",  "back",
    "used",  "water", "people", "work",  "great",   "between", "each",  "under", "house", "world"};

// Deterministic on every platform: no standard distributions, whose output differs between
// standard libraries.
class Random {
  public:
    explicit Random(quint32 seed) : m_engine(seed) {}
    quint32 below(quint32 n) { return quint32(m_engine() % n); }
    bool chance(quint32 percent) { return below(100) < percent; }
    double unit() { return double(m_engine()) / 4294967296.0; }

  private:
    std::mt19937 m_engine;
};

// Ranks drawn by Zipf's law: rank r in proportion to 1/r^exponent. With 1.1 over 300,000
// English words, 200 pages hold about 40,000 different words and 20,000 pages 290,000, much as
// a collection of web pages on many subjects does.
class Zipf {
  public:
    Zipf(int size, double exponent) {
        double total = 0;
        for (int rank = 1; rank <= size; ++rank)
            m_cumulative.push_back(total += std::pow(rank, -exponent));
    }
    int draw(Random& random) const {
        const double target = random.unit() * m_cumulative.back();
        const auto at = std::upper_bound(m_cumulative.begin(), m_cumulative.end(), target);
        return int(std::min<std::ptrdiff_t>(at - m_cumulative.begin(),
                                            std::ptrdiff_t(m_cumulative.size()) - 1));
    }

  private:
    std::vector<double> m_cumulative;
};

class EnglishProse {
  public:
    explicit EnglishProse(Random& random) : m_random(random), m_zipf(kEnglishVocabulary, 1.1) {
        static const char* const onsets[] = {"b",  "c",  "d",  "f",  "g",  "h",  "l",  "m",
                                             "n",  "p",  "r",  "s",  "t",  "v",  "w",  "br",
                                             "ch", "cl", "st", "tr", "th", "sh", "pr", ""};
        static const char* const vowels[] = {"a", "e", "i", "o", "u", "ea", "ou", "ai", "io"};
        static const char* const codas[] = {"", "", "n", "r", "s", "t", "l", "nd", "ng", "st"};
        for (const char* word : kCommonWords)
            m_words.push_back(word);
        while (m_words.size() < size_t(kEnglishVocabulary)) {
            QByteArray word;
            for (int s = 1 + int(random.below(m_words.size() < 2000 ? 2 : 4)); s > 0; --s)
                word += QByteArray(pick(onsets)) + pick(vowels) + pick(codas);
            if (random.chance(4)) word[0] = char(word[0] - 'a' + 'A'); // a name
            m_words.push_back(word);
        }
    }

    QByteArray word() { return m_words[size_t(m_zipf.draw(m_random))]; }

    QByteArray sentence(int words) {
        QByteArray text = word();
        text[0] = char(std::toupper(uchar(text[0])));
        for (int i = 1; i < words; ++i) {
            text += m_random.chance(8) ? ", " : " ";
            text += m_random.chance(3) ? QByteArray::number(m_random.below(3000)) : word();
        }
        return text + (m_random.chance(10) ? "?" : ".");
    }

    QByteArray sentence() { return sentence(5 + int(m_random.below(20))); }

    QByteArray title() {
        QByteArray text;
        for (int i = 3 + int(m_random.below(6)); i > 0; --i) {
            QByteArray w = word();
            w[0] = char(std::toupper(uchar(w[0])));
            text += (text.isEmpty() ? "" : " ") + w;
        }
        return text;
    }

  private:
    template <size_t N> const char* pick(const char* const (&list)[N]) {
        return list[m_random.below(N)];
    }

    Random& m_random;
    Zipf m_zipf;
    std::vector<QByteArray> m_words;
};

// Chinese text of words of one to three characters, every character one that Big5 holds.
class ChineseProse {
  public:
    ChineseProse(Random& random, const CodePage& big5)
        : m_random(random), m_zipf(kChineseVocabulary, 1.0) {
        std::vector<char16_t> characters;
        for (char16_t c = 0x4E00; c <= 0x9FA5 && characters.size() < 5000; c += 3)
            if (big5.encode(QString(QChar(c))) != "?") characters.push_back(c);
        const Zipf common(int(characters.size()), 1.0);
        while (m_words.size() < size_t(kChineseVocabulary)) {
            QString word;
            const quint32 kind = random.below(100);
            for (int n = kind < 30 ? 1 : kind < 85 ? 2 : 3; n > 0; --n)
                word += QChar(characters[size_t(common.draw(random))]);
            m_words.push_back(word);
        }
    }

    QString sentence(int words) {
        QString text;
        for (int i = 0; i < words; ++i) {
            text += m_words[size_t(m_zipf.draw(m_random))];
            if (m_random.chance(12)) text += u'\uFF0C';
            if (m_random.chance(2)) text += QString::number(m_random.below(2000));
        }
        return text + u'\u3002';
    }

    QString sentence() { return sentence(6 + int(m_random.below(16))); }
    QString title() { return sentence(2 + int(m_random.below(4))).chopped(1); }

  private:
    Random& m_random;
    Zipf m_zipf;
    std::vector<QString> m_words;
};

QByteArray Escaped(QByteArray text) {
    return text.replace('&', "&amp;").replace('<', "&lt;");
}

QByteArray ItemId(int page) {
    return QByteArray::number(20190101000000LL + qint64(page) * 37);
}

// One saved page: what a browser saves of an article, markup around prose.
class PageWriter {
  public:
    PageWriter(Random& random, EnglishProse& english, ChineseProse* chinese, const CodePage& big5,
               int pages, bool plainBody)
        : m_random(random), m_english(english), m_chinese(chinese), m_big5(big5), m_pages(pages),
          m_body(plainBody ? "<body>\n" : "<body class=\"article\">\n") {}

    // The page's bytes and, in `title`, its title in the page's encoding.
    QByteArray page(int number, bool chinese, QByteArray* title) {
        m_isChinese = chinese;
        *title = chinese ? m_big5.encode(m_chinese->title()) : m_english.title();
        const int target = 9000 + int(m_random.below(4000));
        QByteArray html = head(*title, number) + m_body + navigation();
        html += "<main><article>\n<h1>" + Escaped(*title) +
                "</h1>\n<p class=\"byline\">By <a "
                "href=\"../" +
                otherPage() + "/index.html\">" + m_english.title() +
                "</a> &middot; <time datetime=\"2021-03-04\">March 4, 2021</time></p>\n";
        while (html.size() < target - 900)
            html += block();
        return html + "</article></main>\n" + footer() + "</body>\n</html>\n";
    }

  private:
    QByteArray head(const QByteArray& title, int number) {
        const QByteArray charset =
            m_isChinese ? "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=big5\">"
                        : "<meta charset=\"utf-8\">";
        return "<!DOCTYPE html>\n<html lang=\"" + QByteArray(m_isChinese ? "zh-TW" : "en") +
               "\">\n<head>\n" + charset +
               "\n<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
               "<title>" +
               Escaped(title) +
               "</title>\n"
               "<link rel=\"stylesheet\" href=\"index.css\">\n<style>.post-" +
               QByteArray::number(number) + " { margin: 0 auto; max-width: 42em; } .post-" +
               QByteArray::number(number) +
               " img { max-width: 100%; height: auto; }</style>\n"
               "<script>window.dataLayer = window.dataLayer || []; function gtag() { "
               "dataLayer.push(arguments); } gtag('js', new Date());</script>\n</head>\n";
    }

    QByteArray navigation() {
        QByteArray nav = "<header class=\"site-header\"><nav><ul class=\"menu\">\n";
        for (int i = 0; i < 8; ++i)
            nav += "<li class=\"menu-item\"><a href=\"../" + otherPage() + "/index.html\">" +
                   m_english.word() + "</a></li>\n";
        return nav + "</ul></nav></header>\n";
    }

    QByteArray footer() {
        QByteArray html = "<footer class=\"site-footer\"><p>&copy; 2021 " + m_english.title() +
                          ". All rights reserved.</p><ul>\n";
        for (int i = 0; i < 4; ++i)
            html += "<li><a href=\"../" + otherPage() + "/index.html\">" + m_english.title() +
                    "</a></li>\n";
        return html + "</ul></footer>\n";
    }

    QByteArray otherPage() { return ItemId(int(m_random.below(quint32(m_pages)))); }

    QByteArray text() {
        if (m_isChinese) return m_big5.encode(m_chinese->sentence());
        return Escaped(m_english.sentence());
    }

    // Sentences with now and then a link, emphasis or a quotation mark as a reference.
    QByteArray paragraph() {
        QByteArray html = "<p>";
        for (int i = 1 + int(m_random.below(6)); i > 0; --i) {
            html += text() + ' ';
            const quint32 roll = m_random.below(10);
            if (roll == 0)
                html += "<a href=\"../" + otherPage() + "/index.html\">" + m_english.word() + ' ' +
                        m_english.word() + "</a> ";
            else if (roll == 1)
                html += "<em>" + m_english.word() + "</em> ";
            else if (roll == 2)
                html += "<strong>" + m_english.word() + "</strong> &ldquo;" + m_english.word() +
                        "&rdquo; ";
        }
        return html + "</p>\n";
    }

    QByteArray block() {
        switch (m_random.below(12)) {
        case 0:
            return "<h2 id=\"s" + QByteArray::number(m_random.below(100)) + "\">" +
                   (m_isChinese ? m_big5.encode(m_chinese->title()) : m_english.title()) +
                   "</h2>\n";
        case 1: {
            QByteArray list = "<ul class=\"list\">\n";
            for (int i = 2 + int(m_random.below(5)); i > 0; --i)
                list += "<li>" + text() + "</li>\n";
            return list + "</ul>\n";
        }
        case 2: {
            QByteArray table = "<table class=\"data\"><tr><th>" + m_english.word() + "</th><th>" +
                               m_english.word() + "</th></tr>\n";
            for (int i = 2 + int(m_random.below(4)); i > 0; --i)
                table += "<tr><td>" + m_english.word() + "</td><td>" +
                         QByteArray::number(m_random.below(10000)) + "</td></tr>\n";
            return table + "</table>\n";
        }
        case 3:
            return "<blockquote><p>" + text() + "</p></blockquote>\n";
        default:
            return paragraph();
        }
    }

    Random& m_random;
    EnglishProse& m_english;
    ChineseProse* m_chinese;
    const CodePage& m_big5;
    int m_pages;
    QByteArray m_body;
    bool m_isChinese = false;
};

QByteArray StyleSheet(int number) {
    const QByteArray n = QByteArray::number(number % 97);
    return "body { font: 16px/1.5 Georgia, serif; color: #2" + n +
           "; background: #fff; margin: 0; }\n"
           ".site-header { border-bottom: 1px solid #ddd; padding: 0.5em 1em; }\n"
           ".menu { list-style: none; margin: 0; padding: 0; }\n"
           ".menu-item { display: inline-block; margin-right: " +
           n +
           "px; }\n"
           "article { padding: 1em; } h1 { font-size: 2em; line-height: 1.2; }\n"
           "h2 { font-size: 1.4em; margin-top: 1.5em; } .byline { color: #777; }\n"
           "table.data { border-collapse: collapse; } table.data td, table.data th { border: "
           "1px solid #ccc; padding: 0.2em 0.5em; }\n"
           "blockquote { border-left: 3px solid #ccc; margin-left: 0; padding-left: 1em; }\n"
           ".site-footer { font-size: 0.8em; color: #999; border-top: 1px solid #ddd; }\n";
}

QByteArray SitemapHead() {
    return "<!DOCTYPE HTML PUBLIC \"-//IETF//DTD HTML//EN\">\r\n<HTML>\r\n<HEAD>\r\n<meta "
           "name=\"GENERATOR\" content=\"Microsoft&reg; HTML Help Workshop 4.1\">\r\n<!-- "
           "Sitemap 1.0 -->\r\n</HEAD>\r\n<BODY>\r\n   <OBJECT type=\"text/site properties\">\r\n"
           "     <param name=\"Window Styles\" value=\"0x800027\">\r\n   </OBJECT>\r\n";
}

QByteArray SitemapEntry(const QByteArray& name, const QByteArray& local, int imageNumber) {
    QByteArray entry = "      <LI><OBJECT type=\"text/sitemap\">\r\n            <param "
                       "name=\"Name\" value=\"" +
                       name + "\">\r\n";
    if (!local.isEmpty()) entry += "            <param name=\"Local\" value=\"" + local + "\">\r\n";
    return entry + "            <param name=\"ImageNumber\" value=\"" +
           QByteArray::number(imageNumber) + "\">\r\n          </OBJECT>\r\n";
}

QByteArray Project(const QString& folder, const BookProjectOptions& options,
                   const CodePage& codePage, const QByteArray& firstPage, const QByteArray& files) {
    QByteArray hhp =
        "[Options]\r\nBinary TOC=No\r\nBinary Index=Yes\r\nCompiled file= " + folder.toUtf8() +
        "chmcmd.chm\r\nCompatibility= 1.1 or later\r\nFull-text search=" +
        QByteArray(options.fullTextSearch ? "Yes" : "No") +
        "\r\nDisplay compile progress=Yes\r\nDisplay compile notes=Yes\r\nContents "
        "file=Index.hhc\r\nDefault Window=main\r\n";
    if (options.big5) hhp += "Default Font=" + codePage.encode(u"新細明體") + ", 10,136\r\n";
    hhp += "Default topic=" + firstPage +
           "\r\nError log file=ErrorLog.log\r\nIndex file=Index.hhk\r\n";
    hhp += options.big5 ? "Language=0x404 Chinese (Traditional/Taiwan)\r\n"
                        : "Language=0x409 English (United States)\r\n";
    hhp +=
        "Auto Index=Yes\r\nCreate CHI file=No\r\nTitle =Index\r\n[WINDOWS]\r\n"
        "main=\"Index\",\"index.hhc\",\"index.hhk\",\"" +
        firstPage + "\",\"" + firstPage +
        "\",,,,,0x23520,0,0x70387E,,0xB0000,,,,,,0\r\n[Files]\r\n" + files +
        "[ALIAS]\r\nHIDD_UVCGETFIREWAREVERSION_DIALOG = " + firstPage +
        "\r\n[MAP]\r\n#include HTMLDefines.h\r\n[TEXT POPUPS]\r\nHTMLDefines.h\r\n[INFOTYPES]\r\n";
    return hhp;
}

bool Write(const QString& path, const QByteArray& bytes, BookProjectSize* size, QString* error) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        *error = QStringLiteral("cannot write %1: %2").arg(path, file.errorString());
        return false;
    }
    if (size) {
        ++size->files;
        size->bytes += bytes.size();
    }
    return true;
}

} // namespace

bool WriteBookProject(const QString& folder, const BookProjectOptions& options,
                      BookProjectSize* size, QString* error) {
    Random random(options.seed);
    const CodePage big5(QStringLiteral("Big5"));
    const CodePage codePage(options.big5 ? QStringLiteral("Big5") : QStringLiteral("windows-1252"));
    EnglishProse english(random);
    std::optional<ChineseProse> chinese;
    if (options.big5) chinese.emplace(random, big5);
    PageWriter writer(random, english, chinese ? &*chinese : nullptr, big5, options.pages,
                      options.plainBody);
    *size = {};
    QByteArray files, contents = SitemapHead() + "   <UL>\r\n",
                      keywords = SitemapHead() + "<UL>\r\n";
    for (int i = 0; i < options.pages; ++i) {
        const QByteArray id = ItemId(i);
        const QString item = folder + QStringLiteral("data/") + QString::fromLatin1(id) + u'/';
        if (!QDir().mkpath(item)) {
            *error = QStringLiteral("cannot make %1").arg(item);
            return false;
        }
        const bool isChinese = options.big5 && i % 3 == 1;
        QByteArray title;
        const QByteArray page = writer.page(i, isChinese, &title);
        if (!Write(item + QStringLiteral("index.html"), page, size, error) ||
            !Write(item + QStringLiteral("index.css"), StyleSheet(i), size, error))
            return false;
        const QByteArray local = "data/" + id + "/index.html";
        files += "data/" + id + "/index.css\r\n" + local + "\r\n";
        // The titles of a Big5 book's contents and index are Big5; English titles are ASCII.
        if (i % kPagesPerFolder == 0) {
            if (i > 0) contents += "   </UL>\r\n";
            contents += SitemapEntry(english.title(), {}, 1) + "   <UL>\r\n";
        }
        contents += SitemapEntry(title, local, 11);
        keywords += "         <UL>\r\n" + SitemapEntry(title, local, 11) + "         </UL>\r\n";
    }
    contents += "   </UL>\r\n   </UL>\r\n</BODY></HTML>\r\n";
    keywords += "</UL>\r\n</BODY></HTML>\r\n";
    return Write(folder + QStringLiteral("Index.hhc"), contents, nullptr, error) &&
           Write(folder + QStringLiteral("Index.hhk"), keywords, nullptr, error) &&
           Write(folder + QStringLiteral("Index.hhp"),
                 Project(folder, options, codePage, "data/" + ItemId(0) + "/index.html", files),
                 nullptr, error);
}

} // namespace qmr::bench
