#pragma once

#include <QtGlobal>

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

namespace qmr::chm {

// Many byte strings that grow at their ends, each a chain of pieces cut from large blocks that
// all of them share. Where a heap block of its own for each string would be moved as it grows
// and freed one by one, a string here never moves and all are let go at once with the store:
// the full-text index keeps one for each of a book's hundreds of thousands of words.
class ChainedBytes {
  public:
    // One string: where its pieces are. Each piece starts with the address of the next; a
    // string's n-th piece takes PieceSize(n) bytes of a block.
    struct Chain {
        quint8* first = nullptr;
        quint8* last = nullptr;
        quint32 size = 0;     // bytes in the chain
        quint16 lastRoom = 0; // bytes still free in the last piece
        quint8 pieces = 0;    // counted up to 255, far beyond the size pieces stop at
    };

    ChainedBytes() = default;
    ChainedBytes(const ChainedBytes&) = delete;
    ChainedBytes& operator=(const ChainedBytes&) = delete;

    void append(Chain& chain, const quint8* bytes, size_t size) {
        while (size > 0) {
            if (chain.lastRoom == 0) addPiece(chain);
            const size_t take = std::min<size_t>(size, chain.lastRoom);
            std::memcpy(freeSpace(chain), bytes, take);
            chain.lastRoom = quint16(chain.lastRoom - take);
            chain.size += quint32(take);
            bytes += take;
            size -= take;
        }
    }

    // Calls `take(const quint8* bytes, size_t size)` for each piece of the chain, in order.
    template <typename Take> static void forEachPiece(const Chain& chain, Take take) {
        quint32 left = chain.size;
        quint8* piece = chain.first;
        for (int n = 0; left > 0; ++n) {
            const quint32 size = std::min<quint32>(left, quint32(PieceSize(n) - kLinkSize));
            take(piece + kLinkSize, size_t(size));
            left -= size;
            piece = next(piece);
        }
    }

    // The chain's bytes, one after another.
    static std::vector<quint8> bytesOf(const Chain& chain);

    // Where the chain's first piece is, and where the next byte appended goes (null when it
    // will start a piece): the places a prefetch asks for.
    static const quint8* start(const Chain& chain) { return chain.first; }
    static const quint8* appendPosition(const Chain& chain) {
        return chain.lastRoom == 0 ? nullptr : freeSpace(chain);
    }

  private:
    static constexpr size_t kLinkSize = sizeof(quint8*);
    static constexpr size_t kBlockSize = 1 << 20;

    // Pieces double from 32 bytes up to 4 KB: a word found once wastes little, a common one
    // takes few pieces.
    static size_t PieceSize(int n) { return size_t(32) << std::min(n, 7); }

    static quint8* freeSpace(const Chain& chain) {
        return chain.last + PieceSize(chain.pieces - 1) - chain.lastRoom;
    }

    static quint8* next(const quint8* piece) {
        quint8* link;
        std::memcpy(&link, piece, kLinkSize);
        return link;
    }

    void addPiece(Chain& chain);

    std::vector<std::unique_ptr<quint8[]>> m_blocks;
    size_t m_blockUsed = kBlockSize;
};

} // namespace qmr::chm
