#include "platform/FolderEntries.h"

#include <QDirIterator>
#include <QFile>

#ifndef Q_OS_WIN
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#endif

namespace qmr {

#ifdef Q_OS_WIN

std::vector<FolderEntry> ListFolderEntries(const QString& folder) {
    std::vector<FolderEntry> entries;
    QDirIterator it(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    while (it.hasNext()) {
        it.next();
        entries.push_back({it.fileName(), it.fileInfo().isDir()});
    }
    return entries;
}

#else

// The directory's own entries say whether each is a folder; only where the file system leaves
// that unknown (or the entry is a link) is the entry looked at.
std::vector<FolderEntry> ListFolderEntries(const QString& folder) {
    std::vector<FolderEntry> entries;
    DIR* directory = opendir(QFile::encodeName(folder).constData());
    if (!directory) return entries;
    while (const dirent* entry = readdir(directory)) {
        const char* name = entry->d_name;
        if (name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'))) continue;
        bool isFolder = entry->d_type == DT_DIR;
        if (entry->d_type == DT_UNKNOWN || entry->d_type == DT_LNK) {
            struct stat status {};
            isFolder = fstatat(dirfd(directory), name, &status, 0) == 0 && S_ISDIR(status.st_mode);
        }
        entries.push_back({QFile::decodeName(name), isFolder});
    }
    closedir(directory);
    return entries;
}

#endif

} // namespace qmr
