#include "library/ScrapbookList.h"

#include "catalogue/TextFiles.h"
#include "library/FirefoxScrapbook.h"
#include "library/ScrapbookStore.h"
#include "platform/AppFolder.h"
#include "platform/LocalCodePage.h"
#include "platform/PathSeparators.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace qmr {
namespace {

const QString kFirefoxDefaultName = QStringLiteral("(00)FireFox Default Scrapbook");

QString withTrailingSeparator(QString folder) {
    if (folder.isEmpty() || !IsPathSeparator(folder.back())) folder += QLatin1Char('/');
    return folder;
}

// The lines of a local text file as a line reader sees them (split at CR).
QStringList readLocalLines(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    return SplitLocalLines(LocalCodePage::decode(file.readAll()));
}

// The entries of Firefox's multibook.txt, read through a working copy in local text.
QStringList multibookEntries(const LibraryFolders& folders) {
    const QString working = folders.applicationFolder + QStringLiteral("multibook-BIG5.txt");
    QDir().mkpath(folders.applicationFolder);
    const QString multibook = folders.scrapbookSystemFolder + QStringLiteral("multibook.txt");
    if (!ConvertUtf8ToLocalText(multibook, working)) return {};
    return readLocalLines(working);
}

void addEntry(ScrapbookList& list, const QString& entry, BuildHost& host) {
    list.rawEntries.append(entry);
    list.dotAdd2listView(entry);
    list.StatusShowScrapbookCount();
    host.yield();
}

void addStoreLines(ScrapbookList& list, const QString& storePath, BuildHost& host,
                   ListLoadReport& report) {
    QStringList lines;
    if (!ReadScrapbookStore(storePath, lines)) return;
    for (int i = 0; i < lines.size(); ++i) {
        const QString& line = lines.at(i);
        if (!line.trimmed().isEmpty() && !line.contains(QLatin1Char('*'))) {
            InputError skipped = StoreLineError(storePath, i + 1, line);
            skipped.problem += QStringLiteral(", so the list leaves it out");
            report.skippedStoreLines.append(skipped);
        }
        addEntry(list, line, host);
    }
}

// Selects the folder named on the command line, adding it to the list and the store first
// when it is new.
void selectCommandLineFolder(ScrapbookList& list, const QString& folder, const QString& storePath,
                             ListLoadReport& report) {
    if (list.ListSelectByKeyword(folder) == 0) {
        const QString name = GetLastFolderName(folder);
        const QString entry = name + QLatin1Char('*') + ToNativePath(folder);
        list.rawEntries.append(entry);
        list.dotAdd2listView(entry);
        QString problem;
        const StoreAddResult added = AddToScrapbookStore(storePath, name, folder, &problem);
        if (added == StoreAddResult::NoStoreFile || added == StoreAddResult::WriteFailed)
            report.storeProblem = problem;
    }
    const int row = list.ListSelectByKeyword(folder);
    list.statusFolder = folder;
    list.currentFolder = folder;
    list.SnapSelectItem(row);
}

} // namespace

QString FourDigitCount(qsizetype n) {
    return QString(QStringLiteral("0000") + QString::number(n)).right(4);
}

QString PageCountText(const QString& folder) {
    return FourDigitCount(QDir(folder + QStringLiteral("data"))
                              .entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden)
                              .size());
}

bool HoldsScrapbookCatalogue(const QString& folder) {
    return !QDir(folder).entryList({QStringLiteral("scrapbook.rdf")}, QDir::Files).isEmpty();
}

LibraryFolders LibraryFolders::current() {
    return {ApplicationFolder(), FindFirefoxScrapbookFolder()};
}

QString CommandLineFolder(const QString& commandLine) {
    const QString upper = commandLine.toUpper();
    if (!upper.startsWith(QLatin1String("FILE=")) || !upper.endsWith(QLatin1String(".RDF")))
        return QString();
    const QString catalogue = QDir::fromNativeSeparators(commandLine.mid(5));
    return catalogue.left(catalogue.lastIndexOf(QLatin1Char('/')) + 1);
}

void ScrapbookList::clear() {
    m_rows.clear();
    rawEntries.clear();
    m_selected = 0;
}

void ScrapbookList::dotAdd2listView(const QString& entry) {
    StoreEntry parts;
    if (!SplitStoreEntry(entry, parts) || parts.folder.isEmpty()) return;
    const QString folder = withTrailingSeparator(QDir::fromNativeSeparators(parts.folder));
    const QString name = m_settings.ReadScrapbookName(ScrapbookIniPath(folder));
    AddtoListView(name, folder);
}

