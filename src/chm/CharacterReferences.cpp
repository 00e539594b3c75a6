#include "chm/CharacterReferences.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace qmr::chm {
namespace {

struct NamedReference {
    const char* name;
    char32_t code;
};

// The named references of HTML 4 and "apos", sorted by name (byte order) for a binary search.
const NamedReference kNamed[] = {
    {"AElig", 0xC6},     {"Aacute", 0xC1},   {"Acirc", 0xC2},     {"Agrave", 0xC0},
    {"Alpha", 0x391},    {"Aring", 0xC5},    {"Atilde", 0xC3},    {"Auml", 0xC4},
    {"Beta", 0x392},     {"Ccedil", 0xC7},   {"Chi", 0x3A7},      {"Dagger", 0x2021},
    {"Delta", 0x394},    {"ETH", 0xD0},      {"Eacute", 0xC9},    {"Ecirc", 0xCA},
    {"Egrave", 0xC8},    {"Epsilon", 0x395}, {"Eta", 0x397},      {"Euml", 0xCB},
    {"Gamma", 0x393},    {"Iacute", 0xCD},   {"Icirc", 0xCE},     {"Igrave", 0xCC},
    {"Iota", 0x399},     {"Iuml", 0xCF},     {"Kappa", 0x39A},    {"Lambda", 0x39B},
    {"Mu", 0x39C},       {"Ntilde", 0xD1},   {"Nu", 0x39D},       {"OElig", 0x152},
    {"Oacute", 0xD3},    {"Ocirc", 0xD4},    {"Ograve", 0xD2},    {"Omega", 0x3A9},
    {"Omicron", 0x39F},  {"Oslash", 0xD8},   {"Otilde", 0xD5},    {"Ouml", 0xD6},
    {"Phi", 0x3A6},      {"Pi", 0x3A0},      {"Prime", 0x2033},   {"Psi", 0x3A8},
    {"Rho", 0x3A1},      {"Scaron", 0x160},  {"Sigma", 0x3A3},    {"THORN", 0xDE},
    {"Tau", 0x3A4},      {"Theta", 0x398},   {"Uacute", 0xDA},    {"Ucirc", 0xDB},
    {"Ugrave", 0xD9},    {"Upsilon", 0x3A5}, {"Uuml", 0xDC},      {"Xi", 0x39E},
    {"Yacute", 0xDD},    {"Yuml", 0x178},    {"Zeta", 0x396},     {"aacute", 0xE1},
    {"acirc", 0xE2},     {"acute", 0xB4},    {"aelig", 0xE6},     {"agrave", 0xE0},
    {"alefsym", 0x2135}, {"alpha", 0x3B1},   {"amp", 0x26},       {"and", 0x2227},
    {"ang", 0x2220},     {"apos", 0x27},     {"aring", 0xE5},     {"asymp", 0x2248},
    {"atilde", 0xE3},    {"auml", 0xE4},     {"bdquo", 0x201E},   {"beta", 0x3B2},
    {"brvbar", 0xA6},    {"bull", 0x2022},   {"cap", 0x2229},     {"ccedil", 0xE7},
    {"cedil", 0xB8},     {"cent", 0xA2},     {"chi", 0x3C7},      {"circ", 0x2C6},
    {"clubs", 0x2663},   {"cong", 0x2245},   {"copy", 0xA9},      {"crarr", 0x21B5},
    {"cup", 0x222A},     {"curren", 0xA4},   {"dArr", 0x21D3},    {"dagger", 0x2020},
    {"darr", 0x2193},    {"deg", 0xB0},      {"delta", 0x3B4},    {"diams", 0x2666},
    {"divide", 0xF7},    {"eacute", 0xE9},   {"ecirc", 0xEA},     {"egrave", 0xE8},
    {"empty", 0x2205},   {"emsp", 0x2003},   {"ensp", 0x2002},    {"epsilon", 0x3B5},
    {"equiv", 0x2261},   {"eta", 0x3B7},     {"eth", 0xF0},       {"euml", 0xEB},
    {"euro", 0x20AC},    {"exist", 0x2203},  {"fnof", 0x192},     {"forall", 0x2200},
    {"frac12", 0xBD},    {"frac14", 0xBC},   {"frac34", 0xBE},    {"frasl", 0x2044},
    {"gamma", 0x3B3},    {"ge", 0x2265},     {"gt", 0x3E},        {"hArr", 0x21D4},
    {"harr", 0x2194},    {"hearts", 0x2665}, {"hellip", 0x2026},  {"iacute", 0xED},
    {"icirc", 0xEE},     {"iexcl", 0xA1},    {"igrave", 0xEC},    {"image", 0x2111},
    {"infin", 0x221E},   {"int", 0x222B},    {"iota", 0x3B9},     {"iquest", 0xBF},
    {"isin", 0x2208},    {"iuml", 0xEF},     {"kappa", 0x3BA},    {"lArr", 0x21D0},
    {"lambda", 0x3BB},   {"lang", 0x2329},   {"laquo", 0xAB},     {"larr", 0x2190},
    {"lceil", 0x2308},   {"ldquo", 0x201C},  {"le", 0x2264},      {"lfloor", 0x230A},
    {"lowast", 0x2217},  {"loz", 0x25CA},    {"lrm", 0x200E},     {"lsaquo", 0x2039},
    {"lsquo", 0x2018},   {"lt", 0x3C},       {"macr", 0xAF},      {"mdash", 0x2014},
    {"micro", 0xB5},     {"middot", 0xB7},   {"minus", 0x2212},   {"mu", 0x3BC},
    {"nabla", 0x2207},   {"nbsp", 0xA0},     {"ndash", 0x2013},   {"ne", 0x2260},
    {"ni", 0x220B},      {"not", 0xAC},      {"notin", 0x2209},   {"nsub", 0x2284},
    {"ntilde", 0xF1},    {"nu", 0x3BD},      {"oacute", 0xF3},    {"ocirc", 0xF4},
    {"oelig", 0x153},    {"ograve", 0xF2},   {"oline", 0x203E},   {"omega", 0x3C9},
    {"omicron", 0x3BF},  {"oplus", 0x2295},  {"or", 0x2228},      {"ordf", 0xAA},
    {"ordm", 0xBA},      {"oslash", 0xF8},   {"otilde", 0xF5},    {"otimes", 0x2297},
    {"ouml", 0xF6},      {"para", 0xB6},     {"part", 0x2202},    {"permil", 0x2030},
    {"perp", 0x22A5},    {"phi", 0x3C6},     {"pi", 0x3C0},       {"piv", 0x3D6},
    {"plusmn", 0xB1},    {"pound", 0xA3},    {"prime", 0x2032},   {"prod", 0x220F},
    {"prop", 0x221D},    {"psi", 0x3C8},     {"quot", 0x22},      {"rArr", 0x21D2},
    {"radic", 0x221A},   {"rang", 0x232A},   {"raquo", 0xBB},     {"rarr", 0x2192},
    {"rceil", 0x2309},   {"rdquo", 0x201D},  {"real", 0x211C},    {"reg", 0xAE},
    {"rfloor", 0x230B},  {"rho", 0x3C1},     {"rlm", 0x200F},     {"rsaquo", 0x203A},
    {"rsquo", 0x2019},   {"sbquo", 0x201A},  {"scaron", 0x161},   {"sdot", 0x22C5},
    {"sect", 0xA7},      {"shy", 0xAD},      {"sigma", 0x3C3},    {"sigmaf", 0x3C2},
    {"sim", 0x223C},     {"spades", 0x2660}, {"sub", 0x2282},     {"sube", 0x2286},
    {"sum", 0x2211},     {"sup", 0x2283},    {"sup1", 0xB9},      {"sup2", 0xB2},
    {"sup3", 0xB3},      {"supe", 0x2287},   {"szlig", 0xDF},     {"tau", 0x3C4},
    {"there4", 0x2234},  {"theta", 0x3B8},   {"thetasym", 0x3D1}, {"thinsp", 0x2009},
    {"thorn", 0xFE},     {"tilde", 0x2DC},   {"times", 0xD7},     {"trade", 0x2122},
    {"uArr", 0x21D1},    {"uacute", 0xFA},   {"uarr", 0x2191},    {"ucirc", 0xFB},
    {"ugrave", 0xF9},    {"uml", 0xA8},      {"upsih", 0x3D2},    {"upsilon", 0x3C5},
    {"uuml", 0xFC},      {"weierp", 0x2118}, {"xi", 0x3BE},       {"yacute", 0xFD},
    {"yen", 0xA5},       {"yuml", 0xFF},     {"zeta", 0x3B6},     {"zwj", 0x200D},
    {"zwnj", 0x200C},
};

// Names that pages write without ";" often enough that browsers accept them so.
bool AcceptedWithoutSemicolon(QStringView name) {
    return name == u"amp" || name == u"lt" || name == u"gt" || name == u"quot" || name == u"nbsp" ||
           name == u"copy" || name == u"reg";
}

char32_t LookUpName(QStringView name) {
    if (name.size() > 8) return 0;
    char key[9] = {};
    for (qsizetype i = 0; i < name.size(); ++i) {
        if (name[i].unicode() > 0x7F) return 0;
        key[i] = char(name[i].unicode());
    }
    const auto less = [](const NamedReference& a, const char* b) {
        return std::strcmp(a.name, b) < 0;
    };
    const auto found = std::lower_bound(std::begin(kNamed), std::end(kNamed), key, less);
    return found != std::end(kNamed) && std::strcmp(found->name, key) == 0 ? found->code : 0;
}

// Numbers 0x80 to 0x9F name the windows-1252 characters there, as browsers read them.
char32_t NumericCharacter(char32_t code) {
    static const char16_t kWindows1252[32] = {
        0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};
    if (code >= 0x80 && code <= 0x9F) return kWindows1252[code - 0x80];
    if (code == 0 || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return 0xFFFD;
    return code;
}

bool IsAsciiAlphanumeric(QChar c) {
    const char16_t u = c.unicode();
    return (u >= '0' && u <= '9') || (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z');
}

int DigitValue(QChar c, bool hex) {
    const char16_t u = c.unicode();
    if (u >= '0' && u <= '9') return u - '0';
    if (hex && u >= 'a' && u <= 'f') return u - 'a' + 10;
    if (hex && u >= 'A' && u <= 'F') return u - 'A' + 10;
    return -1;
}

// Reads the reference that starts at text[at] ("&"); on success sets the character and the
// length taken.
bool ReadReference(QStringView text, qsizetype at, char32_t& character, qsizetype& length) {
    qsizetype i = at + 1;
    if (i < text.size() && text[i] == u'#') {
        ++i;
        const bool hex = i < text.size() && (text[i] == u'x' || text[i] == u'X');
        if (hex) ++i;
        const qsizetype digitsFrom = i;
        quint64 value = 0;
        for (; i < text.size(); ++i) {
            const int digit = DigitValue(text[i], hex);
            if (digit < 0) break;
            value = std::min<quint64>(value * (hex ? 16 : 10) + digit, 0x110000);
        }
        if (i == digitsFrom) return false;
        if (i < text.size() && text[i] == u';') ++i;
        character = NumericCharacter(char32_t(value));
        length = i - at;
        return true;
    }
    const qsizetype nameFrom = i;
    while (i < text.size() && IsAsciiAlphanumeric(text[i]) && i - nameFrom < 9)
        ++i;
    const QStringView name = text.sliced(nameFrom, i - nameFrom);
    const bool semicolon = i < text.size() && text[i] == u';';
    if (!semicolon) {
        const bool followedByNameChar =
            i < text.size() && (IsAsciiAlphanumeric(text[i]) || text[i] == u'=');
        if (followedByNameChar || !AcceptedWithoutSemicolon(name)) return false;
    }
    character = LookUpName(name);
    if (!character) return false;
    length = i - at + (semicolon ? 1 : 0);
    return true;
}

} // namespace

QString ResolveCharacterReferences(QStringView text) {
    qsizetype amp = text.indexOf(u'&');
    if (amp < 0) return text.toString();
    QString out;
    out.reserve(text.size());
    qsizetype copied = 0;
    while (amp >= 0) {
        char32_t character = 0;
        qsizetype length = 0;
        if (ReadReference(text, amp, character, length)) {
            out.append(text.sliced(copied, amp - copied));
            const char32_t one[1] = {character};
            out.append(QString::fromUcs4(one, 1));
            copied = amp + length;
            amp = text.indexOf(u'&', copied);
        } else {
            amp = text.indexOf(u'&', amp + 1);
        }
    }
    out.append(text.sliced(copied));
    return out;
}

} // namespace qmr::chm
