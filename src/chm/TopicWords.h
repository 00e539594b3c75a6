#pragma once

#include "chm/ScaleRootCode.h"
#include "chm/SearchWords.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <vector>

namespace qmr::chm {

// The words of one topic as the full-text index takes them: each different word once, with
// its places in the topic packed (how many, then the steps between them, as 7-bit groups).
// Made where the page is read, on any thread, and added to the index in topic order, so the
// index itself only looks each word up once a topic.
struct TopicWords {
    struct Word {
        quint32 textOffset = 0;
        quint8 textLength = 0;
        bool inTitle = false; // the entry of the word's places in the title
        quint32 packedOffset = 0;
        quint32 packedSize = 0;
        quint64 hash = 0; // WordHash(text, inTitle)
    };

    QByteArrayView text(const Word& word) const {
        return QByteArrayView(texts.data() + word.textOffset, word.textLength);
    }
    QByteArrayView places(const Word& word) const {
        return QByteArrayView(packed.data() + word.packedOffset, word.packedSize);
    }

    std::vector<Word> words;     // in the order of their first place
    std::vector<char> texts;     // the words, one after another
    std::vector<char> packed;    // their places, one word after another
    BitLengthCounts placeCounts; // how many places each word has
    BitLengthCounts placeSteps;  // the steps between them
    quint64 wordsIndexed = 0;    // places in the text, title words counted once
    quint64 indexedLength = 0;   // their bytes
    quint32 longestWord = 0;     // bytes of the longest word of the text
};

// Gathers the words of topics, one topic at a time. Keep one per thread: it keeps its tables
// (and the word breaker's) from topic to topic.
class TopicWordCollector {
  public:
    explicit TopicWordCollector(const QString& codePageName);

    // Title words are indexed twice: with the text, and as title words for a reader's "titles
    // only" search. The title's places come first, the text's after them.
    TopicWords collect(QStringView title, QStringView text);

  private:
    quint32 localId(QByteArrayView word, bool inTitle);
    void growSlots();

    struct Place {
        quint32 word;
        quint32 location;
    };

    SearchWordBreaker m_breaker;
    TopicWords m_topic;             // being made
    std::vector<quint32> m_slots;   // hash table of local word ids + 1; 0 marks a free slot
    std::vector<Place> m_places;    // in location order
    std::vector<quint32> m_starts;  // by local word id: where its locations start in m_grouped
    std::vector<quint32> m_grouped; // the locations, grouped by word
};

// The hash of a word's bytes the index's tables use.
quint64 WordHash(QByteArrayView word, bool inTitle);

} // namespace qmr::chm
