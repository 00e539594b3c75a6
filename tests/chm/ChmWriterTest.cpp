#include "chm/ChmWriter.h"
#include "chm/DataSpace.h"

#include "chm/LzxSamples.h"
#include "support/BookReaders.h"
#include "support/TempFolder.h"

#include <QDir>
#include <QFile>
#include <QtEndian>

#include <gtest/gtest.h>

#include <map>

using namespace qmr;
using namespace qmr::chm;

namespace {

using Files = std::map<QString, QByteArray>;

QByteArray Noise(qsizetype size, quint32 seed) {
    test::SampleRandom random(seed);
    return test::SampleNoise(random, size);
}

bool WriteBook(const QString& path, const Files& files, int jobs = 2) {
    ChmWriter writer(path, {0x404, {}, jobs, {}});
    for (const auto& [name, bytes] : files)
        if (!writer.addFile(name, bytes)) return false;
    return writer.finish();
}

// Every reader extracts every file with its exact bytes.
void ExpectReadersAgree(const QString& book, const Files& files) {
    for (const char* program : {"enum_chmLib", "7z", "mspack_extract"})
        if (!test::ProgramAvailable(QString::fromLatin1(program)))
            GTEST_SKIP() << program << " is not installed";
    ASSERT_TRUE(test::SevenZipTests(book));
    const test::TempFolder out;
    struct Reader {
        const char* name;
        bool (*extract)(const QString&, const QString&);
    };
    for (const Reader& reader :
         {Reader{"chmlib", test::ExtractWithChmLib}, Reader{"7z", test::ExtractWithSevenZip},
          Reader{"mspack", test::ExtractWithMspack}}) {
        const QString folder = out.path() + QLatin1String(reader.name);
        ASSERT_TRUE(reader.extract(book, folder)) << reader.name;
        for (const auto& [name, bytes] : files) {
            QFile file(folder + name);
            ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << reader.name << " " << name.toStdString();
            EXPECT_TRUE(file.readAll() == bytes) << reader.name << " " << name.toStdString();
        }
    }
    const QStringList listed = test::ChmLibListing(book);
    for (const auto& [name, bytes] : files)
        EXPECT_TRUE(listed.contains(name)) << name.toStdString();
}

quint32 DirectoryField(const QString& book, int offset) {
    return qFromLittleEndian<quint32>(test::ReadBytes(book).constData() + 0x78 + offset);
}

} // namespace

TEST(ChmWriter, OneFileReadsBackEverywhere) {
    const test::TempFolder folder;
    const QString book = folder.path() + QStringLiteral("one.chm");
    const Files files{{"/index.html", "<html><title>One</title>Hello</html>"}};
    ASSERT_TRUE(WriteBook(book, files));
    ExpectReadersAgree(book, files);
    EXPECT_EQ(DirectoryField(book, 0x18), 1u) << "no index chunk for one listing chunk";
}

TEST(ChmWriter, ThousandsOfFilesNeedIndexChunks) {
    const test::TempFolder folder;
    const QString book = folder.path() + QStringLiteral("many.chm");
    Files files;
    for (int i = 0; i < 6000; ++i)
        files[QStringLiteral("/data/2024%1/%2.html").arg(i % 97, 10, 10, QLatin1Char('0')).arg(i)] =
            QByteArray::number(i).repeated(1 + i % 5);
    ASSERT_TRUE(WriteBook(book, files));
    ExpectReadersAgree(book, files);
    EXPECT_GE(DirectoryField(book, 0x2C), 30u) << "chunks";
    EXPECT_GE(DirectoryField(book, 0x18), 2u) << "depth";
}

