#include "library/cInifile.h"

#include "library/ProfileStrings.h"

#include <cmath>
#include <limits>

namespace qmr {
namespace {

constexpr int kValueBuffer = 255;
constexpr int kListBuffer = 8192;

// Takes the pieces that end in a NUL; text after the last NUL is not a whole piece.
void splitAtNul(const QString& text, QStringList& out, int& count, bool skipEmpty) {
    out.clear();
    count = 0;
    QStringList pieces = text.split(QChar(0));
    pieces.removeLast();
    for (const QString& piece : pieces) {
        if (skipEmpty && piece.isEmpty()) continue;
        out.append(piece);
        ++count;
    }
}

} // namespace

QString cInifile::Value() {
    const QString value = GetPrivateProfileString(Section, Key, Default, kValueBuffer, Path);
    m_lastReturnCode = -1;
    return value;
}

void cInifile::setValue(const QString& sValue) {
    QString clean = sValue;
    clean.remove(QChar(0));
    if (clean.isNull()) clean = QStringLiteral(""); // an empty value is written, not deleted
    m_lastReturnCode = WritePrivateProfileString(Section, Key, clean, Path) ? 1 : 0;
}

QString cInifile::Sections() const {
    return GetPrivateProfileString(QString(), QString(), QString(), kListBuffer, Path);
}

void cInifile::EnumerateAllSections(QStringList& sSections, int& iCount) const {
    splitAtNul(Sections(), sSections, iCount, true);
}

int32_t cInifile::CLngDefault(const QString& sString, int32_t lDefault) {
    const QString text = sString.trimmed();
    bool ok = false;
    if (text.startsWith(QLatin1String("&H"), Qt::CaseInsensitive)) {
        const qlonglong v = text.mid(2).toLongLong(&ok, 16);
        // "&H" literals of up to eight digits are 32-bit two's complement, as in the tools
        // that write them.
        if (ok && text.size() - 2 <= 8) return int32_t(uint32_t(v));
        return lDefault;
    }
    const double d = text.toDouble(&ok);
    if (!ok || !std::isfinite(d)) return lDefault;
    const double rounded = std::nearbyint(d); // half to even under the default rounding mode
    if (rounded < double(std::numeric_limits<int32_t>::min()) ||
        rounded > double(std::numeric_limits<int32_t>::max()))
        return lDefault;
    return int32_t(rounded);
}

void StripTrailingNul(QString& name) {
    if (name.endsWith(QChar(0))) name.chop(1);
}

bool IniRead(const QString& iniPath, const QString& section, const QString& key, QString& value) {
    cInifile ini;
    ini.Path = iniPath;
    ini.Section = section;
    ini.Key = key;
    value = ini.Value();
    return ini.Success();
}

} // namespace qmr
