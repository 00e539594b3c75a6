#pragma once

#include "platform/CodePage.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QStringView>

#include <unicode/ubrk.h>

#include <functional>
#include <memory>
#include <vector>

namespace qmr::chm {

// Breaks a topic's text into the words a reader's search looks up, each as the index stores
// it: lower case, in the book's code page. The readers compare whole stored words with what
// the user typed (or its start, for a partial match), so:
// - letters, digits and combining marks make words; anything else separates them, and so do
//   characters the code page lacks;
// - Chinese and Japanese text has no blanks between words, and the readers look up what the
//   user typed as one stored word (or the start of one), not character by character. So every
//   character of such a run is a word by itself, and every word of two or more characters
//   that ICU's dictionary finds in the run is a word too, at the place of its first
//   character: a search for a single character or for a dictionary word finds the topic. The
//   dictionary keeps the number of different words bounded, as every pair of characters would
//   not.
class SearchWordBreaker {
  public:
    // Longest word the index stores, in bytes; longer ones (long numbers, encoded data) are
    // left out, as the readers keep words shorter than this.
    static constexpr int kLongestWord = 99;

    using WordSink = std::function<void(QByteArrayView word, quint32 location)>;

    explicit SearchWordBreaker(const QString& codePageName);

    // Calls `take` for every word of `text`, the first at `location` and each later word one
    // place further (the words started by one Chinese character share its place). Returns the
    // place after the last word, where the next text of the same topic goes on.
    quint32 breakText(QStringView text, quint32 location, const WordSink& take);

  private:
    enum class CharKind { Separator, WordPart, EastAsian };
    CharKind kindOf(char32_t c) const;
    // Appends the lower-case form of `c` in the code page to `out`; false when the code page
    // lacks it.
    bool encodeLower(char32_t c, QByteArray& out);
    void takeNonAscii(char32_t c, quint32& location, const WordSink& take);
    void appendToWord(const char* bytes, qsizetype size);
    void endWord(quint32& location, const WordSink& take);
    void endEastAsianRun(quint32& location, const WordSink& take);
    std::vector<int> dictionaryWords();

    struct BreakIteratorClose {
        void operator()(UBreakIterator* iterator) const { ubrk_close(iterator); }
    };

    CodePage m_codePage;
    std::vector<quint32>
        m_encodedBmp; // per code point: 0 unknown, 1 lacking, else length<<24 | bytes
    // The word being read, in the code page; a word grown beyond kLongestWord is only counted.
    char m_word[kLongestWord + 1];
    qsizetype m_wordLength = 0;
    QByteArray m_encoded;               // one character's bytes, while it is encoded
    QByteArray m_run;                   // the encoded characters of a Chinese or Japanese run
    std::vector<qsizetype> m_runStarts; // where each of them starts in m_run
    QString m_runText;                  // the run as it stands in the text
    std::unique_ptr<UBreakIterator, BreakIteratorClose> m_dictionary;
};

} // namespace qmr::chm
