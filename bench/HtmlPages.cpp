#include "HtmlPages.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace qmr {
namespace {

constexpr int kVocabulary = 6000;

class Prose {
  public:
    explicit Prose(quint32 seed) : m_random(seed) {
        static const char* const onsets[] = {"b",  "c",  "d",  "f",  "g",  "h",  "l",  "m",
                                             "n",  "p",  "r",  "s",  "t",  "v",  "w",  "br",
                                             "ch", "cl", "st", "tr", "th", "sh", "pr", ""};
        static const char* const vowels[] = {"a", "e", "i", "o", "u", "ea", "ou", "ai", "io"};
        static const char* const codas[] = {"", "", "n", "r", "s", "t", "l", "nd", "ng", "st"};
        double total = 0;
        for (int rank = 1; rank <= kVocabulary; ++rank) {
            QByteArray word;
            const int syllables = 1 + int(below(rank < 100 ? 2 : 4));
            for (int s = 0; s < syllables; ++s)
                word += QByteArray(pick(onsets)) + pick(vowels) + pick(codas);
            m_words.push_back(word);
            total += 1.0 / rank;
            m_cumulative.push_back(total);
        }
    }

    quint32 below(quint32 n) { return quint32(m_random() % n); }

    template <size_t N> const char* pick(const char* const (&list)[N]) { return list[below(N)]; }

    const QByteArray& word() {
        const double target =
            std::uniform_real_distribution<double>(0, m_cumulative.back())(m_random);
        const auto it = std::lower_bound(m_cumulative.begin(), m_cumulative.end(), target);
        return m_words[size_t(
            std::min<std::ptrdiff_t>(it - m_cumulative.begin(), kVocabulary - 1))];
    }

    QByteArray sentence() {
        QByteArray text = word();
        text[0] = char(std::toupper(uchar(text[0])));
        const int words = 4 + int(below(22));
        for (int i = 1; i < words; ++i) {
            text += below(12) == 0 ? ", " : " ";
            text += word();
        }
        return text + (below(10) == 0 ? "? " : ". ");
    }

    QByteArray paragraph() {
        QByteArray text;
        const int sentences = 1 + int(below(8));
        for (int i = 0; i < sentences; ++i)
            text += sentence();
        return text;
    }

  private:
    std::mt19937 m_random;
    std::vector<QByteArray> m_words;
    std::vector<double> m_cumulative;
};

QByteArray Page(Prose& prose, int number) {
    const QByteArray title = prose.sentence().trimmed();
    QByteArray page = "<!DOCTYPE html>\r\n<html>\r\n<head>\r\n<meta http-equiv=\"Content-Type\" "
                      "content=\"text/html; charset=UTF-8\">\r\n<title>" +
                      title +
                      "</title>\r\n<link rel=\"stylesheet\" href=\"../style.css\">\r\n"
                      "</head>\r\n<body>\r\n<div class=\"nav\"><a href=\"../index.html\">"
                      "Contents</a> | <a href=\"page" +
                      QByteArray::number(number + 1) + ".html\">Next</a></div>\r\n<h1>" + title +
                      "</h1>\r\n";
    const int blocks = 3 + int(prose.below(25));
    for (int i = 0; i < blocks; ++i) {
        switch (prose.below(8)) {
        case 0:
            page += "<h2>" + prose.sentence().trimmed() + "</h2>\r\n";
            break;
        case 1: {
            page += "<ul>\r\n";
            for (int item = 1 + int(prose.below(6)); item > 0; --item)
                page += "<li>" + prose.sentence().trimmed() + "</li>\r\n";
            page += "</ul>\r\n";
            break;
        }
        case 2:
            page += "<p>" + prose.paragraph() + "<a href=\"page" +
                    QByteArray::number(prose.below(quint32(number + 1))) + ".html\">" +
                    prose.word() + " " + prose.word() + "</a>.</p>\r\n";
            break;
        default:
            page += "<p>" + prose.paragraph().trimmed() + "</p>\r\n";
        }
    }
    return page + "<div class=\"footer\">Saved " + QByteArray::number(2020 + number % 5) +
           "</div>\r\n</body>\r\n</html>\r\n";
}

} // namespace

QByteArray GenerateHtmlPages(qsizetype bytes, quint32 seed) {
    Prose prose(seed);
    QByteArray pages;
    pages.reserve(bytes + 65536);
    for (int number = 0; pages.size() < bytes; ++number)
        pages += Page(prose, number);
    pages.truncate(bytes);
    return pages;
}

} // namespace qmr
