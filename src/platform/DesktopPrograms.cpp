#include "platform/DesktopPrograms.h"

#include "platform/Processes.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#ifdef Q_OS_WIN
#include <QSettings>
#endif

namespace qmr {
namespace {

// The configured command line with the file or folder added, when one is configured.
QStringList configuredCommand(const QString& configured, const QString& target) {
    QStringList command = SplitCommandLine(configured.trimmed());
    if (!command.isEmpty() && !target.isEmpty()) command.append(target);
    return command;
}

// The first of the programs found on the PATH.
QStringList firstInstalled(std::initializer_list<const char*> programs) {
    for (const char* program : programs) {
        const QString found = QStandardPaths::findExecutable(QLatin1String(program));
        if (!found.isEmpty()) return {found};
    }
    return {};
}

#ifdef Q_OS_WIN
QString registryValue(const QString& key, const QString& name) {
    return QSettings(QStringLiteral("HKEY_LOCAL_MACHINE\\") + key, QSettings::NativeFormat)
        .value(name)
        .toString();
}

// Where the registry says msinfo32 is: its own PATH value, else the shared tools folder.
QString systemInformationProgram() {
    const QString direct = registryValue(
        QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools\\MSINFO"), QStringLiteral("PATH"));
    if (!direct.isEmpty()) return direct;
    const QString folder = registryValue(
        QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools Location"), QStringLiteral("MSINFO"));
    const QString program = folder + QStringLiteral("\\MSINFO32.EXE");
    return !folder.isEmpty() && QFileInfo::exists(program) ? program : QString();
}
#endif

} // namespace

QStringList DefaultOpenerCommand(const QString& pathOrUrl) {
#if defined(Q_OS_WIN)
    return {QStringLiteral("explorer.exe"), QDir::toNativeSeparators(pathOrUrl)};
#elif defined(Q_OS_MACOS)
    return {QStringLiteral("open"), pathOrUrl};
#else
    return {QStringLiteral("xdg-open"), pathOrUrl};
#endif
}

QStringList TextEditorCommand(const QString& configured, const QString& file) {
    const QString native = QDir::toNativeSeparators(file);
    if (!configured.trimmed().isEmpty()) return configuredCommand(configured, native);
    if (HostIsWindows()) return {QStringLiteral("notepad.exe"), native};
    for (const char* variable : {"VISUAL", "EDITOR"}) {
        const QString editor = qEnvironmentVariable(variable);
        if (!editor.trimmed().isEmpty()) return configuredCommand(editor, native);
    }
    return DefaultOpenerCommand(file);
}

QStringList FileManagerCommand(const QString& configured, const QString& folder) {
    const QString native = QDir::toNativeSeparators(folder);
    if (!configured.trimmed().isEmpty()) return configuredCommand(configured, native);
    if (HostIsWindows()) return {QStringLiteral("explorer.exe"), native};
    return DefaultOpenerCommand(folder);
}

QStringList TwoPaneFileManagerCommand(const QString& configured, const QString& folder) {
    if (configured.trimmed().isEmpty() && HostIsWindows())
        return {QStringLiteral("C:\\totalcmd\\TOTALCMD.EXE"), QStringLiteral("/o"),
                QDir::toNativeSeparators(folder)};
    return FileManagerCommand(configured, folder);
}

QStringList SystemInformationCommand(const QString& configured) {
    if (!configured.trimmed().isEmpty()) return configuredCommand(configured, QString());
#ifdef Q_OS_WIN
    const QString program = systemInformationProgram();
    return program.isEmpty() ? QStringList() : QStringList{program};
#else
    return firstInstalled({"hardinfo", "gnome-system-monitor", "plasma-systemmonitor", "ksysguard",
                           "xfce4-taskmanager", "lxtask"});
#endif
}

QStringList DeviceSettingsCommand(const QString& configured) {
    if (!configured.trimmed().isEmpty()) return configuredCommand(configured, QString());
    if (HostIsWindows())
        return {QStringLiteral("rundll32.exe"),
                QStringLiteral("shell32.dll,Control_RunDLL sysdm.cpl,,2")};
    return firstInstalled({"gnome-control-center", "systemsettings", "xfce4-settings-manager",
                           "lxqt-config", "mate-control-center"});
}

} // namespace qmr
