#include "ebook/HelpCompiler.h"

#include "ebook/BuiltInCompiler.h"

#include "platform/AppFolder.h"
#include "platform/PathSeparators.h"
#include "platform/Processes.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

namespace qmr {
namespace {

constexpr int kWaitStepMilliseconds = 500;

QString CannotStartProblem(const QString& commandLine, const QString& reason) {
    QString problem = QStringLiteral("Cannot start the help compiler \"") + commandLine +
                      QStringLiteral("\": ") + reason +
                      QStringLiteral(". Set its command line as HelpCompiler in the [Tools] "
                                     "section of ") +
                      ToNativePath(GlobalIniPath()) + QLatin1Char('.');
    problem += QStringLiteral(" Leave it empty to use the compiler built into Quillmere.");
    return problem;
}

// A line of the compiler's output saying that a file it needed was not there: the book may
// still be written, but without its table of contents or index.
QString MissingFileLine(const QByteArray& output) {
    for (const QByteArray& line : output.split('\n')) {
        if (line.contains("Can't find")) return QString::fromLocal8Bit(line.trimmed());
    }
    return QString();
}

// Why the book in `outputPath` is not good, or empty text when it is. The exit code is not
// asked: compilers report success in it differently, and some report nothing useful.
QString JudgeBook(const QString& outputPath, const QByteArray& output, int exitCode,
                  const QString& errorLog) {
    const QString book = ToNativePath(outputPath);
    const QString seeLog = QStringLiteral(" See ") + ToNativePath(errorLog) + QLatin1Char('.');
    const QString code =
        QStringLiteral(" (exit code ") + QString::number(exitCode) + QStringLiteral(").");
    QFile file(outputPath);
    if (!file.exists())
        return QStringLiteral("The help compiler did not write ") + book + code + seeLog;
    if (file.size() == 0)
        return QStringLiteral("The help compiler left ") + book + QStringLiteral(" empty") + code +
               seeLog;
    if (!file.open(QIODevice::ReadOnly) || file.read(4) != "ITSF")
        return book + QStringLiteral(" is not a compiled help file") + code + seeLog;
    const QString missing = MissingFileLine(output);
    if (!missing.isEmpty())
        return QStringLiteral("The help compiler could not find a file it needed (") + missing +
               QStringLiteral("), so ") + book + QStringLiteral(" is incomplete.") + seeLog;
    return QString();
}

void WriteErrorLog(const QString& path, const QByteArray& output) {
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate)) file.write(output);
}

// An outside compiler (chmcmd, hhc.exe): started in the project's folder and judged by the
// book it leaves, as the exit codes of such compilers cannot be trusted.
CompileResult RunOutsideCompiler(BuildHost& host, const QString& compilerLine,
                                 const QString& projectPath, const QString& outputPath) {
    CompileResult result;
    const QFileInfo project(projectPath);
    const QString folder = project.absolutePath() + QLatin1Char('/');
    // The compiler neither makes the output folder nor always replaces an old book, so a stale
    // one could pass for the new one.
    QDir().mkpath(QFileInfo(outputPath).absolutePath());
    CheckAndDeleteFile(outputPath);

    QStringList command = SplitCommandLine(compilerLine);
    command.append(project.fileName());
    QElapsedTimer timer;
    timer.start();
    RunningProgram compiler;
    if (!compiler.start(command, folder)) {
        result.problem = CannotStartProblem(compilerLine, compiler.errorText());
        return result;
    }
    // A compiler that ends within the first step still gives one line.
    int round = 0;
    bool ended = false;
    do {
        ended = compiler.waitStep(kWaitStepMilliseconds);
        ++round;
        host.add2loglist(QStringLiteral("Creating ebook now...") + QString::number(round));
        host.yield();
    } while (!ended && !host.cancelled());
    result.seconds = double(timer.nsecsElapsed()) / 1e9;
    if (!ended) {
        compiler.stop();
        CheckAndDeleteFile(outputPath);
        result.cancelled = true;
        result.problem = CancelledProblem();
        return result;
    }

    const QByteArray output = compiler.output();
    const QString errorLog = folder + QStringLiteral("ErrorLog.log");
    WriteErrorLog(errorLog, output);
    result.problem = JudgeBook(outputPath, output, compiler.exitCode(), errorLog);
    result.ok = result.problem.isEmpty();
    return result;
}

} // namespace

CompileResult RunHelpCompiler(BuildHost& host, const HelpTools& tools, const QString& projectPath,
                              const QString& outputPath) {
    if (tools.compiler.trimmed().isEmpty())
        return RunBuiltInCompiler(host, projectPath, outputPath);
    return RunOutsideCompiler(host, tools.compiler, projectPath, outputPath);
}

void CheckAndDeleteFile(const QString& path) {
    const QFileInfo info(path);
    if (info.exists() || info.isSymLink()) QFile::remove(path);
}

void ViewChm(BuildHost& host, const HelpTools& tools, const QString& outputPath) {
    if (!QFileInfo(outputPath).isFile()) return;
    const QString book = ToNativePath(outputPath);
    if (tools.viewer.isEmpty()) {
        host.openDocument(book);
        return;
    }
    QStringList command = SplitCommandLine(tools.viewer);
    command.append(book);
    if (!StartDetached(command))
        host.add2loglist(QStringLiteral("Cannot start the help viewer \"") + tools.viewer +
                         QStringLiteral("\"."));
}

} // namespace qmr
