#include "chm/ChainedBytes.h"

namespace qmr::chm {

void ChainedBytes::addPiece(Chain& chain) {
    const size_t size = PieceSize(chain.pieces);
    if (m_blockUsed + size > kBlockSize) {
        m_blocks.push_back(std::make_unique_for_overwrite<quint8[]>(kBlockSize));
        m_blockUsed = 0;
    }
    quint8* piece = m_blocks.back().get() + m_blockUsed;
    m_blockUsed += size;
    quint8* const none = nullptr;
    std::memcpy(piece, &none, kLinkSize);
    if (chain.last)
        std::memcpy(chain.last, &piece, kLinkSize);
    else
        chain.first = piece;
    chain.last = piece;
    chain.lastRoom = quint16(size - kLinkSize);
    if (chain.pieces < 255) ++chain.pieces; // pieces stop growing long before
}

std::vector<quint8> ChainedBytes::bytesOf(const Chain& chain) {
    std::vector<quint8> bytes;
    bytes.reserve(chain.size);
    forEachPiece(chain, [&bytes](const quint8* piece, size_t size) {
        bytes.insert(bytes.end(), piece, piece + size);
    });
    return bytes;
}

} // namespace qmr::chm
