#include "chm/BookLanguage.h"

#include "platform/CodePage.h"

namespace qmr::chm {

QString CodePageOfLanguage(quint32 languageId) {
    // The primary language is the low ten bits; Chinese depends on the sub-language.
    switch (languageId & 0xFFFF) {
    case 0x0404: // Taiwan
    case 0x0C04: // Hong Kong
    case 0x1404: // Macao
        return QStringLiteral("windows-950");
    case 0x0804: // PRC
    case 0x1004: // Singapore
        return QStringLiteral("windows-936");
    default:
        break;
    }
    switch (languageId & 0x3FF) {
    case 0x11: // Japanese
        return QStringLiteral("windows-932");
    case 0x12: // Korean
        return QStringLiteral("windows-949");
    case 0x1E: // Thai
        return QStringLiteral("windows-874");
    case 0x05: // Czech
    case 0x0E: // Hungarian
    case 0x15: // Polish
    case 0x18: // Romanian
    case 0x1A: // Croatian
    case 0x1B: // Slovak
    case 0x1C: // Albanian
    case 0x24: // Slovenian
        return QStringLiteral("windows-1250");
    case 0x02: // Bulgarian
    case 0x19: // Russian
    case 0x22: // Ukrainian
    case 0x23: // Belarusian
    case 0x2F: // Macedonian
        return QStringLiteral("windows-1251");
    case 0x08: // Greek
        return QStringLiteral("windows-1253");
    case 0x1F: // Turkish
        return QStringLiteral("windows-1254");
    case 0x0D: // Hebrew
        return QStringLiteral("windows-1255");
    case 0x01: // Arabic
    case 0x20: // Urdu
    case 0x29: // Farsi
        return QStringLiteral("windows-1256");
    case 0x25: // Estonian
    case 0x26: // Latvian
    case 0x27: // Lithuanian
        return QStringLiteral("windows-1257");
    case 0x2A: // Vietnamese
        return QStringLiteral("windows-1258");
    default:
        return QStringLiteral("windows-1252");
    }
}

quint32 LanguageOfCodePage(const QString& codePageName) {
    const CodePage system(codePageName);
    // One language of each code page above, the most used first.
    for (const quint32 language : {0x404u, 0x804u, 0x411u, 0x412u, 0x41Eu, 0x405u, 0x419u, 0x408u,
                                   0x41Fu, 0x40Du, 0x401u, 0x425u, 0x42Au})
        if (system.sameConversionAs(CodePage(CodePageOfLanguage(language)))) return language;
    return 0x409;
}

bool IsEastAsianLanguage(quint32 languageId) {
    const quint32 primary = languageId & 0x3FF;
    return primary == 0x04 || primary == 0x11 || primary == 0x12;
}

} // namespace qmr::chm
