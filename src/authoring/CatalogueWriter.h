#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace qmr {

// Writes a ScrapBook catalogue as fixed text lines, in exactly the layout the catalogue reader
// expects: one element or attribute a line. Values are inserted as they stand; a caller that
// needs XML escaping does it first. The lines are gathered in memory and saved in one go.
class CatalogueWriter {
  public:
    void WriteRdfHead();
    void WriteRootSeqOpen();
    void WriteSeqOpen(const QString& id);
    void WriteSeqEntry(const QString& id);
    void WriteSeqClose();
    void WriteRdfTail();

    // A folder: title before chars, and the description closes on the source line.
    void WriteFolderDescription(const QString& id, const QString& title);
    // Any other item: chars "BIG5" unless the type is exactly "folder", and the description
    // closes on the title line.
    void WriteItemDescription(const QString& id, const QString& title, const QString& type,
                              const QString& source, const QString& icon);
    // The fixed top folder "Joke" of an imported text, in an attribute order of its own.
    void WriteImportTopFolderDescription();

    const QStringList& lines() const { return m_lines; }

    // Writes folder + "scrapbook.txt" in the local code page with CR LF line ends, then
    // rewrites it as folder + "scrapbook.rdf" in UTF-8 with a byte-order mark. The working
    // copy is left beside the catalogue. `folder` ends in "/".
    bool Save(const QString& folder, QString* error = nullptr) const;

  private:
    void line(int blanks, const QString& text);
    void attribute(const QString& name, const QString& value, const char* closing = "");
    QStringList m_lines;
};

// The namespaces ScrapBook binds on its root element.
inline constexpr char kScrapbookNamespace[] = "http://amb.vis.ne.jp/mozilla/scrapbook-rdf#";
inline constexpr char kNetscapeNamespace[] = "http://home.netscape.com/NC-rdf#";
inline constexpr char kRdfNamespace[] = "http://www.w3.org/1999/02/22-rdf-syntax-ns#";

// One file item of a converted folder, as its description shows it.
struct FileItemDescription {
    QString id;
    QString title;
    QString source;
    QString icon;
};

// A converted folder: the root list holding one folder, that folder's description and list,
// then one "file" description per file, in file order.
CatalogueWriter FolderCatalogue(const QString& rootId, const QString& folderTitle,
                                const QList<FileItemDescription>& files);

// The fixed identifiers of an imported text: its top folder, entry k and group g.
inline constexpr char kImportTopFolderId[] = "20070519235227";
QString ImportEntryId(int entry);
QString ImportGroupId(int group);

// An imported text, listing entries 0..lastEntry (titles as they are to stand) in groups of
// ten under the one top folder. A negative lastEntry lists no group.
CatalogueWriter ImportedTextCatalogue(const QStringList& titles, int lastEntry);

} // namespace qmr
