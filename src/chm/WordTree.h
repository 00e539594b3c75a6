#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <vector>

namespace qmr::chm {

// A word as its entry in a leaf of the word tree holds it.
struct TreeWord {
    QByteArrayView text;     // as stored: lower case, in the book's code page
    bool inTitle = false;    // the entry of the word's places in titles
    quint32 topicCount = 0;  // topics its location codes name
    quint32 codesOffset = 0; // where its location codes start in the file
    quint32 codesSize = 0;
};

struct WordTreeShape {
    quint32 rootOffset = 0; // the only leaf, or the index node at the top
    quint16 depth = 0;      // 1: one leaf; 2: one index node above the leaves; ...
    quint32 leafCount = 0;
    quint32 nodeSize = 0;
    quint32 lastLeafFreeSpace = 0;
};

// Appends the leaves of the word tree to `file`, then its index nodes, the root last; offsets
// in the tree count from `fileOffset`, where `file` stands in the index file. `words`
// are in the order the readers search them (see SearchOrderLess), a word's title entry right
// after its other entry. Both readers of the tree step down a tree of more than two levels
// wrongly, so the nodes grow beyond the usual 4096 bytes when one index node could not name
// every leaf.
WordTreeShape AppendWordTree(QByteArray& file, quint32 fileOffset,
                             const std::vector<TreeWord>& words);

// The order of words in the tree: bytes compared as the readers compare them (ASCII letters
// without regard to case), then the bytes themselves, then the entry of titles after the other.
bool SearchOrderLess(const TreeWord& a, const TreeWord& b);

// A whole number in 7-bit groups, the lowest first, each byte but the last with its high bit set.
void AppendEncInt(QByteArray& out, quint32 value);

} // namespace qmr::chm
