#include "ebook/ProjectFile.h"

#include "catalogue/LocalTextFile.h"
#include "platform/AppFolder.h"
#include "platform/PathSeparators.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <QStringView>

#include <algorithm>
#include <limits>

namespace qmr {
namespace {

// Files the compiler is not handed: project and working files, and the images it finds by
// itself through the pages. The table is compared with the last three characters of a path,
// so its two-letter "DB" never matches and "Thumbs.db" is packed; that is how it has always
// behaved.
bool HasExcludedExtension(const QString& path) {
    static const QStringList excluded = {
        QStringLiteral("HHP"), QStringLiteral("CHM"), QStringLiteral("HHC"), QStringLiteral("HHK"),
        QStringLiteral("TMP"), QStringLiteral("RDF"), QStringLiteral("GIF"), QStringLiteral("JPG"),
        QStringLiteral("DAT"), QStringLiteral("LOG"), QStringLiteral("ICO"), QStringLiteral("DB")};
    return excluded.contains(path.right(3).toUpper());
}

// Finds the first item, by catalogue index, whose identifier occurs anywhere in a path. A
// scan of every item for every file is too slow for large scrapbooks, so the identifiers are
// hashed by text and each distinct length is slid over the path once.
class FirstItemInPath {
  public:
    explicit FirstItemInPath(const QList<CatalogueItem>& items) {
        for (int i = 0; i < items.size(); ++i) {
            const QStringView id(items[i].id);
            if (id.isEmpty()) {
                // An empty identifier occurs in every path.
                if (m_emptyId < 0) m_emptyId = i;
                continue;
            }
            if (!m_firstIndex.contains(id)) m_firstIndex.insert(id, i);
            if (!m_lengths.contains(id.size())) m_lengths.append(id.size());
        }
    }

    // The lowest index of an item whose identifier occurs in `path`; -1 when none does.
    int find(QStringView path) const {
        int best = m_emptyId < 0 ? std::numeric_limits<int>::max() : m_emptyId;
        for (const qsizetype length : m_lengths) {
            for (qsizetype at = 0; at + length <= path.size() && best > 0; ++at) {
                const auto hit = m_firstIndex.constFind(path.mid(at, length));
                if (hit != m_firstIndex.cend()) best = std::min(best, hit.value());
            }
        }
        return best == std::numeric_limits<int>::max() ? -1 : best;
    }

