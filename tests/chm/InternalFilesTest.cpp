#include "chm/InternalFiles.h"
#include "chm/KeywordIndex.h"

#include "support/BookReaders.h"

#include <QTimeZone>
#include <QtEndian>

#include <gtest/gtest.h>

#include <map>

using namespace qmr::chm;

namespace {

SitemapEntry Entry(int level, std::initializer_list<std::pair<const char*, QString>> params) {
    SitemapEntry entry;
    entry.level = level;
    for (const auto& [name, value] : params)
        entry.params.append({QString::fromLatin1(name), value});
    return entry;
}

HelpProject TinyProject() {
    HelpProject project;
    project.compiledFile = QStringLiteral("/out/Tiny.chm");
    project.title = QStringLiteral("Tiny");
    project.defaultTopic = QStringLiteral("a.html");
    project.contentsFile = QStringLiteral("Index.hhc");
    project.indexFile = QStringLiteral("Index.hhk");
    project.defaultWindow = QStringLiteral("main");
    project.windows.append(
        {QStringLiteral("main"),
         {"Tiny", "Index.hhc", "Index.hhk", "a.html",  "a.html", "", "", "", "", "0x23520",
          "0",    "0x70387E",  "",          "0xB0000", "",       "", "", "", "", "0"}});
    return project;
}

BookContents TinyBook(const HelpProject& project) {
    BookContents book;
    book.project = &project;
    book.topics = {{QStringLiteral("/a.html"), QStringLiteral("Alpha")},
                   {QStringLiteral("/b/b.html"), QString()}};
    book.contents.entries = {Entry(1, {{"Name", "Alpha page"}, {"Local", "a.html"}}),
                             Entry(2, {{"Name", "Bee"}, {"Local", "b\\b.html#top"}})};
    book.index.entries = {Entry(1, {{"Name", "zeta"}, {"Local", "b/b.html"}}),
                          Entry(1, {{"Name", "Alpha"}, {"Local", "a.html"}, {"Local", "B/b.html"}}),
                          Entry(2, {{"Name", "sub"}, {"Local", "a.html"}, {"Local", "gone.html"}})};
    book.compiledAt = QDateTime(QDate(2024, 1, 1), QTime(0, 0), QTimeZone::utc());
    return book;
}

std::map<QString, QByteArray> ByPath(const QList<InternalFile>& files) {
    std::map<QString, QByteArray> byPath;
    for (const InternalFile& file : files) {
        EXPECT_EQ(file.compressed, file.path != QLatin1String("/#SYSTEM"))
            << file.path.toStdString();
        byPath[file.path] = file.bytes;
    }
    return byPath;
}

QByteArray Hex(const char* text) {
    return QByteArray::fromHex(QByteArray(text).replace(' ', ""));
}

} // namespace

// Every byte below was worked out by hand from the layouts the readers expect.
TEST(InternalFiles, TopicTablesAndStringsAreByteExact) {
    const HelpProject project = TinyProject();
    const auto files = ByPath(MakeInternalFiles(TinyBook(project)));
    // The untitled page takes its name in the table of contents; the window's texts follow.
    EXPECT_EQ(files.at("/#STRINGS"),
              QByteArray("\0Alpha\0Bee\0main\0Tiny\0Index.hhc\0Index.hhk\0a.html\0", 48));
    EXPECT_EQ(files.at("/#TOPICS"), Hex("00000000 01000000 00000000 0600 0000"
                                        "00000000 07000000 0c000000 0600 0000"));
    EXPECT_EQ(files.at("/#URLTBL"), Hex("00000000 00000000 01000000"
                                        "00000000 01000000 10000000"));
    EXPECT_EQ(files.at("/#URLSTR"), QByteArray("\0"
                                               "\0\0\0\0\0\0\0\0a.html\0"
                                               "\0\0\0\0\0\0\0\0b/b.html\0",
                                               33));
    EXPECT_EQ(files.count("/#ITBITS"), 0u) << "the writer adds it";
}

TEST(InternalFiles, KeywordIndexIsByteExact) {
    const HelpProject project = TinyProject();
    const auto files = ByPath(MakeInternalFiles(TinyBook(project)));
    const QByteArray btree = files.at("/$WWKeywordLinks/BTree");
    ASSERT_EQ(btree.size(), 0x4C + 2048);
    EXPECT_EQ(btree.left(0x4C).toHex(), Hex("3b29 0200 0008 58343400000000000000000000000000"
                                            "00000000 00000000 00000000 ffffffff 01000000 0100"
                                            "03000000 e4040000 09040000 01000000"
                                            "00000000 00000000 00000000 00000000")
                                            .toHex());
    // Sorted ignoring case, "sub" right after its parent and named after it; the page that is
    // not packed is left out.
    const QByteArray expected =
        Hex("7007 0300 ffffffff ffffffff"
            "41006c007000680061000000 0000 0000 00000000 00000000 02000000 00000000 01000000"
            "01000000 00000000"
            "41006c00700068006100 2c00 2000 73007500620000 00 0000 0100 07000000 00000000"
            "01000000 00000000 01000000 0d000000"
            "7a00650074006100 0000 0000 0000 00000000 00000000 01000000 01000000 01000000"
            "1a000000");
    EXPECT_EQ(btree.mid(0x4C, expected.size()).toHex(), expected.toHex());
    EXPECT_EQ(btree.mid(0x4C + expected.size()), QByteArray(2048 - expected.size(), '\0'));
    EXPECT_EQ(files.at("/$WWKeywordLinks/Map"), Hex("0100 00000000 00000000"));
    EXPECT_EQ(files.at("/$WWKeywordLinks/Data").size(), 3 * 13);
}

