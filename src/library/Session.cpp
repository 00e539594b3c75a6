#include "library/Session.h"

#include "catalogue/TextFiles.h"
#include "library/ScrapbookStore.h"

namespace qmr {

Session::Session(BuildHost& buildHost, LibraryFolders libraryFolders)
    : host(buildHost),
      settings(buildHost, libraryFolders.applicationFolder + QStringLiteral("Quillmere.ini")),
      folders(std::move(libraryFolders)), list(settings) {
    m_options.language = settings.Load_Settings();
}

ListLoadReport Session::loadList() {
    return LoadAllScrapbooksIntoList(list, folders, host, commandLineFolder);
}

void Session::selectRow(int number) {
    if (number < 1 || number > list.count()) return;
    m_options.properties = list.SelectRow(number);
    m_options.googleAD = false;
    m_propertiesLoaded = true;
    m_propertiesFolder = list.currentFolder;
}

void Session::useScrapbook(const QString& folder) {
    list.currentFolder = folder;
    loadProperties();
}

BuildOptions& Session::options() {
    if (!m_propertiesLoaded || m_propertiesFolder != list.currentFolder) loadProperties();
    return m_options;
}

void Session::loadProperties() {
    m_options.properties = settings.load_ScrapbookName(ScrapbookIniPath(list.currentFolder));
    m_options.googleAD = false;
    m_propertiesLoaded = true;
    m_propertiesFolder = list.currentFolder;
}

QString Session::displayName() {
    const QString name = options().properties.name.trimmed();
    return name.isEmpty() ? GetLastFolderName(list.currentFolder) : name;
}

QString Session::ebookOutputFolder() const {
    return folders.applicationFolder + QStringLiteral("chm/");
}

QString Session::storePath() const {
    return ScrapbookStorePath(folders.applicationFolder);
}

} // namespace qmr
