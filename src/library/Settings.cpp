#include "library/Settings.h"

#include "platform/AppFolder.h"
#include "platform/LocalCodePage.h"

#include <QRegularExpression>

namespace qmr {
namespace {

const QString kFailedToSetValue = QStringLiteral("Failed to set value.");
const QString kHomePageFlagText = QStringLiteral("False"); // the flag's text form; nothing reads it

void use(cInifile& ini, const QString& path, const QString& section, const QString& key) {
    ini.Path = path;
    ini.Section = section;
    ini.Key = key;
}

int limitFrom(const QString& iniPath, const QString& key, int fallback) {
    QString text;
    IniRead(iniPath, QStringLiteral("Limits"), key, text);
    bool ok = false;
    const int value = text.trimmed().toInt(&ok);
    return ok && value > fallback ? value : fallback;
}

} // namespace

QString ScrapbookIniPath(const QString& scrapbookFolder) {
    return scrapbookFolder + QStringLiteral("ScrapbookPrj.ini");
}

double ValOf(const QString& text) {
    static const QRegularExpression leadingNumber(
        QStringLiteral("^\\s*[+-]?(\\d+\\.?\\d*|\\.\\d+)([eE][+-]?\\d+)?"));
    const QRegularExpressionMatch match = leadingNumber.match(text);
    return match.hasMatch() ? match.captured(0).trimmed().toDouble() : 0.0;
}

void AppSettings::checkSuccess() {
    if (!SharedIni.Success()) m_host.messageBox(kFailedToSetValue);
}

QString AppSettings::ReadScrapbookName(const QString& iniPath) {
    use(SharedIni, iniPath, QStringLiteral("Scrapbook"), QStringLiteral("ScrapbookName"));
    ScrapbookName = SharedIni.Value().trimmed();
    StripTrailingNul(ScrapbookName);
    if (!SharedIni.Success()) {
        m_host.messageBox(kFailedToSetValue);
        ScrapbookName = QStringLiteral("My Scrapbook");
    }
    return ScrapbookName;
}

EbookLanguage AppSettings::Load_Settings() {
    use(SharedIni, GlobalIniPath(), QStringLiteral("Language"), QStringLiteral("Language"));
    const QString value = SharedIni.Value().trimmed();
    if (value == u"1") return EbookLanguage::English;
    if (value == u"2") return EbookLanguage::ChineseTraditional;
    if (value == u"3") return EbookLanguage::ChineseSimplified;
    return EbookLanguage::None;
}

void AppSettings::SaveLanguage(EbookLanguage language) {
    use(SharedIni, GlobalIniPath(), QStringLiteral("Language"), QStringLiteral("Language"));
    SharedIni.setValue(QString::number(int(language)));
    checkSuccess();
}

ScrapbookProperties AppSettings::load_ScrapbookName(const QString& iniPath) {
    ScrapbookProperties properties;
    properties.name = ReadScrapbookName(iniPath);
    use(SharedIni, iniPath, QStringLiteral("Build"), QStringLiteral("LinkToSourceURL"));
    properties.linkToSourceURL = ValOf(SharedIni.Value()) != 0;
    use(SharedIni, iniPath, QStringLiteral("Content"), QStringLiteral("MakeChmFile"));
    SharedIni.Default = QStringLiteral("1");
    properties.makeChmFile = ValOf(SharedIni.Value()) != 0;
    use(SharedIni, iniPath, QStringLiteral("Content"), QStringLiteral("HomePageFilename"));
    SharedIni.Default = QStringLiteral("index.html");
    HomePageFilename = SharedIni.Value();
    return properties;
}

void AppSettings::Save_ScrapbookProperties(const QString& iniPath,
                                           const ScrapbookProperties& properties) {
    ScrapbookName = properties.name.trimmed();
    StripTrailingNul(ScrapbookName);
    use(SharedIni, iniPath, QStringLiteral("Scrapbook"), QStringLiteral("ScrapbookName"));
    SharedIni.setValue(ScrapbookName);
    checkSuccess();
    use(SharedIni, iniPath, QStringLiteral("Build"), QStringLiteral("LinkToSourceURL"));
    SharedIni.setValue(properties.linkToSourceURL ? QStringLiteral("1") : QStringLiteral("0"));
    use(SharedIni, iniPath, QStringLiteral("Content"), QStringLiteral("MakeChmFile"));
    SharedIni.setValue(properties.makeChmFile ? QStringLiteral("1") : QStringLiteral("0"));
    SharedIni.Default = QStringLiteral("index.html");
    use(SharedIni, iniPath, QStringLiteral("Content"), QStringLiteral("HomePageFilename"));
    SharedIni.setValue(HomePageFilename);
}

void AppSettings::initDefaultIni() {
    use(SharedIni, GlobalIniPath(), QStringLiteral("Content"), QStringLiteral("filename"));
    SharedIni.setValue(QStringLiteral("index.html"));
    checkSuccess();
    use(SharedIni, GlobalIniPath(), QStringLiteral("Content"), QStringLiteral("IsHomePage"));
    SharedIni.setValue(kHomePageFlagText);
}

CatalogueLimits ReadCatalogueLimits(const QString& globalIniPath) {
    CatalogueLimits limits;
    limits.maxLines = limitFrom(globalIniPath, QStringLiteral("CatalogueLines"), limits.maxLines);
    limits.maxItems = limitFrom(globalIniPath, QStringLiteral("CatalogueItems"), limits.maxItems);
    limits.settingsFile = globalIniPath;
    return limits;
}

bool ApplyCodePageSetting(const QString& globalIniPath, QString* error) {
    QString requested;
    IniRead(globalIniPath, QStringLiteral("Environment"), QStringLiteral("CodePage"), requested);
    if (!LocalCodePage::systemDefaultAllowsChoice()) requested.clear();
    if (LocalCodePage::select(requested, error)) return true;
    if (error) *error = QStringLiteral("%1: [Environment] CodePage: %2").arg(globalIniPath, *error);
    return false;
}

} // namespace qmr
