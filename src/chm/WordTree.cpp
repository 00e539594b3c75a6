#include "chm/WordTree.h"

#include <QtEndian>

#include <algorithm>

namespace qmr::chm {

namespace {

constexpr quint32 kUsualNodeSize = 4096;
constexpr quint32 kLargestNodeSize = 65536; // a node's free space must fit 16 bits
constexpr int kLeafHeaderSize = 8;          // next leaf, 0, free space
constexpr int kIndexHeaderSize = 2;         // free space

int EncIntSize(quint32 value) {
    int size = 1;
    for (; value >= 0x80; value >>= 7)
        ++size;
    return size;
}

int SharedPrefix(QByteArrayView a, QByteArrayView b) {
    const qsizetype limit = std::min(a.size(), b.size());
    qsizetype i = 0;
    while (i < limit && a[i] == b[i])
        ++i;
    return int(i);
}

void AppendUInt16(QByteArray& out, quint16 value) {
    char bytes[2];
    qToLittleEndian(value, bytes);
    out.append(bytes, 2);
}

void AppendUInt32(QByteArray& out, quint32 value) {
    char bytes[4];
    qToLittleEndian(value, bytes);
    out.append(bytes, 4);
}

// Entries store their word as the length they share with the word before them in the same
// node and the rest; the first entry of a node stores the whole word.
void AppendWordPart(QByteArray& out, QByteArrayView word, QByteArrayView previous) {
    const int shared = SharedPrefix(word, previous);
    out.append(char(word.size() - shared + 1));
    out.append(char(shared));
    out.append(word.sliced(shared));
}

int LeafEntrySize(const TreeWord& word, QByteArrayView previous) {
    return 2 + int(word.text.size()) - SharedPrefix(word.text, previous) + 1 +
           EncIntSize(word.topicCount) + 4 + 2 + EncIntSize(word.codesSize);
}

int IndexEntrySize(QByteArrayView word, QByteArrayView previous) {
    return 2 + int(word.size()) - SharedPrefix(word, previous) + 4 + 2;
}

// Where each leaf starts in `words`, filling leaves in order; a word's two entries stay in one
// leaf, since a search for titles only looks no further than the leaf the index leads to.
std::vector<size_t> PlanLeaves(const std::vector<TreeWord>& words, quint32 nodeSize) {
    std::vector<size_t> starts{0};
    quint32 used = kLeafHeaderSize;
    QByteArrayView previous;
    for (size_t i = 0; i < words.size();) {
        const bool twin = i + 1 < words.size() && words[i + 1].inTitle && !words[i].inTitle &&
                          words[i + 1].text == words[i].text;
        auto unitSize = [&](QByteArrayView before) {
            int size = LeafEntrySize(words[i], before);
            if (twin) size += LeafEntrySize(words[i + 1], words[i].text);
            return quint32(size);
        };
        if (used + unitSize(previous) > nodeSize && used > kLeafHeaderSize) {
            starts.push_back(i);
            used = kLeafHeaderSize;
            previous = {};
        }
        used += unitSize(previous);
        const size_t count = twin ? 2 : 1;
        previous = words[i + count - 1].text;
        i += count;
    }
    return starts;
}

struct ChildNode {
    quint32 offset;
    QByteArrayView lastWord;
};

// The entries of one index node above `children`, as many as fit from `first` on.
size_t IndexNodeEnd(const std::vector<ChildNode>& children, size_t first, quint32 nodeSize) {
    quint32 used = kIndexHeaderSize;
    QByteArrayView previous;
    size_t end = first;
    while (end < children.size()) {
        const quint32 size = IndexEntrySize(children[end].lastWord, previous);
        if (used + size > nodeSize && end > first) break;
        used += size;
        previous = children[end].lastWord;
        ++end;
    }
    return end;
}

bool OneIndexNodeNamesAll(const std::vector<TreeWord>& words, const std::vector<size_t>& starts,
                          quint32 nodeSize) {
    std::vector<ChildNode> leaves;
    for (size_t i = 0; i < starts.size(); ++i) {
        const size_t end = i + 1 < starts.size() ? starts[i + 1] : words.size();
        leaves.push_back({0, words[end - 1].text});
    }
    return IndexNodeEnd(leaves, 0, nodeSize) == leaves.size();
}

void PadNode(QByteArray& file, qsizetype nodeStart, quint32 nodeSize) {
    file.append(QByteArray(nodeStart + nodeSize - file.size(), '\0'));
}

void AppendLeaf(QByteArray& file, const std::vector<TreeWord>& words, size_t first, size_t end,
                quint32 nextLeaf, quint32 nodeSize, quint32& freeSpace) {
    const qsizetype start = file.size();
    AppendUInt32(file, nextLeaf);
    AppendUInt16(file, 0);
    AppendUInt16(file, 0); // free space, set below
    QByteArrayView previous;
    for (size_t i = first; i < end; ++i) {
        const TreeWord& word = words[i];
        AppendWordPart(file, word.text, previous);
        file.append(char(word.inTitle ? 1 : 0));
        AppendEncInt(file, word.topicCount);
        AppendUInt32(file, word.codesOffset);
        AppendUInt16(file, 0);
        AppendEncInt(file, word.codesSize);
        previous = word.text;
    }
    freeSpace = quint32(start + nodeSize - file.size());
    qToLittleEndian(quint16(freeSpace), file.data() + start + 6);
    PadNode(file, start, nodeSize);
}

// Appends the index nodes above `children`; returns the nodes made, each with its last word.
std::vector<ChildNode> AppendIndexLevel(QByteArray& file, quint32 fileOffset,
                                        const std::vector<ChildNode>& children, quint32 nodeSize) {
    std::vector<ChildNode> parents;
    for (size_t first = 0; first < children.size();) {
        const size_t end = IndexNodeEnd(children, first, nodeSize);
        const qsizetype start = file.size();
        AppendUInt16(file, 0); // free space, set below
        QByteArrayView previous;
        for (size_t i = first; i < end; ++i) {
            AppendWordPart(file, children[i].lastWord, previous);
            AppendUInt32(file, children[i].offset);
            AppendUInt16(file, 0);
            previous = children[i].lastWord;
        }
        qToLittleEndian(quint16(start + nodeSize - file.size()), file.data() + start);
        PadNode(file, start, nodeSize);
        parents.push_back({fileOffset + quint32(start), children[end - 1].lastWord});
        first = end;
    }
    return parents;
}

} // namespace

void AppendEncInt(QByteArray& out, quint32 value) {
    while (value >= 0x80) {
        out.append(char(0x80 | (value & 0x7F)));
        value >>= 7;
    }
    out.append(char(value));
}

bool SearchOrderLess(const TreeWord& a, const TreeWord& b) {
    auto folded = [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; };
    const qsizetype limit = std::min(a.text.size(), b.text.size());
    for (qsizetype i = 0; i < limit; ++i) {
        const quint8 x = quint8(folded(a.text[i])), y = quint8(folded(b.text[i]));
        if (x != y) return x < y;
    }
    if (a.text.size() != b.text.size()) return a.text.size() < b.text.size();
    const int raw = a.text.compare(b.text);
    if (raw != 0) return raw < 0;
    return !a.inTitle && b.inTitle;
}

WordTreeShape AppendWordTree(QByteArray& file, quint32 fileOffset,
                             const std::vector<TreeWord>& words) {
    WordTreeShape shape;
    shape.nodeSize = kUsualNodeSize;
    std::vector<size_t> starts = PlanLeaves(words, shape.nodeSize);
    while (starts.size() > 1 && shape.nodeSize < kLargestNodeSize &&
           !OneIndexNodeNamesAll(words, starts, shape.nodeSize)) {
        shape.nodeSize *= 2;
        starts = PlanLeaves(words, shape.nodeSize);
    }

    std::vector<ChildNode> level;
    const quint32 firstLeaf = fileOffset + quint32(file.size());
    for (size_t i = 0; i < starts.size(); ++i) {
        const bool last = i + 1 == starts.size();
        const size_t end = last ? words.size() : starts[i + 1];
        const quint32 offset = fileOffset + quint32(file.size());
        const quint32 next = last ? 0 : offset + shape.nodeSize;
        AppendLeaf(file, words, starts[i], end, next, shape.nodeSize, shape.lastLeafFreeSpace);
        level.push_back({offset, end > starts[i] ? words[end - 1].text : QByteArrayView()});
    }
    shape.leafCount = quint32(starts.size());
    shape.depth = 1;
    shape.rootOffset = firstLeaf;
    while (level.size() > 1) {
        level = AppendIndexLevel(file, fileOffset, level, shape.nodeSize);
        ++shape.depth;
        shape.rootOffset = level.front().offset;
    }
    return shape;
}

} // namespace qmr::chm
