#include "website/SiteAddressSettings.h"

#include "library/cInifile.h"

namespace qmr {
namespace {

void override(const QString& iniPath, const QString& key, QString& value) {
    QString configured;
    IniRead(iniPath, QStringLiteral("Site"), key, configured);
    if (!configured.trimmed().isEmpty()) value = configured.trimmed();
}

} // namespace

SiteAddresses ReadSiteAddresses(const QString& globalIniPath) {
    SiteAddresses addresses;
    override(globalIniPath, QStringLiteral("ProjectHomePage"), addresses.projectHomePage);
    override(globalIniPath, QStringLiteral("MakerSite"), addresses.makerSite);
    override(globalIniPath, QStringLiteral("AdScript"), addresses.adScript);
    override(globalIniPath, QStringLiteral("AdPublisherId"), addresses.adPublisherId);
    override(globalIniPath, QStringLiteral("VideoSiteBase"), addresses.videoSiteBase);
    return addresses;
}

} // namespace qmr
