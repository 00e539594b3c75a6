#include "ebook/ForumFile.h"

#include "support/TempFolder.h"

#include <QFileInfo>

#include <gtest/gtest.h>

namespace qmr {
namespace {

TEST(ForumFile, LinesLinkWebAddressesAndIndentTwoBlanksALevel) {
    EXPECT_EQ(ForumLine(0, QStringLiteral("T"), QStringLiteral("http://a/")),
              u"[url=http://a/]T[/url]");
    EXPECT_EQ(ForumLine(3, QStringLiteral("T"), QStringLiteral("data/1/index.html")),
              u"      [url=data/1/index.html]T[/url]");
    // A local file or no address at all: the bare title, not indented.
    EXPECT_EQ(ForumLine(3, QStringLiteral("T"), QStringLiteral("file:///c:/x.pdf")), u"T");
    EXPECT_EQ(ForumLine(2, QStringLiteral("T"), QStringLiteral("FiLe:x")), u"T");
    EXPECT_EQ(ForumLine(2, QStringLiteral("T"), QStringLiteral("   ")), u"T");
    EXPECT_EQ(ForumLine(-1, QStringLiteral("T"), QStringLiteral("u")), u"[url=u]T[/url]");
}

TEST(ForumFile, WritesItsLinesOnlyWhileOpen) {
    test::TempFolder folder;
    const QString path = folder.path() + QStringLiteral("forum.txt");
    ForumFile forum;
    forum.writeLine(0, QStringLiteral("before"), QStringLiteral("u"));
    EXPECT_TRUE(forum.close());
    EXPECT_FALSE(QFileInfo::exists(path));

    forum.open(path);
    forum.writeLine(1, QStringLiteral("\u53F0\u7063"), QStringLiteral("u"));
    forum.writeLine(0, QStringLiteral("bare"), QString());
    ASSERT_TRUE(forum.close());
    // Big5 in the tests' local code page.
    EXPECT_EQ(test::ReadBytes(path), QByteArray("  [url=u]\xA5\x78\xC6\x57[/url]\r\nbare\r\n"));
}

} // namespace
} // namespace qmr
