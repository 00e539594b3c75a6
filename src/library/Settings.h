#pragma once

#include "host/BuildHost.h"
#include "catalogue/Catalogue.h"
#include "library/cInifile.h"

#include <QString>

namespace qmr {

// The e-book language of Quillmere.ini [Language] Language.
enum class EbookLanguage { None = 0, English = 1, ChineseTraditional = 2, ChineseSimplified = 3 };

// What a scrapbook's ScrapbookPrj.ini holds, as the property page shows it.
struct ScrapbookProperties {
    QString name;
    bool linkToSourceURL = false;
    bool makeChmFile = true;
};

// The settings of one run: the shared settings object (whose Default carries over from one
// read to the next), the current scrapbook's display name and the program's current home-page
// name. The window and the command line each hold one and pass it on.
class AppSettings {
  public:
    explicit AppSettings(BuildHost& host) : m_host(host) {}

    cInifile SharedIni;
    QString ScrapbookName;
    QString HomePageFilename = QStringLiteral("index.html");

    // The display name in a scrapbook's ScrapbookPrj.ini (trimmed; the carried-over Default
    // when the key is missing). Also becomes the current scrapbook name.
    QString ReadScrapbookName(const QString& iniPath);

    // Quillmere.ini [Language] Language.
    EbookLanguage Load_Settings();
    void SaveLanguage(EbookLanguage language);

    // The property page's load and save of a scrapbook's ScrapbookPrj.ini, in the order the
    // page reads and writes its keys (which decides the Default carried over).
    ScrapbookProperties load_ScrapbookName(const QString& iniPath);
    void Save_ScrapbookProperties(const QString& iniPath, const ScrapbookProperties& properties);

    // Writes the two [Content] defaults of Quillmere.ini.
    void initDefaultIni();

  private:
    void checkSuccess();
    BuildHost& m_host;
};

// The form of a scrapbook's settings file path: folder (ending in "/") + "ScrapbookPrj.ini".
QString ScrapbookIniPath(const QString& scrapbookFolder);

// Quillmere.ini [Limits] CatalogueLines and CatalogueItems, the defaults where missing or not
// a number larger than the default.
CatalogueLimits ReadCatalogueLimits(const QString& globalIniPath);

// Selects the local code page: Quillmere.ini [Environment] CodePage where the platform allows
// a choice. False, with the reason, for a name the converter does not know.
bool ApplyCodePageSetting(const QString& globalIniPath, QString* error);

// A value as a number the way the property page reads a stored flag: the leading number of
// the text, 0 when there is none.
double ValOf(const QString& text);

} // namespace qmr
