#include "chm/ChmCompiler.h"

#include "chm/BookFiles.h"
#include "chm/BookLanguage.h"
#include "chm/ChmWriter.h"
#include "chm/DefaultTopic.h"
#include "chm/FullTextIndex.h"
#include "chm/HelpProject.h"
#include "chm/InternalFiles.h"
#include "chm/OrderedWork.h"
#include "chm/PageText.h"
#include "chm/Sitemap.h"
#include "chm/TopicWords.h"

#include "platform/CodePage.h"

#include <QFile>
#include <QThread>

#include <future>
#include <memory>
#include <optional>
#include <thread>

namespace qmr::chm {

namespace {

int Threads(int jobs) {
    return jobs > 0 ? jobs : std::max(1, QThread::idealThreadCount());
}

bool IsPage(const QString& path) {
    return path.endsWith(QLatin1String(".htm"), Qt::CaseInsensitive) ||
           path.endsWith(QLatin1String(".html"), Qt::CaseInsensitive);
}

// A sitemap the project names; empty when it names none. One that cannot be read is an error.
Sitemap ReadProjectSitemap(const HelpProject& project, const QString& name,
                           const CodePage& codePage, CompileLog& log) {
    if (name.isEmpty()) return {};
    QFile file(project.folder + name);
    if (!file.open(QIODevice::ReadOnly)) {
        log.error(
            file.fileName(), 0,
            QStringLiteral("cannot read it (%1); the project names it").arg(file.errorString()));
        return {};
    }
    return ReadSitemap(file.readAll(), codePage);
}

// Files up to this size are read ahead by the workers; a larger one that no reference is
// looked for in is read piece by piece as it is packed, so memory stays bounded.
constexpr qint64 kReadAheadLimit = 1 << 20;
// Files read ahead of the one being packed, a thread.
constexpr int kFilesAheadPerThread = 16;

// What a worker makes of one file before it is packed: its bytes, the files it uses and, for a
// page, its title and words.
struct ReadFile {
    QString path;
    QByteArray bytes;
    bool whole = false; // false: the writer reads it from disk itself
    QString error;
    FileReferences references;
    bool isTopic = false;
    QString title;
    TopicWords words;
};

// Reads files on worker threads, any number at once.
class FileReader {
  public:
    FileReader(const HelpProject& project, BookFileGatherer& gatherer)
        : m_project(project), m_gatherer(gatherer),
          m_codePageName(CodePageOfLanguage(project.languageId)) {}

    ReadFile read(const QString& path) {
        ReadFile file;
        file.path = path;
        QFile input(m_project.folder + path);
        if (!input.open(QIODevice::ReadOnly)) {
            file.error = input.errorString();
            return file;
        }
        file.isTopic = IsPage(path);
        if (!file.isTopic && !m_gatherer.needsContent(path) && input.size() > kReadAheadLimit) {
            file.references = m_gatherer.scan(path, {}); // known without reading it
            return file;
        }
        file.bytes = input.readAll();
        if (input.error() != QFileDevice::NoError) {
            file.error = input.errorString();
            return file;
        }
        file.whole = true;
        file.references = m_gatherer.scan(path, file.bytes);
        if (file.isTopic) {
            ThreadTables& own = tables();
            const PageText page = ExtractPageText(file.bytes, own.codePage);
            file.title = page.title;
            if (m_project.fullTextSearch) file.words = own.words.collect(page.title, page.text);
        }
        return file;
    }

  private:
    // Each thread keeps its converter and word tables from page to page.
    struct ThreadTables {
        explicit ThreadTables(const QString& codePageName)
            : codePageName(codePageName), codePage(codePageName), words(codePageName) {}
        QString codePageName;
        CodePage codePage;
        TopicWordCollector words;
    };
    ThreadTables& tables() const {
        thread_local std::unique_ptr<ThreadTables> tables;
        if (!tables || tables->codePageName != m_codePageName)
            tables = std::make_unique<ThreadTables>(m_codePageName);
        return *tables;
    }

    const HelpProject& m_project;
    BookFileGatherer& m_gatherer;
    const QString m_codePageName;
};

// Packs the book's files in list order, reading them a window ahead on worker threads; the
// files each one uses join the list as it is packed. The topics are the pages.
class BookPacker {
  public:
    BookPacker(const HelpProject& project, const CompileOptions& options, ChmWriter& writer,
               CompileLog& log)
        : m_project(project), m_options(options), m_writer(writer), m_log(log) {
        if (project.fullTextSearch) m_fullText.emplace(project.languageId);
    }

