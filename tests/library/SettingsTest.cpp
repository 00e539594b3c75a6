#include "library/Settings.h"
#include "library/ProfileStrings.h"

#include "library/cInifile.h"
#include "platform/LocalCodePage.h"
#include "support/RecordingHost.h"
#include "support/TempFolder.h"

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

using test::ReadBytes;
using test::RecordingHost;
using test::TempFolder;

// A trimmed name in the local code page, and "1.0" read as a number like any other setting; a
// missing MakeChmFile is on, and reads write nothing. (The list's tests show the Default that the
// shared settings object carries over to a missing name.) Saves write the keys in the page's
// order with the home page the last load read; a read-only file stays as it was, and the user is
// told each time a save fails.
TEST(Settings, PropertyPageLoadsAndSavesTheOptions) {
    TempFolder withName;
    TempFolder without;
    withName.write(
        u"ScrapbookPrj.ini"_s,
        "[Scrapbook]\r\nScrapbookName=  \xA5\x78 Notes  \r\n[Build]\r\nLinkToSourceURL=1\r\n"
        "[Content]\r\nMakeChmFile=1.0\r\nHomePageFilename=start.html\r\n");
    RecordingHost host;
    AppSettings settings(host);
    const QString ini = ScrapbookIniPath(without.path());
    EXPECT_TRUE(settings.load_ScrapbookName(ini).makeChmFile);
    const ScrapbookProperties properties =
        settings.load_ScrapbookName(ScrapbookIniPath(withName.path()));
    EXPECT_EQ(properties.name, u"台 Notes"_s);
    EXPECT_TRUE(properties.linkToSourceURL);
    EXPECT_TRUE(properties.makeChmFile);
    EXPECT_FALSE(QFileInfo::exists(ini));
    EXPECT_EQ(SettingNumber(u" 12ab"_s), 12);
    EXPECT_EQ(SettingNumber(u"index.html"_s), 0);

    settings.Save_ScrapbookProperties(ini, {u" My Book "_s, true, false});
    const QByteArray saved =
        "[Scrapbook]\r\nScrapbookName=My Book\r\n[Build]\r\nLinkToSourceURL=1\r\n"
        "[Content]\r\nMakeChmFile=0\r\nHomePageFilename=start.html\r\n";
    EXPECT_EQ(ReadBytes(ini), saved);
    QFile::setPermissions(ini, QFile::ReadOwner | QFile::ReadUser);
    settings.Save_ScrapbookProperties(ini, {u"Other"_s, false, true});
    EXPECT_EQ(ReadBytes(ini), saved);
    EXPECT_EQ(host.messages, QStringList{"Failed to set value."});
    settings.Save_ScrapbookProperties(without.path() + u"no/such/x.ini"_s, {u"x"_s, false, true});
    EXPECT_EQ(host.messages.size(), 2);
}

// Limits are only raised; [Tools] keeps the quotes of a path with blanks; a code page the
// converter does not know is named with the setting.
TEST(Settings, TheGlobalSettingsFile) {
    TempFolder app;
    RecordingHost host;
    AppSettings settings(host, app.path() + u"Quillmere.ini"_s);
    EXPECT_EQ(settings.Load_Settings(), EbookLanguage::None);
    settings.SaveLanguage(EbookLanguage::ChineseSimplified);
    settings.initDefaultIni();
    EXPECT_EQ(ReadBytes(settings.globalIniPath()),
              QByteArray("[Language]\r\nLanguage=3\r\n[Content]\r\nfilename=index.html\r\n"
                         "IsHomePage=False\r\n"));
    app.write(u"Quillmere.ini"_s,
              "[Language]\r\nLanguage=2\r\n[Limits]\r\nCatalogueLines=2000000\r\n"
              "CatalogueItems=100\r\n[Environment]\r\nCodePage=GB2312\r\n"
              "[Tools]\r\nHelpCompiler=\"/opt/help tools/chmcmd\" -v\r\n");
    EXPECT_EQ(settings.Load_Settings(), EbookLanguage::ChineseTraditional);
    EXPECT_EQ(settings.catalogueLimits().maxLines, 2000000);
    EXPECT_EQ(settings.catalogueLimits().maxItems, CatalogueLimits::kDefaultItems);
    EXPECT_EQ(settings.helpTools().compiler, u"\"/opt/help tools/chmcmd\" -v"_s);

    QString error;
    ASSERT_TRUE(settings.applyCodePage(&error));
    EXPECT_EQ(LocalCodePage::name(), u"windows-936"_s);
    app.write(u"Quillmere.ini"_s, "[Environment]\r\nCodePage=Klingon\r\n");
    EXPECT_FALSE(settings.applyCodePage(&error));
    EXPECT_TRUE(error.contains(u"Quillmere.ini: [Environment] CodePage"_s));
    EXPECT_TRUE(error.contains(u"Klingon"_s));
    LocalCodePage::select(u"Big5"_s);
}

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
