#include "authoring/FolderConversion.h"

#include "authoring/CatalogueWriter.h"
#include "authoring/InputTextFile.h"
#include "authoring/NodeId.h"
#include "catalogue/LocalTextFile.h"
#include "catalogue/PathSafety.h"
#include "catalogue/TextFiles.h"
#include "host/InputError.h"
#include "platform/LocalCodePage.h"
#include "platform/PathSeparators.h"
#include "website/PageFragments.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace qmr {
namespace {

// The identifier table and the source table each hold this many entries.
constexpr int kMaxFiles = 10001;
constexpr int kMaxSourceLines = 10001;
const QString kSourceList = QStringLiteral("File-Source.TXT");

// One file of the chosen folder, as it is to become an item.
struct PlannedItem {
    QString fileName;
    QString safeName;
    QString source;
    qint64 length = 0;
    QString id;
};

// Everything the conversion needs, gathered and checked before anything is written.
struct ConversionPlan {
    QString folder;          // the chosen folder, ending in "/"
    QString scrapbookFolder; // folder + "scrapbook/"
    QString folderName;
    QList<PlannedItem> items;
};

// A failure at any step ends the conversion; it travels to the one place that turns it into the
// result, so the steps read straight through.
class ConversionFailure {
  public:
    ConversionFailure(QString file, int line, QString problem, QString advice)
        : error{std::move(file), line, std::move(problem), std::move(advice)} {}
    InputError error;
};

[[noreturn]] void fail(const QString& file, int line, const QString& problem,
                       const QString& advice) {
    throw ConversionFailure(file, line, problem, advice);
}

QStringList readSourceTable(const QString& folder) {
    const QString path = folder + kSourceList;
    QStringList lines;
    if (!QFileInfo(path).isFile()) return lines;
    QString reason;
    if (!ReadLocalInputLines(path, lines, &reason))
        fail(path, 0, QStringLiteral("cannot read the list of sources (%1)").arg(reason),
             QStringLiteral("Make the file readable, or move it out of the folder"));
    if (lines.size() > kMaxSourceLines)
        fail(path, kMaxSourceLines + 1,
             QStringLiteral("the list of sources has more than %1 lines").arg(kMaxSourceLines),
             QStringLiteral("Keep one line a file, at most %1 lines").arg(kMaxSourceLines));
    return lines;
}

// A name that a folder listing gives never is "." or ".." nor holds a separator; one that did
// would reach outside the item folder.
void checkPathComponent(const QString& folder, const QString& name) {
    const bool pathLike = name.isEmpty() || name == QLatin1String(".") ||
                          name == QLatin1String("..") || name.contains(QLatin1Char('/')) ||
                          name.contains(QLatin1Char('\\'));
    if (pathLike)
        fail(folder + name, 0,
             QStringLiteral("\"%1\" is not the name of a file in the folder").arg(name),
             QStringLiteral("Pass only the names of the files directly inside the folder"));
}

// A line break would split the catalogue's one-attribute-a-line form; a quote or "<" makes a
// catalogue that no XML reader accepts.
void checkCatalogueCharacters(const QString& folder, const QString& name) {
    for (QChar c : name) {
        if (c.unicode() < 0x20 || c.unicode() == 0x7F || c == QLatin1Char('"') ||
            c == QLatin1Char('<'))
            fail(folder + name, 0,
                 QStringLiteral("the file name holds a character that a ScrapBook catalogue "
                                "cannot carry (a control character, '\"' or '<')"),
                 QStringLiteral("Rename the file and convert the folder again"));
    }
}

QString sourceFor(const QString& fileName, const QStringList& sourceLines,
                  const QString& sourceListPath) {
    const int k = FindSourceLine(fileName, sourceLines);
    if (k < 0) return QString();
    const qsizetype star = sourceLines.at(k).indexOf(QLatin1Char('*'));
    if (star < 0)
        fail(sourceListPath, k + 1,
             QStringLiteral("the line for \"%1\" has no \"*\" after its source").arg(fileName),
             QStringLiteral("Write each line as the source, \"*\", then the file name"));
    return SanitizeItemName(sourceLines.at(k).left(star));
}

ConversionPlan planConversion(const QString& chosenFolder, const QStringList& fileNames) {
    ConversionPlan plan;
    const QString cleaned = RemoveBackslash(QDir::fromNativeSeparators(chosenFolder));
    const QFileInfo info(cleaned);
    if (cleaned.isEmpty() || !info.isDir())
        fail(cleaned, 0, QStringLiteral("there is no such folder"),
             QStringLiteral("Choose an existing folder of files to convert"));
    plan.folder = AddBackslash(info.absoluteFilePath());
    plan.scrapbookFolder = plan.folder + QStringLiteral("scrapbook/");
    plan.folderName = GetLastFolderName(plan.folder);

    const QStringList sourceLines = readSourceTable(plan.folder);
    for (const QString& name : fileNames) {
        checkPathComponent(plan.folder, name);
        const QString path = plan.folder + name;
        if (QFileInfo(path).isDir()) continue; // the conversion takes files only
        checkCatalogueCharacters(plan.folder, name);
        PlannedItem item;
        item.fileName = name;
        item.safeName = SanitizeItemName(name);
        item.length = GetFileLength(path);
        if (item.length < 0)
            fail(path, 0, QStringLiteral("cannot read the file"),
                 QStringLiteral("Make the file readable, or move it out of the folder"));
        item.source = sourceFor(name, sourceLines, plan.folder + kSourceList);
        plan.items.append(item);
        if (plan.items.size() > kMaxFiles)
            fail(plan.folder, 0, QStringLiteral("the folder has more than %1 files").arg(kMaxFiles),
                 QStringLiteral("Split the files into folders of at most %1 and convert each")
                     .arg(kMaxFiles));
    }
    return plan;
}

void makeFolder(const QString& path) {
    if (!QDir().mkpath(path) || !QFileInfo(path).isWritable())
        fail(path, 0, QStringLiteral("cannot create or write this folder"),
             QStringLiteral("Choose a folder you can write to"));
}

QString drawIdentifier(const AuthoringContext& context, NodeIdGenerator& generator) {
    QString reason;
    const QString id = generator.NewNodeID(context.today(), &reason);
    if (id.isEmpty())
        fail(context.applicationFolder + QStringLiteral("NodeID.txt"), 0, reason,
             QStringLiteral("Make the application folder writable"));
    return id;
}

// Names the local code page cannot hold reach the catalogue and pages with "?" in their place.
void warnIfNotLocal(const AuthoringContext& context, const QString& name) {
    if (LocalCodePage::decode(LocalCodePage::encode(name)) == name) return;
    context.host.add2loglist(
        QStringLiteral("%1: characters the local code page (%2) lacks show as \"?\" in the "
                       "catalogue and the item pages")
            .arg(name, LocalCodePage::name()));
}

QString itemTitle(const PlannedItem& item) {
    const QString sizeText =
        QString(QStringLiteral("00000000") + QString::number(item.length)).right(8);
    return sizeText + QLatin1Char('-') + item.safeName;
}

QString itemIcon(const PlannedItem& item) {
    return QStringLiteral("moz-icon://") + item.safeName + QStringLiteral("?size=16");
}

void writeItemFolder(const AuthoringContext& context, const ConversionPlan& plan,
                     const PlannedItem& item) {
    const QString itemFolder =
        plan.scrapbookFolder + QStringLiteral("data/") + item.id + QLatin1Char('/');
    makeFolder(itemFolder);
    QString reason;
    if (!WriteItemIndexDat(plan.scrapbookFolder, item.id, QStringLiteral("file"), item.safeName,
                           item.source, &reason) ||
        !WriteRedirectIndex(context.chrome, itemFolder, item.safeName, &reason))
        fail(itemFolder, 0, reason, QStringLiteral("Make the folder writable"));
    if (CopyFileIfExists(plan.folder + item.fileName, itemFolder + item.safeName) == CopyFailed)
        fail(plan.folder + item.fileName, 0,
             QStringLiteral("cannot copy the file to %1").arg(ToNativePath(itemFolder)),
             QStringLiteral("Check the file is readable and the disk has room"));
}

void convert(const AuthoringContext& context, ConversionPlan& plan) {
    makeFolder(plan.scrapbookFolder + QStringLiteral("data/"));
    // Every identifier is drawn, the folder's first, before any item is described.
    NodeIdGenerator generator(context.applicationFolder);
    const QString rootId = drawIdentifier(context, generator);
    for (PlannedItem& item : plan.items)
        item.id = drawIdentifier(context, generator);

    warnIfNotLocal(context, plan.folderName);
    QList<FileItemDescription> described;
    for (const PlannedItem& item : plan.items) {
        warnIfNotLocal(context, item.safeName);
        described.append({item.id, itemTitle(item), item.source, itemIcon(item)});
        writeItemFolder(context, plan, item);
        context.host.yield();
        if (context.host.cancelled())
            fail(plan.scrapbookFolder, 0, CancelledProblem(),
                 QStringLiteral("The catalogue was not written, so the item folders made are not "
                                "part of any scrapbook; convert the folder again to make it"));
    }
    QString reason;
    if (!FolderCatalogue(rootId, plan.folderName, described).Save(plan.scrapbookFolder, &reason))
        fail(plan.scrapbookFolder + QStringLiteral("scrapbook.rdf"), 0, reason,
             QStringLiteral("Make the folder writable"));
}

} // namespace

