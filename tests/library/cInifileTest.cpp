#include "library/cInifile.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::ReadBytes;
using test::TempFolder;

cInifile iniAt(const QString& path, const QString& section, const QString& key) {
    cInifile ini;
    ini.Path = path;
    ini.Section = section;
    ini.Key = key;
    return ini;
}

TEST(cInifile, ReadsNeverFailAndCutAt254Characters) {
    TempFolder folder;
    const QString path = folder.path() + QStringLiteral("s.ini");
    cInifile ini = iniAt(path, QStringLiteral("S"), QStringLiteral("K"));
    EXPECT_EQ(ini.LastReturnCode(), 0);
    ini.Default = QStringLiteral("fallback");
    EXPECT_EQ(ini.Value(), QStringLiteral("fallback")); // no file at all
    EXPECT_EQ(ini.LastReturnCode(), -1);
    EXPECT_TRUE(ini.Success());

    const QString longValue = QString(300, QLatin1Char('x'));
    ini.setValue(longValue);
    EXPECT_TRUE(ini.Success());
    EXPECT_EQ(ini.Value(), longValue.left(254));

    ini.setValue(test::WithNuls("a|b||c"));
    EXPECT_EQ(ReadBytes(path), QByteArray("[S]\r\nK=abc\r\n"));
    ini.setValue(QString());
    EXPECT_EQ(ReadBytes(path), QByteArray("[S]\r\nK=\r\n")); // empty is written, not deleted
}

TEST(cInifile, DeletesAndEnumerates) {
    TempFolder folder;
    const QString path =
        folder.write(QStringLiteral("s.ini"), "[A]\r\nx=1\r\ny=2\r\n[B]\r\nz=3\r\n");
    cInifile ini = iniAt(path, QStringLiteral("A"), QStringLiteral("x"));
    QStringList names;
    int count = -1;
    ini.EnumerateCurrentSection(names, count);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(names, (QStringList{"x", "y"}));
    ini.EnumerateAllSections(names, count);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(names, (QStringList{"A", "B"}));
    EXPECT_EQ(ini.Sections(), test::WithNuls("A|B|"));

    ini.DeleteKey();
    EXPECT_TRUE(ini.Success());
    ini.Section = QStringLiteral("B");
    ini.DeleteSection();
    EXPECT_EQ(ReadBytes(path), QByteArray("[A]\r\ny=2\r\n"));
    ini.setINISection(test::WithNuls("k=v|"));
    EXPECT_EQ(ReadBytes(path), QByteArray("[A]\r\ny=2\r\n[B]\r\nk=v\r\n"));

    cInifile missing =
        iniAt(folder.path() + QStringLiteral("none.ini"), QStringLiteral("A"), QString());
    missing.EnumerateAllSections(names, count);
    EXPECT_EQ(count, 0);
    EXPECT_TRUE(names.isEmpty());
    missing.EnumerateCurrentSection(names, count);
    EXPECT_EQ(count, 0);
}

TEST(cInifile, CLngDefaultConvertsOrFallsBack) {
    EXPECT_EQ(cInifile::CLngDefault(QStringLiteral(" 120 "), 7), 120);
    EXPECT_EQ(cInifile::CLngDefault(QStringLiteral("-5000"), 7), -5000);
    EXPECT_EQ(cInifile::CLngDefault(QStringLiteral("2.5"), 7), 2); // half to even
    EXPECT_EQ(cInifile::CLngDefault(QStringLiteral("3.5"), 7), 4);
    EXPECT_EQ(cInifile::CLngDefault(QStringLiteral("&H10"), 7), 16);
    EXPECT_EQ(cInifile::CLngDefault(QStringLiteral("&HFFFFFFFF"), 7), -1);
    EXPECT_EQ(cInifile::CLngDefault(QStringLiteral("FAIL"), 7), 7);
    EXPECT_EQ(cInifile::CLngDefault(QString(), 7), 7);
    EXPECT_EQ(cInifile::CLngDefault(QStringLiteral("99999999999"), 7), 7);
}

TEST(cInifile, StripTrailingNulAndIniRead) {
    QString name = test::WithNuls("Book|");
    StripTrailingNul(name);
    EXPECT_EQ(name, QStringLiteral("Book"));
    StripTrailingNul(name);
    EXPECT_EQ(name, QStringLiteral("Book"));

    TempFolder folder;
    const QString path =
        folder.write(QStringLiteral("profiles.ini"),
                     "[Profile0]\r\nName=default\r\nPath=Profiles/abc.default\r\n");
    QString value;
    EXPECT_TRUE(IniRead(path, QStringLiteral("Profile0"), QStringLiteral("Path"), value));
    EXPECT_EQ(value, QStringLiteral("Profiles/abc.default"));
    EXPECT_TRUE(IniRead(path, QStringLiteral("Profile1"), QStringLiteral("Path"), value));
    EXPECT_EQ(value, QString()); // a fresh instance: empty Default
}

} // namespace
} // namespace qmr
