#include "chm/BookFiles.h"

#include "chm/BookLanguage.h"
#include "chm/FolderListings.h"
#include "chm/OrderedWork.h"
#include "chm/ReferenceScanner.h"
#include "chm/Sitemap.h"
#include "platform/CodePage.h"

#include <QFile>
#include <QSet>
#include <QThread>

#include <algorithm>
#include <optional>

namespace qmr::chm {
namespace {

enum class FileKind { Other, Page, StyleSheet, Sitemap };

FileKind KindOf(const QString& path) {
    const qsizetype dot = path.lastIndexOf(u'.');
    if (dot < 0 || dot < path.lastIndexOf(u'/')) return FileKind::Other;
    const QString extension = path.sliced(dot + 1).toLower();
    if (extension == u"css") return FileKind::StyleSheet;
    if (extension == u"hhc" || extension == u"hhk") return FileKind::Sitemap;
    if (extension == u"html" || extension == u"htm" || extension == u"xhtml" ||
        extension == u"xht" || extension == u"shtml")
        return FileKind::Page;
    return FileKind::Other;
}

// `path` followed from `folder` ("" or ending in "/"), as a path below the project folder
// without "." and ".." parts and without a closing "/"; nothing when it leads above the project
// folder. Built in one string, part by part: every reference of every page comes this way.
std::optional<QString> Walk(const QString& folder, QStringView path) {
    QString joined;
    joined.reserve(folder.size() + path.size());
    for (QStringView whole : {QStringView(folder), path}) {
        for (QStringView part : whole.tokenize(u'/')) {
            if (part.isEmpty() || part == u".") continue;
            if (part == u"..") {
                if (joined.isEmpty()) return std::nullopt;
                joined.truncate(std::max<qsizetype>(joined.lastIndexOf(u'/'), 0));
            } else {
                if (!joined.isEmpty()) joined += u'/';
                joined += part;
            }
        }
    }
    return joined;
}

// `reference` taken from a file in `folder`, as a path below the project folder; empty when it
// leaves the project folder or names a folder.
QString JoinInFolder(const QString& folder, const QString& reference) {
    if (reference.endsWith(u'/')) return {};
    return Walk(folder, reference).value_or(QString());
}

QString FolderOf(const QString& path) {
    return path.left(path.lastIndexOf(u'/') + 1);
}

// `folder` followed by the relative folder `relative`, ending in "/" ("" for the project
// folder); nothing when that leads above the project folder.
std::optional<QString> JoinFolders(const QString& folder, QStringView relative) {
    std::optional<QString> joined = Walk(folder, relative);
    if (joined && !joined->isEmpty()) *joined += u'/';
    return joined;
}

} // namespace

struct BookFileGatherer::Data {
    Data(const HelpProject& project, CompileLog& log)
        : project(project), log(log), disk(project.folder),
          codePage(CodePageOfLanguage(project.languageId)) {}

    bool add(const QString& file) {
        if (seen.contains(file)) return false;
        seen.insert(file);
        return true;
    }

    // A name given with the project folder's own path in front is taken without it.
    QString belowProject(const QString& name) const {
        return name.startsWith(project.folder) ? name.mid(project.folder.size()) : name;
    }

    void addListedFiles(QStringList& files) {
        for (qsizetype i = 0; i < project.files.size(); ++i) {
            const QString entry = belowProject(project.files[i]);
            const int line = i < project.fileLines.size() ? project.fileLines[i] : 0;
            const QString path = JoinInFolder({}, entry);
            const QString onDisk = path.isEmpty() ? QString() : disk.findFile(path);
            if (path.isEmpty() || IsOutsideAddress(entry))
                log.error(project.projectPath, line,
                          QStringLiteral("the file \"%1\" in [FILES] is not below the project "
                                         "folder; list only files of %2")
                              .arg(entry, project.folder));
            else if (onDisk.isEmpty())
                log.error(project.projectPath, line,
                          QStringLiteral("the file \"%1\" in [FILES] does not exist; restore it "
                                         "or remove the line")
                              .arg(entry));
            else if (add(onDisk))
                files.append(onDisk);
        }
    }

    // The file on disk; empty when it is not there. A missing required file is an error.
    QString addNamedFile(QStringList& files, const QString& given, const QString& what,
                         bool required) {
        if (given.isEmpty()) return {};
        const QString name = belowProject(given);
        const QString path = IsOutsideAddress(name) ? QString() : JoinInFolder({}, name);
        const QString onDisk = path.isEmpty() ? QString() : disk.findFile(path);
        if (!onDisk.isEmpty()) {
            if (add(onDisk)) files.append(onDisk);
        } else if (required) {
            log.error(project.projectPath, 0,
                      QStringLiteral("the %1 \"%2\" is not a file of the project folder")
                          .arg(what, name));
        }
        return onDisk;
    }

    // The file a reference names, on disk: its decoded path, else the path as written.
    QString lookUp(const QString& folder, const Reference& reference) {
        for (const QString& path : {reference.path, reference.asWritten}) {
            const QString target = JoinInFolder(folder, path);
            if (target.isEmpty()) continue;
            const QString onDisk = disk.findFile(target);
            if (!onDisk.isEmpty()) return onDisk;
            if (reference.path == reference.asWritten) break;
        }
        return {};
    }