TEST(InternalFiles, SystemAndWindowsCarryTheProjectsOptions) {
    HelpProject project = TinyProject();
    project.languageId = 0x404;
    project.title = QStringLiteral("中文書");
    const auto files = ByPath(MakeInternalFiles(TinyBook(project)));
    const auto entries = qmr::test::SystemEntries(files.at("/#SYSTEM"));
    std::vector<int> codes;
    for (const auto& [code, data] : entries)
        codes.push_back(code);
    EXPECT_EQ(codes, (std::vector<int>{10, 9, 4, 2, 3, 6, 0, 1, 5, 7, 12, 13, 15}));
    std::map<int, QByteArray> data(entries.begin(), entries.end());
    EXPECT_EQ(data[10], Hex("8000 9265"));
    EXPECT_EQ(data[9], QByteArray("HHA Version 4.74.8702", 22));
    // Language, double-byte text, no full text, keyword links, no associative links, the
    // compile time as a Windows file time, two unused words.
    EXPECT_EQ(data[4], Hex("04040000 01000000 00000000 01000000 00000000 00c08976453cda01"
                           "00000000 00000000"));
    EXPECT_EQ(data[2], QByteArray("a.html", 7));
    EXPECT_EQ(data[3], QByteArray("\xa4\xa4\xa4\xe5\xae\xd1", 7)) << "the title in Big5";
    EXPECT_EQ(data[6], QByteArray("tiny", 5));
    EXPECT_EQ(data[0], QByteArray("Index.hhc", 10));
    EXPECT_EQ(data[1], QByteArray("Index.hhk", 10));
    EXPECT_EQ(data[5], QByteArray("main", 5));
    EXPECT_EQ(data[13], files.at("/#IDXHDR"));
    EXPECT_EQ(files.at("/#IDXHDR").left(16), Hex("5423534d 80009265 01000000 02000000"));

    const QByteArray windows = files.at("/#WINDOWS");
    ASSERT_EQ(windows.size(), 8 + 0xC4);
    const auto at = [&](int offset) {
        return qFromLittleEndian<quint32>(windows.constData() + 8 + offset);
    };
    const std::map<int, quint32> expected{
        {0x00, 0xC4},    {0x08, 11},       {0x0C, 0x126}, {0x10, 0x23520}, {0x14, 16},
        {0x18, 0xB0000}, {0x4C, 0},        {0x60, 21},    {0x64, 31},      {0x68, 41},
        {0x6C, 41},      {0x70, 0x70387E}, {0x9C, 0},     {0xA4, 0}};
    for (const auto& [offset, value] : expected)
        EXPECT_EQ(at(offset), value) << "window field at 0x" << std::hex << offset;
}

// Long keywords fill blocks fast: several levels of index blocks stand above the listing.
TEST(InternalFiles, ManyKeywordsGetIndexBlocksLevelByLevel) {
    QList<Keyword> keywords;
    for (int i = 0; i < 100; ++i)
        keywords.append({QStringLiteral("%1").arg(i, 3, 10, QLatin1Char('0')).repeated(67),
                         0,
                         0,
                         {quint32(i)},
                         {}});
    const QByteArray btree = MakeKeywordLinks(keywords, 0x409, 1252).btree;
    const auto u16 = [&](qsizetype at) {
        return qFromLittleEndian<quint16>(btree.constData() + at);
    };
    const auto u32 = [&](qsizetype at) {
        return qFromLittleEndian<quint32>(btree.constData() + at);
    };
    const quint32 blocks = u32(0x26);
    ASSERT_EQ(btree.size(), 0x4C + 2048 * qsizetype(blocks));
    EXPECT_EQ(u32(0x1E), blocks - 1) << "the root is the last block";
    EXPECT_EQ(u16(0x2A), 4) << "listing and three index levels";
    // Reading the listing blocks one after another, as viewers do, gives every keyword in order.
    int read = 0;
    for (quint32 block = 0; block != 0xFFFFFFFF; block = u32(0x4C + 2048 * block + 8)) {
        const qsizetype start = 0x4C + 2048 * block;
        for (int entry = 0; entry < u16(start + 2); ++entry, ++read) {
            const QString number = QStringLiteral("%1").arg(read, 3, 10, QLatin1Char('0'));
            EXPECT_EQ(btree.mid(start + 12 + entry * 432, 6),
                      QByteArray(reinterpret_cast<const char*>(number.utf16()), 6))
                << "keyword " << read;
        }
        ASSERT_LE(read, 100);
    }
    EXPECT_EQ(read, 100);
    // Every index entry names the first keyword of the block it points to.
    for (quint32 block = u32(0x1A) + 1; block < blocks; ++block) {
        const qsizetype start = 0x4C + 2048 * block;
        for (int entry = 0; entry < u16(start + 2); ++entry) {
            const qsizetype at = start + 12 + entry * 424;
            const quint32 child = u32(at + 420);
            ASSERT_LT(child, block);
            EXPECT_EQ(btree.mid(at, 6), btree.mid(0x4C + 2048 * child + 12, 6))
                << "block " << block << " entry " << entry;
        }
    }
}
