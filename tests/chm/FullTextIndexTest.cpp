#include "chm/FullTextIndex.h"

#include "chm/SearchReader.h"
#include "platform/CodePage.h"

#include <QtEndian>

#include <gtest/gtest.h>

using namespace qmr::chm;
using qmr::test::SearchReader;

namespace {

constexpr quint32 kEnglish = 0x409, kChineseTraditional = 0x404, kChineseSimplified = 0x804;

std::vector<quint32> Topics(const SearchReader::Hits& hits) {
    std::vector<quint32> topics;
    for (const auto& hit : hits)
        topics.push_back(hit.first);
    return topics;
}

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

TEST(FullTextIndex, ReadersFindWordsOfTextAndTitles) {
    FullTextIndex index(kEnglish);
    index.addTopic(0, QStringLiteral("Apple pie"),
                   QStringLiteral("Recipe for apple pie. Apples and pears."));
    index.addTopic(1, QStringLiteral("Pears"), QStringLiteral("The pear tree"));
    for (quint32 topic = 2; topic < 40; ++topic)
        index.addTopic(topic, QStringLiteral("Page %1").arg(topic),
                       QStringLiteral("common words on every page"));
    index.addTopic(40, QStringLiteral("Zebra crossing"), QStringLiteral("nothing else"));
    index.addTopic(40, QStringLiteral("Again"), QStringLiteral("ignored: not after 40"));
    const SearchReader reader(index.finish());

    const auto apple = reader.search("apple", true);
    EXPECT_EQ(Topics(apple), (std::vector<quint32>{0}));
    EXPECT_EQ(apple.at(0), (std::vector<quint32>{0, 4})); // title word 0, text word 2 + 2
    EXPECT_EQ(Topics(reader.search("APPLE", true)), (std::vector<quint32>{0}));
    EXPECT_EQ(Topics(reader.search("pear", false)), (std::vector<quint32>{0, 1}));
    EXPECT_EQ(Topics(reader.search("pear", true)), (std::vector<quint32>{1}));
    EXPECT_EQ(Topics(reader.search("common", true)).size(), 38u);
    EXPECT_TRUE(reader.search("missing", true).empty());
    EXPECT_TRUE(reader.search("again", false).empty());
    EXPECT_TRUE(reader.search("zzz", false).empty());

    // A word only in a title is found by either search; "titles only" finds title words only.
    EXPECT_EQ(Topics(reader.search("zebra", true)), (std::vector<quint32>{40}));
    EXPECT_EQ(Topics(reader.search("zebra", true, true)), (std::vector<quint32>{40}));
    EXPECT_EQ(Topics(reader.search("pie", true, true)), (std::vector<quint32>{0}));
    EXPECT_TRUE(reader.search("recipe", true, true).empty());
    EXPECT_EQ(Topics(reader.search("page", true, true)).size(), 38u);
}

TEST(FullTextIndex, ChineseWordsAreFoundInTheBooksCodePage) {
    const QString text = QStringLiteral("\u6211\u5011\u5728\u5317\u4EAC\u5927\u5B78\u5B78\u4E2D"
                                        "\u6587\u3002Hello");
    for (quint32 language : {kChineseTraditional, kChineseSimplified}) {
        SCOPED_TRACE(language);
        const qmr::CodePage codePage(language == kChineseTraditional ? QStringLiteral("Big5")
                                                                     : QStringLiteral("GB2312"));
        FullTextIndex index(language);
        index.addTopic(0, QStringLiteral("\u9996\u9801"), QStringLiteral("\u5176\u4ED6"));
        index.addTopic(1, QString(), text);
        index.addTopic(2, QString(), QStringLiteral("\u4E2D\u570B"));
        const SearchReader reader(index.finish());
        auto find = [&](const QString& word, bool whole) {
            return Topics(reader.search(codePage.encode(word), whole));
        };
        // A word of four characters is found by its pieces of two.
        EXPECT_EQ(find(QStringLiteral("\u5317\u4EAC"), false), (std::vector<quint32>{1}));
        EXPECT_EQ(find(QStringLiteral("\u5927\u5B78"), true), (std::vector<quint32>{1}));
        EXPECT_TRUE(find(QStringLiteral("\u5317\u4EAC\u5927\u5B78"), false).empty());
        EXPECT_EQ(find(QStringLiteral("\u4E2D\u6587"), false), (std::vector<quint32>{1}));
        EXPECT_EQ(find(QStringLiteral("\u4E2D"), true), (std::vector<quint32>{1, 2}));
        EXPECT_EQ(find(QStringLiteral("\u4E2D\u6587"), true), (std::vector<quint32>{1}));
        EXPECT_EQ(find(QStringLiteral("hello"), true), (std::vector<quint32>{1}));
        EXPECT_EQ(find(QStringLiteral("\u9996\u9801"), false), (std::vector<quint32>{0}));
        EXPECT_TRUE(find(QStringLiteral("\u65E5\u672C"), false).empty());
        EXPECT_EQ(reader.u32(0x7E), language);
        EXPECT_EQ(reader.u32(0x7A), language == kChineseTraditional ? 950u : 936u);
    }
}

TEST(FullTextIndex, ManyWordsKeepATreeTheReadersCanSearch) {
    FullTextIndex index(kEnglish);
    QString text;
    for (quint32 topic = 0; topic < 200; ++topic) {
        text.clear();
        for (int i = 0; i < 1000; ++i)
            text += QStringLiteral("w%1x%2 shared ").arg(topic).arg(i);
        index.addTopic(topic * 3, QString(), text);
    }
    const QByteArray file = index.finish();
    const SearchReader reader(file);
    EXPECT_EQ(reader.u16(0x18), 2);     // one index node above the leaves
    EXPECT_GT(reader.u32(0x2E), 4096u); // so the nodes grew
    EXPECT_GT(reader.u32(0x10), 1u);
    for (quint32 topic = 0; topic < 200; topic += 7) {
        for (int i = 0; i < 1000; i += 97) {
            const QByteArray word = QStringLiteral("w%1x%2").arg(topic).arg(i).toLatin1();
            const auto hits = reader.search(word, true);
            ASSERT_EQ(Topics(hits), (std::vector<quint32>{topic * 3})) << word.constData();
            EXPECT_EQ(hits.at(topic * 3), (std::vector<quint32>{quint32(2 * i)}));
        }
    }
    const auto shared = reader.search("shared", true);
    ASSERT_EQ(shared.size(), 200u);
    EXPECT_EQ(shared.at(597).size(), 1000u);
    EXPECT_EQ(Topics(reader.search("w199x39", false)).size(), 1u);
    EXPECT_EQ(reader.search("w19", false).size(), 11u); // w19x.. and w190x.. to w199x..
}

TEST(FullTextIndex, NothingToIndexGivesNoFile) {
    FullTextIndex index(kEnglish);
    index.addTopic(0, QString(), QStringLiteral(" ... "));
    EXPECT_TRUE(index.finish().isEmpty());
}
