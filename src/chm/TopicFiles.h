#pragma once

#include "chm/InternalFiles.h"
#include "chm/StringTable.h"

#include <QHash>

namespace qmr::chm {

// The first value of a sitemap entry's parameter (names match ignoring case); empty when
// absent.
QString FirstParam(const SitemapEntry& entry, QStringView name);

// Finds the topic a sitemap's "Local" names: the path relative to the project folder, with
// "\" or "/", any case, an anchor or query after it.
class TopicFinder {
  public:
    explicit TopicFinder(const QList<BookTopic>& topics);
    // The topic number, or -1 when no packed page has that name.
    qint32 find(const QString& local) const;

    static QString key(const QString& local);

  private:
    QHash<QString, qint32> m_numbers;
};

// The topic tables: #TOPICS (one 16-byte entry a topic: title in #STRINGS, address in
// #URLTBL, whether the table of contents shows it), #URLTBL (topic number and name in
// #URLSTR) and #URLSTR (the page's name in the book).
struct TopicFiles {
    QByteArray topics;
    QByteArray urlTable;
    QByteArray urlStrings;
};

// Titles go into `strings` in `codePage`; a page without a title takes its name in the table of
// contents.
TopicFiles MakeTopicFiles(const BookContents& book, const TopicFinder& finder,
                          const QString& codePage, StringTable& strings);

} // namespace qmr::chm
