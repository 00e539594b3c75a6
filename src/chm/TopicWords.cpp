#include "chm/TopicWords.h"

#include "chm/WordBytes.h"

#include <cstring>

namespace qmr::chm {

namespace {

void Pack(std::vector<char>& out, quint32 value) {
    while (value >= 0x80) {
        out.push_back(char(0x80 | (value & 0x7F)));
        value >>= 7;
    }
    out.push_back(char(value));
}

quint64 Mix(quint64 h) {
    h ^= h >> 33;
    h *= 0xFF51AFD7ED558CCDULL;
    h ^= h >> 33;
    return h;
}

} // namespace

// Run for every word of every page: its bytes are read eight at a time, the last ones without a
// call to copy them.
quint64 WordHash(QByteArrayView word, bool inTitle) {
    quint64 h = 0x9E3779B97F4A7C15ULL * quint64(word.size() * 2 + (inTitle ? 1 : 0) + 1);
    const char* p = word.data();
    qsizetype left = word.size();
    for (; left > 8; left -= 8, p += 8)
        h = Mix(h ^ LoadBytes64(p));
    return left == 0 ? Mix(h) : Mix(h ^ ShortBytes(p, left));
}

TopicWordCollector::TopicWordCollector(const QString& codePageName) : m_breaker(codePageName) {}

quint32 TopicWordCollector::localId(QByteArrayView word, bool inTitle) {
    if (m_slots.size() < 2 * m_topic.words.size() + 2) growSlots();
    const quint64 hash = WordHash(word, inTitle);
    const size_t mask = m_slots.size() - 1;
    for (size_t slot = size_t(hash) & mask;; slot = (slot + 1) & mask) {
        const quint32 known = m_slots[slot];
        if (known == 0) {
            TopicWords::Word entry;
            entry.textOffset = quint32(m_topic.texts.size());
            entry.textLength = quint8(word.size());
            entry.inTitle = inTitle;
            entry.hash = hash;
            m_topic.texts.insert(m_topic.texts.end(), word.begin(), word.end());
            m_topic.words.push_back(entry);
            m_slots[slot] = quint32(m_topic.words.size());
            return quint32(m_topic.words.size() - 1);
        }
        const TopicWords::Word& entry = m_topic.words[known - 1];
        if (entry.hash == hash && entry.inTitle == inTitle && entry.textLength == word.size() &&
            SameBytes(m_topic.text(entry), word))
            return known - 1;
    }
}

void TopicWordCollector::growSlots() {
    std::vector<quint32> grown(std::max<size_t>(256, m_slots.size() * 2), 0);
    const size_t mask = grown.size() - 1;
    for (quint32 id = 0; id < m_topic.words.size(); ++id) {
        size_t slot = size_t(m_topic.words[id].hash) & mask;
        while (grown[slot] != 0)
            slot = (slot + 1) & mask;
        grown[slot] = id + 1;
    }
    m_slots.swap(grown);
}

TopicWords TopicWordCollector::collect(QStringView title, QStringView text) {
    m_topic = TopicWords();
    std::fill(m_slots.begin(), m_slots.end(), 0);
    m_places.clear();
    auto inText = [&](QByteArrayView word, quint32 location) {
        m_places.push_back({localId(word, false), location});
        ++m_topic.wordsIndexed;
        m_topic.indexedLength += quint64(word.size());
        m_topic.longestWord = std::max(m_topic.longestWord, quint32(word.size()));
    };
    auto inTitle = [&](QByteArrayView word, quint32 location) {
        inText(word, location);
        m_places.push_back({localId(word, true), location});
    };
    const quint32 afterTitle = m_breaker.breakText(title, 0, inTitle);
    m_breaker.breakText(text, afterTitle, inText);

    // Places arrive in location order; grouped by word (a counting sort keeps that order),
    // each word's places are packed as a count and the steps between them.
    const size_t wordCount = m_topic.words.size();
    m_starts.assign(wordCount + 1, 0);
    for (const Place& place : m_places)
        ++m_starts[place.word + 1];
    for (size_t id = 0; id < wordCount; ++id)
        m_starts[id + 1] += m_starts[id];
    m_grouped.resize(m_places.size());
    for (const Place& place : m_places)
        m_grouped[m_starts[place.word]++] = place.location;
    for (quint32 id = 0, first = 0; id < wordCount; first = m_starts[id++]) {
        TopicWords::Word& word = m_topic.words[id];
        const quint32 count = m_starts[id] - first;
        word.packedOffset = quint32(m_topic.packed.size());
        Pack(m_topic.packed, count);
        m_topic.placeCounts.add(count);
        quint32 previous = 0;
        for (quint32 i = first; i < m_starts[id]; ++i) {
            Pack(m_topic.packed, m_grouped[i] - previous);
            m_topic.placeSteps.add(m_grouped[i] - previous);
            previous = m_grouped[i];
        }
        word.packedSize = quint32(m_topic.packed.size()) - word.packedOffset;
    }
    return std::move(m_topic);
}

} // namespace qmr::chm
