#include "catalogue/TextFiles.h"

#include "support/TempFolder.h"

#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::ReadBytes;
using test::TempFolder;

TEST(TextFiles, Utf8ToLocalTurnsEachLineFeedIntoACarriageReturn) {
    TempFolder folder;
    const QString target = folder.path() + QStringLiteral("out.txt");
    // 台 is A5 78 in Big5; the leading byte-order mark is not text.
    const QString lf = folder.write(QStringLiteral("lf.rdf"), "\xEF\xBB\xBF"
                                                              "a\n\xE5\x8F\xB0\n");
    ASSERT_TRUE(ConvertUtf8ToLocalText(lf, target));
    EXPECT_EQ(ReadBytes(target), QByteArray("a\r\xA5\x78\r\r\n"));
    // CR LF line ends give two carriage returns, which a line reader sees as an empty line.
    const QString crlf = folder.write(QStringLiteral("crlf.rdf"), "a\r\nb\r\n");
    ASSERT_TRUE(ConvertUtf8ToLocalText(crlf, target));
    EXPECT_EQ(ReadBytes(target), QByteArray("a\r\rb\r\r\r\n"));
    EXPECT_EQ(SplitLocalLines(QString::fromLatin1(ReadBytes(target))),
              (QStringList{"a", "", "b", "", ""}));
    QString error;
    EXPECT_FALSE(ConvertUtf8ToLocalText(folder.path() + QStringLiteral("none"), target, &error));
    EXPECT_TRUE(error.contains(QStringLiteral("none")));
}

TEST(TextFiles, LocalToUtf8JoinsLinesWithCrLfAfterAByteOrderMark) {
    TempFolder folder;
    const QString source = folder.write(QStringLiteral("temp.html"), "<p>\xA5\x78</p>\r\nx\ry\nz");
    const QString target = folder.path() + QStringLiteral("list.html");
    folder.write(QStringLiteral("list.html"), "an older, longer list page to be replaced");
    ASSERT_TRUE(ConvertLocalTextToUtf8(source, target));
    // A lone line feed stays inside its line; the last line gets its CR LF too.
    EXPECT_EQ(ReadBytes(target), QByteArray("\xEF\xBB\xBF<p>\xE5\x8F\xB0</p>\r\nx\r\ny\nz\r\n"));
    const QString empty = folder.write(QStringLiteral("empty.html"), "");
    ASSERT_TRUE(ConvertLocalTextToUtf8(empty, target));
    EXPECT_EQ(ReadBytes(target), QByteArray("\xEF\xBB\xBF"));
    EXPECT_EQ(ReadUtf8File(target), QString());
}

TEST(TextFiles, ReadUtf8FileDropsTheByteOrderMarkAndMarksBadBytes) {
    TempFolder folder;
    bool ok = false;
    EXPECT_EQ(ReadUtf8File(folder.write(QStringLiteral("a"), "\xEF\xBB\xBF\xE5\x8F\xB0"), &ok),
              QStringLiteral("台"));
    EXPECT_TRUE(ok);
    EXPECT_EQ(ReadUtf8File(folder.write(QStringLiteral("b"), "x\xFFy")),
              QStringLiteral("x\uFFFDy"));
    EXPECT_EQ(ReadUtf8File(folder.path() + QStringLiteral("missing"), &ok), QString());
    EXPECT_FALSE(ok);
}

TEST(TextFiles, PathHelpers) {
    EXPECT_EQ(AddBackslash(QStringLiteral(" /a ")), QStringLiteral("/a/"));
    EXPECT_EQ(AddBackslash(QStringLiteral("/a/")), QStringLiteral("/a/"));
    EXPECT_EQ(AddBackslash(QString()), QStringLiteral("/"));
    EXPECT_EQ(RemoveBackslash(QStringLiteral("/a/b// ")), QStringLiteral("/a/b/"));
    EXPECT_EQ(RemoveBackslash(QStringLiteral("/a")), QStringLiteral("/a"));
    EXPECT_EQ(GetLastFolderName(QStringLiteral("/a/b/")), QStringLiteral("b"));
    EXPECT_EQ(GetLastFolderName(QStringLiteral("/a/b")), QStringLiteral("b"));
    EXPECT_EQ(GetLastFolderName(QStringLiteral("plain")), QStringLiteral("plain"));
}

TEST(TextFiles, CopiesFilesButNotTheSavedPage) {
    TempFolder source;
    TempFolder target;
    for (const char* name : {"index.html", "index.html.bak", "Index.html", "a_index.html", "b.jpg"})
        source.write(QString::fromLatin1(name), name);
    source.write(QStringLiteral("sub/c.jpg"), "sub");
    ASSERT_TRUE(CopyFolderFiles(source.path(), target.path()));
    EXPECT_EQ(
        QDir(target.path()).entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name),
        (QStringList{"Index.html", "a_index.html", "b.jpg"}));
    EXPECT_EQ(ReadBytes(target.path() + QStringLiteral("b.jpg")), QByteArray("b.jpg"));
    EXPECT_EQ(QFileInfo(target.path() + QStringLiteral("b.jpg")).lastModified(),
              QFileInfo(source.path() + QStringLiteral("b.jpg")).lastModified());
    EXPECT_EQ(GetFileLength(source.path() + QStringLiteral("b.jpg")), 5);
    EXPECT_EQ(GetFileLength(source.path() + QStringLiteral("none")), -1);
}

TEST(TextFiles, CopyFileIfExistsSaysWhenThereIsNothingToCopy) {
    TempFolder folder;
    const QString target = folder.write(QStringLiteral("t"), "old");
    EXPECT_EQ(CopyFileIfExists(folder.path() + QStringLiteral("none"), target), CopySourceMissing);
    EXPECT_EQ(ReadBytes(target), QByteArray("old"));
    EXPECT_EQ(CopyFileIfExists(folder.write(QStringLiteral("s"), "new"), target), CopyDone);
    EXPECT_EQ(ReadBytes(target), QByteArray("new"));
    EXPECT_EQ(CopyFileIfExists(folder.path() + QStringLiteral("s"),
                               folder.path() + QStringLiteral("no/such/folder/t")),
              CopyFailed);
}

TEST(TextFiles, AtomicWriteKeepsTheOldFileWhenItCannotWrite) {
    TempFolder folder;
    const QString path = folder.write(QStringLiteral("Index.hhc"), "whole");
    ASSERT_TRUE(WriteFileAtomically(path, "new whole"));
    EXPECT_EQ(ReadBytes(path), QByteArray("new whole"));
    QString error;
    EXPECT_FALSE(WriteFileAtomically(folder.path() + QStringLiteral("none/x"), "x", &error));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"Index.hhc"});
}

} // namespace
} // namespace qmr
