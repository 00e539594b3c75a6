#include "library/ProfileStrings.h"
#include "library/cInifile.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

using test::ReadBytes;
using test::TempFolder;

// The text with every "|" turned into a NUL, for the NUL-separated lists of ini files.
QString WithNuls(const char* text) {
    return QString::fromUtf8(text).replace(u'|', QChar(0));
}

QString read(const QString& section, const QString& key, const QString& path,
             const QString& fallback = u"dflt"_s) {
    return GetPrivateProfileString(section, key, fallback, 255, path);
}

TEST(ProfileStrings, WritesAndReadsCrLfLinesInTheLocalCodePageMatchingNamesIgnoringCase) {
    TempFolder folder;
    QString ini = folder.path() + u"Quillmere.ini"_s;
    for (const auto& [section, key, value] : {std::tuple{"Language", "Language", "2"},
                                              {"Content", "filename", "index.html"},
                                              {"language", "Other", "台"},
                                              {"LANGUAGE", "language", "3"}})
        ASSERT_TRUE(WritePrivateProfileString(QString::fromUtf8(section), QString::fromUtf8(key),
                                              QString::fromUtf8(value), ini));
    EXPECT_EQ(ReadBytes(ini), QByteArray("[Language]\r\nLanguage=3\r\nOther=\xA5\x78\r\n"
                                         "[Content]\r\nfilename=index.html\r\n"));
    EXPECT_EQ(read(u" language "_s, u"OTHER"_s, ini), u"台"_s);
    // A null value deletes the key, a null key the section; deleting what is not there
    // changes nothing; an unwritable file fails.
    ASSERT_TRUE(WritePrivateProfileString(u"language"_s, u"other"_s, QString(), ini));
    ASSERT_TRUE(WritePrivateProfileString(u"content"_s, QString(), QString(), ini));
    ASSERT_TRUE(WritePrivateProfileString(u"X"_s, QString(), QString(), ini));
    EXPECT_EQ(ReadBytes(ini), QByteArray("[Language]\r\nLanguage=3\r\n"));
    EXPECT_FALSE(
        WritePrivateProfileString(u"A"_s, u"k"_s, u"v"_s, folder.path() + u"no/such/dir.ini"_s));

    // Reads: trimmed values, quotes removed only in pairs, the first section of a name, the
    // default when missing; the buffer size cuts values and lists.
    ini = folder.write(
        u"a.ini"_s,
        "; a comment\n[Build]\n  LinkToSourceURL = 1  \nquoted=\"  two words \"\nhalf=\"x\n"
        "empty=\n[Build]\nLinkToSourceURL=9\n");
    EXPECT_EQ(read(u"Build"_s, u"LinkToSourceURL"_s, ini), u"1");
    EXPECT_EQ(read(u"Build"_s, u"quoted"_s, ini), u"  two words ");
    EXPECT_EQ(read(u"Build"_s, u"half"_s, ini), u"\"x");
    EXPECT_EQ(read(u"Build"_s, u"empty"_s, ini), QString());
    EXPECT_EQ(read(u"Build"_s, u"none"_s, ini, u"d  "_s), u"d");
    EXPECT_EQ(read(u"Build"_s, u"x"_s, folder.path() + "none.ini"), u"dflt");
    EXPECT_EQ(GetPrivateProfileString(u"Build"_s, u"quoted"_s, QString(), 4, ini), u"  t");
    EXPECT_EQ(GetPrivateProfileString(u"Build"_s, QString(), QString(), 8192, ini),
              WithNuls("LinkToSourceURL|quoted|half|empty|"));
}

TEST(cInifile, ReadsNeverFailWritesCutNulsAndNumbersFallBack) {
    TempFolder folder;
    cInifile ini;
    ini.Path = folder.path() + u"s.ini"_s;
    ini.Section = u"S"_s;
    ini.Key = u"K"_s;
    ini.Default = u"fallback"_s;
    EXPECT_EQ(ini.Value(), u"fallback"_s); // no file at all
    EXPECT_EQ(ini.LastReturnCode(), -1);
    ini.setValue(QString(300, u'x'));
    EXPECT_EQ(ini.Value(), QString(254, u'x'));
    ini.setValue(WithNuls("a|b||c"));
    EXPECT_EQ(ReadBytes(ini.Path), QByteArray("[S]\r\nK=abc\r\n"));
    ini.setValue(QString());
    EXPECT_EQ(ReadBytes(ini.Path), QByteArray("[S]\r\nK=\r\n")); // empty is written, not deleted

    folder.write(u"s.ini"_s, "[A]\r\nx=1\r\n[]\r\n[B]\r\n");
    QStringList names;
    int count = -1;
    ini.EnumerateAllSections(names, count);
    EXPECT_EQ(names, (QStringList{"A", "B"}));
    EXPECT_EQ(count, 2);
    QString value;
    EXPECT_TRUE(IniRead(ini.Path, u"a"_s, u"X"_s, value));
    EXPECT_EQ(value, u"1");
    EXPECT_TRUE(IniRead(ini.Path, u"B"_s, u"x"_s, value));
    EXPECT_EQ(value, QString()); // a fresh instance: empty Default

    // Numbers as the user's tools write them: halves to even, "&H" hexadecimal, else the default.
    const QStringList texts = {" 120 ",      "-5000", "2.5", "3.5",        "&H10",
                               "&HFFFFFFFF", "FAIL",  "",    "99999999999"};
    const QList<int> numbers = {120, -5000, 2, 4, 16, -1, 7, 7, 7};
    for (qsizetype i = 0; i < texts.size(); ++i)
        EXPECT_EQ(cInifile::CLngDefault(texts.at(i), 7), numbers.at(i))
            << texts.at(i).toStdString();
}

} // namespace
} // namespace qmr
