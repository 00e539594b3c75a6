#include "chm/FullTextIndex.h"
#include "chm/ChainedBytes.h"
#include "chm/WordBytes.h"

#include <QRandomGenerator>
#include <QtEndian>

#include <gtest/gtest.h>

#include <vector>

using namespace qmr::chm;

namespace {

constexpr quint32 kEnglish = 0x409;

void Put32(QByteArray& bytes, int at, quint32 value) {
    qToLittleEndian(value, bytes.data() + at);
}

} // namespace

TEST(FullTextIndex, SmallestIndexByteForByte) {
    FullTextIndex index(kEnglish);
    index.addTopic(0, QString(), QStringLiteral("B a"));
    const QByteArray file = index.finish();

    // Header: every root is 0 (steps 0, counts 1, places 0 and 1 cost fewest bits so).
    QByteArray header(0x400, '\0');
    header[2] = 0x28;
    Put32(header, 0x04, 1);     // topics indexed
    Put32(header, 0x08, 0x402); // root: the only leaf, after the two blocks of codes
    Put32(header, 0x10, 1);     // leaves
    Put32(header, 0x14, 0x402);
    header[0x18] = 1; // depth
    Put32(header, 0x1A, 7);
    header[0x1E] = header[0x20] = header[0x22] = 2; // scales; roots 0
    Put32(header, 0x2E, 4096);
    Put32(header, 0x3E, 1);    // longest word
    Put32(header, 0x42, 2);    // words indexed
    Put32(header, 0x46, 2);    // different words
    Put32(header, 0x4A, 2);    // their length, 64 bits
    Put32(header, 0x52, 2);    // length of the different words
    Put32(header, 0x56, 4064); // free space of the last leaf
    Put32(header, 0x7A, 1252);
    Put32(header, 0x7E, 0x409);

    // "a": topic 0 -> 0, one place -> 10, at 1 -> 10: 01010 and padding. "b": at 0 -> 0100.
    const QByteArray codes = QByteArray::fromHex("5040");
    QByteArray leaf = QByteArray::fromHex("00000000"
                                          "0000"
                                          "e00f"
                                          "0200"
                                          "61"
                                          "00"
                                          "01"
                                          "00040000"
                                          "0000"
                                          "01"
                                          "0200"
                                          "62"
                                          "00"
                                          "01"
                                          "01040000"
                                          "0000"
                                          "01");
    leaf.append(QByteArray(4096 - leaf.size(), '\0'));
    EXPECT_EQ(file.size(), 0x402 + 4096);
    EXPECT_EQ(file.left(0x400).toHex(), header.toHex());
    EXPECT_EQ(file.mid(0x400, 2).toHex(), codes.toHex());
    EXPECT_EQ(file.mid(0x402).toHex(), leaf.toHex());
}

TEST(FullTextIndex, NothingToIndexGivesNoFile) {
    FullTextIndex index(kEnglish);
    index.addTopic(0, QString(), QStringLiteral(" ... "));
    EXPECT_TRUE(index.finish().isEmpty());
}

// Words' codes grow a few bytes at a time, in turn, over many pieces of shared blocks: each chain
// reads back as the bytes appended to it, across piece and block boundaries.
TEST(FullTextIndex, ChainedBytesKeepEveryStringWhole) {
    QRandomGenerator random(7);
    ChainedBytes store;
    std::vector<ChainedBytes::Chain> chains(300);
    std::vector<std::vector<quint8>> expected(chains.size());
    for (int round = 0; round < 20000; ++round) {
        const size_t which = random.bounded(int(chains.size()));
        std::vector<quint8> bytes(random.bounded(round % 100 == 0 ? 9000 : 40));
        for (quint8& byte : bytes)
            byte = quint8(random.bounded(256));
        store.append(chains[which], bytes.data(), bytes.size());
        expected[which].insert(expected[which].end(), bytes.begin(), bytes.end());
    }
    for (size_t i = 0; i < chains.size(); ++i) {
        ASSERT_EQ(chains[i].size, expected[i].size()) << i;
        ASSERT_EQ(ChainedBytes::bytesOf(chains[i]), expected[i]) << i;
    }
}

// Words are told apart by whole numbers loaded from their bytes: a word of any length differs
// from itself with any one byte changed, and equals a copy of itself elsewhere.
TEST(FullTextIndex, WordBytesTellEveryByteApart) {
    QRandomGenerator random(11);
    for (int length = 1; length <= 24; ++length) {
        for (int at = 0; at < length; ++at) {
            QByteArray word(length, '\0');
            for (char& c : word)
                c = char(random.bounded(1, 256));
            const QByteArray copy = word;
            QByteArray changed = word;
            changed[at] = char(changed[at] ^ (1 << random.bounded(8)));
            EXPECT_TRUE(SameBytes(word, copy)) << length;
            EXPECT_FALSE(SameBytes(word, changed)) << length << " at " << at;
            EXPECT_EQ(HeadOf(word) == HeadOf(changed), at >= 16) << length << " at " << at;
        }
    }
}
