#include "authoring/MultiBook.h"

#include "catalogue/LocalTextFile.h"
#include "catalogue/TextFiles.h"
#include "library/ScrapbookStore.h"
#include "platform/PathSeparators.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace qmr {
namespace {

const QString kTab = QStringLiteral("\t");

// Writes `entries` to `workingFile` in the local code page and rewrites them as UTF-8 to
// `utf8File`. A problem message when either cannot be written.
bool writeList(const QStringList& entries, const QString& workingFile, const QString& utf8File,
               QStringList& problems) {
    LocalTextFile file(workingFile);
    for (const QString& entry : entries)
        file.writeLine(entry);
    QString error;
    if (!file.commit(&error) || !ConvertLocalTextToUtf8(workingFile, utf8File, &error)) {
        problems.append(error + QStringLiteral(". Make the folder writable and try again"));
        return false;
    }
    return true;
}

// True when the ScrapBook system folder is there; else says what that means.
bool systemFolderExists(const QString& systemFolder, QStringList& problems) {
    if (QFileInfo(systemFolder).isDir()) return true;
    problems.append(
        QStringLiteral("there is no ScrapBook folder at %1, so the extension's multibook.txt "
                       "was not written. Install ScrapBook in Firefox's default profile "
                       "(profiles.ini names it) and run Firefox once, then try again")
            .arg(ToNativePath(systemFolder)));
    return false;
}

// Copies the finished list to the ScrapBook system folder, saying why when it cannot.
bool copyToSystemFolder(const QString& list, const QString& systemFolder, QStringList& problems) {
    if (!systemFolderExists(systemFolder, problems)) return false;
    if (CopyMutiBooktoScrapbookSystemFolder(list, systemFolder) != CopyDone) {
        problems.append(QStringLiteral("cannot write %1multibook.txt. Make the ScrapBook folder "
                                       "writable and try again")
                            .arg(ToNativePath(systemFolder)));
        return false;
    }
    return true;
}

// The list's rows as entries: a row without a name, or named like the row before it, is left
// out.
QStringList entriesOfList(const ScrapbookList& list) {
    QStringList entries;
    QString previous;
    for (const ScrapbookRow& row : list.rows()) {
        if (!row.name.isEmpty() && row.name.compare(previous, Qt::CaseInsensitive) != 0)
            entries.append(row.name + kTab + ToNativePath(row.folder));
        previous = row.name;
    }
    return entries;
}

// The subfolders of `base` in a folder listing's order: by name ignoring case (names that
// differ only in case in the order of their characters).
QStringList subfoldersByName(const QString& base) {
    QStringList names = QDir(base).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::NoSort);
    std::sort(names.begin(), names.end(), [](const QString& a, const QString& b) {
        const int folded = a.compare(b, Qt::CaseInsensitive);
        return folded != 0 ? folded < 0 : a < b;
    });
    return names;
}

// A candidate without one trailing separator, or blank when its folder holds no catalogue.
QString checkedCandidate(QString candidate) {
    if (!candidate.isEmpty() && IsPathSeparator(candidate.back())) candidate.chop(1);
    const QString path = candidate.mid(candidate.indexOf(QLatin1Char('\t')) + 1).trimmed();
    const QString folder = AddBackslash(QDir::fromNativeSeparators(path));
    return HoldsScrapbookCatalogue(folder) ? candidate : QString();
}

