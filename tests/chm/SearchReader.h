#pragma once

#include <QByteArray>

#include <map>
#include <vector>

namespace qmr::test {

// Searches a $FIftiMain the way the Linux readers do (header fields, descent through the index
// nodes with a case-blind byte compare, the scan of a leaf and the ones after it, the location
// codes bit by bit), including their habit of not restarting the scan of an index node below
// the root: a tree they cannot search fails here too.
class SearchReader {
  public:
    explicit SearchReader(QByteArray file) : m_file(std::move(file)) {}

    // Topic number -> its locations, for every entry a reader's search would take.
    using Hits = std::map<quint32, std::vector<quint32>>;
    Hits search(const QByteArray& text, bool wholeWords, bool titlesOnly = false) const;

    quint32 u32(qsizetype at) const;
    quint16 u16(qsizetype at) const;
    quint8 u8(qsizetype at) const { return at < m_file.size() ? quint8(m_file[at]) : 0; }

  private:
    quint32 leafFor(const QByteArray& text) const;
    void readCodes(quint32 offset, quint32 size, quint32 topics, Hits& hits) const;

    QByteArray m_file;
};

} // namespace qmr::test
