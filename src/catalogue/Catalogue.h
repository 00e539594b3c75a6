#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

namespace qmr {

// What an item is, from its type as the catalogue names it. Types the system does not know
// (ScrapBook's "separator" among them) are listed by no walker.
enum class ItemKind : quint8 {
    Folder,   // "folder": its children are in its RDF:Seq list
    Page,     // "": a saved web page
    Image,    // "image"
    Note,     // "note": a page the user wrote in ScrapBook
    Bookmark, // "bookmark": an address, no saved copy
    Site,     // "site": a page saved with its links followed
    Marked,   // "marked": a page with markings
    File,     // "file": a saved local file
    Separator,
    Unknown,
};

// The kind a type names, compared exactly (case matters).
ItemKind ItemKindOf(QStringView type);

// A page ScrapBook captured from somewhere: saved page, image, site, marked page or file.
constexpr bool IsCapture(ItemKind kind) {
    return kind == ItemKind::Page || kind == ItemKind::Image || kind == ItemKind::Site ||
           kind == ItemKind::Marked || kind == ItemKind::File;
}
// The item's folder holds its own index.html: a capture or a note.
constexpr bool HasSavedPage(ItemKind kind) {
    return IsCapture(kind) || kind == ItemKind::Note;
}

// One item of a scrapbook as its catalogue describes it. The values stand exactly as they are
// written between the quotes of scrapbook.rdf: entities such as "&amp;" are kept.
struct CatalogueItem {
    QString id;
    QString type;
    QString title;
    QString chars;
    QString icon;
    QString source;
    QString comment;
    ItemKind kind = ItemKind::Page; // set from `type` once the catalogue is read

    bool isFolder() const { return kind == ItemKind::Folder; }
    bool isCapture() const { return IsCapture(kind); }
    bool hasSavedPage() const { return HasSavedPage(kind); }
    // "PRIVATE" in the comment, in any case, keeps a folder and all below it out of the e-book.
    bool isPrivate() const;
};

// An item's folder: the scrapbook folder (ending in "/") + "data/" + identifier + "/".
QString ItemFolder(const QString& scrapbookFolder, const QString& id);

// How large a catalogue the reader accepts. The defaults hold about 8,800 items in
// ScrapBook's own layout; Quillmere.ini [Limits] CatalogueLines and CatalogueItems raise them.
struct CatalogueLimits {
    static constexpr int kDefaultLines = 80001;
    static constexpr int kDefaultItems = 20001;
    int maxLines = kDefaultLines;
    int maxItems = kDefaultItems;
    // Where the limits are set, for the message that names the setting.
    QString settingsFile = QStringLiteral("Quillmere.ini");
};

// A loaded catalogue: its trimmed lines and its items in file order. Each load makes a new one;
// a build holds it and passes it on.
class Catalogue {
  public:
    QString folder;             // the scrapbook folder, ending in "/"
    QStringList lines;          // every line of the working copy, trimmed
    QList<CatalogueItem> items; // in file order
    int lineCount = -1;         // index of the last line (a file of n lines gives n - 1)
    int itemCount = 0;

    // The first item with this identifier at position `from` (0 or 1) or later; -1 when there
    // is none. Looked up in an index made on first use, so a build's many look-ups stay cheap.
    int IndexOfId(const QString& id, int from = 0) const;

  private:
    struct IdPositions {
        int first = -1;         // the lowest position
        int firstAfterTop = -1; // the lowest position from 1 on
    };
    void indexIds() const;
    mutable QHash<QString, IdPositions> m_idIndex;
    mutable qsizetype m_indexedItems = -1;
};

} // namespace qmr
