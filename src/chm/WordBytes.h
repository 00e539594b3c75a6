#pragma once

#include <QByteArrayView>

#include <cstring>

// A word's bytes read as whole numbers, a few at a time and without a call to copy them: the
// full-text index hashes and compares every word of every page.
namespace qmr::chm {

inline quint64 LoadBytes64(const char* p) {
    quint64 v;
    std::memcpy(&v, p, 8);
    return v;
}

inline quint32 LoadBytes32(const char* p) {
    quint32 v;
    std::memcpy(&v, p, 4);
    return v;
}

// The 1 to 8 bytes at `p` as one number, read in at most two loads; with their count, they are
// told apart.
inline quint64 ShortBytes(const char* p, qsizetype n) {
    if (n == 8) return LoadBytes64(p);
    if (n >= 4) return LoadBytes32(p) | quint64(LoadBytes32(p + n - 4)) << 32;
    return quint64(quint8(p[0])) | quint64(quint8(p[n / 2])) << 8 | quint64(quint8(p[n - 1])) << 16;
}

inline constexpr qsizetype kWordHeadBytes = 16;

// The first 16 bytes of a word (all of a shorter one) as two numbers: with the word's length,
// they tell words of up to 16 bytes apart.
struct WordHead {
    quint64 first = 0;
    quint64 second = 0;
    bool operator==(const WordHead&) const = default;
};

inline WordHead HeadOf(QByteArrayView word) {
    const char* p = word.data();
    const qsizetype n = word.size();
    if (n >= kWordHeadBytes) return {LoadBytes64(p), LoadBytes64(p + 8)};
    if (n > 8) return {LoadBytes64(p), LoadBytes64(p + n - 8)};
    return {n == 0 ? 0 : ShortBytes(p, n), 0};
}

// True when two words of the same length hold the same bytes.
inline bool SameBytes(QByteArrayView a, QByteArrayView b) {
    return a.size() <= kWordHeadBytes ? HeadOf(a) == HeadOf(b)
                                      : std::memcmp(a.data(), b.data(), size_t(a.size())) == 0;
}

} // namespace qmr::chm
