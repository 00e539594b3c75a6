#include "library/ProfileStrings.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::ReadBytes;
using test::TempFolder;

QString read(const QString& section, const QString& key, const QString& path,
             const QString& fallback = QStringLiteral("dflt")) {
    return GetPrivateProfileString(section, key, fallback, 255, path);
}

TEST(ProfileStrings, FirstWriteCreatesFileAndSectionWithCrLfLines) {
    TempFolder folder;
    const QString ini = folder.path() + QStringLiteral("Quillmere.ini");
    ASSERT_TRUE(WritePrivateProfileString(QStringLiteral("Language"), QStringLiteral("Language"),
                                          QStringLiteral("2"), ini));
    EXPECT_EQ(ReadBytes(ini), QByteArray("[Language]\r\nLanguage=2\r\n"));
    ASSERT_TRUE(WritePrivateProfileString(QStringLiteral("Content"), QStringLiteral("filename"),
                                          QStringLiteral("index.html"), ini));
    ASSERT_TRUE(WritePrivateProfileString(QStringLiteral("language"), QStringLiteral("Other"),
                                          QStringLiteral("台"), ini));
    ASSERT_TRUE(WritePrivateProfileString(QStringLiteral("LANGUAGE"), QStringLiteral("language"),
                                          QStringLiteral("3"), ini));
    // Names match ignoring case; a new key joins its section; text is in the local code page.
    EXPECT_EQ(ReadBytes(ini), QByteArray("[Language]\r\nLanguage=3\r\nOther=\xA5\x78\r\n"
                                         "[Content]\r\nfilename=index.html\r\n"));
    EXPECT_EQ(read(QStringLiteral(" language "), QStringLiteral("OTHER"), ini),
              QStringLiteral("台"));
}

TEST(ProfileStrings, ReadsTrimmedUnquotedValuesAndDefaults) {
    TempFolder folder;
    const QString ini = folder.write(
        QStringLiteral("a.ini"),
        "; a comment\n[Build]\n  LinkToSourceURL = 1  \nquoted=\"  two words \"\nhalf=\"x\n"
        "empty=\n[Build]\nLinkToSourceURL=9\n");
    EXPECT_EQ(read(QStringLiteral("Build"), QStringLiteral("LinkToSourceURL"), ini),
              QStringLiteral("1"));
    EXPECT_EQ(read(QStringLiteral("Build"), QStringLiteral("quoted"), ini),
              QStringLiteral("  two words "));
    EXPECT_EQ(read(QStringLiteral("Build"), QStringLiteral("half"), ini), QStringLiteral("\"x"));
    EXPECT_EQ(read(QStringLiteral("Build"), QStringLiteral("empty"), ini), QString());
    EXPECT_EQ(read(QStringLiteral("Build"), QStringLiteral("none"), ini, QStringLiteral("d  ")),
              QStringLiteral("d"));
    EXPECT_EQ(read(QStringLiteral("Nope"), QStringLiteral("x"), ini), QStringLiteral("dflt"));
    EXPECT_EQ(read(QStringLiteral("Build"), QStringLiteral("x"),
                   folder.path() + QStringLiteral("none.ini")),
              QStringLiteral("dflt"));
    // The buffer size cuts values and lists.
    EXPECT_EQ(GetPrivateProfileString(QStringLiteral("Build"), QStringLiteral("quoted"), QString(),
                                      4, ini),
              QStringLiteral("  t"));
    EXPECT_EQ(GetPrivateProfileString(QStringLiteral("Build"), QString(), QString(), 8192, ini),
              test::WithNuls("LinkToSourceURL|quoted|half|empty|"));
    EXPECT_EQ(GetPrivateProfileString(QString(), QString(), QString(), 8192, ini),
              test::WithNuls("Build|Build|"));
}

TEST(ProfileStrings, DeletesKeysAndSectionsKeepingTheRest) {
    TempFolder folder;
    const QString ini = folder.write(
        QStringLiteral("a.ini"), "[A]\r\nk=1\r\nj=2\r\n\r\n[B]\r\nk=3\r\n; note\r\n[C]\r\nz=0\r\n");
    ASSERT_TRUE(
        WritePrivateProfileString(QStringLiteral("a"), QStringLiteral("K"), QString(), ini));
    ASSERT_TRUE(WritePrivateProfileString(QStringLiteral("b"), QString(), QString(), ini));
    ASSERT_TRUE(WritePrivateProfileString(QStringLiteral("A"), QStringLiteral("n"),
                                          QStringLiteral("4"), ini));
    EXPECT_EQ(ReadBytes(ini), QByteArray("[A]\r\nj=2\r\nn=4\r\n\r\n[C]\r\nz=0\r\n"));
    // Deleting what is not there changes nothing.
    ASSERT_TRUE(WritePrivateProfileString(QStringLiteral("X"), QString(), QString(), ini));
    ASSERT_TRUE(
        WritePrivateProfileString(QStringLiteral("A"), QStringLiteral("q"), QString(), ini));
    EXPECT_EQ(ReadBytes(ini), QByteArray("[A]\r\nj=2\r\nn=4\r\n\r\n[C]\r\nz=0\r\n"));
    ASSERT_TRUE(WritePrivateProfileSection(QStringLiteral("C"), test::WithNuls("p=1|q=2|"), ini));
    EXPECT_EQ(ReadBytes(ini), QByteArray("[A]\r\nj=2\r\nn=4\r\n\r\n[C]\r\np=1\r\nq=2\r\n"));
    EXPECT_FALSE(WritePrivateProfileString(QStringLiteral("A"), QStringLiteral("k"),
                                           QStringLiteral("v"),
                                           folder.path() + QStringLiteral("no/such/dir.ini")));
}

} // namespace
} // namespace qmr
