#include "authoring/CatalogueWriter.h"

#include "catalogue/LocalTextFile.h"
#include "catalogue/TextFiles.h"

namespace qmr {
namespace {

// Blanks before each kind of line; attributes line up under "RDF:about".
constexpr int kSeqIndent = 2;
constexpr int kEntryIndent = 4;
constexpr int kRootContinuationIndent = 9;
constexpr int kAttributeIndent = 19;

QString itemUrn(const QString& id) {
    return QStringLiteral("urn:scrapbook:item") + id;
}

QString sixDigits(int number) {
    return QString(QStringLiteral("000000") + QString::number(number)).right(6);
}

} // namespace

void CatalogueWriter::line(int blanks, const QString& text) {
    m_lines.append(QString(blanks, QLatin1Char(' ')) + text);
}

void CatalogueWriter::attribute(const QString& name, const QString& value, const char* closing) {
    line(kAttributeIndent,
         name + QStringLiteral("=\"") + value + QLatin1Char('"') + QLatin1String(closing));
}

void CatalogueWriter::WriteRdfHead() {
    line(0, QStringLiteral("<?xml version=\"1.0\"?>"));
    line(0, QStringLiteral("<RDF:RDF xmlns:NS1=\"%1\"").arg(QLatin1String(kScrapbookNamespace)));
    line(kRootContinuationIndent,
         QStringLiteral("xmlns:NC=\"%1\"").arg(QLatin1String(kNetscapeNamespace)));
    line(kRootContinuationIndent,
         QStringLiteral("xmlns:RDF=\"%1\">").arg(QLatin1String(kRdfNamespace)));
}

void CatalogueWriter::WriteRootSeqOpen() {
    line(kSeqIndent, QStringLiteral("<RDF:Seq RDF:about=\"urn:scrapbook:root\">"));
}

void CatalogueWriter::WriteSeqOpen(const QString& id) {
    line(kSeqIndent, QStringLiteral("<RDF:Seq RDF:about=\"%1\">").arg(itemUrn(id)));
}

void CatalogueWriter::WriteSeqEntry(const QString& id) {
    line(kEntryIndent, QStringLiteral("<RDF:li RDF:resource=\"%1\"/>").arg(itemUrn(id)));
}

void CatalogueWriter::WriteSeqClose() {
    line(kSeqIndent, QStringLiteral("</RDF:Seq>"));
}

void CatalogueWriter::WriteRdfTail() {
    line(0, QStringLiteral("</RDF:RDF>"));
}

void CatalogueWriter::WriteFolderDescription(const QString& id, const QString& title) {
    line(kSeqIndent, QStringLiteral("<RDF:Description RDF:about=\"%1\"").arg(itemUrn(id)));
    attribute(QStringLiteral("NS1:id"), id);
    attribute(QStringLiteral("NS1:type"), QStringLiteral("folder"));
    attribute(QStringLiteral("NS1:title"), title);
    attribute(QStringLiteral("NS1:chars"), QString());
    attribute(QStringLiteral("NS1:comment"), QString());
    attribute(QStringLiteral("NS1:icon"), QString());
    attribute(QStringLiteral("NS1:source"), QString(), " />");
}

void CatalogueWriter::WriteItemDescription(const QString& id, const QString& title,
                                           const QString& type, const QString& source,
                                           const QString& icon) {
    const bool folder = type == QLatin1String("folder");
    line(kSeqIndent, QStringLiteral("<RDF:Description RDF:about=\"%1\"").arg(itemUrn(id)));
    attribute(QStringLiteral("NS1:id"), id);
    attribute(QStringLiteral("NS1:type"), type);
    attribute(QStringLiteral("NS1:chars"), folder ? QString() : QStringLiteral("BIG5"));
    attribute(QStringLiteral("NS1:comment"), QString());
    attribute(QStringLiteral("NS1:icon"), icon);
    attribute(QStringLiteral("NS1:source"), source);
    attribute(QStringLiteral("NS1:title"), title, " />");
}

void CatalogueWriter::WriteImportTopFolderDescription() {
    const QString id = QLatin1String(kImportTopFolderId);
    line(kSeqIndent, QStringLiteral("<RDF:Description RDF:about=\"%1\"").arg(itemUrn(id)));
    attribute(QStringLiteral("NS1:id"), id);
    attribute(QStringLiteral("NS1:type"), QStringLiteral("folder"));
    attribute(QStringLiteral("NS1:title"), QStringLiteral("Joke"));
    attribute(QStringLiteral("NS1:chars"), QString());
    attribute(QStringLiteral("NS1:icon"), QString());
    attribute(QStringLiteral("NS1:source"), QString());
    attribute(QStringLiteral("NS1:comment"), QString(), " />");
}

bool CatalogueWriter::Save(const QString& folder, QString* error) const {
    const QString workingCopy = folder + QStringLiteral("scrapbook.txt");
    LocalTextFile file(workingCopy);
    for (const QString& text : m_lines)
        file.writeLine(text);
    return file.commit(error) &&
           ConvertLocalTextToUtf8(workingCopy, folder + QStringLiteral("scrapbook.rdf"), error);
}

CatalogueWriter FolderCatalogue(const QString& rootId, const QString& folderTitle,
                                const QList<FileItemDescription>& files) {
    CatalogueWriter writer;
    writer.WriteRdfHead();
    writer.WriteRootSeqOpen();
    writer.WriteSeqEntry(rootId);
    writer.WriteSeqClose();
    writer.WriteFolderDescription(rootId, folderTitle);
    writer.WriteSeqOpen(rootId);
    for (const FileItemDescription& file : files)
        writer.WriteSeqEntry(file.id);
    writer.WriteSeqClose();
    for (const FileItemDescription& file : files)
        writer.WriteItemDescription(file.id, file.title, QStringLiteral("file"), file.source,
                                    file.icon);
    writer.WriteRdfTail();
    return writer;
}

QString ImportEntryId(int entry) {
    return QStringLiteral("20060101") + sixDigits(entry);
}

QString ImportGroupId(int group) {
    return QStringLiteral("20060102") + sixDigits(group);
}

namespace {

// Groups 0, 1, ... while the group's first entry is within 0..lastEntry.
int groupCount(int lastEntry) {
    return lastEntry < 0 ? 0 : lastEntry / 10 + 1;
}

QString importIcon(const QString& title) {
    if (title.right(3).toUpper() != QLatin1String("PDF")) return QString();
    return QStringLiteral("moz-icon://") + title + QStringLiteral("?size=16");
}

} // namespace

CatalogueWriter ImportedTextCatalogue(const QStringList& titles, int lastEntry) {
    CatalogueWriter writer;
    writer.WriteRdfHead();
    writer.WriteRootSeqOpen();
    writer.WriteSeqEntry(QLatin1String(kImportTopFolderId));
    writer.WriteSeqClose();
    writer.WriteImportTopFolderDescription();
    const int groups = groupCount(lastEntry);
    for (int g = 0; g < groups; ++g) {
        writer.WriteFolderDescription(ImportGroupId(g),
                                      QStringLiteral("From:%1 To %2").arg(10 * g).arg(10 * g + 9));
        writer.WriteSeqOpen(ImportGroupId(g));
        for (int k = 10 * g; k <= qMin(10 * g + 9, lastEntry); ++k)
            writer.WriteSeqEntry(ImportEntryId(k));
        writer.WriteSeqClose();
    }
    for (int k = 0; k <= lastEntry; ++k) {
        const QString title = titles.value(k);
        writer.WriteItemDescription(ImportEntryId(k), title, QString(), QString(),
                                    importIcon(title));
    }
    writer.WriteSeqOpen(QLatin1String(kImportTopFolderId));
    for (int g = 0; g < groups; ++g)
        writer.WriteSeqEntry(ImportGroupId(g));
    writer.WriteSeqClose();
    writer.WriteRdfTail();
    return writer;
}

} // namespace qmr