    // Packs `files` and the files they add to the list.
    bool pack(BookFileGatherer& gatherer, QStringList& files) {
        const int threads = Threads(m_options.jobs);
        FileReader reader(m_project, gatherer);
        OrderedWork<QString, ReadFile> reads(
            threads > 1 ? threads : 0, kFilesAheadPerThread * threads,
            [&reader](const QString& path) { return reader.read(path); });
        for (const QString& file : files)
            reads.add(file);
        for (qsizetype i = 0; i < files.size(); ++i) {
            if (m_options.cancelled && m_options.cancelled()) {
                m_log.note(m_project.projectPath, QStringLiteral("compiling was cancelled"));
                return false;
            }
            const ReadFile file = reads.take();
            for (const QString& added : gatherer.take(file.references)) {
                files.append(added);
                reads.add(added);
            }
            if (!packFile(file)) return false;
            if (m_options.progress) m_options.progress(int(i + 1), int(files.size()));
        }
        return true;
    }

    const QList<BookTopic>& topics() const { return m_topics; }
    // The full-text index; null when the project asks for none or no page held a word.
    FullTextIndex* fullTextIndex() {
        return m_fullText && !m_fullText->isEmpty() ? &*m_fullText : nullptr;
    }

  private:
    bool packFile(const ReadFile& file) {
        const QString diskPath = m_project.folder + file.path;
        if (!file.error.isEmpty()) {
            m_log.error(diskPath, 0, QStringLiteral("cannot read it: %1").arg(file.error));
            return false;
        }
        const QString bookPath = QLatin1Char('/') + file.path;
        if (!file.whole) return written(m_writer.addFileFromDisk(bookPath, diskPath));
        if (file.isTopic) {
            if (m_fullText) m_fullText->addTopic(quint32(m_topics.size()), file.words);
            m_topics.append({bookPath, file.title});
        }
        return written(m_writer.addFile(bookPath, file.bytes));
    }

    bool written(bool ok) {
        if (!ok) m_log.error(m_project.projectPath, 0, m_writer.errorString());
        return ok;
    }

    const HelpProject& m_project;
    const CompileOptions& m_options;
    ChmWriter& m_writer;
    CompileLog& m_log;
    std::optional<FullTextIndex> m_fullText;
    QList<BookTopic> m_topics;
};

} // namespace

bool CompileHelpProject(const QString& projectPath, const CompileOptions& options,
                        CompileLog& log) {
    HelpProject project;
    if (!ReadHelpProject(projectPath, project, log, options.defaultLanguageId)) return false;
    const QString output = options.outputPath.isEmpty() ? project.compiledFile : options.outputPath;
    if (output.isEmpty()) {
        log.error(project.projectPath, 0,
                  QStringLiteral("names no book to write; add a \"Compiled file=\" line"));
        return false;
    }
    // The contents and index files are read while the listed files are looked for.
    BookContents book;
    CompileLog sitemapLog;
    std::thread sitemaps([&] {
        const CodePage codePage(CodePageOfLanguage(project.languageId));
        book.contents = ReadProjectSitemap(project, project.contentsFile, codePage, sitemapLog);
        book.index = ReadProjectSitemap(project, project.indexFile, codePage, sitemapLog);
    });
    auto gatherer = std::make_unique<BookFileGatherer>(project, log);
    QStringList files = gatherer->start();
    sitemaps.join();
    log.append(sitemapLog);
    book.compiledAt =
        options.compiledAt.isValid() ? options.compiledAt : QDateTime::currentDateTimeUtc();
    if (log.hasErrors()) return false;
    gatherer->useReadSitemaps(book.contents, book.index);

    ChmWriter writer(output, {project.languageId, options.lzx, options.jobs, book.compiledAt});
    BookPacker packer(project, options, writer, log);
    if (!packer.pack(*gatherer, files)) return false;
    book.topics = packer.topics();
    HelpProject settled = project;
    SettleDefaultTopic(settled, gatherer->defaultTopic(), book, log);
    gatherer.reset(); // its folder listings are not needed to finish the index

    book.project = &settled;
    FullTextIndex* const fullText = packer.fullTextIndex();
    book.fullTextSearch = fullText != nullptr;
    // The internal files are made while the full-text index sorts its words and lays out its
    // tree, which leave a core free; they are written after it.
    std::future<QList<InternalFile>> internal =
        std::async(std::launch::async, [&book] { return MakeInternalFiles(book); });
    bool ok = true;
    if (fullText) {
        ok = writer.beginFile(QStringLiteral("/$FIftiMain"));
        if (ok) {
            fullText->finish([&writer](QByteArrayView piece) { writer.appendToFile(piece); });
            writer.endFile();
        }
    }
    for (const InternalFile& file : internal.get())
        ok = ok && writer.addFile(file.path, file.bytes, file.compressed);
    if (!ok || !writer.finish()) {
        log.error(output, 0, writer.errorString());
        return false;
    }
    log.note(output,
             QStringLiteral("%1 files, %2 topics").arg(files.size()).arg(book.topics.size()));
    return true;
}

} // namespace qmr::chm
