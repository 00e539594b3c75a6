#include "chm/BookFiles.h"

#include "chm/BookLanguage.h"
#include "chm/FolderListings.h"
#include "chm/ReferenceScanner.h"
#include "chm/Sitemap.h"
#include "platform/CodePage.h"

#include <QFile>
#include <QSet>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

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

// `reference` taken from a file in `folder` ("" or ending in "/"), as a path below the project
// folder without "." and ".." parts; empty when it leaves the project folder or names a folder.
QString JoinInFolder(const QString& folder, const QString& reference) {
    QStringList parts;
    for (const QString& part : QString(folder + reference).split(u'/')) {
        if (part.isEmpty() || part == u".") continue;
        if (part == u"..") {
            if (parts.isEmpty()) return {};
            parts.removeLast();
        } else {
            parts.append(part);
        }
    }
    if (parts.isEmpty() || reference.endsWith(u'/')) return {};
    return parts.join(u'/');
}

QString FolderOf(const QString& path) {
    return path.left(path.lastIndexOf(u'/') + 1);
}

// What scanning one file found: the files it uses (on disk, in order) and its warnings.
struct ScanResult {
    QStringList found;
    CompileLog log;
};

class Gatherer {
  public:
    Gatherer(const HelpProject& project, CompileLog& log)
        : m_project(project), m_log(log), m_disk(project.folder),
          m_codePage(CodePageOfLanguage(project.languageId)) {}

    QStringList gather(int jobs) {
        addListedFiles();
        addNamedFile(m_project.contentsFile, QStringLiteral("contents file"), true);
        addNamedFile(m_project.indexFile, QStringLiteral("index file"), true);
        addNamedFile(m_project.defaultTopic, QStringLiteral("default topic"), false);
        // Files are scanned a batch at a time, the batch being every file not yet scanned;
        // results join the list in the batch's order, so it is the same for any number of
        // threads.
        for (qsizetype scanned = 0; scanned < m_files.size();) {
            const QStringList batch = m_files.sliced(scanned);
            scanned = m_files.size();
            const std::vector<ScanResult> results = scanAll(batch, jobs);
            for (const ScanResult& result : results) {
                m_log.append(result.log);
                for (const QString& file : result.found)
                    add(file);
            }
        }
        return m_files;
    }

  private:
    void add(const QString& file) {
        if (!m_seen.contains(file)) {
            m_seen.insert(file);
            m_files.append(file);
        }
    }

    void addListedFiles() {
        for (qsizetype i = 0; i < m_project.files.size(); ++i) {
            const QString entry = belowProject(m_project.files[i]);
            const int line = i < m_project.fileLines.size() ? m_project.fileLines[i] : 0;
            const QString path = JoinInFolder({}, entry);
            const QString onDisk = path.isEmpty() ? QString() : m_disk.findFile(path);
            if (path.isEmpty() || IsOutsideAddress(entry))
                m_log.error(m_project.projectPath, line,
                            QStringLiteral("the file \"%1\" in [FILES] is not below the project "
                                           "folder; list only files of %2")
                                .arg(entry, m_project.folder));
            else if (onDisk.isEmpty())
                m_log.error(m_project.projectPath, line,
                            QStringLiteral("the file \"%1\" in [FILES] does not exist; restore it "
                                           "or remove the line")
                                .arg(entry));
            else
                add(onDisk);
        }
    }

    // A name given with the project folder's own path in front is taken without it.
    QString belowProject(const QString& name) const {
        return name.startsWith(m_project.folder) ? name.mid(m_project.folder.size()) : name;
    }

    void addNamedFile(const QString& given, const QString& what, bool required) {
        if (given.isEmpty()) return;
        const QString name = belowProject(given);
        const QString path = IsOutsideAddress(name) ? QString() : JoinInFolder({}, name);
        const QString onDisk = path.isEmpty() ? QString() : m_disk.findFile(path);
        if (!onDisk.isEmpty()) {
            add(onDisk);
            return;
        }
        const QString text =
            QStringLiteral("the %1 \"%2\" is not a file of the project folder").arg(what, name);
        if (required)
            m_log.error(m_project.projectPath, 0, text);
        else
            m_log.warning(m_project.projectPath, text);
    }