TEST(ChmWriter, ChineseNamesEmptyFilesAndLongContent) {
    const test::TempFolder folder;
    const QString book = folder.path() + QStringLiteral("mixed.chm");
    const Files files{
        {QStringLiteral("/data/中文資料/首頁.html"), "<title>\xad\xba\xad\xb6</title>"},
        {QStringLiteral("/empty.txt"), QByteArray()},
        {QStringLiteral("/big/noise.bin"), Noise(7 * kLzxFrameSize + 123, 1)},
        {QStringLiteral("/big/odd.bin"), Noise(3 * kLzxFrameSize - 1, 2)},
        {QStringLiteral("/z/after-empty.txt"), QByteArray()},
        {QStringLiteral("/z/zeros.bin"), QByteArray(5 * kLzxFrameSize, '\0')},
    };
    for (int jobs : {1, 3}) {
        ASSERT_TRUE(WriteBook(book, files, jobs)) << jobs;
        ExpectReadersAgree(book, files);
    }
    EXPECT_TRUE(test::SevenZipListing(book).contains(QStringLiteral("/data/中文資料/首頁.html")));
}

TEST(ChmWriter, FailuresLeaveTheOldBookAndNameTheFile) {
    const test::TempFolder folder;
    const QString book = folder.write(QStringLiteral("old.chm"), "old book");
    {
        ChmWriter twice(book);
        EXPECT_TRUE(twice.addFile(QStringLiteral("/a.html"), "a"));
        EXPECT_FALSE(twice.addFile(QStringLiteral("/a.html"), "again"));
        EXPECT_FALSE(twice.finish());
        EXPECT_TRUE(twice.errorString().contains(QLatin1String("/a.html")));

        ChmWriter missing(book);
        EXPECT_FALSE(
            missing.addFileFromDisk(QStringLiteral("/b.html"), folder.path() + "none.html"));
        EXPECT_TRUE(missing.errorString().contains(QLatin1String("none.html")));
        EXPECT_FALSE(missing.finish());
        EXPECT_EQ(test::ReadBytes(book), QByteArray("old book"));

        const QString nowhere = folder.path() + QStringLiteral("no/such/folder/book.chm");
        ChmWriter noFolder(nowhere);
        EXPECT_FALSE(noFolder.addFile(QStringLiteral("/a.html"), "a"));
        EXPECT_FALSE(noFolder.finish());
        EXPECT_TRUE(noFolder.errorString().contains(nowhere));

        ChmWriter badSettings(book, {0x409, {15, 3}, 1, {}});
        EXPECT_FALSE(badSettings.finish());
    }
    EXPECT_EQ(test::ReadBytes(book), QByteArray("old book"));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"old.chm"});
}

TEST(ChmDataSpace, FilesAreByteExact) {
    EXPECT_EQ(MakeNameList().toHex(' '),
              "1e 00 02 00 0c 00 55 00 6e 00 63 00 6f 00 6d 00 70 00 72 00 65 00 73 00 73 00 65 "
              "00 64 00 00 00 0c 00 4d 00 53 00 43 00 6f 00 6d 00 70 00 72 00 65 00 73 00 73 00 "
              "65 00 64 00 00 00");
    EXPECT_EQ(
        MakeControlData({16, 2}).toHex(' '),
        "06 00 00 00 4c 5a 58 43 02 00 00 00 02 00 00 00 02 00 00 00 01 00 00 00 00 00 00 00");
    EXPECT_EQ(
        MakeControlData({18, 8}).toHex(' '),
        "06 00 00 00 4c 5a 58 43 02 00 00 00 08 00 00 00 08 00 00 00 04 00 00 00 00 00 00 00");
    // 0x8001 bytes fill two frames; a third frame of padding follows; the end closes the table.
    EXPECT_EQ(MakeResetTable(0x8001, 0x123, {0, 0x99, 0x110}).toHex(' '),
              "02 00 00 00 03 00 00 00 08 00 00 00 28 00 00 00 01 80 00 00 00 00 00 00 23 01 00 00 "
              "00 00 00 00 00 80 00 00 00 00 00 00 00 00 00 00 00 00 00 00 99 00 00 00 00 00 00 00 "
              "23 01 00 00 00 00 00 00");
    EXPECT_EQ(MakeTransformList().size(), 76);
    EXPECT_TRUE(ReadersAccept({16, 2}));
    EXPECT_TRUE(ReadersAccept({21, 64}));
    EXPECT_FALSE(ReadersAccept({15, 2}));
    EXPECT_FALSE(ReadersAccept({17, 1}));
    EXPECT_FALSE(ReadersAccept({16, 3}));
}
