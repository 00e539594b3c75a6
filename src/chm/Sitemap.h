#pragma once

#include <QByteArrayView>
#include <QList>
#include <QString>

namespace qmr {
class CodePage;
}

namespace qmr::chm {

struct SitemapParam {
    QString name; // as written ("Name", "Local", "ImageNumber", "See Also", ...)
    QString value;
};

// One <OBJECT type="text/sitemap"> of a contents (.hhc) or index (.hhk) file.
struct SitemapEntry {
    int level = 1;              // 1 inside the outermost <UL>, 2 one list deeper, ...
    QList<SitemapParam> params; // in order; an index entry may repeat Name and Local

    // The first value of a parameter (names match ignoring case); empty when absent.
    QString value(QStringView name) const;
    QString name() const { return value(u"Name"); }
    QString local() const { return value(u"Local"); }
};

struct Sitemap {
    QList<SitemapParam> properties; // of <OBJECT type="text/site properties">
    QList<SitemapEntry> entries;    // in file order
};

// Reads a sitemap file tolerantly: any case, missing closing tags, stray markup. Text is
// decoded with the file's own <meta ... charset=...> when it names one, else `codePage`;
// character references (&amp;, &#20013;) are resolved.
Sitemap ReadSitemap(QByteArrayView bytes, const CodePage& codePage);

} // namespace qmr::chm
