#include "library/Settings.h"

#include "platform/AppFolder.h"
#include "platform/LocalCodePage.h"
#include "support/RecordingHost.h"
#include "support/TempFolder.h"

#include <QDir>

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::ReadBytes;
using test::RecordingHost;
using test::TempFolder;

// The shared settings object's Default carries over: a missing name reads empty in a fresh
// run, and "index.html" once any property page has been loaded.
TEST(Settings, ScrapbookNameShowsTheCarriedOverDefault) {
    TempFolder withName;
    TempFolder without;
    withName.write(
        QStringLiteral("ScrapbookPrj.ini"),
        "[Scrapbook]\r\nScrapbookName=  \xA5\x78 Notes  \r\n[Build]\r\nLinkToSourceURL=1\r\n"
        "[Content]\r\nMakeChmFile=0\r\nHomePageFilename=start.html\r\n");
    RecordingHost host;
    AppSettings settings(host);
    EXPECT_EQ(settings.ReadScrapbookName(ScrapbookIniPath(without.path())), QString());

    const ScrapbookProperties properties =
        settings.load_ScrapbookName(ScrapbookIniPath(withName.path()));
    EXPECT_EQ(properties.name, QStringLiteral("台 Notes"));
    EXPECT_EQ(settings.ScrapbookName, QStringLiteral("台 Notes"));
    EXPECT_TRUE(properties.linkToSourceURL);
    EXPECT_FALSE(properties.makeChmFile);
    EXPECT_EQ(settings.HomePageFilename, QStringLiteral("start.html"));

    EXPECT_EQ(settings.ReadScrapbookName(ScrapbookIniPath(without.path())),
              QStringLiteral("index.html"));
    EXPECT_TRUE(host.messages.isEmpty());
}

TEST(Settings, PropertyPageDefaultsForAScrapbookWithoutSettings) {
    TempFolder scrapbook;
    RecordingHost host;
    AppSettings settings(host);
    // The carried-over Default reads "" for the first two keys: no name, no links to sources.
    const ScrapbookProperties properties =
        settings.load_ScrapbookName(ScrapbookIniPath(scrapbook.path()));
    EXPECT_EQ(properties.name, QString());
    EXPECT_FALSE(properties.linkToSourceURL);
    EXPECT_TRUE(properties.makeChmFile);
    EXPECT_EQ(settings.HomePageFilename, QStringLiteral("index.html"));
    EXPECT_EQ(settings.SharedIni.Default, QStringLiteral("index.html"));
    // A second load now sees "index.html" for a missing LinkToSourceURL: not a number, so 0.
    EXPECT_FALSE(settings.load_ScrapbookName(ScrapbookIniPath(scrapbook.path())).linkToSourceURL);
    EXPECT_FALSE(QFileInfo::exists(ScrapbookIniPath(scrapbook.path()))); // reads write nothing
}

TEST(Settings, SaveWritesTheKeysInThePagesOrder) {
    TempFolder scrapbook;
    RecordingHost host;
    AppSettings settings(host);
    settings.HomePageFilename = QStringLiteral("start.html");
    settings.Save_ScrapbookProperties(ScrapbookIniPath(scrapbook.path()),
                                      {QStringLiteral(" My Book "), true, false});
    EXPECT_EQ(ReadBytes(ScrapbookIniPath(scrapbook.path())),
              QByteArray("[Scrapbook]\r\nScrapbookName=My Book\r\n[Build]\r\nLinkToSourceURL=1\r\n"
                         "[Content]\r\nMakeChmFile=0\r\nHomePageFilename=start.html\r\n"));
    EXPECT_EQ(settings.SharedIni.Default, QStringLiteral("index.html"));
    EXPECT_TRUE(host.messages.isEmpty());

    // An unwritable settings file: the user is told once, and the other writes still run.
    settings.Save_ScrapbookProperties(scrapbook.path() + QStringLiteral("no/such/ScrapbookPrj.ini"),
                                      {QStringLiteral("x"), false, true});
    EXPECT_EQ(host.messages, QStringList{"Failed to set value."});
}

TEST(Settings, GlobalFileKeys) {
    RecordingHost host;
    AppSettings settings(host);
    QDir().mkpath(ApplicationFolder());
    QFile::remove(GlobalIniPath());
    EXPECT_EQ(settings.Load_Settings(), EbookLanguage::None);
    settings.SaveLanguage(EbookLanguage::ChineseSimplified);
    EXPECT_EQ(settings.Load_Settings(), EbookLanguage::ChineseSimplified);
    settings.initDefaultIni();
    EXPECT_EQ(ReadBytes(GlobalIniPath()),
              QByteArray("[Language]\r\nLanguage=3\r\n[Content]\r\nfilename=index.html\r\n"
                         "IsHomePage=False\r\n"));
    QFile::remove(GlobalIniPath());
}

TEST(Settings, LimitsAndCodePageComeFromTheGlobalFile) {
    TempFolder app;
    const QString ini = app.path() + QStringLiteral("Quillmere.ini");
    CatalogueLimits limits = ReadCatalogueLimits(ini);
    EXPECT_EQ(limits.maxLines, 80001);
    EXPECT_EQ(limits.maxItems, 20001);
    EXPECT_EQ(limits.settingsFile, ini);
    app.write(QStringLiteral("Quillmere.ini"),
              "[Limits]\r\nCatalogueLines=2000000\r\nCatalogueItems=100\r\n"
              "[Environment]\r\nCodePage=GB2312\r\n");
    limits = ReadCatalogueLimits(ini);
    EXPECT_EQ(limits.maxLines, 2000000);
    EXPECT_EQ(limits.maxItems, 20001); // limits are only raised

    QString error;
    ASSERT_TRUE(ApplyCodePageSetting(ini, &error));
    EXPECT_EQ(LocalCodePage::name(), QStringLiteral("windows-936"));
    app.write(QStringLiteral("Quillmere.ini"), "[Environment]\r\nCodePage=Klingon\r\n");
    EXPECT_FALSE(ApplyCodePageSetting(ini, &error));
    EXPECT_TRUE(error.contains(QStringLiteral("[Environment] CodePage")));
    EXPECT_TRUE(error.contains(QStringLiteral("Klingon")));
    app.write(QStringLiteral("Quillmere.ini"), "");
    ASSERT_TRUE(ApplyCodePageSetting(ini, &error));
    EXPECT_EQ(LocalCodePage::name(), QStringLiteral("windows-950"));
}

TEST(Settings, ValReadsTheLeadingNumber) {
    EXPECT_EQ(ValOf(QStringLiteral("1")), 1);
    EXPECT_EQ(ValOf(QStringLiteral(" 12ab")), 12);
    EXPECT_EQ(ValOf(QStringLiteral("index.html")), 0);
    EXPECT_EQ(ValOf(QString()), 0);
}

} // namespace
} // namespace qmr
