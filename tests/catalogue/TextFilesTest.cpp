#include "catalogue/TextFiles.h"

#include "support/TempFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

using test::ReadBytes;
using test::TempFolder;

TEST(TextFiles, Utf8ToLocalTurnsEachLineFeedIntoACarriageReturn) {
    TempFolder folder;
    const QString target = folder.path() + u"out.txt"_s;
    // 台 is A5 78 in Big5; the leading byte-order mark is not text.
    const QString lf = folder.write(u"lf.rdf"_s, "\xEF\xBB\xBF"
                                                 "a\n\xE5\x8F\xB0\n");
    ASSERT_TRUE(ConvertUtf8ToLocalText(lf, target));
    EXPECT_EQ(ReadBytes(target), QByteArray("a\r\xA5\x78\r\r\n"));
    // CR LF line ends give two carriage returns, which a line reader sees as an empty line.
    const QString crlf = folder.write(u"crlf.rdf"_s, "a\r\nb\r\n");
    ASSERT_TRUE(ConvertUtf8ToLocalText(crlf, target));
    EXPECT_EQ(ReadBytes(target), QByteArray("a\r\rb\r\r\r\n"));
    EXPECT_EQ(SplitLocalLines(QString::fromLatin1(ReadBytes(target))),
              (QStringList{"a", "", "b", "", ""}));
    QString error;
    EXPECT_FALSE(ConvertUtf8ToLocalText(folder.path() + u"none"_s, target, &error));
    EXPECT_TRUE(error.contains(u"none"_s));
}

TEST(TextFiles, LocalToUtf8JoinsLinesWithCrLfAfterAByteOrderMark) {
    TempFolder folder;
    const QString source = folder.write(u"temp.html"_s, "<p>\xA5\x78</p>\r\nx\ry\nz");
    const QString target = folder.path() + u"list.html"_s;
    folder.write(u"list.html"_s, "an older, longer list page to be replaced");
    ASSERT_TRUE(ConvertLocalTextToUtf8(source, target));
    // A lone line feed stays inside its line; the last line gets its CR LF too.
    EXPECT_EQ(ReadBytes(target), QByteArray("\xEF\xBB\xBF<p>\xE5\x8F\xB0</p>\r\nx\r\ny\nz\r\n"));
    const QString empty = folder.write(u"empty.html"_s, "");
    ASSERT_TRUE(ConvertLocalTextToUtf8(empty, target));
    EXPECT_EQ(ReadBytes(target), QByteArray("\xEF\xBB\xBF"));
    EXPECT_EQ(ReadUtf8File(target), QString());
}

TEST(TextFiles, ReadUtf8FileDropsTheByteOrderMarkAndMarksBadBytes) {
    TempFolder folder;
    bool ok = false;
    EXPECT_EQ(ReadUtf8File(folder.write(u"a"_s, "\xEF\xBB\xBF\xE5\x8F\xB0"), &ok), u"台"_s);
    EXPECT_TRUE(ok);
    EXPECT_EQ(ReadUtf8File(folder.write(u"b"_s, "x\xFFy")), u"x\uFFFDy"_s);
    EXPECT_EQ(ReadUtf8File(folder.path() + u"missing"_s, &ok), QString());
    EXPECT_FALSE(ok);
}

TEST(TextFiles, PathHelpersAndLengths) {
    EXPECT_GT(GetFileLength(QStringLiteral(QMR_SOURCE_DIR "/.clang-format")), 0);
    EXPECT_EQ(GetFileLength(u"/nonexistent/none"_s), -1);
    EXPECT_EQ(AddBackslash(u" /a "_s), u"/a/"_s);
    EXPECT_EQ(AddBackslash(u"/a/"_s), u"/a/"_s);
    EXPECT_EQ(AddBackslash(QString()), u"/"_s);
    EXPECT_EQ(RemoveBackslash(u"/a/b// "_s), u"/a/b/"_s);
    EXPECT_EQ(RemoveBackslash(u"/a"_s), u"/a"_s);
    EXPECT_EQ(GetLastFolderName(u"/a/b/"_s), u"b"_s);
    EXPECT_EQ(GetLastFolderName(u"/a/b"_s), u"b"_s);
    EXPECT_EQ(GetLastFolderName(u"plain"_s), u"plain"_s);
}

TEST(TextFiles, CopyFileIfExistsSaysWhenThereIsNothingToCopy) {
    TempFolder folder;
    const QString target = folder.write(u"t"_s, "old");
    EXPECT_EQ(CopyFileIfExists(folder.path() + u"none"_s, target), CopySourceMissing);
    EXPECT_EQ(ReadBytes(target), QByteArray("old"));
    EXPECT_EQ(CopyFileIfExists(folder.write(u"s"_s, "new"), target), CopyDone);
    EXPECT_EQ(ReadBytes(target), QByteArray("new"));
    EXPECT_EQ(CopyFileIfExists(folder.path() + u"s"_s, folder.path() + u"no/such/folder/t"_s),
              CopyFailed);
}

TEST(TextFiles, AtomicWriteKeepsTheOldFileWhenItCannotWrite) {
    TempFolder folder;
    const QString path = folder.write(u"Index.hhc"_s, "whole");
    ASSERT_TRUE(WriteFileAtomically(path, "new whole"));
    EXPECT_EQ(ReadBytes(path), QByteArray("new whole"));
    // A read-only file stays as it was, even though its folder could take a new one.
    QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadUser);
    QString error;
    EXPECT_FALSE(WriteFileAtomically(path, "replaced", &error));
    EXPECT_TRUE(error.contains(u"read-only"_s)) << error.toStdString();
    EXPECT_EQ(ReadBytes(path), QByteArray("new whole"));
    EXPECT_FALSE(WriteFileAtomically(folder.path() + u"none/x"_s, "x", &error));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"Index.hhc"});
}

} // namespace
} // namespace qmr
