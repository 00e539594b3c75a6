#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

namespace qmr {

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
    // Set by the tree walk once the item is in the table of contents, so an item reached
    // twice is written once.
    bool placed = false;
    // Set by the tree walk: the folder whose list held the item, or "root".
    QString parentId;
    // Filled by no stage; kept so the record has the shape builders expect.
    QString spare;
    // For a folder: the body of its folder page, gathered while the table of contents is
    // written.
    QString folderBody;
};

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

    // The first item whose title (or comment), trimmed and upper-cased, equals `text` trimmed
    // and upper-cased; -1 when none does.
    int NodeTitleToIndex(const QString& title) const;
    int NodeCommentToIndex(const QString& comment) const;

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
