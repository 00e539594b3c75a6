#pragma once

#include "authoring/AuthoringContext.h"
#include "catalogue/CatalogueWalk.h"
#include "catalogue/RdfReader.h"
#include "support/Golden.h"
#include "support/Programs.h"
#include "support/TempFolder.h"

#include <QDateTime>
#include <QDirIterator>
#include <QFileInfo>
#include <QMap>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr::test {

// The day every identifier in these tests is drawn on, so the golden files stay stable.
inline const QDate kIdentifierDay(2008, 3, 9);

// A context that draws identifiers on kIdentifierDay from a counter in `appFolder`.
inline AuthoringContext FixedContext(BuildHost& host, const QString& appFolder,
                                     const QString& scrapbookName) {
    AuthoringContext context(host);
    context.applicationFolder = appFolder;
    context.today = [] { return kIdentifierDay; };
    context.chrome.scrapbookName = scrapbookName;
    return context;
}

// Bytes and last-write time of every file below a folder, by path relative to it, leaving out
// what lies below `skip`; to show which files a command made and that it changed no other.
struct FileState {
    QByteArray bytes;
    QDateTime modified;
    bool operator==(const FileState&) const = default;
};
inline QMap<QString, FileState> FilesBelow(const QString& folder, const QString& skip = {}) {
    QMap<QString, FileState> files;
    QDirIterator it(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        if (skip.isEmpty() || !path.startsWith(skip))
            files.insert(path.mid(folder.size()),
                         {ReadBytes(path), QFileInfo(path).lastModified()});
    }
    return files;
}

// A written scrapbook loaded back (its working copy made elsewhere, so that the one written
// stays as it is): each folder's identifier ("root" for the top) with the identifiers its
// list places, in order.
inline QMap<QString, QStringList> LoadedLists(const QString& scrapbook, int* itemCount = nullptr) {
    TempFolder working;
    Catalogue catalogue;
    InputError error;
    EXPECT_TRUE(RecodeAndLoadCatalogue(scrapbook, catalogue, &error, {}, working.path()))
        << error.text().toStdString();
    if (itemCount) *itemCount = catalogue.itemCount;
    const CatalogueWalk walk(catalogue);
    QMap<QString, QStringList> lists;
    for (const WalkStep& step : walk.steps())
        if (step.kind == WalkStep::Kind::Place)
            lists[walk.parentName(step.parent)] << catalogue.items.at(step.item).id;
    return lists;
}

// xmllint's verdict on a written catalogue; true where xmllint is not installed.
inline bool XmlReadersAccept(const QString& path) {
    if (!HasProgram(u"xmllint"_s)) return true;
    return RunProgram(u"xmllint"_s, {u"--noout"_s, path}).exitCode == 0;
}

} // namespace qmr::test
