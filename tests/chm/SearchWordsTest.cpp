#include "chm/SearchWords.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

using namespace qmr::chm;

namespace {

using Words = std::vector<std::pair<QByteArray, quint32>>;

Words Break(const QString& codePage, const QString& text, quint32 location = 0,
            quint32* next = nullptr) {
    SearchWordBreaker breaker(codePage);
    Words words;
    const quint32 after = breaker.breakText(text, location, [&](QByteArrayView word, quint32 at) {
        words.emplace_back(word.toByteArray(), at);
    });
    if (next) *next = after;
    return words;
}

} // namespace

TEST(SearchWords, WesternWordsAreLettersAndDigitsInLowerCase) {
    quint32 next = 0;
    const Words words =
        Break(QStringLiteral("windows-1252"),
              QStringLiteral("Hello, World! It's 2024; na\u00EFve CAF\u00C9"), 5, &next);
    const Words expected{{"hello", 5}, {"world", 6},     {"it", 7},      {"s", 8},
                         {"2024", 9},  {"na\xEFve", 10}, {"caf\xE9", 11}};
    EXPECT_EQ(words, expected);
    EXPECT_EQ(next, 12u);

    // Characters the code page lacks separate words; an overlong word is left out but keeps
    // its place.
    const QString longWord(100, QLatin1Char('x'));
    EXPECT_EQ(Break(QStringLiteral("windows-1252"),
                    QStringLiteral("abc\u0416def ") + longWord + QStringLiteral(" end")),
              (Words{{"abc", 0}, {"def", 1}, {"end", 3}}));
    EXPECT_EQ(Break(QStringLiteral("windows-1251"), QStringLiteral("\u041C\u0438\u0440")),
              (Words{{"\xEC\xE8\xF0", 0}}));
    EXPECT_TRUE(Break(QStringLiteral("windows-1252"), QStringLiteral(" \t-- ... ")).empty());
}

TEST(SearchWords, ChineseRunsGiveEachCharacterAndTheWordsItStarts) {
    // Big5: \u4E2D A4A4, \u6587 A4E5, \u5B57 A672.
    EXPECT_EQ(Break(QStringLiteral("windows-950"), QStringLiteral("\u4E2D\u6587\u5B57 ABC\u4E2D")),
              (Words{{"\xA4\xA4", 0},
                     {"\xA4\xA4\xA4\xE5\xA6\x72", 0},
                     {"\xA4\xE5", 1},
                     {"\xA4\xE5\xA6\x72", 1},
                     {"\xA6\x72", 2},
                     {"abc", 3},
                     {"\xA4\xA4", 4}}));
    // GB2312 (as GBK): \u4E2D D6D0, \u6587 CEC4; punctuation ends a run.
    EXPECT_EQ(Break(QStringLiteral("windows-936"), QStringLiteral("\u4E2D\u6587\u3002\u6587")),
              (Words{{"\xD6\xD0", 0}, {"\xD6\xD0\xCE\xC4", 0}, {"\xCE\xC4", 1}, {"\xCE\xC4", 2}}));

    // The word a character starts holds at most four characters.
    const Words six = Break(QStringLiteral("windows-936"),
                            QStringLiteral("\u4E00\u4E8C\u4E09\u56DB\u4E94\u516D"));
    ASSERT_EQ(six.size(), 11u);
    EXPECT_EQ(six[1].first.size(), 8);
    EXPECT_EQ(six[9].first.size(), 4); // the fifth character starts a word of two
    EXPECT_EQ(six[10].second, 5u);

    // Kana are runs too; Chinese in a Western book is not indexed at all.
    EXPECT_EQ(Break(QStringLiteral("windows-932"), QStringLiteral("\u304B\u306A")).size(), 3u);
    EXPECT_EQ(Break(QStringLiteral("windows-1252"), QStringLiteral("a\u4E2D\u6587b")),
              (Words{{"a", 0}, {"b", 1}}));
}