    std::vector<ScanResult> scanAll(const QStringList& batch, int jobs) {
        std::vector<ScanResult> results(size_t(batch.size()));
        std::atomic<qsizetype> nextIndex{0};
        const auto work = [&] {
            for (qsizetype i = nextIndex++; i < batch.size(); i = nextIndex++)
                results[size_t(i)] = scan(batch[i]);
        };
        const int threads = std::clamp<qsizetype>(jobs > 0 ? jobs : QThread::idealThreadCount(), 1,
                                                  qMax<qsizetype>(batch.size(), 1));
        std::vector<std::thread> workers;
        for (int t = 1; t < threads; ++t)
            workers.emplace_back(work);
        work();
        for (std::thread& worker : workers)
            worker.join();
        return results;
    }

    ScanResult scan(const QString& file) {
        ScanResult result;
        const FileKind kind = KindOf(file);
        if (kind == FileKind::Other) return result;
        QFile input(m_project.folder + file);
        if (!input.open(QIODevice::ReadOnly)) {
            result.log.warning(file, QStringLiteral("cannot be read (%1), so the files it uses "
                                                    "are not packed")
                                         .arg(input.errorString()));
            return result;
        }
        const QByteArray bytes = input.readAll();
        QList<Reference> references;
        if (kind == FileKind::Page)
            references = ScanHtmlReferences(bytes, m_codePage);
        else if (kind == FileKind::StyleSheet)
            references = ScanCssReferences(bytes, m_codePage);
        else
            references = sitemapReferences(bytes);
        const QString folder = FolderOf(file);
        QSet<QString> missing;
        for (const Reference& reference : references) {
            const QString onDisk = lookUp(folder, reference);
            if (!onDisk.isEmpty()) {
                result.found.append(onDisk);
                continue;
            }
            const QString target = JoinInFolder(folder, reference.path);
            if (target.isEmpty() || missing.contains(target)) continue;
            missing.insert(target);
            result.log.warning(file, QStringLiteral("\"%1\" names no file of the book (%2 is "
                                                    "missing)")
                                         .arg(reference.asWritten, target));
        }
        return result;
    }

    // The file a reference names, on disk: its decoded path, else the path as written.
    QString lookUp(const QString& folder, const Reference& reference) {
        for (const QString& path : {reference.path, reference.asWritten}) {
            const QString target = JoinInFolder(folder, path);
            if (target.isEmpty()) continue;
            const QString onDisk = m_disk.findFile(target);
            if (!onDisk.isEmpty()) return onDisk;
            if (reference.path == reference.asWritten) break;
        }
        return {};
    }

    QList<Reference> sitemapReferences(const QByteArray& bytes) const {
        QList<Reference> references;
        const Sitemap sitemap = ReadSitemap(bytes, m_codePage);
        for (const SitemapEntry& entry : sitemap.entries)
            for (const SitemapParam& param : entry.params) {
                if (param.name.compare(u"Local", Qt::CaseInsensitive) != 0) continue;
                const Reference reference = CleanReference(param.value, m_codePage);
                if (!reference.path.isEmpty() && !IsOutsideAddress(reference.path))
                    references.append(reference);
            }
        return references;
    }

    const HelpProject& m_project;
    CompileLog& m_log;
    FolderListings m_disk;
    const CodePage m_codePage;
    QStringList m_files;
    QSet<QString> m_seen;
};

} // namespace

QStringList GatherBookFiles(const HelpProject& project, CompileLog& log, int jobs) {
    Gatherer gatherer(project, log);
    return gatherer.gather(jobs);
}

} // namespace qmr::chm
