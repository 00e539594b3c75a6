#pragma once

#include "catalogue/Catalogue.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace qmr::test {

// A catalogue made in memory as the reader leaves it: its trimmed lines and its items.
class CatalogueBuilder {
  public:
    // The list of `name` ("root" or a folder's identifier) naming `children`.
    CatalogueBuilder& list(const QString& name, const QStringList& children) {
        const QString key = name == u"root" ? name : u"item"_s + name;
        m_catalogue.lines << u"<RDF:Seq RDF:about=\"urn:scrapbook:%1\">"_s.arg(key);
        for (const QString& child : children)
            m_catalogue.lines << u"<RDF:li RDF:resource=\"urn:scrapbook:item%1\"/>"_s.arg(child);
        m_catalogue.lines << u"</RDF:Seq>"_s;
        return *this;
    }
    CatalogueBuilder& line(const QString& text) {
        m_catalogue.lines << text;
        return *this;
    }
    CatalogueBuilder& item(const QString& id, const QString& type, const QString& title = {},
                           const QString& source = {}, const QString& comment = {}) {
        CatalogueItem added;
        added.id = id;
        added.type = type;
        added.kind = ItemKindOf(type);
        added.title = title.isNull() ? u"T"_s + id : title;
        added.source = source;
        added.comment = comment;
        m_catalogue.items << added;
        return *this;
    }
    // Folders "c000000", "c000001", ... `depth` deep below the top-level list, each listing the
    // next one `copies` times; the last one listed is a note.
    CatalogueBuilder& chain(int depth, int copies) {
        auto id = [](int i) { return u"c%1"_s.arg(i, 6, 10, QLatin1Char('0')); };
        list(u"root"_s, {id(0)});
        for (int i = 0; i < depth; ++i)
            list(id(i), QStringList(copies, id(i + 1))).item(id(i), u"folder"_s);
        return item(id(depth), u"note"_s);
    }
    Catalogue build() const {
        Catalogue catalogue = m_catalogue;
        catalogue.folder = u"/scrapbook/"_s;
        catalogue.lineCount = int(catalogue.lines.size()) - 1;
        catalogue.itemCount = int(catalogue.items.size());
        return catalogue;
    }

  private:
    Catalogue m_catalogue;
};

} // namespace qmr::test
