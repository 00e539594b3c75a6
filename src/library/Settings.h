#pragma once

#include "catalogue/Catalogue.h"
#include "host/BuildHost.h"
#include "library/cInifile.h"

#include <QString>
#include <QTime>

namespace qmr {

// Every section and key of the two settings files, named once: Quillmere.ini in the
// application folder, and ScrapbookPrj.ini in each scrapbook folder.
struct SettingKey {
    const char* section;
    const char* key;
};
namespace Keys {
// Quillmere.ini
inline constexpr SettingKey Language{"Language", "Language"};
inline constexpr SettingKey ContentFilename{"Content", "filename"};
inline constexpr SettingKey ContentIsHomePage{"Content", "IsHomePage"};
inline constexpr SettingKey CodePage{"Environment", "CodePage"};
inline constexpr SettingKey CatalogueLines{"Limits", "CatalogueLines"};
inline constexpr SettingKey CatalogueItems{"Limits", "CatalogueItems"};
inline constexpr SettingKey HelpCompiler{"Tools", "HelpCompiler"};
inline constexpr SettingKey HelpViewer{"Tools", "HelpViewer"};
inline constexpr SettingKey TextEditor{"Tools", "TextEditor"};
inline constexpr SettingKey FileManager{"Tools", "FileManager"};
inline constexpr SettingKey SystemInformation{"Tools", "SystemInformation"};
inline constexpr SettingKey DeviceSettings{"Tools", "DeviceSettings"};
inline constexpr SettingKey ScheduleWebsites{"Schedule", "BuildAllWebsites"};
inline constexpr SettingKey ScheduleTime{"Schedule", "Time"};
inline constexpr SettingKey ProjectHomePage{"Site", "ProjectHomePage"};
inline constexpr SettingKey MakerSite{"Site", "MakerSite"};
inline constexpr SettingKey AdScript{"Site", "AdScript"};
inline constexpr SettingKey AdPublisherId{"Site", "AdPublisherId"};
inline constexpr SettingKey VideoSiteBase{"Site", "VideoSiteBase"};
inline constexpr SettingKey ForumPage{"Site", "ForumPage"};
// The main window's placement: Left, Top, Width, Height (twips) and Maximised.
inline constexpr const char* MainWindowSection = "MainWindow";
// ScrapbookPrj.ini
inline constexpr SettingKey ScrapbookName{"Scrapbook", "ScrapbookName"};
inline constexpr SettingKey LinkToSourceURL{"Build", "LinkToSourceURL"};
inline constexpr SettingKey MakeChmFile{"Content", "MakeChmFile"};
inline constexpr SettingKey HomePageFilename{"Content", "HomePageFilename"};
} // namespace Keys

// The e-book language of Quillmere.ini [Language] Language.
enum class EbookLanguage { None = 0, English = 1, ChineseTraditional = 2, ChineseSimplified = 3 };

// What a scrapbook's ScrapbookPrj.ini holds, as the property page shows it.
struct ScrapbookProperties {
    QString name;
    bool linkToSourceURL = false;
    bool makeChmFile = true;
};

// The compiler and viewer command lines ([Tools]). An empty compiler means the built-in one
// where there is one; an empty viewer leaves the book to the desktop's default program.
struct HelpTools {
    QString compiler;
    QString viewer;
};

// The outside programs the window starts ([Tools]), each a command line to which the file or
// folder is added; empty where the user has chosen none (the platform then picks one).
struct DesktopTools {
    QString textEditor;
    QString fileManager;
    QString systemInformation;
    QString deviceSettings;
};

// Building every website unattended once a day ([Schedule]): whether it is on, and when.
struct WebsiteSchedule {
    bool enabled = false;
    QTime time = QTime(3, 0);
};

// Addresses that the generated pages link to ([Site]), each with its default.
struct SiteAddresses {
    QString projectHomePage = QStringLiteral("https://quillmere.org/");
    QString makerSite = QStringLiteral("https://quillmere.org/");
    QString adScript = QStringLiteral("https://pagead2.googlesyndication.com/pagead/show_ads.js");
    QString adPublisherId = QStringLiteral("pub-0000000000000000");
    // The published copy of a scrapbook's "data/" folder, for the website playlists.
    QString videoSiteBase = QStringLiteral("https://quillmere.org/scrapbook/data/");
    // Where users talk about the program and download it (the Help menu).
    QString forumPage = QStringLiteral("https://quillmere.org/forum/");
};

// A number as every setting is read: the leading number of the text ("1.0" is 1, " 12ab" is
// 12), 0 when there is none.
double SettingNumber(const QString& text);

// The settings of one run, through the one shared settings object (whose Default carries over
// from one read to the next), with the current scrapbook's display name and the program's
// current home-page name. The window and the command line each hold one and pass it on.
class AppSettings {
  public:
    explicit AppSettings(BuildHost& host, QString globalIniPath = QString());

    cInifile SharedIni;
    QString ScrapbookName;
    QString HomePageFilename = QStringLiteral("index.html");

    const QString& globalIniPath() const { return m_globalIni; }

    // The display name in a scrapbook's ScrapbookPrj.ini (trimmed; the carried-over Default
    // when the key is missing). Also becomes the current scrapbook name.
    QString ReadScrapbookName(const QString& iniPath);

    // Quillmere.ini [Language] Language; None is written as an empty value.
    EbookLanguage Load_Settings();
    void SaveLanguage(EbookLanguage language);

    // The property page's load and save of a scrapbook's ScrapbookPrj.ini, in the order the
    // page reads and writes its keys (which decides the Default carried over).
    ScrapbookProperties load_ScrapbookName(const QString& iniPath);
    void Save_ScrapbookProperties(const QString& iniPath, const ScrapbookProperties& properties);

    // Writes the two [Content] defaults of Quillmere.ini.
    void initDefaultIni();

    // Quillmere.ini values the builders read, each a fresh read with its default.
    CatalogueLimits catalogueLimits() const;
    HelpTools helpTools() const;
    DesktopTools desktopTools() const;
    SiteAddresses siteAddresses() const;
    WebsiteSchedule websiteSchedule() const;
    // False, with "Failed to set value." shown, when Quillmere.ini could not be written.
    bool saveWebsiteSchedule(const WebsiteSchedule& schedule);
    // Selects the local code page from [Environment] CodePage where the platform allows a
    // choice. False, with the reason, for a name the converter does not know.
    bool applyCodePage(QString* error) const;

  private:
    QString read(const SettingKey& key) const;
    void use(const QString& path, const SettingKey& key);
    void checkSuccess();
    BuildHost& m_host;
    QString m_globalIni;
};

// The form of a scrapbook's settings file path: folder (ending in "/") + "ScrapbookPrj.ini".
QString ScrapbookIniPath(const QString& scrapbookFolder);

} // namespace qmr
