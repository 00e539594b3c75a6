#include "library/FirefoxScrapbook.h"

#include "library/cInifile.h"
#include "platform/FirefoxFolder.h"
#include "platform/LocalCodePage.h"

#include <QFile>
#include <QRegularExpression>
#include <QStringList>

namespace qmr {
namespace {

constexpr int kMaxProfileSections = 101;

// The names of the "[Profile...]" sections in file order: every line that starts with "[P"
// in any case, without its first and last character. Read as the ini reader reads the file, so
// that the names match its own.
QStringList profileSections(const QString& profilesIniPath) {
    QFile file(profilesIniPath);
    if (!file.open(QIODevice::ReadOnly)) return {};
    static const QRegularExpression lineEnd(QStringLiteral("\r\n|\r|\n"));
    QStringList sections;
    for (const QString& raw : LocalCodePage::decode(file.readAll()).split(lineEnd)) {
        const QString line = raw.trimmed();
        if (!line.left(2).toUpper().startsWith(QLatin1String("[P"))) continue;
        if (sections.size() == kMaxProfileSections) break;
        sections.append(line.mid(1, line.size() - 2));
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
