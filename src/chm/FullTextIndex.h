#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

namespace qmr::chm {

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
    // added in topic-number order (the order of #TOPICS), each once.
    void addTopic(quint32 topicNumber, const QString& title, const QString& text);

    // The $FIftiMain file. Memory stays well below the text's own size.
    QByteArray finish();

  private:
    struct Data;
    std::unique_ptr<Data> m_data;
};

} // namespace qmr::chm
