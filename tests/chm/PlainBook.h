#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

namespace qmr::test {

// A book the readers can open and search, its files stored uncompressed: the container, one
// directory chunk, and the topic files a search names its results with (#TOPICS, #STRINGS,
// #URLTBL, #URLSTR). A stand-in for the compiler's own books while they are being written.
struct PlainBookTopic {
    QByteArray path;  // "a.html", in the book's code page
    QByteArray title; // in the book's code page
};

QByteArray MakePlainBook(const std::vector<PlainBookTopic>& topics, const QByteArray& fullText,
                         quint32 languageId);

// Runs a Python search with the chm module (Debian python3-chm) and returns the titles of the
// topics found, sorted and decoded from `codePage`; `error` is set when the reader could not
// run. The query is encoded in `codePage`, as a user of the book's language would type it.
QStringList SearchWithPychm(const QString& book, const QString& word, const QString& codePage,
                            bool wholeWords, bool titlesOnly, QString* error);

bool PychmAvailable();

} // namespace qmr::test
