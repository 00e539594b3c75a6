#pragma once

#include <QByteArray>

#include <vector>

namespace qmr::chm {

// One file of the book as its directory lists it.
struct DirectoryEntry {
    QByteArray name;     // UTF-8: "/#SYSTEM", "/data/20240101000000/index.html", "::DataSpace/..."
    quint32 section = 0; // 0 uncompressed, 1 compressed
    quint64 offset = 0;  // within its section's uncompressed bytes
    quint64 length = 0;
};

// The order readers search the directory in: bytes compared with ASCII letters folded to lower
// case, a name before every longer name it begins.
bool ComesBefore(const QByteArray& a, const QByteArray& b);

inline constexpr quint32 kDirectoryChunkSize = 0x1000;
inline constexpr quint32 kQuickRefDensity = 2; // one quick reference every 1 + 2^2 entries

// The directory's chunks, one after another: listing chunks (PMGL) first, then the index
// chunks (PMGI) above them, level by level, the root last.
struct DirectoryChunks {
    QByteArray bytes;
    quint32 listingChunks = 0;
    quint32 chunkCount = 0;
    qint32 rootChunk = -1; // -1 without index chunks
    quint32 depth = 1;     // 1 without index chunks, 2 with one level of them, ...
};

// `entries` must be sorted with ComesBefore and hold no name longer than a chunk can take.
DirectoryChunks MakeDirectoryChunks(const std::vector<DirectoryEntry>& entries);

// The longest name MakeDirectoryChunks accepts, in bytes.
inline constexpr qsizetype kLongestEntryName = 2048;

} // namespace qmr::chm
