#pragma once

#include "host/BuildHost.h"
#include "host/InputError.h"
#include "library/Settings.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <array>

namespace qmr {

// One row of the scrapbook list. Its three columns are name, pageCount and directory.
struct ScrapbookRow {
    QString key;       // the folder lower-cased, as the row was added
    QString name;      // "Scrapbook Name": the display name, trimmed
    QString pageCount; // "Local Page Count": item folders, four digits
    QString directory; // "Directory": the folder lower-cased, ending in "/"
    // The folder as spelled on disk, ending in "/". The directory column is lower-cased, as
    // suits file systems that ignore case; opening the scrapbook where case matters needs this.
    QString folder;
};

struct ScrapbookListColumn {
    const char* heading;
    int widthTwips;
};
inline constexpr std::array<ScrapbookListColumn, 3> kScrapbookListColumns{{
    {"Scrapbook Name", 3600},
    {"Local Page Count", 1800},
    {"Directory", 7000},
}};

// The list of scrapbooks the main window shows, sorted by name, with the raw entries it was
// built from, the selected row, the current scrapbook and the two status panels. Row numbers
// are 1-based. Holds no widget: the window shows what it holds.
class ScrapbookList {
  public:
    // Display names are read through `settings`, so the shared settings object's Default
    // carries over into them as into every other read.
    explicit ScrapbookList(AppSettings& settings) : m_settings(settings) {}

    const QList<ScrapbookRow>& rows() const { return m_rows; }
    int count() const { return int(m_rows.size()); }
    const ScrapbookRow& row(int number) const { return m_rows.at(number - 1); }
    int selectedRow() const { return m_selected; }

    // The lines the list was loaded from, name*folder, in the order loaded.
    QStringList rawEntries;
    // The scrapbook every command works on, ending in "/", and its name in the caption.
    QString currentFolder;
    QString caption;
    // Status panel 1 (the row count) and panel 2 (the current scrapbook's folder).
    QString statusCount = QStringLiteral("Not scanned");
    QString statusFolder = QStringLiteral("Scrapbook statistics");

    // Empties the list and its raw entries; nothing is selected.
    void clear();
    // Splits an entry name*folder and adds the scrapbook under the name in its own settings.
    // An entry without "*" adds nothing.
    void dotAdd2listView(const QString& entry);
    // Adds a row when `folder` holds a scrapbook.rdf; returns its item-folder count. A folder
    // already listed adds no row, but still overwrites the count and folder of the last row.
    QString AddtoListView(const QString& name, const QString& folder);
    // True when a row's folder equals `folder`, ignoring case.
    bool IsalreadyIn(const QString& folder) const;
    // Selects the row whose folder equals `folder` lower-cased; its number, else 0.
    int ListSelectByKeyword(const QString& folder);
    // Makes row `number` the selected and current one; nothing for 0.
    void SnapSelectItem(int number);
    // Refreshes status panel 1: " " + count + " Scrapbooks ". Returns the text.
    QString StatusShowScrapbookCount();
    // A click on a row: it becomes current and its properties are loaded. Nothing happens for
    // a number that is not a row.
    ScrapbookProperties SelectRow(int number);
    // Removes the selected row from the list only: the store and the scrapbook stay.
    void DeleteSelectedRow();
    // Turns sorting on: rows in ascending order of name, ignoring case (rows of equal names
    // keep their order); the selection follows its row.
    void sortByName();

  private:
    AppSettings& m_settings;
    QList<ScrapbookRow> m_rows;
    int m_selected = 0;
};

// The last four characters of "0000" followed by `n`: 37 gives "0037", 12345 gives "2345".
QString FourDigitCount(qsizetype n);
// The number of item folders below folder + "data/" (hidden ones too), as four digits.
QString PageCountText(const QString& folder);

// True when `folder` holds a file "scrapbook.rdf", in any case.
bool HoldsScrapbookCatalogue(const QString& folder);

// Where the list's files are: the application folder, ending in "/" (ScrapBookStore.txt and
// the working copies), and the ScrapBook system folder of Firefox's default profile, ending in
// "/" (multibook.txt).
struct LibraryFolders {
    QString applicationFolder;
    QString scrapbookSystemFolder;
    // This run's: the application folder and the Firefox profile's ScrapBook folder.
    static LibraryFolders current();
};

// The scrapbook folder of a command line File=<catalogue>.rdf (as the shell passes it for a
// catalogue file), ending in "/"; empty for any other command line. "File=" and ".rdf" match
// in any case; the folder keeps its own, since file names here may tell cases apart.
QString CommandLineFolder(const QString& commandLine);

// What a load met that the user should know of.
struct ListLoadReport {
    // Store lines that were skipped because they hold no "*".
    QList<InputError> skippedStoreLines;
    // Why the command-line folder could not be added to the store, when it could not.
    QString storeProblem;
};

// Rebuilds the list as the window does at start-up: the entries of Firefox's multibook.txt
// (or, without it, Firefox's own scrapbook as "(00)FireFox Default Scrapbook"), then every line
// of ScrapBookStore.txt, then the command-line folder (added to the store when it is new).
// Row 1 ends up current. A store line without "*" is skipped and reported; loading goes on.
// `host` gets the event queue after every entry.
ListLoadReport LoadAllScrapbooksIntoList(ScrapbookList& list, const LibraryFolders& folders,
                                         BuildHost& host,
                                         const QString& commandLineFolder = QString());

} // namespace qmr
