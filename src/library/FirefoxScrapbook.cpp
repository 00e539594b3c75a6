#include "library/FirefoxScrapbook.h"

#include "library/cInifile.h"
#include "platform/FirefoxFolder.h"

#include <QStringList>

namespace qmr {
namespace {

constexpr int kMaxProfileSections = 101;

// The profile sections ("[Profile0]", ...) in file order, as the ini reader names them: every
// section whose name starts with "P" in any case, at most 101 of them.
QStringList profileSections(const QString& profilesIniPath) {
    cInifile ini;
    ini.Path = profilesIniPath;
    QStringList all;
    int count = 0;
    ini.EnumerateAllSections(all, count);
    QStringList sections;
    for (const QString& name : all) {
        if (!name.startsWith(QLatin1Char('P'), Qt::CaseInsensitive)) continue;
        if (sections.size() == kMaxProfileSections) break;
        sections.append(name);
    }
    return sections;
}

} // namespace

QString DefaultProfilePath(const QString& profilesIniPath) {
    const QStringList sections = profileSections(profilesIniPath);
    QString value;
    if (sections.size() == 1) {
        IniRead(profilesIniPath, sections.first(), QStringLiteral("Path"), value);
    } else {
        for (const QString& section : sections) {
            IniRead(profilesIniPath, section, QStringLiteral("Default"), value);
            if (value == u"1") {
                IniRead(profilesIniPath, section, QStringLiteral("Path"), value);
                break;
            }
        }
    }
    return value.replace(QLatin1Char('\\'), QLatin1Char('/'));
}

QString FirefoxScrapbookFolder(const QString& firefoxFolder) {
    QString profile = DefaultProfilePath(firefoxFolder + QStringLiteral("profiles.ini"));
    // A missing profile leaves the ScrapBook folder right below the Firefox folder.
    if (!profile.isEmpty() && !profile.endsWith(QLatin1Char('/'))) profile += QLatin1Char('/');
    return firefoxFolder + profile + QStringLiteral("ScrapBook/");
}

QString FindFirefoxScrapbookFolder() {
    return FirefoxScrapbookFolder(FirefoxFolder());
}

} // namespace qmr