    QList<Reference> sitemapReferences(const Sitemap& sitemap) const {
        QList<Reference> references;
        for (const SitemapEntry& entry : sitemap.entries)
            for (const SitemapParam& param : entry.params) {
                if (param.name.compare(u"Local", Qt::CaseInsensitive) != 0) continue;
                const Reference reference = CleanReference(param.value, codePage);
                if (!reference.path.isEmpty() && !IsOutsideAddress(reference.path))
                    references.append(reference);
            }
        return references;
    }

    const HelpProject& project;
    CompileLog& log;
    FolderListings disk;
    const CodePage codePage;
    QSet<QString> seen;
    QString contentsFile, indexFile; // on disk
    // The references of sitemaps the caller has read already, by file; set before scanning.
    QHash<QString, QList<Reference>> readSitemaps;
};

bool MayUseOtherFiles(const QString& path) {
    return KindOf(path) != FileKind::Other;
}

BookFileGatherer::BookFileGatherer(const HelpProject& project, CompileLog& log)
    : m_data(std::make_unique<Data>(project, log)) {}

BookFileGatherer::~BookFileGatherer() = default;

QStringList BookFileGatherer::start() {
    Data& d = *m_data;
    QStringList files;
    d.addListedFiles(files);
    d.contentsFile =
        d.addNamedFile(files, d.project.contentsFile, QStringLiteral("contents file"), true);
    d.indexFile = d.addNamedFile(files, d.project.indexFile, QStringLiteral("index file"), true);
    m_defaultTopic =
        d.addNamedFile(files, d.project.defaultTopic, QStringLiteral("default topic"), false);
    return files;
}

void BookFileGatherer::useReadSitemaps(const Sitemap& contents, const Sitemap& index) {
    Data& d = *m_data;
    if (!d.contentsFile.isEmpty())
        d.readSitemaps.insert(d.contentsFile, d.sitemapReferences(contents));
    if (!d.indexFile.isEmpty()) d.readSitemaps.insert(d.indexFile, d.sitemapReferences(index));
}

bool BookFileGatherer::needsContent(const QString& path) const {
    return MayUseOtherFiles(path) && !m_data->readSitemaps.contains(path);
}

FileReferences BookFileGatherer::scan(const QString& path, QByteArrayView bytes) {
    Data& d = *m_data;
    FileReferences result;
    QList<Reference> references;
    QString folder = FolderOf(path);
    switch (KindOf(path)) {
    case FileKind::Page: {
        QString base;
        references = ScanHtmlReferences(bytes, d.codePage, &base);
        if (base.isEmpty()) break;
        const std::optional<QString> baseFolder = JoinFolders(folder, FolderOf(base));
        if (!baseFolder) {
            result.log.warning(path, QStringLiteral("its <base href=\"%1\"> leads out of the "
                                                    "book, so the files it uses are not packed")
                                         .arg(base));
            return result;
        }
        folder = *baseFolder;
        break;
    }
    case FileKind::StyleSheet:
        references = ScanCssReferences(bytes, d.codePage);
        break;
    case FileKind::Sitemap:
        references = d.readSitemaps.contains(path)
                         ? d.readSitemaps.value(path)
                         : d.sitemapReferences(ReadSitemap(bytes, d.codePage));
        break;
    case FileKind::Other:
        return result;
    }
    QSet<QString> missing;
    for (const Reference& reference : references) {
        const QString onDisk = d.lookUp(folder, reference);
        if (!onDisk.isEmpty()) {
            result.found.append(onDisk);
            continue;
        }
        const QString target = JoinInFolder(folder, reference.path);
        if (target.isEmpty() || missing.contains(target)) continue;
        missing.insert(target);
        result.log.warning(path, QStringLiteral("\"%1\" names no file of the book (%2 is "
                                                "missing)")
                                     .arg(reference.asWritten, target));
    }
    return result;
}

FileReferences BookFileGatherer::scanFile(const QString& path) {
    if (!MayUseOtherFiles(path)) return {};
    QFile input(m_data->project.folder + path);
    if (!input.open(QIODevice::ReadOnly)) {
        FileReferences result;
        result.log.warning(path, QStringLiteral("cannot be read (%1), so the files it uses "
                                                "are not packed")
                                     .arg(input.errorString()));
        return result;
    }
    return scan(path, input.readAll());
}

QStringList BookFileGatherer::take(const FileReferences& references) {
    Data& d = *m_data;
    d.log.append(references.log);
    QStringList added;
    for (const QString& file : references.found)
        if (d.add(file)) added.append(file);
    return added;
}

// Files are scanned on worker threads a window ahead and their references taken in list
// order, so the list grows breadth first and is the same for any number of threads.
QStringList GatherBookFiles(const HelpProject& project, CompileLog& log, int jobs) {
    BookFileGatherer gatherer(project, log);
    QStringList files = gatherer.start();
    if (!project.defaultTopic.isEmpty() && gatherer.defaultTopic().isEmpty())
        log.warning(project.projectPath,
                    QStringLiteral("the default topic \"%1\" is not a file of the project folder")
                        .arg(project.defaultTopic));
    const int threads = jobs > 0 ? jobs : QThread::idealThreadCount();
    OrderedWork<QString, FileReferences> scans(
        threads > 1 ? threads : 0, 16 * threads,
        [&](const QString& file) { return gatherer.scanFile(file); });
    for (const QString& file : files)
        scans.add(file);
    for (qsizetype i = 0; i < files.size(); ++i) {
        for (const QString& added : gatherer.take(scans.take())) {
            files.append(added);
            scans.add(added);
        }
    }
    return files;
}

} // namespace qmr::chm
