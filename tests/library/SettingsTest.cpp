#include "library/Settings.h"

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

// The shared settings object's Default carries over: a missing name reads empty in a fresh
// run, and "index.html" once any property page has been loaded.
TEST(Settings, PropertyPageLoadsWithTheCarriedOverDefault) {
    TempFolder withName;
    TempFolder without;
    withName.write(
        u"ScrapbookPrj.ini"_s,
        "[Scrapbook]\r\nScrapbookName=  \xA5\x78 Notes  \r\n[Build]\r\nLinkToSourceURL=1\r\n"
        "[Content]\r\nMakeChmFile=1.0\r\nHomePageFilename=start.html\r\n");
    RecordingHost host;
    AppSettings settings(host);
    EXPECT_EQ(settings.ReadScrapbookName(ScrapbookIniPath(without.path())), QString());
    ScrapbookProperties properties = settings.load_ScrapbookName(ScrapbookIniPath(without.path()));
    EXPECT_FALSE(properties.linkToSourceURL);
    EXPECT_TRUE(properties.makeChmFile); // the default set just before the read
    EXPECT_EQ(settings.SharedIni.Default, u"index.html"_s);

    properties = settings.load_ScrapbookName(ScrapbookIniPath(withName.path()));
    EXPECT_EQ(properties.name, u"台 Notes"_s);
    EXPECT_TRUE(properties.linkToSourceURL);
    EXPECT_TRUE(properties.makeChmFile); // "1.0" reads as a number like any other setting
    EXPECT_EQ(settings.HomePageFilename, u"start.html"_s);
    EXPECT_EQ(settings.ReadScrapbookName(ScrapbookIniPath(without.path())), u"index.html");
    EXPECT_FALSE(QFileInfo::exists(ScrapbookIniPath(without.path()))); // reads write nothing
    EXPECT_TRUE(host.messages.isEmpty());
    EXPECT_EQ(SettingNumber(u" 12ab"_s), 12);
    EXPECT_EQ(SettingNumber(u"index.html"_s), 0);
}

TEST(Settings, SaveWritesTheKeysInThePagesOrderAndTellsAFailedWrite) {
    TempFolder scrapbook;
    RecordingHost host;
    AppSettings settings(host);
    settings.HomePageFilename = u"start.html"_s;
    const QString ini = ScrapbookIniPath(scrapbook.path());
    settings.Save_ScrapbookProperties(ini, {u" My Book "_s, true, false});
    const QByteArray saved =
        "[Scrapbook]\r\nScrapbookName=My Book\r\n[Build]\r\nLinkToSourceURL=1\r\n"
        "[Content]\r\nMakeChmFile=0\r\nHomePageFilename=start.html\r\n";
    EXPECT_EQ(ReadBytes(ini), saved);
    EXPECT_TRUE(host.messages.isEmpty());

    // A read-only settings file stays as it was, and the user is told once.
    QFile::setPermissions(ini, QFile::ReadOwner | QFile::ReadUser);
    settings.Save_ScrapbookProperties(ini, {u"Other"_s, false, true});
    EXPECT_EQ(ReadBytes(ini), saved);
    EXPECT_EQ(host.messages, QStringList{"Failed to set value."});
    settings.Save_ScrapbookProperties(scrapbook.path() + u"no/such/x.ini"_s, {u"x"_s, false, true});
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

} // namespace
} // namespace qmr