QStringList ListFolderFiles(const QString& folder) {
    return QDir(folder).entryList(QDir::Files, QDir::Name | QDir::IgnoreCase);
}

ConversionResult ConvertFolderToScrapbook(const AuthoringContext& context, const QString& folder,
                                          const QStringList& fileNames) {
    ConversionResult result;
    try {
        ConversionPlan plan = planConversion(folder, fileNames);
        convert(context, plan);
        result.ok = true;
        result.scrapbookName = plan.folderName;
        result.scrapbookFolder = plan.scrapbookFolder;
        result.itemCount = int(plan.items.size());
    } catch (const ConversionFailure& failure) {
        result.problem = failure.error.text();
    }
    return result;
}

QString SanitizeItemName(const QString& name) {
    QString safe = name;
    for (QChar& c : safe) {
        if (c == QLatin1Char(' ') || c == QLatin1Char('@') || c == QLatin1Char('&') ||
            c == QLatin1Char('='))
            c = QLatin1Char('-');
    }
    return safe;
}

int FindSourceLine(const QString& fileName, const QStringList& sourceLines) {
    const QString wanted = fileName.toLower();
    int found = -1;
    for (int i = 0; i < sourceLines.size(); ++i)
        if (sourceLines.at(i).toLower().contains(wanted)) found = i;
    return found;
}

bool WriteItemIndexDat(const QString& base, const QString& id, const QString& type,
                       const QString& title, const QString& source, QString* error) {
    if (!IsSafePathComponent(id)) {
        if (error) *error = QStringLiteral("\"%1\" is not an item identifier").arg(id);
        return false;
    }
    const QString itemFolder = base + QStringLiteral("data/") + id + QLatin1Char('/');
    QDir().mkpath(itemFolder);
    const QString working = itemFolder + QStringLiteral("index1.dat");
    LocalTextFile records(working);
    const auto record = [&records](const char* key, const QString& value) {
        records.write(QLatin1String(key) + QLatin1Char('\t') + value + QLatin1Char('\n'));
    };
    record("id", id);
    record("type", type);
    record("title", title);
    record("chars", QString());
    record("comment", QString());
    record("icon", QString());
    record("source", source);
    const bool written =
        records.commit(error) &&
        ConvertLocalTextToUtf8(working, itemFolder + QStringLiteral("index.dat"), error);
    QFile::remove(working);
    return written;
}

} // namespace qmr
