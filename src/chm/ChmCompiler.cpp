#include "chm/ChmCompiler.h"

#include "chm/BookFiles.h"
#include "chm/BookLanguage.h"
#include "chm/ChmWriter.h"
#include "chm/FullTextIndex.h"
#include "chm/HelpProject.h"
#include "chm/InternalFiles.h"
#include "chm/PageText.h"
#include "chm/Sitemap.h"

#include "platform/CodePage.h"

#include <QFile>

#include <optional>

namespace qmr::chm {

namespace {

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

// Packs the gathered files, pages first through the text extractor; the topics are the pages.
class BookPacker {
  public:
    BookPacker(const HelpProject& project, const CompileOptions& options, ChmWriter& writer,
               CompileLog& log)
        : m_project(project), m_options(options), m_writer(writer), m_log(log),
          m_codePage(CodePageOfLanguage(project.languageId)) {
        if (project.fullTextSearch) m_fullText.emplace(project.languageId);
    }

    bool pack(const QStringList& files) {
        for (qsizetype i = 0; i < files.size(); ++i) {
            if (m_options.cancelled && m_options.cancelled()) {
                m_log.note(m_project.projectPath, QStringLiteral("compiling was cancelled"));
                return false;
            }
            if (!packFile(files[i])) return false;
            if (m_options.progress) m_options.progress(int(i + 1), int(files.size()));
        }
        return true;
    }

    const QList<BookTopic>& topics() const { return m_topics; }
    // The $FIftiMain file; empty when the project asks for none or no page held a word.
    QByteArray fullTextIndex() { return m_fullText ? m_fullText->finish() : QByteArray(); }

  private:
    bool packFile(const QString& path) {
        const QString diskPath = m_project.folder + path;
        const QString bookPath = QLatin1Char('/') + path;
        if (!IsPage(path)) return written(m_writer.addFileFromDisk(bookPath, diskPath));
        QFile file(diskPath);
        if (!file.open(QIODevice::ReadOnly)) {
            m_log.error(diskPath, 0, QStringLiteral("cannot read it: %1").arg(file.errorString()));
            return false;
        }
        const QByteArray bytes = file.readAll();
        const PageText page = ExtractPageText(bytes, m_codePage);
        if (m_fullText) m_fullText->addTopic(quint32(m_topics.size()), page.title, page.text);
        m_topics.append({bookPath, page.title});
        return written(m_writer.addFile(bookPath, bytes));
    }

    bool written(bool ok) {
        if (!ok) m_log.error(m_project.projectPath, 0, m_writer.errorString());
        return ok;
    }

    const HelpProject& m_project;
    const CompileOptions& m_options;
    ChmWriter& m_writer;
    CompileLog& m_log;
    CodePage m_codePage;
    std::optional<FullTextIndex> m_fullText;
    QList<BookTopic> m_topics;
};

} // namespace

bool CompileHelpProject(const QString& projectPath, const CompileOptions& options,
                        CompileLog& log) {
    HelpProject project;
    if (!ReadHelpProject(projectPath, project, log)) return false;
    const QString output = options.outputPath.isEmpty() ? project.compiledFile : options.outputPath;
    if (output.isEmpty()) {
        log.error(project.projectPath, 0,
                  QStringLiteral("names no book to write; add a \"Compiled file=\" line"));
        return false;
    }
    const QStringList files = GatherBookFiles(project, log, options.jobs);
    const CodePage codePage(CodePageOfLanguage(project.languageId));
    BookContents book;
    book.project = &project;
    book.contents = ReadProjectSitemap(project, project.contentsFile, codePage, log);
    book.index = ReadProjectSitemap(project, project.indexFile, codePage, log);
    book.compiledAt =
        options.compiledAt.isValid() ? options.compiledAt : QDateTime::currentDateTimeUtc();
    if (log.hasErrors()) return false;

    ChmWriter writer(output, {project.languageId, options.lzx, options.jobs, book.compiledAt});
    BookPacker packer(project, options, writer, log);
    if (!packer.pack(files)) return false;
    book.topics = packer.topics();
    const QByteArray fullText = packer.fullTextIndex();
    book.fullTextSearch = !fullText.isEmpty();
    bool ok = true;
    for (const InternalFile& file : MakeInternalFiles(book))
        ok = ok && writer.addFile(file.path, file.bytes, file.compressed);
    if (book.fullTextSearch) ok = ok && writer.addFile(QStringLiteral("/$FIftiMain"), fullText);
    if (!ok || !writer.finish()) {
        log.error(output, 0, writer.errorString());
        return false;
    }
    log.note(output,
             QStringLiteral("%1 files, %2 topics").arg(files.size()).arg(book.topics.size()));
    return true;
}

} // namespace qmr::chm
