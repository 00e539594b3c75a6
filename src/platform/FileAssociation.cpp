#include "platform/FileAssociation.h"

#include "platform/Processes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>
#include <QStringList>

#ifdef Q_OS_WIN
#include <QSettings>
#include <shlobj.h>
#endif

namespace qmr {
namespace {

#ifndef Q_OS_WIN

const QString kDefaultsSection = QStringLiteral("[Default Applications]");

// Writes `bytes` whole under a temporary name and renames it over `path`; a file that already
// holds them is left alone. False, with the reason, when it cannot be written.
bool writeWhenChanged(const QString& path, const QByteArray& bytes, bool* changed,
                      QString* problem) {
    QFile existing(path);
    if (existing.open(QIODevice::ReadOnly) && existing.readAll() == bytes) return true;
    QDir().mkpath(QFileInfo(path).absolutePath());
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        *problem = QStringLiteral("cannot write %1: %2").arg(path, file.errorString());
        return false;
    }
    if (changed) *changed = true;
    return true;
}

QString xdgHome(const char* variable, const QString& fallback) {
    const QString value = qEnvironmentVariable(variable);
    return (value.isEmpty() ? QDir::homePath() + fallback : value) + QLatin1Char('/');
}
QString dataHome() {
    return xdgHome("XDG_DATA_HOME", QStringLiteral("/.local/share"));
}
QString configHome() {
    return xdgHome("XDG_CONFIG_HOME", QStringLiteral("/.config"));
}
QStringList xdgDirs(const char* variable, const QString& fallback) {
    const QString value = qEnvironmentVariable(variable);
    QStringList dirs = (value.isEmpty() ? fallback : value).split(QLatin1Char(':'));
    for (QString& dir : dirs)
        if (!dir.endsWith(QLatin1Char('/'))) dir += QLatin1Char('/');
    return dirs;
}

// A desktop entry's Exec value for the program: quoted where it holds characters a desktop
// would otherwise split or expand.
QString execLine(const QString& program) {
    QString quoted = program;
    quoted.replace(QLatin1Char('\\'), QStringLiteral("\\\\"))
        .replace(QLatin1Char('"'), QStringLiteral("\\\""))
        .replace(QLatin1Char('`'), QStringLiteral("\\`"))
        .replace(QLatin1Char('$'), QStringLiteral("\\$"));
    if (quoted != program || program.contains(QLatin1Char(' ')))
        quoted = QLatin1Char('"') + quoted + QLatin1Char('"');
    return quoted + QStringLiteral(" File=%f");
}

QByteArray desktopEntry(const QString& program) {
    return QStringLiteral("[Desktop Entry]\n"
                          "Type=Application\n"
                          "Name=Quillmere Ebook Converter\n"
                          "GenericName=ScrapBook E-book Converter\n"
                          "Comment=Make e-books and websites from ScrapBook collections\n"
                          "Exec=%1\n"
                          "Icon=quillmere\n"
                          "Terminal=false\n"
                          "Categories=Office;Publishing;\n"
                          "MimeType=%2;%3;\n")
        .arg(execLine(program), QLatin1String(kCatalogueMimeType), QLatin1String(kRdfMimeType))
        .toUtf8();
}

QByteArray mimePackage() {
    return QByteArrayLiteral(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<mime-info xmlns=\"http://www.freedesktop.org/standards/shared-mime-info\">\n"
        "  <mime-type type=\"application/x-scrapbook-catalogue\">\n"
        "    <comment>ScrapBook catalogue</comment>\n"
        "    <sub-class-of type=\"application/rdf+xml\"/>\n"
        "    <glob pattern=\"scrapbook.rdf\" weight=\"60\"/>\n"
        "  </mime-type>\n"
        "</mime-info>\n");
}

QStringList readLines(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    if (!lines.isEmpty() && lines.last().isEmpty()) lines.removeLast();
    return lines;
}

// The value of `key` in [Default Applications] of a mimeapps.list: its first desktop entry.
QString listedDefault(const QString& path, const QString& key) {
    bool inDefaults = false;
    for (const QString& raw : readLines(path)) {
        const QString line = raw.trimmed();
        if (line.startsWith(QLatin1Char('[')))
            inDefaults = line == kDefaultsSection;
        else if (inDefaults && line.startsWith(key + QLatin1Char('=')))
            return line.mid(key.size() + 1).section(QLatin1Char(';'), 0, 0).trimmed();
    }
    return QString();
}

// The program a desktop opens files of `type` with, as the freedesktop rules find it: the
// first default named in a mimeapps.list, else the first program a mimeinfo.cache lists.
QString currentDefault(const QString& type) {
    QStringList lists{configHome() + QStringLiteral("mimeapps.list")};
    for (const QString& dir : xdgDirs("XDG_CONFIG_DIRS", QStringLiteral("/etc/xdg")))
        lists << dir + QStringLiteral("mimeapps.list");
    const QStringList applications =
        QStringList{dataHome()} +
        xdgDirs("XDG_DATA_DIRS", QStringLiteral("/usr/local/share:/usr/share"));
    for (const QString& dir : applications)
        lists << dir + QStringLiteral("applications/mimeapps.list");
    for (const QString& list : lists) {
        const QString named = listedDefault(list, type);
        if (!named.isEmpty()) return named;
    }
    for (const QString& dir : applications) {
        const QString cached =
            listedDefault(dir + QStringLiteral("applications/mimeinfo.cache"), type);
        if (!cached.isEmpty()) return cached;
    }
    return QString();
}

// Sets `key` in [Default Applications] of the user's mimeapps.list, keeping every other line.
bool setListedDefault(const QString& path, const QString& key, const QString& value,
                      QString* problem) {
    QStringList lines = readLines(path);
    const QString entry = key + QLatin1Char('=') + value + QLatin1Char(';');
    qsizetype section = lines.indexOf(kDefaultsSection);
    if (section < 0) {
        lines << kDefaultsSection;
        section = lines.size() - 1;
    }
    qsizetype at = section + 1;
    while (at < lines.size() && !lines.at(at).trimmed().startsWith(QLatin1Char('['))) {
        if (lines.at(at).trimmed().startsWith(key + QLatin1Char('='))) break;
        ++at;
    }
    if (at < lines.size() && lines.at(at).trimmed().startsWith(key + QLatin1Char('=')))
        lines[at] = entry;
    else
        lines.insert(section + 1, entry);
    return writeWhenChanged(path, (lines.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8(),
                            nullptr, problem);
}

AssociationReport registerOnDesktop(const DesktopIntegration& integration, AssociationClaim claim) {
    AssociationReport report;
    const QString ours = QLatin1String(kDesktopEntryName);
    bool mimeChanged = false;
    if (!writeWhenChanged(dataHome() + QStringLiteral("applications/") + ours,
                          desktopEntry(integration.programPath), nullptr, &report.problem) ||
        !writeWhenChanged(dataHome() + QStringLiteral("mime/packages/quillmere.xml"), mimePackage(),
                          &mimeChanged, &report.problem))
        return report;
    if (!integration.iconPng.isEmpty() &&
        !writeWhenChanged(dataHome() + QStringLiteral("icons/hicolor/256x256/apps/quillmere.png"),
                          integration.iconPng, nullptr, &report.problem))
        return report;
    // The desktop learns of the catalogue type from the compiled database, when it can.
    const QString update = QStandardPaths::findExecutable(QStringLiteral("update-mime-database"));
    if (mimeChanged && !update.isEmpty()) {
        RunningProgram updating;
        if (updating.start({update, dataHome() + QStringLiteral("mime")}, dataHome()))
            updating.waitStep(10000);
    }
    report.registered = true;

    const QString userList = configHome() + QStringLiteral("mimeapps.list");
    const QString catalogueType = QLatin1String(kCatalogueMimeType);
    if (currentDefault(catalogueType).isEmpty() &&
        !setListedDefault(userList, catalogueType, ours, &report.problem))
        return report;
    const QString rdfType = QLatin1String(kRdfMimeType);
    const QString other = currentDefault(rdfType);
    if (claim == AssociationClaim::KeepOtherDefault && !other.isEmpty() && other != ours) {
        report.otherDefault = other;
        return report;
    }
    report.isDefault = setListedDefault(userList, rdfType, ours, &report.problem);
    return report;
}

#else

AssociationReport registerInRegistry(const DesktopIntegration& integration,
                                     AssociationClaim claim) {
    AssociationReport report;
    QSettings classes(QStringLiteral("HKEY_CURRENT_USER\\Software\\Classes"),
                      QSettings::NativeFormat);
    const QString program = QDir::toNativeSeparators(integration.programPath);
    classes.setValue(QStringLiteral("Quillmere/Default"),
                     QStringLiteral("Quillmere Ebook converter"));
    classes.setValue(QStringLiteral("Quillmere/shell/open/command/Default"),
                     QLatin1Char('"') + program + QStringLiteral("\" File=%1"));
    classes.setValue(QStringLiteral("Quillmere/DefaultIcon/Default"), program);
    // The program that opens .rdf files now, whether the user or the machine chose it.
    const QString other =
        QSettings(QStringLiteral("HKEY_CLASSES_ROOT\\.rdf"), QSettings::NativeFormat)
            .value(QStringLiteral("Default"))
            .toString();
    if (claim == AssociationClaim::KeepOtherDefault && !other.isEmpty() &&
        other != QLatin1String("Quillmere")) {
        report.otherDefault = other;
    } else {
        classes.setValue(QStringLiteral(".rdf/Default"), QStringLiteral("Quillmere"));
        report.isDefault = true;
    }
    classes.sync();
    report.registered = classes.status() == QSettings::NoError;
    if (!report.registered)
        report.problem = QStringLiteral("cannot write below HKEY_CURRENT_USER\\Software\\Classes");
    SHChangeNotify(SHCNE_ASSOCCHANGED, SHCNF_IDLIST, nullptr, nullptr);
    return report;
}

#endif

} // namespace

AssociationReport RegisterCatalogueAssociation(const DesktopIntegration& integration,
                                               AssociationClaim claim) {
#ifdef Q_OS_WIN
    return registerInRegistry(integration, claim);
#else
    return registerOnDesktop(integration, claim);
#endif
}

} // namespace qmr
