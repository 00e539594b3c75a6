#include "chm/FullTextIndex.h"

#include "chm/BookLanguage.h"
#include "chm/ChainedBytes.h"
#include "chm/ScaleRootCode.h"
#include "chm/TopicWords.h"
#include "chm/WordBytes.h"
#include "chm/WordTree.h"

#include <QtEndian>

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace qmr::chm {

namespace {

constexpr qsizetype kHeaderSize = 0x400;

// Places seen before the roots of the location codes are chosen from them: enough for the
// numbers to show their usual sizes, so that a large book's codes can be written as its topics
// are added, each in its final form. A smaller index is written with the roots of all of it.
constexpr quint64 kPlacesBeforeRoots = 1 << 17;

// One entry of the index: a word, or the same word's places in titles, with its location codes.
// Until the roots of the codes are chosen, the places are packed as they arrive (per topic: the
// step from the topic before, how many places, and the steps between places, as 7-bit groups);
// from then on each topic's codes are written as the index stores them. An entry fills one
// cache line, and holds the first bytes of its word, so a lookup usually reads nothing else.
struct WordEntry {
    quint64 hash = 0;
    ChainedBytes::Chain places;
    quint32 lastTopic = 0;
    quint32 topicCount = 0;
    quint32 textOffset = 0;
    quint8 textLength = 0;
    bool inTitle = false;
    WordHead head;
};

static_assert(sizeof(WordEntry) <= 64);

void Pack(ChainedBytes& store, ChainedBytes::Chain& chain, quint32 value) {
    quint8 bytes[5];
    size_t size = 0;
    for (; value >= 0x80; value >>= 7)
        bytes[size++] = quint8(0x80 | (value & 0x7F));
    bytes[size++] = quint8(value);
    store.append(chain, bytes, size);
}

quint32 Unpack(const quint8* in, size_t& at) {
    quint32 value = 0;
    for (int shift = 0;; shift += 7) {
        const quint8 byte = in[at++];
        value |= quint32(byte & 0x7F) << shift;
        if (!(byte & 0x80)) return value;
    }
}

quint32 WindowsCodePageNumber(const QString& converterName) {
    return converterName.section(QLatin1Char('-'), 1).toUInt();
}

// The first eight bytes of a word as the search order compares them, as one number: most
// comparisons are settled by it. Words hold no zero bytes, so a shorter word comes first.
quint64 OrderKey(QByteArrayView text) {
    quint64 key = 0;
    for (qsizetype i = 0; i < 8; ++i) {
        const char c = i < text.size() ? text[i] : '\0';
        key = key << 8 | quint8(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    }
    return key;
}

// The words' ids in the order of the tree.
std::vector<quint32> SearchOrder(const std::vector<TreeWord>& words) {
    std::vector<std::pair<quint64, quint32>> keyed(words.size());
    for (quint32 id = 0; id < words.size(); ++id)
        keyed[id] = {OrderKey(words[id].text), id};
    std::sort(keyed.begin(), keyed.end(), [&](const auto& a, const auto& b) {
        return a.first != b.first ? a.first < b.first
                                  : SearchOrderLess(words[a.second], words[b.second]);
    });
    std::vector<quint32> order(words.size());
    for (size_t i = 0; i < keyed.size(); ++i)
        order[i] = keyed[i].second;
    return order;
}

struct WordRoots {
    int topic = 0;
    int count = 0;
    int location = 0;
};

// One topic's codes of a word: the step from the word's topic before, then its places as packed
// at `at` (how many, then the steps between them), which `at` moves past. The codes of each
// topic end on a byte boundary.
void WriteTopicCodes(ScaleRootWriter& writer, const WordRoots& roots, quint32 step,
                     const quint8* packed, size_t& at) {
    writer.write(step, roots.topic);
    const quint32 count = Unpack(packed, at);
    writer.write(count, roots.count);
    for (quint32 i = 0; i < count; ++i)
        writer.write(Unpack(packed, at), roots.location);
    writer.padToByte();
}

} // namespace

struct FullTextIndex::Data {
    explicit Data(quint32 language)
        : languageId(language), codePage(CodePageOfLanguage(language)) {}

    bool holds(const WordEntry& entry, QByteArrayView word, bool inTitle, quint64 hash) const;
    quint32 wordId(QByteArrayView word, bool inTitle, quint64 hash);
    void growSlots();
    void prefetchSlot(quint64 hash) const;
    void prefetchEntry(quint64 hash) const;
    QByteArrayView textOf(const WordEntry& entry) const {
        return QByteArrayView(wordText).sliced(entry.textOffset, entry.textLength);
    }
    void addPlaces(WordEntry& entry, quint32 step, QByteArrayView packed);
    void chooseRoots();
    void writeHeader(QByteArray& file, const WordTreeShape& tree) const;

    quint32 languageId;
    QString codePage;
    std::unique_ptr<TopicWordCollector> collector; // for topics given as text
    QByteArray wordText;                           // every entry's word, one after another
    std::vector<WordEntry> words;                  // by word id
    ChainedBytes placeChains;                      // every entry's places or codes
    // Hash table: the high half of a word's hash, and its id + 1 in the low half; 0 marks a free
    // slot. A slot whose hash differs is passed over without reading the entry.
    std::vector<quint64> slots;
    // The sizes of the numbers the codes hold, counted until the roots are chosen from them.
    BitLengthCounts topicSteps, codeCounts, locationSteps;
    std::optional<WordRoots> roots;
    std::vector<quint8> codes;         // one topic's codes of one word, as they are written
    std::vector<quint32> topicWordIds; // the ids of the words of the topic being added
    quint32 topicsIndexed = 0;
    quint32 lastTopic = 0;
    quint64 wordsIndexed = 0;
    quint64 indexedLength = 0;
    quint32 longestWord = 0;
};

bool FullTextIndex::Data::holds(const WordEntry& entry, QByteArrayView word, bool inTitle,
                                quint64 hash) const {
    if (entry.hash != hash || entry.inTitle != inTitle || entry.textLength != word.size())
        return false;
    return entry.head == HeadOf(word) &&
           (word.size() <= kWordHeadBytes ||
            textOf(entry).sliced(kWordHeadBytes) == word.sliced(kWordHeadBytes));
}

quint32 FullTextIndex::Data::wordId(QByteArrayView word, bool inTitle, quint64 hash) {
    if (slots.size() < 2 * words.size() + 2) growSlots();
    const size_t mask = slots.size() - 1;
    const quint64 high = hash & 0xFFFFFFFF00000000ULL;
    for (size_t slot = size_t(hash) & mask;; slot = (slot + 1) & mask) {
        const quint64 known = slots[slot];
        if (known == 0) {
            WordEntry entry;
            entry.hash = hash;
            entry.textOffset = quint32(wordText.size());
            entry.textLength = quint8(word.size());
            entry.inTitle = inTitle;
            entry.head = HeadOf(word);
            wordText.append(word);
            words.push_back(std::move(entry));
            slots[slot] = high | quint64(words.size());
            return quint32(words.size() - 1);
        }
        const quint32 id = quint32(known) - 1;
        if ((known & 0xFFFFFFFF00000000ULL) == high && holds(words[id], word, inTitle, hash))
            return id;
    }
}

void FullTextIndex::Data::growSlots() {
    std::vector<quint64> grown(std::max<size_t>(1024, slots.size() * 2), 0);
    const size_t mask = grown.size() - 1;
    for (quint32 id = 0; id < words.size(); ++id) {
        const quint64 hash = words[id].hash;
        size_t slot = size_t(hash) & mask;
        while (grown[slot] != 0)
            slot = (slot + 1) & mask;
        grown[slot] = (hash & 0xFFFFFFFF00000000ULL) | quint64(id + 1);
    }
    slots.swap(grown);
}

// A topic's words lie all over the table, each slot and entry a miss of the cache; so a topic's
// words are asked for ahead of their turn: first their slots, then, with the slot at hand,
// their entries.
void FullTextIndex::Data::prefetchSlot(quint64 hash) const {
    if (!slots.empty()) __builtin_prefetch(&slots[size_t(hash) & (slots.size() - 1)]);
}

void FullTextIndex::Data::prefetchEntry(quint64 hash) const {
    if (slots.empty()) return;
    const quint64 known = slots[size_t(hash) & (slots.size() - 1)];
    if (known != 0 && quint32(known) <= words.size())
        __builtin_prefetch(&words[quint32(known) - 1]);
}

FullTextIndex::FullTextIndex(quint32 languageId) : m_data(std::make_unique<Data>(languageId)) {}

FullTextIndex::~FullTextIndex() = default;

void FullTextIndex::addTopic(quint32 topicNumber, const QString& title, const QString& text) {
    Data& d = *m_data;
    if (!d.collector) d.collector = std::make_unique<TopicWordCollector>(d.codePage);
    addTopic(topicNumber, d.collector->collect(title, text));
}

void FullTextIndex::addTopic(quint32 topicNumber, const TopicWords& topic) {
    Data& d = *m_data;
    if (d.topicsIndexed > 0 && topicNumber <= d.lastTopic)
        return; // out of order: the location codes could not name it
    // The topic's words lie all over memory: they are looked up first, then their places added,
    // and each pass asks for what the words a few places on will need ahead of their turn.
    constexpr size_t kSlotsAhead = 16, kEntriesAhead = 8, kChainsAhead = 8;
    const size_t count = topic.words.size();
    d.topicWordIds.resize(count);
    for (size_t i = 0; i < count; ++i) {
        if (i + kSlotsAhead < count) d.prefetchSlot(topic.words[i + kSlotsAhead].hash);
        if (i + kEntriesAhead < count) d.prefetchEntry(topic.words[i + kEntriesAhead].hash);
        const TopicWords::Word& word = topic.words[i];
        d.topicWordIds[i] = d.wordId(topic.text(word), word.inTitle, word.hash);
    }
    for (size_t i = 0; i < count; ++i) {
        if (i + kChainsAhead < count)
            __builtin_prefetch(
                ChainedBytes::appendPosition(d.words[d.topicWordIds[i + kChainsAhead]].places), 1);
        WordEntry& entry = d.words[d.topicWordIds[i]];
        const quint32 step = entry.topicCount == 0 ? topicNumber : topicNumber - entry.lastTopic;
        d.addPlaces(entry, step, topic.places(topic.words[i]));
        entry.lastTopic = topicNumber;
        ++entry.topicCount;
    }
    if (!d.roots) {
        d.codeCounts.add(topic.placeCounts);
        d.locationSteps.add(topic.placeSteps);
    }
    d.wordsIndexed += topic.wordsIndexed;
    d.indexedLength += topic.indexedLength;
    d.longestWord = std::max(d.longestWord, topic.longestWord);
    d.lastTopic = topicNumber;
    ++d.topicsIndexed;
    if (!d.roots && d.wordsIndexed >= kPlacesBeforeRoots) d.chooseRoots();
}

// `packed` is the topic's packing of the word's places: how many, then the steps between them.
void FullTextIndex::Data::addPlaces(WordEntry& entry, quint32 step, QByteArrayView packed) {
    const auto* bytes = reinterpret_cast<const quint8*>(packed.data());
    if (!roots) {
        topicSteps.add(step);
        Pack(placeChains, entry.places, step);
        placeChains.append(entry.places, bytes, size_t(packed.size()));
        return;
    }
    codes.clear(); // keeps its room for the next word
    {
        ScaleRootWriter writer(codes);
        size_t at = 0;
        WriteTopicCodes(writer, *roots, step, bytes, at);
    }
    placeChains.append(entry.places, codes.data(), codes.size());
}

// Chooses the roots that write the numbers counted so far in the fewest bits, and writes the
// codes of the places packed so far with them.
void FullTextIndex::Data::chooseRoots() {
    roots = WordRoots{topicSteps.bestRoot(), codeCounts.bestRoot(), locationSteps.bestRoot()};
    for (WordEntry& entry : words) {
        const std::vector<quint8> packed = ChainedBytes::bytesOf(entry.places);
        codes.clear();
        {
            ScaleRootWriter writer(codes);
            for (size_t at = 0; at < packed.size();) {
                const quint32 step = Unpack(packed.data(), at);
                WriteTopicCodes(writer, *roots, step, packed.data(), at);
            }
        }
        // The packed pieces stay unused in the store: they are few, as roots are chosen early.
        entry.places = {};
        placeChains.append(entry.places, codes.data(), codes.size());
    }
}

void FullTextIndex::Data::writeHeader(QByteArray& file, const WordTreeShape& tree) const {
    char* header = file.data();
    auto put32 = [&](int offset, quint32 value) { qToLittleEndian(value, header + offset); };
    quint64 uniqueLength = 0;
    quint32 uniqueWords = 0;
    for (const WordEntry& entry : words) {
        if (!entry.inTitle) {
            uniqueLength += entry.textLength;
            ++uniqueWords;
        }
    }
    header[2] = 0x28;
    put32(0x04, topicsIndexed);
    put32(0x08, tree.rootOffset);
    put32(0x10, tree.leafCount);
    put32(0x14, tree.rootOffset);
    qToLittleEndian(tree.depth, header + 0x18);
    put32(0x1A, 7);
    header[0x1E] = 2;
    header[0x1F] = char(roots->topic);
    header[0x20] = 2;
    header[0x21] = char(roots->count);
    header[0x22] = 2;
    header[0x23] = char(roots->location);
    put32(0x2E, tree.nodeSize);
    put32(0x3E, longestWord);
    put32(0x42, quint32(std::min<quint64>(wordsIndexed, 0xFFFFFFFF)));
    put32(0x46, uniqueWords);
    qToLittleEndian(indexedLength, header + 0x4A);
    put32(0x52, quint32(std::min<quint64>(uniqueLength, 0xFFFFFFFF)));
    put32(0x56, tree.lastLeafFreeSpace);
    put32(0x5E, topicsIndexed - 1);
    put32(0x7A, WindowsCodePageNumber(codePage));
    put32(0x7E, languageId);
}

bool FullTextIndex::isEmpty() const {
    return m_data->words.empty();
}

void FullTextIndex::finish(const std::function<void(QByteArrayView)>& write) {
    Data& d = *m_data;
    if (d.words.empty()) return;
    if (!d.roots) d.chooseRoots();
    std::vector<TreeWord> tree;
    tree.reserve(d.words.size());
    for (const WordEntry& entry : d.words)
        tree.push_back({d.textOf(entry), entry.inTitle, entry.topicCount, 0, entry.places.size});
    const std::vector<quint32> order = SearchOrder(tree);
    std::vector<quint64>().swap(d.slots);

    std::vector<TreeWord> sorted;
    sorted.reserve(tree.size());
    quint32 offset = kHeaderSize;
    for (quint32 id : order) {
        sorted.push_back(tree[id]);
        sorted.back().codesOffset = offset;
        offset += sorted.back().codesSize;
    }
    std::vector<TreeWord>().swap(tree);
    QByteArray leaves;
    const WordTreeShape shape = AppendWordTree(leaves, offset, sorted);
    QByteArray header(kHeaderSize, '\0');
    d.writeHeader(header, shape);

    write(header);
    // The codes go out in search order, gathered into large pieces; the words lie all over
    // memory, so their entries, then their codes, are asked for a few words ahead.
    constexpr qsizetype kPieceSize = 1 << 18;
    QByteArray piece;
    piece.reserve(kPieceSize + (1 << 12));
    for (size_t i = 0; i < order.size(); ++i) {
        if (i + 16 < order.size()) __builtin_prefetch(&d.words[order[i + 16]]);
        if (i + 8 < order.size())
            __builtin_prefetch(ChainedBytes::start(d.words[order[i + 8]].places));
        ChainedBytes::forEachPiece(d.words[order[i]].places, [&](const quint8* bytes, size_t size) {
            piece.append(reinterpret_cast<const char*>(bytes), qsizetype(size));
            if (piece.size() >= kPieceSize) {
                write(piece);
                piece.clear();
            }
        });
    }
    write(piece);
    write(leaves);
}

QByteArray FullTextIndex::finish() {
    QByteArray file;
    finish([&file](QByteArrayView piece) { file += piece; });
    return file;
}

} // namespace qmr::chm
