#include "chm/TopicFiles.h"

#include "chm/ByteWriter.h"

#include "platform/CodePage.h"

namespace qmr::chm {

namespace {

constexpr quint32 kNoString = 0xFFFFFFFF;
constexpr quint16 kInContents = 6;
constexpr quint16 kNotInContents = 2;
// #URLTBL is read in 4 KB blocks of 341 twelve-byte entries and four spare bytes.
constexpr int kUrlEntriesPerBlock = 341;
constexpr quint32 kUrlBlockSize = 0x1000;

quint32 UrlTableOffset(int topic) {
    return quint32(topic / kUrlEntriesPerBlock) * kUrlBlockSize +
           quint32(topic % kUrlEntriesPerBlock) * 12;
}

// The first name the table of contents gives each topic.
QHash<qint32, QString> ContentsNames(const Sitemap& contents, const TopicFinder& finder) {
    QHash<qint32, QString> names;
    for (const SitemapEntry& entry : contents.entries) {
        const qint32 topic = finder.find(FirstParam(entry, u"Local"));
        if (topic >= 0 && !names.contains(topic)) names.insert(topic, FirstParam(entry, u"Name"));
    }
    return names;
}

} // namespace

QString FirstParam(const SitemapEntry& entry, QStringView name) {
    for (const SitemapParam& param : entry.params)
        if (param.name.compare(name, Qt::CaseInsensitive) == 0) return param.value;
    return {};
}

TopicFinder::TopicFinder(const QList<BookTopic>& topics) {
    for (qint32 i = 0; i < topics.size(); ++i)
        m_numbers.insert(key(topics[i].path), i);
}

QString TopicFinder::key(const QString& local) {
    QString path = local;
    path.replace(QLatin1Char('\\'), QLatin1Char('/'));
    for (qsizetype i = 0; i < path.size(); ++i)
        if (path[i] == u'#' || path[i] == u'?') {
            path.truncate(i);
            break;
        }
    while (path.startsWith(QLatin1String("./")))
        path.remove(0, 2);
    if (!path.startsWith(QLatin1Char('/'))) path.prepend(QLatin1Char('/'));
    return path.toCaseFolded();
}

qint32 TopicFinder::find(const QString& local) const {
    return m_numbers.value(key(local), -1);
}

TopicFiles MakeTopicFiles(const BookContents& book, const TopicFinder& finder,
                          const QString& codePage, StringTable& strings) {
    const CodePage encoding(codePage);
    const QHash<qint32, QString> contentsNames = ContentsNames(book.contents, finder);
    StringTable urls;
    TopicFiles files;
    ByteWriter topics(files.topics);
    ByteWriter table(files.urlTable);
    for (qint32 i = 0; i < book.topics.size(); ++i) {
        const BookTopic& topic = book.topics[i];
        const QString title = topic.title.isEmpty() ? contentsNames.value(i) : topic.title;
        topics.u32(0); // no binary table of contents
        topics.u32(title.isEmpty() ? kNoString : strings.add(encoding.encode(title)));
        topics.u32(UrlTableOffset(i));
        topics.u16(contentsNames.contains(i) ? kInContents : kNotInContents);
        topics.u16(0);

        if (i > 0 && i % kUrlEntriesPerBlock == 0) table.zeros(4);
        table.u32(0); // readers do not use it
        table.u32(quint32(i));
        // The URL and frame name slots before the page's name stay empty.
        table.u32(urls.add(topic.path.mid(1).toUtf8(), QByteArray(8, '\0')));
    }
    files.urlStrings = urls.bytes();
    return files;
}

} // namespace qmr::chm
