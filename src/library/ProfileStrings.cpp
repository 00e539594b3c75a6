#include "library/ProfileStrings.h"

#include "catalogue/TextFiles.h"
#include "platform/LocalCodePage.h"

#include <QFile>
#include <QStringList>

namespace qmr {
namespace {

// The file as lines, and where each section starts and ends.
struct IniText {
    QStringList lines;

    static IniText load(const QString& path) {
        IniText ini;
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) return ini;
        QString text = LocalCodePage::decode(file.readAll());
        text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"))
            .replace(QLatin1Char('\r'), QLatin1Char('\n'));
        ini.lines = text.split(QLatin1Char('\n'));
        if (!ini.lines.isEmpty() && ini.lines.last().isEmpty()) ini.lines.removeLast();
        return ini;
    }

    bool save(const QString& path) const {
        QString text;
        for (const QString& line : lines)
            text += line + QStringLiteral("\r\n");
        return WriteFileAtomically(path, LocalCodePage::encode(text));
    }

    static bool isHeader(const QString& line, QString* name = nullptr) {
        const QString t = line.trimmed();
        if (!t.startsWith(QLatin1Char('['))) return false;
        if (name) {
            const qsizetype close = t.indexOf(QLatin1Char(']'));
            *name = (close < 0 ? t.mid(1) : t.mid(1, close - 1)).trimmed();
        }
        return true;
    }

    static bool isComment(const QString& line) {
        const QString t = line.trimmed();
        return t.isEmpty() || t.startsWith(QLatin1Char(';'));
    }

    static QString keyOf(const QString& line) {
        const qsizetype eq = line.indexOf(QLatin1Char('='));
        return (eq < 0 ? line : line.left(eq)).trimmed();
    }

    static QString valueOf(const QString& line) {
        const qsizetype eq = line.indexOf(QLatin1Char('='));
        QString v = eq < 0 ? QString() : line.mid(eq + 1).trimmed();
        if (v.size() >= 2 && (v.front() == QLatin1Char('"') || v.front() == QLatin1Char('\'')) &&
            v.back() == v.front())
            v = v.mid(1, v.size() - 2);
        return v;
    }

    // The index of the section's header line, or -1.
    int findSection(const QString& section) const {
        QString name;
        for (int i = 0; i < lines.size(); ++i)
            if (isHeader(lines.at(i), &name) &&
                name.compare(section.trimmed(), Qt::CaseInsensitive) == 0)
                return i;
        return -1;
    }

    // One past the section's last line.
    int sectionEnd(int header) const {
        int i = header + 1;
        while (i < lines.size() && !isHeader(lines.at(i)))
            ++i;
        return i;
    }

    // The index of the key's line inside the section, or -1.
    int findKey(int header, const QString& key) const {
        const int end = sectionEnd(header);
        for (int i = header + 1; i < end; ++i)
            if (!isComment(lines.at(i)) &&
                keyOf(lines.at(i)).compare(key.trimmed(), Qt::CaseInsensitive) == 0)
                return i;
        return -1;
    }

    // Where a new key line goes: after the section's last non-blank line.
    int insertionPoint(int header) const {
        int i = sectionEnd(header);
        while (i > header + 1 && lines.at(i - 1).trimmed().isEmpty())
            --i;
        return i;
    }
};

QString nulList(const QStringList& names, int size) {
    QString out;
    for (const QString& name : names)
        out += name + QChar(0);
    if (size >= 2 && out.size() > size - 2) {
        out.truncate(size - 2);
        if (!out.endsWith(QChar(0))) out += QChar(0);
    }
    return out;
}

} // namespace

QString GetPrivateProfileString(const QString& section, const QString& key,
                                const QString& defaultValue, int size, const QString& path) {
    const IniText ini = IniText::load(path);
    if (section.isNull()) {
        QStringList names;
        QString name;
        for (const QString& line : ini.lines)
            if (IniText::isHeader(line, &name)) names.append(name);
        return nulList(names, size);
    }
    const int header = ini.findSection(section);
    if (key.isNull()) {
        QStringList keys;
        if (header >= 0)
            for (int i = header + 1; i < ini.sectionEnd(header); ++i)
                if (!IniText::isComment(ini.lines.at(i)))
                    keys.append(IniText::keyOf(ini.lines.at(i)));
        return nulList(keys, size);
    }
    const int line = header < 0 ? -1 : ini.findKey(header, key);
    QString value;
    if (line >= 0) {
        value = IniText::valueOf(ini.lines.at(line));
    } else {
        value = defaultValue;
        while (!value.isEmpty() && value.back() == QLatin1Char(' '))
            value.chop(1);
    }
    return size > 0 ? value.left(size - 1) : QString();
}

bool WritePrivateProfileString(const QString& section, const QString& key, const QString& value,
                               const QString& path) {
    if (section.isNull()) return true; // nothing to write; the call only flushes on Windows
    IniText ini = IniText::load(path);
    int header = ini.findSection(section);
    if (key.isNull()) {
        if (header < 0) return true;
        ini.lines.erase(ini.lines.begin() + header, ini.lines.begin() + ini.sectionEnd(header));
        return ini.save(path);
    }
    const int line = header < 0 ? -1 : ini.findKey(header, key);
    if (value.isNull()) {
        if (line < 0) return true;
        ini.lines.removeAt(line);
        return ini.save(path);
    }
    if (line >= 0) {
        ini.lines[line] = IniText::keyOf(ini.lines.at(line)) + QLatin1Char('=') + value;
    } else {
        if (header < 0) {
            ini.lines.append(QLatin1Char('[') + section + QLatin1Char(']'));
            header = int(ini.lines.size()) - 1;
        }
        ini.lines.insert(ini.insertionPoint(header), key + QLatin1Char('=') + value);
    }
    return ini.save(path);
}

} // namespace qmr
