#include "platform/Processes.h"

#include <QProcess>

#ifdef Q_OS_WIN
#include <shellapi.h>
#include <windows.h>
#endif

namespace qmr {

QStringList SplitCommandLine(const QString& commandLine) {
    return QProcess::splitCommand(commandLine);
}

RunningProgram::RunningProgram() = default;

RunningProgram::~RunningProgram() {
    stop();
}

void RunningProgram::stop() {
    if (!m_process || m_process->state() == QProcess::NotRunning) return;
    m_process->kill();
    m_process->waitForFinished(5000);
}

bool RunningProgram::start(const QStringList& command, const QString& workingFolder) {
    if (command.isEmpty() || command.first().isEmpty()) {
        m_error = QStringLiteral("no program given");
        return false;
    }
    m_process = std::make_unique<QProcess>();
    m_process->setProcessChannelMode(QProcess::MergedChannels);
    m_process->setWorkingDirectory(workingFolder);
    m_process->start(command.first(), command.mid(1));
    if (m_process->waitForStarted()) return true;
    m_error = m_process->errorString();
    return false;
}

bool RunningProgram::waitStep(int milliseconds) {
    if (!m_process || m_process->state() == QProcess::NotRunning) return true;
    // waitForFinished() answers false for a program that ended before the call, so the state
    // is asked again afterwards.
    m_process->waitForFinished(milliseconds);
    m_output += m_process->readAll();
    return m_process->state() == QProcess::NotRunning;
}

int RunningProgram::exitCode() const {
    if (!m_process || m_process->state() != QProcess::NotRunning) return -1;
    if (m_process->exitStatus() != QProcess::NormalExit) return -1;
    return m_process->exitCode();
}

QByteArray RunningProgram::output() {
    if (m_process) m_output += m_process->readAll();
    return m_output;
}

QString RunningProgram::errorText() const {
    return m_error;
}

bool StartDetached(const QStringList& command) {
    if (command.isEmpty() || command.first().isEmpty()) return false;
    return QProcess::startDetached(command.first(), command.mid(1));
}

bool OpenWithDefaultProgram(const QString& path) {
#if defined(Q_OS_WIN)
    const auto result = reinterpret_cast<INT_PTR>(
        ShellExecuteW(nullptr, L"open", reinterpret_cast<LPCWSTR>(path.utf16()), nullptr, nullptr,
                      SW_SHOWNORMAL));
    return result > 32; // smaller values are the shell's error codes
#elif defined(Q_OS_MACOS)
    return StartDetached({QStringLiteral("open"), path});
#else
    return StartDetached({QStringLiteral("xdg-open"), path});
#endif
}

bool HasDisplay() {
#if defined(Q_OS_WIN) || defined(Q_OS_MACOS)
    return true;
#else
    return !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
#endif
}

bool HostIsWindows() {
#ifdef Q_OS_WIN
    return true;
#else
    return false;
#endif
}

} // namespace qmr
