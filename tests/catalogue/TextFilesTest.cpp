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

TEST(TextFiles, RecodesBetweenUtf8AndTheLocalCodePage) {
    TempFolder folder;
    // The working copy's bytes are checked where the reader makes it; here, a missing source.
    const QString local = folder.path() + u"scrapbook.txt"_s;
    QString error;
    EXPECT_FALSE(ConvertUtf8ToLocalText(folder.path() + u"none"_s, local, &error));
    EXPECT_TRUE(error.contains(u"none"_s));

    // To UTF-8 after a byte-order mark: lines end in CR LF, the last one too; a lone line feed
    // stays inside its line.
    const QString source = folder.write(u"temp.html"_s, "<p>\xA5\x78</p>\r\nx\ry\nz");
    const QString target = folder.write(u"list.html"_s, "an older, longer page to be replaced");
    ASSERT_TRUE(ConvertLocalTextToUtf8(source, target));
    EXPECT_EQ(ReadBytes(target), QByteArray("\xEF\xBB\xBF<p>\xE5\x8F\xB0</p>\r\nx\r\ny\nz\r\n"));
    ASSERT_TRUE(ConvertLocalTextToUtf8(folder.write(u"empty.html"_s, ""), target));
    EXPECT_EQ(ReadBytes(target), QByteArray("\xEF\xBB\xBF"));
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
