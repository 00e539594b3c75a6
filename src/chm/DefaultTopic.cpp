#include "chm/DefaultTopic.h"

#include "chm/TopicFiles.h"

namespace qmr::chm {

namespace {

// The page readers should open when the default topic is not there, as the book names it;
// empty when the book has no page.
QString FirstPage(const BookContents& book) {
    const TopicFinder finder(book.topics);
    for (const SitemapEntry& entry : book.contents.entries) {
        const qint32 topic = finder.find(FirstParam(entry, u"Local"));
        if (topic >= 0) return book.topics[topic].path.mid(1);
    }
    return book.topics.isEmpty() ? QString() : book.topics.front().path.mid(1);
}

} // namespace

void SettleDefaultTopic(HelpProject& project, const QString& found, const BookContents& book,
                        CompileLog& log) {
    if (!found.isEmpty()) {
        project.defaultTopic = found;
        return;
    }
    const QString missing = project.defaultTopic;
    const QString page = FirstPage(book);
    if (missing.isEmpty()) {
        if (!page.isEmpty())
            log.note(project.projectPath,
                     QStringLiteral("names no default topic; the book opens on %1").arg(page));
    } else if (page.isEmpty()) {
        log.warning(project.projectPath,
                    QStringLiteral("the default topic \"%1\" is not a file of the book, which "
                                   "has no page to open on instead")
                        .arg(missing));
    } else {
        log.warning(project.projectPath,
                    QStringLiteral("the default topic \"%1\" is not a file of the book; it "
                                   "opens on %2 instead (name an existing page in the "
                                   "project's \"Default topic=\")")
                        .arg(missing, page));
    }
    // The window's default topic and home.
    const QString missingKey = TopicFinder::key(missing);
    for (HelpWindow& window : project.windows)
        for (qsizetype field : {3, 4})
            if (field < window.fields.size() && !window.fields[field].isEmpty() &&
                TopicFinder::key(window.fields[field]) == missingKey)
                window.fields[field] = page;
    project.defaultTopic = page;
}

} // namespace qmr::chm
