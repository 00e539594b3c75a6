#include "support/Programs.h"

#include <QProcess>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace qmr::test {

bool HasProgram(const QString& name) {
    return !QStandardPaths::findExecutable(name).isEmpty();
}

RunResult RunProgram(const QString& program, const QStringList& arguments,
                     const QStringList& environment, const QString& folder) {
    QProcess process;
    process.setWorkingDirectory(folder);
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const QString& pair : environment) {
        const qsizetype eq = pair.indexOf(QLatin1Char('='));
        env.insert(pair.left(eq), pair.mid(eq + 1));
    }
    process.setProcessEnvironment(env);
    process.start(program, arguments);
    RunResult result;
    if (!process.waitForFinished(300000)) return result;
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.outBytes = process.readAllStandardOutput();
    result.out = QString::fromUtf8(result.outBytes);
    result.err = QString::fromUtf8(process.readAllStandardError());
    return result;
}

RunResult RunQuillmereProgram(const QStringList& arguments, const QStringList& environment) {
    return RunProgram(QStringLiteral(QMR_QUILLMERE_EXE), arguments, environment);
}

QStringList BookListing(const QString& chmPath) {
    const RunResult run = RunProgram(u"7z"_s, {u"l"_s, u"-slt"_s, chmPath}, {u"LC_ALL=C.UTF-8"_s});
    QStringList names;
    for (const QString& line : run.out.split(QLatin1Char('\n')))
        if (line.startsWith(QLatin1String("Path = "))) names.append(line.mid(7).trimmed());
    if (!names.isEmpty()) names.removeFirst(); // the book itself
    return names;
}

} // namespace qmr::test