// The candidates of a scan, each checked: every subfolder of `base` (name + TAB + path), then
// every store line (name + TAB + folder). False, with the reason, when `base` is not a folder
// or a store line holds no "*".
bool scanCandidates(const QString& base, const QString& storePath, QStringList& candidates,
                    QStringList& problems) {
    if (!QFileInfo(base).isDir()) {
        problems.append(
            QStringLiteral("%1: no such folder. Name the folder whose subfolders are scrapbooks")
                .arg(ToNativePath(base)));
        return false;
    }
    for (const QString& name : subfoldersByName(base))
        candidates.append(checkedCandidate(name + kTab + ToNativePath(base + name)));
    QStringList lines;
    ReadScrapbookStore(storePath, lines);
    for (int i = 0; i < lines.size(); ++i) {
        if (lines.at(i).trimmed().isEmpty()) continue;
        StoreEntry entry;
        if (!SplitStoreEntry(lines.at(i), entry)) {
            InputError stop = StoreLineError(storePath, i + 1, lines.at(i));
            stop.problem += QStringLiteral(", so the scan stopped before writing anything");
            stop.advice += QStringLiteral(", then run the scan again");
            problems.append(stop.text());
            return false;
        }
        candidates.append(checkedCandidate(entry.name + kTab + entry.folder));
    }
    return true;
}

// Every candidate that is not blank and differs, ignoring case, from the one just before it.
QStringList withoutRepeats(const QStringList& candidates) {
    QStringList entries;
    QString previous;
    for (const QString& candidate : candidates) {
        if (!candidate.isEmpty() && candidate.compare(previous, Qt::CaseInsensitive) != 0)
            entries.append(candidate);
        previous = candidate;
    }
    return entries;
}

} // namespace

int CopyMutiBooktoScrapbookSystemFolder(const QString& file, const QString& scrapbookSystemFolder) {
    return CopyFileIfExists(file, scrapbookSystemFolder + QStringLiteral("multibook.txt"));
}

MultiBookResult AddToMultiScrapbookList(ScrapbookList& list, const QString& name,
                                        const QString& path, const LibraryFolders& folders) {
    MultiBookResult result;
    const QString entry = name + QLatin1Char('*') + ToNativePath(path);
    list.rawEntries.append(entry);
    list.dotAdd2listView(entry);
    QString storeProblem;
    const StoreAddResult stored = AddToScrapbookStore(ScrapbookStorePath(folders.applicationFolder),
                                                      name, path, &storeProblem);
    if (stored == StoreAddResult::NoStoreFile || stored == StoreAddResult::WriteFailed)
        result.problems.append(storeProblem);

    const QString system = folders.scrapbookSystemFolder;
    result.entries = entriesOfList(list);
    if (!systemFolderExists(system, result.problems)) return result;
    const QString utf8 = system + QStringLiteral("multibook1.txt");
    result.written = writeList(result.entries, system + QStringLiteral("multibook-BIG5.txt"), utf8,
                               result.problems);
    result.copied = result.written && copyToSystemFolder(utf8, system, result.problems);
    return result;
}

MultiBookResult RegisterNewScrapbook(ScrapbookList& list, const QString& name, const QString& path,
                                     const LibraryFolders& folders) {
    const QString entry = name + QLatin1Char('*') + ToNativePath(path);
    list.rawEntries.append(entry);
    list.dotAdd2listView(entry);
    return AddToMultiScrapbookList(list, name, path, folders);
}

MultiBookResult Menu_Dir2MultiScrapbook_Click(const QString& base, const LibraryFolders& folders,
                                              BuildHost& host) {
    MultiBookResult result;
    if (base.trimmed().isEmpty()) return result;
    const QString folder = AddBackslash(QDir::fromNativeSeparators(base.trimmed()));
    QStringList candidates;
    if (!scanCandidates(folder, ScrapbookStorePath(folders.applicationFolder), candidates,
                        result.problems)) {
        result.badInput = true;
        return result;
    }
    candidates.append(QStringLiteral("default") + kTab +
                      ToNativePath(folders.scrapbookSystemFolder));
    result.entries = withoutRepeats(candidates);

    const QString utf8 = folder + QStringLiteral("multibook.txt");
    result.written = writeList(result.entries, folder + QStringLiteral("multibook-BIG5.txt"), utf8,
                               result.problems);
    if (!result.written) return result;
    result.copied = copyToSystemFolder(utf8, folders.scrapbookSystemFolder, result.problems);
    host.add2loglist(QStringLiteral("multibook.txt has been created ok!"));
    return result;
}

} // namespace qmr
