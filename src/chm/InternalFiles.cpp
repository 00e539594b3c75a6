#include "chm/InternalFiles.h"

#include "chm/BookLanguage.h"
#include "chm/KeywordIndex.h"
#include "chm/StringTable.h"
#include "chm/SystemFiles.h"
#include "chm/TopicFiles.h"

namespace qmr::chm {

namespace {

// "windows-950" is code page 950.
quint32 CodePageNumber(const QString& codePage) {
    return codePage.section(QLatin1Char('-'), -1).toUInt();
}

} // namespace

QList<InternalFile> MakeInternalFiles(const BookContents& book) {
    const HelpProject& project = *book.project;
    const QString codePage = CodePageOfLanguage(project.languageId);
    const TopicFinder finder(book.topics);
    StringTable strings;

    const TopicFiles topicFiles = MakeTopicFiles(book, finder, codePage, strings);
    const QByteArray windows = MakeWindows(project, codePage, strings);
    const QByteArray indexHeader = MakeIndexHeader(book, codePage, strings);
    const bool keywordLinks = project.binaryIndex && !project.indexFile.isEmpty();

    QList<InternalFile> files{
        {QStringLiteral("/#SYSTEM"), MakeSystem(book, codePage, keywordLinks, indexHeader), false},
        {QStringLiteral("/#WINDOWS"), windows, true},
        {QStringLiteral("/#TOPICS"), topicFiles.topics, true},
        {QStringLiteral("/#URLTBL"), topicFiles.urlTable, true},
        {QStringLiteral("/#URLSTR"), topicFiles.urlStrings, true},
        {QStringLiteral("/#IDXHDR"), indexHeader, true},
    };
    if (keywordLinks) {
        const KeywordLinks links = MakeKeywordLinks(CollectKeywords(book.index, finder),
                                                    project.languageId, CodePageNumber(codePage));
        files.append({QStringLiteral("/$WWKeywordLinks/BTree"), links.btree, true});
        files.append({QStringLiteral("/$WWKeywordLinks/Data"), links.data, true});
        files.append({QStringLiteral("/$WWKeywordLinks/Map"), links.map, true});
        files.append({QStringLiteral("/$WWKeywordLinks/Property"), links.property, true});
    }
    // Last: every other file has added its strings.
    files.append({QStringLiteral("/#STRINGS"), strings.bytes(), true});
    return files;
}

} // namespace qmr::chm