QString ScrapbookList::AddtoListView(const QString& name, const QString& folder) {
    const QString path = withTrailingSeparator(withTrailingSeparator(folder).trimmed());
    if (!HoldsScrapbookCatalogue(path)) return QStringLiteral("0000");
    const QString count = PageCountText(path);
    const QString directory = path.toLower();
    if (!IsalreadyIn(directory)) {
        // A row whose folder was overwritten still holds its key: a second row with that key
        // is refused, and the add ends here.
        for (const ScrapbookRow& row : m_rows)
            if (row.key == directory) return count;
        m_rows.append(ScrapbookRow{directory, name.trimmed(), {}, {}, {}});
    }
    // Whether or not a row was added, the last one takes the count and the folder: the row
    // just added, or the last in name order when the folder was listed already.
    ScrapbookRow& last = m_rows.last();
    last.pageCount = count;
    last.directory = directory;
    last.folder = path;
    sortByName();
    return count;
}

bool ScrapbookList::IsalreadyIn(const QString& folder) const {
    const QString wanted = folder.toLower();
    return std::any_of(m_rows.begin(), m_rows.end(),
                       [&](const ScrapbookRow& row) { return row.directory.toLower() == wanted; });
}

int ScrapbookList::ListSelectByKeyword(const QString& folder) {
    const QString wanted = folder.toLower();
    int found = 0;
    for (int i = 0; i < count() && found == 0; ++i) {
        if (m_rows.at(i).directory != wanted) continue;
        found = i + 1;
        SnapSelectItem(found);
    }
    StatusShowScrapbookCount();
    return found;
}

void ScrapbookList::SnapSelectItem(int number) {
    if (number < 1 || number > count()) return;
    m_selected = number;
    currentFolder = row(number).folder;
    StatusShowScrapbookCount();
}

QString ScrapbookList::StatusShowScrapbookCount() {
    statusCount = QStringLiteral(" %1 Scrapbooks ").arg(count());
    return statusCount;
}

ScrapbookProperties ScrapbookList::SelectRow(int number) {
    if (number < 1 || number > count()) return {};
    m_selected = number;
    const ScrapbookRow& selected = row(number);
    statusFolder = selected.folder;
    currentFolder = selected.folder;
    caption = selected.name;
    return m_settings.load_ScrapbookName(ScrapbookIniPath(selected.folder));
}

void ScrapbookList::DeleteSelectedRow() {
    if (m_selected < 1 || m_selected > count()) return;
    m_rows.removeAt(m_selected - 1);
    m_selected = 0;
    StatusShowScrapbookCount();
}

void ScrapbookList::sortByName() {
    const QString selectedKey = m_selected > 0 ? row(m_selected).key : QString();
    std::stable_sort(m_rows.begin(), m_rows.end(),
                     [](const ScrapbookRow& a, const ScrapbookRow& b) {
                         return a.name.compare(b.name, Qt::CaseInsensitive) < 0;
                     });
    for (int i = 0; i < count() && !selectedKey.isEmpty(); ++i)
        if (m_rows.at(i).key == selectedKey) m_selected = i + 1;
}

ListLoadReport LoadAllScrapbooksIntoList(ScrapbookList& list, const LibraryFolders& folders,
                                         BuildHost& host, const QString& commandLineFolder) {
    ListLoadReport report;
    list.clear();
    if (QFileInfo(folders.scrapbookSystemFolder + QStringLiteral("multibook.txt")).isFile()) {
        for (const QString& entry : multibookEntries(folders))
            addEntry(list, entry, host);
    } else {
        list.rawEntries.append(kFirefoxDefaultName + QLatin1Char('*') +
                               ToNativePath(folders.scrapbookSystemFolder));
        list.AddtoListView(kFirefoxDefaultName, folders.scrapbookSystemFolder);
    }
    QFile::remove(folders.applicationFolder + QStringLiteral("multibook-BIG5.txt"));
    QFile::remove(folders.applicationFolder + QStringLiteral("multibook.txt"));
    const QString storePath = ScrapbookStorePath(folders.applicationFolder);
    addStoreLines(list, storePath, host, report);
    list.sortByName();

    if (!commandLineFolder.isEmpty())
        selectCommandLineFolder(list, commandLineFolder, storePath, report);
    else
        list.SnapSelectItem(1);
    // Row 1, not the selected row, is current until the user selects one.
    if (list.count() > 0) {
        list.currentFolder = list.row(1).folder;
        list.caption = list.row(1).name;
    }
    return report;
}

} // namespace qmr
