#pragma once

#include "host/BuildHost.h"
#include "library/ScrapbookList.h"
#include "library/Settings.h"

#include <QString>

namespace qmr {

// The options the builders read while the program runs: the current scrapbook's properties as
// the property page holds them, the page's GoogleAD box (never stored) and the e-book language.
struct BuildOptions {
    ScrapbookProperties properties;
    bool googleAD = false;
    EbookLanguage language = EbookLanguage::None;
};

// One run of either front end: the shared settings object, the scrapbook list with its current
// scrapbook, where the list's files are, and the live build options. The window and the
// command line each make one and drive it; builders get what they need from it.
class Session {
  public:
    // Reads the e-book language at once, as the window does before anything else is loaded.
    explicit Session(BuildHost& host, LibraryFolders folders = LibraryFolders::current());
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    BuildHost& host;
    AppSettings settings;
    LibraryFolders folders;
    ScrapbookList list;
    // The scrapbook folder named by a command line File=<catalogue>.rdf, ending in "/".
    QString commandLineFolder;

    // Rebuilds the list as at start-up (see LoadAllScrapbooksIntoList), selecting the
    // command-line folder when there is one.
    ListLoadReport loadList();
    // A click on row `number`: it becomes current and its properties become the options.
    void selectRow(int number);
    // Makes `folder` (ending in "/") the current scrapbook without it being in the list, as a
    // command line naming a folder does, and loads its properties.
    void useScrapbook(const QString& folder);

    // The live options. The current scrapbook's properties are read from its ScrapbookPrj.ini
    // the first time they are needed after start-up, after the property page has closed or
    // after another scrapbook became current, which is also when the shared settings object's
    // Default changes.
    BuildOptions& options();
    // The property page has closed: its edits and its GoogleAD box are dropped, and the next
    // options() reads what is stored.
    void forgetProperties() { m_propertiesLoaded = false; }
    // The language dialog's choice, for the builds that follow.
    void setLanguage(EbookLanguage language) { m_options.language = language; }

    const QString& currentFolder() const { return list.currentFolder; }
    // The name the pages show: the stored display name, else the folder's own name.
    QString displayName();
    // Where compiled e-books go: the application folder + "chm/".
    QString ebookOutputFolder() const;
    // ScrapBookStore.txt in the application folder.
    QString storePath() const;

  private:
    void loadProperties();
    BuildOptions m_options;
    bool m_propertiesLoaded = false;
    QString m_propertiesFolder; // the scrapbook the properties were read from
};

} // namespace qmr
