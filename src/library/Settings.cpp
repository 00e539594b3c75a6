#include "library/Settings.h"

#include "platform/AppFolder.h"
#include "platform/LocalCodePage.h"
#include "platform/Processes.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <limits>

namespace qmr {
namespace {

const QString kFailedToSetValue = QStringLiteral("Failed to set value.");
const QString kHomePageFlagText = QStringLiteral("False"); // the flag's text form; nothing reads it

// A raised limit: a number above the default, else the default.
int raisedLimit(const QString& text, int fallback) {
    const double value = SettingNumber(text);
    if (value <= fallback) return fallback;
    return value >= std::numeric_limits<int>::max() ? std::numeric_limits<int>::max() : int(value);
}

void override(const QString& configured, QString& value) {
    if (!configured.trimmed().isEmpty()) value = configured.trimmed();
}

} // namespace

QString ScrapbookIniPath(const QString& scrapbookFolder) {
    return scrapbookFolder + QStringLiteral("ScrapbookPrj.ini");
}

double SettingNumber(const QString& text) {
    static const QRegularExpression leadingNumber(
        QStringLiteral("^\\s*[+-]?(\\d+\\.?\\d*|\\.\\d+)([eE][+-]?\\d+)?"));
    const QRegularExpressionMatch match = leadingNumber.match(text);
    return match.hasMatch() ? match.captured(0).trimmed().toDouble() : 0.0;
}

AppSettings::AppSettings(BuildHost& host, QString globalIniPath)
    : m_host(host),
      m_globalIni(globalIniPath.isEmpty() ? GlobalIniPath() : std::move(globalIniPath)) {}

QString AppSettings::read(const SettingKey& key) const {
    QString value;
    IniRead(m_globalIni, QLatin1String(key.section), QLatin1String(key.key), value);
    StripTrailingNul(value);
    return value.trimmed();
}

void AppSettings::use(const QString& path, const SettingKey& key) {
    SharedIni.Path = path;
    SharedIni.Section = QLatin1String(key.section);
    SharedIni.Key = QLatin1String(key.key);
}

void AppSettings::checkSuccess() {
    if (!SharedIni.Success()) m_host.messageBox(kFailedToSetValue);
}

QString AppSettings::ReadScrapbookName(const QString& iniPath) {
    use(iniPath, Keys::ScrapbookName);
    ScrapbookName = SharedIni.Value().trimmed();
    StripTrailingNul(ScrapbookName);
    if (!SharedIni.Success()) {
        m_host.messageBox(kFailedToSetValue);
        ScrapbookName = QStringLiteral("My Scrapbook");
    }
    return ScrapbookName;
}

EbookLanguage AppSettings::Load_Settings() {
    use(m_globalIni, Keys::Language);
    const QString value = SharedIni.Value().trimmed();
    if (value == u"1") return EbookLanguage::English;
    if (value == u"2") return EbookLanguage::ChineseTraditional;
    if (value == u"3") return EbookLanguage::ChineseSimplified;
    return EbookLanguage::None;
}

void AppSettings::SaveLanguage(EbookLanguage language) {
    use(m_globalIni, Keys::Language);
    SharedIni.setValue(language == EbookLanguage::None ? QString()
                                                       : QString::number(int(language)));
    checkSuccess();
}

ScrapbookProperties AppSettings::load_ScrapbookName(const QString& iniPath) {
    ScrapbookProperties properties;
    properties.name = ReadScrapbookName(iniPath);
    use(iniPath, Keys::LinkToSourceURL);
    properties.linkToSourceURL = SettingNumber(SharedIni.Value()) != 0;
    use(iniPath, Keys::MakeChmFile);
    SharedIni.Default = QStringLiteral("1");
    properties.makeChmFile = SettingNumber(SharedIni.Value()) != 0;
    use(iniPath, Keys::HomePageFilename);
    SharedIni.Default = QStringLiteral("index.html");
    HomePageFilename = SharedIni.Value();
    return properties;
}

void AppSettings::Save_ScrapbookProperties(const QString& iniPath,
                                           const ScrapbookProperties& properties) {
    ScrapbookName = properties.name.trimmed();
    StripTrailingNul(ScrapbookName);
    use(iniPath, Keys::ScrapbookName);
    SharedIni.setValue(ScrapbookName);
    checkSuccess();
    use(iniPath, Keys::LinkToSourceURL);
    SharedIni.setValue(properties.linkToSourceURL ? QStringLiteral("1") : QStringLiteral("0"));
    use(iniPath, Keys::MakeChmFile);
    SharedIni.setValue(properties.makeChmFile ? QStringLiteral("1") : QStringLiteral("0"));
    SharedIni.Default = QStringLiteral("index.html");
    use(iniPath, Keys::HomePageFilename);
    SharedIni.setValue(HomePageFilename);
}

void AppSettings::initDefaultIni() {
    use(m_globalIni, Keys::ContentFilename);
    SharedIni.setValue(QStringLiteral("index.html"));
    checkSuccess();
    use(m_globalIni, Keys::ContentIsHomePage);
    SharedIni.setValue(kHomePageFlagText);
}

CatalogueLimits AppSettings::catalogueLimits() const {
    CatalogueLimits limits;
    limits.maxLines = raisedLimit(read(Keys::CatalogueLines), limits.maxLines);
    limits.maxItems = raisedLimit(read(Keys::CatalogueItems), limits.maxItems);
    limits.settingsFile = m_globalIni;
    return limits;
}

// An empty compiler is the one built into Quillmere; on Windows HTML Help Workshop's compiler
// stays the default where it is installed.
HelpTools AppSettings::helpTools() const {
    HelpTools tools{read(Keys::HelpCompiler), read(Keys::HelpViewer)};
    if (HostIsWindows()) {
        const QString workshop = QStringLiteral("C:\\Program Files\\HTML Help Workshop\\hhc.exe");
        if (tools.compiler.isEmpty() && QFileInfo::exists(workshop))
            tools.compiler = QLatin1Char('"') + workshop + QLatin1Char('"');
        if (tools.viewer.isEmpty()) tools.viewer = QStringLiteral("\"c:\\windows\\hh.exe\"");
    }
    return tools;
}

SiteAddresses AppSettings::siteAddresses() const {
    SiteAddresses addresses;
    override(read(Keys::ProjectHomePage), addresses.projectHomePage);
    override(read(Keys::MakerSite), addresses.makerSite);
    override(read(Keys::AdScript), addresses.adScript);
    override(read(Keys::AdPublisherId), addresses.adPublisherId);
    override(read(Keys::VideoSiteBase), addresses.videoSiteBase);
    override(read(Keys::ForumPage), addresses.forumPage);
    return addresses;
}

DesktopTools AppSettings::desktopTools() const {
    return {read(Keys::TextEditor), read(Keys::FileManager), read(Keys::SystemInformation),
            read(Keys::DeviceSettings)};
}

WebsiteSchedule AppSettings::websiteSchedule() const {
    WebsiteSchedule schedule;
    schedule.enabled = SettingNumber(read(Keys::ScheduleWebsites)) != 0;
    const QTime time = QTime::fromString(read(Keys::ScheduleTime), QStringLiteral("H:mm"));
    if (time.isValid()) schedule.time = time;
    return schedule;
}

bool AppSettings::saveWebsiteSchedule(const WebsiteSchedule& schedule) {
    use(m_globalIni, Keys::ScheduleWebsites);
    SharedIni.setValue(schedule.enabled ? QStringLiteral("1") : QStringLiteral("0"));
    const bool written = SharedIni.Success();
    use(m_globalIni, Keys::ScheduleTime);
    SharedIni.setValue(schedule.time.toString(QStringLiteral("HH:mm")));
    if (written && SharedIni.Success()) return true;
    m_host.messageBox(kFailedToSetValue);
    return false;
}

bool AppSettings::applyCodePage(QString* error) const {
    QString requested = read(Keys::CodePage);
    if (!LocalCodePage::systemDefaultAllowsChoice()) requested.clear();
    if (LocalCodePage::select(requested, error)) return true;
    if (error) *error = QStringLiteral("%1: [Environment] CodePage: %2").arg(m_globalIni, *error);
    return false;
}

} // namespace qmr