  private:
    QHash<QStringView, int> m_firstIndex; // views into the items, which outlive the finder
    QList<qsizetype> m_lengths;
    int m_emptyId = -1;
};

// A path inside the project as the compiler must find it on disk: the platform's separators and
// the file system's own bytes for the name, whatever code page the rest of the file is in.
QByteArray FileSystemLine(const QString& path) {
    return QFile::encodeName(ToNativePath(path)) + "\r\n";
}

void WriteOptions(LocalTextFile& out, const QString& compiledFile, const QString& startPage,
                  EbookLanguage language, const QString& name) {
    out.writeLine(QStringLiteral("[Options]"));
    out.writeLine(QStringLiteral("Binary TOC=No"));
    out.writeLine(QStringLiteral("Binary Index=Yes"));
    out.write(QStringLiteral("Compiled file= "));
    out.writeBytes(FileSystemLine(compiledFile));
    out.writeLine(QStringLiteral("Compatibility= 1.1 or later"));
    out.writeLine(QStringLiteral("Full-text search=Yes"));
    out.writeLine(QStringLiteral("Display compile progress=Yes"));
    out.writeLine(QStringLiteral("Display compile notes=Yes"));
    out.writeLine(QStringLiteral("Contents file=Index.hhc"));
    out.writeLine(QStringLiteral("Default Window=main"));
    if (language == EbookLanguage::ChineseTraditional)
        out.writeLine(QStringLiteral("Default Font=新細明體, 10,136"));
    out.write(QStringLiteral("Default topic="));
    out.writeBytes(FileSystemLine(startPage));
    out.writeLine(QStringLiteral("Error log file=ErrorLog.log"));
    out.writeLine(QStringLiteral("Index file=Index.hhk"));
    if (language == EbookLanguage::English)
        out.writeLine(QStringLiteral("Language=0x409 English (United States)"));
    else if (language == EbookLanguage::ChineseTraditional)
        out.writeLine(QStringLiteral("Language=0x404 Chinese (Traditional/Taiwan)"));
    else if (language == EbookLanguage::ChineseSimplified)
        out.writeLine(QStringLiteral("Language=0x804 (PRC)"));
    out.writeLine(QStringLiteral("Auto Index=Yes"));
    out.writeLine(QStringLiteral("Create CHI file=No"));
    out.writeLine(QStringLiteral("Title =") + name);
}

// The window names the contents and index files in lower case, unlike the options above;
// the compiler accepts both.
void WriteWindow(LocalTextFile& out, const QString& name, const QString& startPage) {
    out.writeLine(QStringLiteral("[WINDOWS]"));
    out.write(QStringLiteral("main=\"") + name +
              QStringLiteral("\",\"index.hhc\",\"index.hhk\",\""));
    out.writeBytes(QFile::encodeName(startPage));
    out.write(QStringLiteral("\",\""));
    out.writeBytes(QFile::encodeName(startPage));
    out.writeLine(QStringLiteral("\",,,,,0x23520,0,0x70387E,,0xB0000,,,,,,0"));
}

// The placed items' files, the generated pages and the scrapbook's own files; the folders of
// items the table of contents left out (private or unlisted) are not packed.
void WriteFileLines(LocalTextFile& out, const EbookContext& build, const QStringList& files) {
    const FirstItemInPath finder(build.catalogue.items);
    const qsizetype folderLength = build.folder.size();
    for (const QString& path : files) {
        const int item = finder.find(path);
        if (item >= 0 && !build.walk.placed(item)) continue;
        if (HasExcludedExtension(path)) continue;
        out.writeBytes(FileSystemLine(path.mid(folderLength)));
    }
}

void WriteClosingSections(LocalTextFile& out, const QString& startPage) {
    out.writeLine(QStringLiteral("[ALIAS]"));
    out.write(QStringLiteral("HIDD_UVCGETFIREWAREVERSION_DIALOG = "));
    out.writeBytes(FileSystemLine(startPage));
    out.writeLine(QStringLiteral("[MAP]"));
    out.writeLine(QStringLiteral("#include HTMLDefines.h"));
    out.writeLine(QStringLiteral("[TEXT POPUPS]"));
    out.writeLine(QStringLiteral("HTMLDefines.h"));
    out.writeLine(QStringLiteral("[INFOTYPES]"));
}

bool IsInside(const QString& canonicalPath, const QString& canonicalRoot) {
    return canonicalPath == canonicalRoot ||
           canonicalPath.startsWith(canonicalRoot + QLatin1Char('/'));
}

// A link may lead anywhere; only what stays inside the scrapbook is listed, and each real
// folder is entered once so that a link back to a parent cannot loop.
void GatherFolder(const QString& folder, const QString& root, QSet<QString>& entered,
                  QStringList& files) {
    const QDir dir(folder);
    const QDir::Filters any = QDir::Hidden | QDir::System;
    for (const QFileInfo& info : dir.entryInfoList(QDir::Files | any, QDir::Name)) {
        if (!info.isFile()) continue; // devices, pipes, broken links
        if (info.isSymLink() && !IsInside(info.canonicalFilePath(), root)) continue;
        files.append(folder + info.fileName());
    }
    for (const QFileInfo& info :
         dir.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot | any, QDir::Name)) {
        const QString real = info.canonicalFilePath();
        if (!IsInside(real, root) || entered.contains(real)) continue;
        entered.insert(real);
        GatherFolder(folder + info.fileName() + QLatin1Char('/'), root, entered, files);
    }
}

} // namespace

QStringList GatherScrapbookFiles(const QString& folder) {
    QString start = QDir::fromNativeSeparators(folder);
    if (!start.endsWith(QLatin1Char('/'))) start += QLatin1Char('/');
    const QString root = QFileInfo(start).canonicalFilePath();
    QStringList files;
    if (root.isEmpty()) return files;
    QSet<QString> entered{root};
    GatherFolder(start, root, entered, files);
    return files;
}

QString GetChmTitle() {
    // No title is ever set, and an untitled book is named "Index".
    return QStringLiteral("Index");
}

bool hhp(EbookContext& build, const QString& path, const QStringList& files, QString* error) {
    if (build.folder.trimmed().isEmpty()) return true;
    const QString name = GetChmTitle();
    const QString startPage = build.options.homePageFilename;
    build.outputPath = ApplicationFolder() + QStringLiteral("chm/") + name + QStringLiteral(".chm");

    LocalTextFile out(path);
    WriteOptions(out, build.outputPath, startPage, build.options.language, name);
    WriteWindow(out, name, startPage);
    out.writeLine(QStringLiteral("[Files]"));
    if (!build.options.linkToSourceURL) WriteFileLines(out, build, files);
    WriteClosingSections(out, startPage);
    return out.commit(error);
}

} // namespace qmr
