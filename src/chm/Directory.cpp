#include "chm/Directory.h"

#include "chm/ByteWriter.h"

#include <algorithm>

namespace qmr::chm {

namespace {

constexpr qsizetype kListingHeaderSize = 0x14;
constexpr qsizetype kIndexHeaderSize = 0x08;
constexpr qsizetype kEntriesPerQuickRef = 1 + (1 << kQuickRefDensity);

char FoldAscii(char c) {
    return (c >= 'A' && c <= 'Z') ? char(c - 'A' + 'a') : c;
}

// The entry count and one offset for every fifth entry (counting the first, whose offset is
// implicit) live at the end of each chunk.
qsizetype QuickRefSpace(qsizetype entries) {
    return 2 + 2 * ((entries + kEntriesPerQuickRef - 1) / kEntriesPerQuickRef);
}

// One chunk's entries as they are laid out, and where each starts.
struct ChunkContents {
    QByteArray entries;
    std::vector<qsizetype> starts;
    QByteArray firstName;
};

// Packs encoded entries into as few chunks as the chunk size allows.
std::vector<ChunkContents> PackEntries(const std::vector<QByteArray>& encoded,
                                       const std::vector<QByteArray>& names, qsizetype headerSize) {
    std::vector<ChunkContents> chunks(1);
    for (size_t i = 0; i < encoded.size(); ++i) {
        ChunkContents* chunk = &chunks.back();
        const qsizetype needed = headerSize + chunk->entries.size() + encoded[i].size() +
                                 QuickRefSpace(qsizetype(chunk->starts.size()) + 1);
        if (!chunk->starts.empty() && needed > qsizetype(kDirectoryChunkSize))
            chunk = &chunks.emplace_back();
        if (chunk->starts.empty()) chunk->firstName = names[i];
        chunk->starts.push_back(chunk->entries.size());
        chunk->entries.append(encoded[i]);
    }
    return chunks;
}

void AppendQuickRefs(QByteArray& chunk, const ChunkContents& contents) {
    const qsizetype count = qsizetype(contents.starts.size());
    QByteArray tail;
    ByteWriter out(tail);
    for (qsizetype m = (count - 1) / kEntriesPerQuickRef; m >= 1; --m)
        out.u16(quint16(contents.starts[size_t(m * kEntriesPerQuickRef)]));
    out.u16(quint16(count));
    chunk.append(kDirectoryChunkSize - chunk.size() - tail.size(), '\0');
    chunk.append(tail);
}

QByteArray ListingChunk(const ChunkContents& contents, qint32 previous, qint32 next) {
    QByteArray chunk;
    ByteWriter out(chunk);
    out.bytes("PMGL");
    out.u32(quint32(kDirectoryChunkSize - kListingHeaderSize - contents.entries.size()));
    out.u32(0);
    out.u32(quint32(previous));
    out.u32(quint32(next));
    out.bytes(contents.entries);
    AppendQuickRefs(chunk, contents);
    return chunk;
}

QByteArray IndexChunk(const ChunkContents& contents) {
    QByteArray chunk;
    ByteWriter out(chunk);
    out.bytes("PMGI");
    out.u32(quint32(kDirectoryChunkSize - kIndexHeaderSize - contents.entries.size()));
    out.bytes(contents.entries);
    AppendQuickRefs(chunk, contents);
    return chunk;
}

QByteArray EncodeListingEntry(const DirectoryEntry& entry) {
    QByteArray bytes;
    ByteWriter out(bytes);
    out.encInt(quint64(entry.name.size()));
    out.bytes(entry.name);
    out.encInt(entry.section);
    out.encInt(entry.offset);
    out.encInt(entry.length);
    return bytes;
}

QByteArray EncodeIndexEntry(const QByteArray& name, quint32 chunk) {
    QByteArray bytes;
    ByteWriter out(bytes);
    out.encInt(quint64(name.size()));
    out.bytes(name);
    out.encInt(chunk);
    return bytes;
}

} // namespace

bool ComesBefore(const QByteArray& a, const QByteArray& b) {
    const qsizetype common = std::min(a.size(), b.size());
    for (qsizetype i = 0; i < common; ++i) {
        const uchar x = uchar(FoldAscii(a[i]));
        const uchar y = uchar(FoldAscii(b[i]));
        if (x != y) return x < y;
    }
    if (a.size() != b.size()) return a.size() < b.size();
    return a < b; // names that differ only in case keep one fixed order
}

DirectoryChunks MakeDirectoryChunks(const std::vector<DirectoryEntry>& entries) {
    DirectoryChunks result;
    std::vector<QByteArray> encoded, names;
    for (const DirectoryEntry& entry : entries) {
        encoded.push_back(EncodeListingEntry(entry));
        names.push_back(entry.name);
    }
    std::vector<ChunkContents> level = PackEntries(encoded, names, kListingHeaderSize);
    const qint32 listing = qint32(level.size());
    for (qint32 i = 0; i < listing; ++i)
        result.bytes.append(
            ListingChunk(level[size_t(i)], i > 0 ? i - 1 : -1, i + 1 < listing ? i + 1 : -1));
    result.listingChunks = quint32(listing);
    quint32 firstOfLevel = 0;
    quint32 chunkCount = quint32(listing);
    // Each index level names the first entry of every chunk of the level below.
    while (level.size() > 1) {
        encoded.clear();
        names.clear();
        for (size_t i = 0; i < level.size(); ++i) {
            encoded.push_back(EncodeIndexEntry(level[i].firstName, firstOfLevel + quint32(i)));
            names.push_back(level[i].firstName);
        }
        level = PackEntries(encoded, names, kIndexHeaderSize);
        firstOfLevel = chunkCount;
        for (const ChunkContents& contents : level)
            result.bytes.append(IndexChunk(contents));
        chunkCount += quint32(level.size());
        ++result.depth;
    }
    result.chunkCount = chunkCount;
    if (result.depth > 1) result.rootChunk = qint32(chunkCount - 1);
    return result;
}

} // namespace qmr::chm
