#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <functional>
#include <memory>

namespace qmr::chm {

struct TopicWords;

// The full-text search index of a book ($FIftiMain): every word of every topic with where it
// stands, so a reader's search finds the topics holding a word. Words are stored in the book's
// code page (that of `languageId`); Chinese, Japanese and Korean text, which has no blanks
// between words, is indexed so that a reader's search for a word of it finds its topics.
class FullTextIndex {
  public:
    explicit FullTextIndex(quint32 languageId);
    ~FullTextIndex();
    FullTextIndex(const FullTextIndex&) = delete;
    FullTextIndex& operator=(const FullTextIndex&) = delete;

    // One topic's text (its title and its visible text, markup already removed). Topics are
    // added in topic-number order (the order of #TOPICS), each once; a topic whose number is
    // not above the one before is left out. Title words are indexed twice: with the text, and
    // as title words for a reader's "titles only" search.
    void addTopic(quint32 topicNumber, const QString& title, const QString& text);
    // The same with the topic's words gathered beforehand (TopicWordCollector, in the book's
    // code page), as the compiler does on the threads that read the pages.
    void addTopic(quint32 topicNumber, const TopicWords& words);

    // True when no topic held a word to index: a book then packs no $FIftiMain, as a reader's
    // search would stumble over an index without words.
    bool isEmpty() const;

    // Writes the $FIftiMain file through `write`, a piece at a time, the header first; nothing
    // when the index is empty. Called once, after the last topic. Memory stays well below the
    // text's own size: the words' location codes are kept as the file holds them, but for the
    // first topics', whose places are kept packed until the codes' roots are chosen from them.
    void finish(const std::function<void(QByteArrayView)>& write);
    // The whole file; empty when the index is.
    QByteArray finish();

  private:
    struct Data;
    std::unique_ptr<Data> m_data;
};

} // namespace qmr::chm
