#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>

class QProcess;

namespace qmr {

// Splits a command line the user typed into the program and its arguments, as a shell splits
// quoted words: `"C:\Program Files\x.exe" -a` gives the program with its blank kept and "-a".
// Backslashes are ordinary characters.
QStringList SplitCommandLine(const QString& commandLine);

// One run of an outside program whose standard output and standard error are captured
// together, in the order it wrote them. The caller waits in short steps so that it can report
// progress and keep its window responsive between them.
class RunningProgram {
  public:
    RunningProgram();
    ~RunningProgram(); // a program still running is stopped
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    // Starts `command` (the program, then its arguments) in `workingFolder`. False when it
    // cannot be started; errorText() then says why.
    bool start(const QStringList& command, const QString& workingFolder);
    // Waits at most `milliseconds`; true once the program has ended (at once if it already has).
    bool waitStep(int milliseconds);
    // Ends the program now (the user cancelled the work it was doing) and waits for it to go.
    void stop();
    // The program's exit code once it has ended; -1 when it crashed or never started.
    int exitCode() const;
    // Everything the program has written so far.
    QByteArray output();
    QString errorText() const;

  private:
    std::unique_ptr<QProcess> m_process;
    QByteArray m_output;
    QString m_error;
};

// Starts `command` and leaves it running on its own (a viewer the user closes).
bool StartDetached(const QStringList& command);

// Opens a document, folder or web address with the desktop's default program.
bool OpenWithDefaultProgram(const QString& path);

// True when programs with windows can be shown: always on Windows and macOS, elsewhere when an
// X11 or Wayland display is named in the environment.
bool HasDisplay();

// True where the outside tools are Windows programs.
bool HostIsWindows();

} // namespace qmr
