#include "chm/KeywordIndex.h"

#include "chm/ByteWriter.h"

#include <algorithm>
#include <memory>

namespace qmr::chm {

namespace {

constexpr qsizetype kBlockSize = 0x800;
constexpr qsizetype kBlockHeaderSize = 12;
constexpr qsizetype kHeaderSize = 0x4C;
constexpr quint32 kNone = 0xFFFFFFFF;
constexpr qsizetype kDataRecordSize = 13;

struct KeywordNode {
    QString name;
    QList<quint32> topics;
    QString seeAlso;
    std::vector<std::unique_ptr<KeywordNode>> children;
    QHash<QString, KeywordNode*> childrenByFoldedName;

    KeywordNode* child(const QString& childName) {
        KeywordNode*& found = childrenByFoldedName[childName.toCaseFolded()];
        if (!found) {
            children.push_back(std::make_unique<KeywordNode>());
            found = children.back().get();
            found->name = childName;
        }
        return found;
    }
};

bool SortsBefore(const std::unique_ptr<KeywordNode>& a, const std::unique_ptr<KeywordNode>& b) {
    const int folded = a->name.compare(b->name, Qt::CaseInsensitive);
    return folded != 0 ? folded < 0 : a->name < b->name;
}

void Flatten(KeywordNode& node, const QString& prefix, int depth, QList<Keyword>& out) {
    std::stable_sort(node.children.begin(), node.children.end(), SortsBefore);
    for (const auto& child : node.children) {
        Keyword keyword;
        keyword.name = prefix + child->name;
        keyword.ownNameStart = int(prefix.size());
        keyword.depth = depth;
        keyword.topics = child->topics;
        keyword.seeAlso = child->seeAlso;
        out.append(keyword);
        Flatten(*child, keyword.name + QStringLiteral(", "), depth + 1, out);
    }
}

// The name and the fields after it, up to the topic count.
QByteArray KeywordKey(const Keyword& keyword) {
    QByteArray bytes;
    ByteWriter out(bytes);
    out.utf16(keyword.name);
    out.u16(0);
    out.u16(keyword.seeAlso.isEmpty() ? 0 : 2);
    out.u16(quint16(keyword.depth));
    out.u32(quint32(keyword.ownNameStart));
    out.u32(0);
    return bytes;
}

QByteArray EncodeKeyword(const Keyword& keyword, qsizetype firstTopic, qsizetype topicCount,
                         quint32 number) {
    QByteArray bytes = KeywordKey(keyword);
    ByteWriter out(bytes);
    if (keyword.seeAlso.isEmpty()) {
        out.u32(quint32(topicCount));
        for (qsizetype i = firstTopic; i < firstTopic + topicCount; ++i)
            out.u32(keyword.topics[i]);
    } else {
        out.u32(0);
        out.utf16(keyword.seeAlso);
        out.u16(0);
    }
    out.u32(1);
    out.u32(number * kDataRecordSize);
    return bytes;
}

struct Records {
    std::vector<QByteArray> bytes;
    std::vector<QByteArray> keys;
};

// Each record in a listing block; a keyword with more topics than a block holds is stored as
// several records of the same name.
Records EncodeRecords(const QList<Keyword>& keywords) {
    Records records;
    for (const Keyword& keyword : keywords) {
        const qsizetype fixed = EncodeKeyword(keyword, 0, 0, 0).size();
        const qsizetype perRecord =
            std::max<qsizetype>(1, (kBlockSize - kBlockHeaderSize - fixed) / 4);
        qsizetype first = 0;
        do {
            const qsizetype count = std::min(perRecord, keyword.topics.size() - first);
            records.bytes.push_back(
                EncodeKeyword(keyword, first, count, quint32(records.bytes.size())));
            records.keys.push_back(KeywordKey(keyword));
            first += count;
        } while (first < keyword.topics.size());
    }
    return records;
}

struct Block {
    QByteArray entries;
    int count = 0;
    quint32 firstRecord = 0; // the number of its first record among those packed
    QByteArray firstKey;     // and that record's name and fields, for the level above
};

std::vector<Block> PackBlocks(const std::vector<QByteArray>& records,
                              const std::vector<QByteArray>& keys) {
    std::vector<Block> blocks(1);
    for (size_t i = 0; i < records.size(); ++i) {
        if (blocks.back().count > 0 &&
            kBlockHeaderSize + blocks.back().entries.size() + records[i].size() > kBlockSize)
            blocks.emplace_back();
        Block& block = blocks.back();
        if (block.count == 0) {
            block.firstRecord = quint32(i);
            block.firstKey = keys[i];
        }
        block.entries.append(records[i]);
        ++block.count;
    }
    return blocks;
}

QByteArray BlockBytes(const Block& block, quint32 previous, quint32 next) {
    QByteArray bytes;
    ByteWriter out(bytes);
    out.u16(quint16(kBlockSize - kBlockHeaderSize - block.entries.size()));
    out.u16(quint16(block.count));
    out.u32(previous);
    out.u32(next);
    out.bytes(block.entries);
    bytes.append(kBlockSize - bytes.size(), '\0');
    return bytes;
}

// An index level above `children`: for each child block, its first keyword and its number.
std::vector<Block> IndexLevel(const std::vector<Block>& children, quint32 firstChild) {
    std::vector<QByteArray> entries, keys;
    for (size_t i = 0; i < children.size(); ++i) {
        QByteArray entry = children[i].firstKey;
        ByteWriter out(entry);
        out.u32(0); // no topics
        out.u32(firstChild + quint32(i));
        entries.push_back(entry);
        keys.push_back(children[i].firstKey);
    }
    return PackBlocks(entries, keys);
}

QByteArray Header(quint32 lastListing, quint32 root, quint32 blocks, quint16 depth,
                  quint32 keywords, quint32 codePageNumber, quint32 languageId) {
    QByteArray bytes;
    ByteWriter out(bytes);
    out.u16(0x293B); // ";)"
    out.u16(2);
    out.u16(quint16(kBlockSize));
    QByteArray format("X44");
    format.resize(16, '\0');
    out.bytes(format);
    out.u32(0);
    out.u32(lastListing);
    out.u32(root);
    out.u32(kNone);
    out.u32(blocks);
    out.u16(depth);
    out.u32(keywords);
    out.u32(codePageNumber);
    out.u32(languageId);
    out.u32(1);
    bytes.append(kHeaderSize - bytes.size(), '\0');
    return bytes;
}

} // namespace

QList<Keyword> CollectKeywords(const Sitemap& index, const TopicFinder& finder) {
    KeywordNode root;
    std::vector<KeywordNode*> path{&root};
    for (const SitemapEntry& entry : index.entries) {
        const QString name = FirstParam(entry, u"Name").trimmed();
        if (name.isEmpty()) continue;
        const size_t depth = size_t(std::clamp(entry.level, 1, int(path.size())));
        path.resize(depth);
        KeywordNode* node = path.back()->child(name);
        path.push_back(node);
        for (const SitemapParam& param : entry.params) {
            if (param.name.compare(u"Local", Qt::CaseInsensitive) == 0) {
                const qint32 topic = finder.find(param.value);
                if (topic >= 0 && !node->topics.contains(quint32(topic)))
                    node->topics.append(quint32(topic));
            } else if (param.name.compare(u"See Also", Qt::CaseInsensitive) == 0) {
                node->seeAlso = param.value;
            }
        }
    }
    QList<Keyword> keywords;
    Flatten(root, QString(), 0, keywords);
    return keywords;
}

KeywordLinks MakeKeywordLinks(const QList<Keyword>& keywords, quint32 languageId,
                              quint32 codePageNumber) {
    const Records records = EncodeRecords(keywords);
    const std::vector<Block> listing = PackBlocks(records.bytes, records.keys);
    std::vector<std::vector<Block>> levels{listing};
    quint32 blockCount = quint32(listing.size());
    quint32 firstOfLevel = 0;
    while (levels.back().size() > 1) {
        levels.push_back(IndexLevel(levels.back(), firstOfLevel));
        firstOfLevel = blockCount;
        blockCount += quint32(levels.back().size());
    }
    const quint32 root = levels.size() > 1 ? blockCount - 1 : 0;

    KeywordLinks links;
    links.btree = Header(quint32(listing.size() - 1), root, blockCount, quint16(levels.size()),
                         quint32(records.bytes.size()), codePageNumber, languageId);
    for (size_t i = 0; i < listing.size(); ++i)
        links.btree.append(BlockBytes(listing[i], i > 0 ? quint32(i - 1) : kNone,
                                      i + 1 < listing.size() ? quint32(i + 1) : kNone));
    for (size_t level = 1; level < levels.size(); ++level)
        for (const Block& block : levels[level])
            links.btree.append(BlockBytes(block, kNone, kNone));

    ByteWriter data(links.data);
    for (size_t i = 0; i < records.bytes.size(); ++i) {
        data.u32(0);
        data.u32(5);
        data.u32(0x80);
        data.u8(0);
    }
    ByteWriter map(links.map);
    map.u16(quint16(listing.size()));
    for (size_t i = 0; i < listing.size(); ++i) {
        map.u32(listing[i].firstRecord);
        map.u32(quint32(i));
    }
    ByteWriter property(links.property);
    for (quint32 value : {0u, 0u, 0u, 0x0Cu, 1u, 1u, 0u, 0u})
        property.u32(value);
    return links;
}

} // namespace qmr::chm
