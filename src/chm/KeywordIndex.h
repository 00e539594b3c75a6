#pragma once

#include "chm/Sitemap.h"
#include "chm/TopicFiles.h"

namespace qmr::chm {

// One keyword of the index as the book stores it: a sub-keyword carries its parents' names
// before its own ("Parent, Child"), `ownNameStart` characters in.
struct Keyword {
    QString name;
    int ownNameStart = 0;
    int depth = 0; // 0 for a top-level keyword
    QList<quint32> topics;
    QString seeAlso;
};

// The keywords of an index sitemap in the order readers list them: siblings sorted ignoring
// case, each followed by its sub-keywords; a keyword named twice at the same place is one
// keyword with the topics of both. Locals that name no packed page are left out.
QList<Keyword> CollectKeywords(const Sitemap& index, const TopicFinder& finder);

// $WWKeywordLinks/: the binary keyword index ("BTree": 2 KB blocks of keywords in UTF-16, each
// with its topic numbers) and its companions "Data", "Map" and "Property".
struct KeywordLinks {
    QByteArray btree;
    QByteArray data;
    QByteArray map;
    QByteArray property;
};

KeywordLinks MakeKeywordLinks(const QList<Keyword>& keywords, quint32 languageId,
                              quint32 codePageNumber);

} // namespace qmr::chm
