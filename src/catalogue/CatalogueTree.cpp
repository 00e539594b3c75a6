#include "catalogue/CatalogueTree.h"

#include <algorithm>
#include <utility>

namespace qmr {
namespace {

const QLatin1String kListPrefix("<RDF:Seq RDF:about=\"urn:scrapbook:");
const QLatin1String kListEnd("</RDF:Seq>");
const QLatin1String kChildPrefix("<RDF:li RDF:resource=\"urn:scrapbook:item");
// A child line ends in `"/>` after the identifier.
constexpr int kChildLineTail = 3;

// Names are ordered by their UTF-16 code units, so all names that begin with a key follow
// one another.
bool nameLess(QStringView a, QStringView b) {
    return std::lexicographical_compare(a.utf16(), a.utf16() + a.size(), b.utf16(),
                                        b.utf16() + b.size());
}

QString listKey(const QString& name) {
    return name == u"root" ? name : QStringLiteral("item") + name;
}

} // namespace

CatalogueTree::CatalogueTree(const Catalogue& catalogue) {
    const int itemCount = int(std::min<qsizetype>(catalogue.itemCount, catalogue.items.size()));
    m_firstItemById.reserve(itemCount);
    for (int i = 0; i < itemCount; ++i) {
        const QString& id = catalogue.items.at(i).id;
        if (!m_firstItemById.contains(id)) m_firstItemById.insert(id, i);
    }

    const int lastLine = int(std::min<qsizetype>(catalogue.lineCount, catalogue.lines.size() - 1));
    int segment = 0;
    for (int i = 0; i <= lastLine; ++i) {
        const QString& line = catalogue.lines.at(i);
        // Most lines are an item's attributes; only element lines can open, close or name.
        if (!line.startsWith(u'<')) continue;
        if (line.startsWith(kListPrefix)) {
            m_listsByName.push_back(
                {line.mid(kListPrefix.size()), segment, int(m_childItems.size())});
        } else if (line.startsWith(kListEnd)) {
            m_segmentEnds.push_back(int(m_childItems.size()));
            ++segment;
        } else if (line.startsWith(kChildPrefix)) {
            const qsizetype idLength = line.size() - kChildPrefix.size() - kChildLineTail;
            m_childItems.push_back(
                idLength < 0 ? -1 : itemIndex(line.mid(kChildPrefix.size(), idLength)));
        }
    }
    // Child lines after the last "</RDF:Seq>" belong to a segment that runs to the end.
    m_segmentEnds.push_back(int(m_childItems.size()));
    std::stable_sort(m_listsByName.begin(), m_listsByName.end(),
                     [](const ListLine& a, const ListLine& b) { return nameLess(a.name, b.name); });
}

std::vector<int> CatalogueTree::children(const QString& name) const {
    const QString key = listKey(name);
    auto list = std::lower_bound(
        m_listsByName.begin(), m_listsByName.end(), key,
        [](const ListLine& line, const QString& wanted) { return nameLess(line.name, wanted); });

    // Between two "</RDF:Seq>" lines, the first matching list line sets the flag for the rest
    // of that stretch; later ones there change nothing.
    std::vector<std::pair<int, int>> starts; // segment, first child line
    for (; list != m_listsByName.end() && list->name.startsWith(key); ++list)
        starts.emplace_back(list->segment, list->firstChild);
    std::sort(starts.begin(), starts.end());

    std::vector<int> found;
    int previousSegment = -1;
    for (const auto& [segment, firstChild] : starts) {
        if (segment == previousSegment) continue;
        previousSegment = segment;
        for (int child = firstChild; child < m_segmentEnds.at(segment); ++child)
            if (m_childItems.at(child) >= 0) found.push_back(m_childItems.at(child));
    }
    return found;
}

} // namespace qmr
