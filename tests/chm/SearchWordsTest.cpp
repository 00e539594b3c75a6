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

TEST(SearchWords, ChineseRunsGiveEachCharacterAndTheDictionaryWords) {
    // Big5: \u6211 A7DA, \u5728 A662, \u5317 A55F, \u4EAC A8CA, \u5927 A46A, \u5B78 BEC7,
    // \u7FD2 B2DF, \u4E2D A4A4, \u6587 A4E5. "I study Chinese at Peking University": the
    // dictionary's words are "I at", Beijing, university, study, Chinese.
    EXPECT_EQ(Break(QStringLiteral("windows-950"),
                    QStringLiteral("\u6211\u5728\u5317\u4EAC\u5927\u5B78\u5B78\u7FD2\u4E2D"
                                   "\u6587 ABC\u4E2D")),
              (Words{{"\xA7\xDA", 0},
                     {"\xA7\xDA\xA6\x62", 0},
                     {"\xA6\x62", 1},
                     {"\xA5\x5F", 2},
                     {"\xA5\x5F\xA8\xCA", 2},
                     {"\xA8\xCA", 3},
                     {"\xA4\x6A", 4},
                     {"\xA4\x6A\xBE\xC7", 4},
                     {"\xBE\xC7", 5},
                     {"\xBE\xC7", 6},
                     {"\xBE\xC7\xB2\xDF", 6},
                     {"\xB2\xDF", 7},
                     {"\xA4\xA4", 8},
                     {"\xA4\xA4\xA4\xE5", 8},
                     {"\xA4\xE5", 9},
                     {"abc", 10},
                     {"\xA4\xA4", 11}}));
    // GB2312 (as GBK): \u4E2D D6D0, \u6587 CEC4; punctuation ends a run.
    EXPECT_EQ(Break(QStringLiteral("windows-936"), QStringLiteral("\u4E2D\u6587\u3002\u6587")),
              (Words{{"\xD6\xD0", 0}, {"\xD6\xD0\xCE\xC4", 0}, {"\xCE\xC4", 1}, {"\xCE\xC4", 2}}));

    // ASCII words end a run and a run ends them, with or without blanks between.
    EXPECT_EQ(
        Break(QStringLiteral("windows-950"), QStringLiteral("ab\u4E2D\u6587Cd")),
        (Words{{"ab", 0}, {"\xA4\xA4", 1}, {"\xA4\xA4\xA4\xE5", 1}, {"\xA4\xE5", 2}, {"cd", 3}}));

    // Kana are runs too; Chinese in a Western book is not indexed at all.
    EXPECT_EQ(Break(QStringLiteral("windows-932"), QStringLiteral("\u304B\u306A")).size(), 3u);
    EXPECT_EQ(Break(QStringLiteral("windows-1252"), QStringLiteral("a\u4E2D\u6587b")),
              (Words{{"a", 0}, {"b", 1}}));
}
