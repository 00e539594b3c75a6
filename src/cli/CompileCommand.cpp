#include "cli/CompileCommand.h"

#include "chm/BookLanguage.h"
#include "chm/ChmCompiler.h"
#include "platform/LocalCodePage.h"
#include "platform/PathSeparators.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>

namespace qmr {
namespace {

struct CompileArguments {
    QString project;
    QString output;
    int jobs = 0;
};

bool parse(const QStringList& arguments, CompileArguments& parsed, QString* error) {
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& a = arguments.at(i);
        if (a == u"--output" && i + 1 < arguments.size()) {
            parsed.output = QDir::fromNativeSeparators(QDir().absoluteFilePath(arguments.at(++i)));
        } else if (a == u"--jobs" && i + 1 < arguments.size()) {
            bool ok = false;
            parsed.jobs = arguments.at(++i).toInt(&ok);
            if (!ok || parsed.jobs < 0) {
                *error = QStringLiteral("--jobs takes a number of threads (0: one a core)");
                return false;
            }
        } else if (a.startsWith(QLatin1String("--")) || !parsed.project.isEmpty()) {
            *error = QStringLiteral("unexpected argument %1").arg(a);
            return false;
        } else {
            parsed.project = QDir::fromNativeSeparators(QDir().absoluteFilePath(a));
        }
    }
    if (parsed.project.isEmpty()) *error = QStringLiteral("name the PROJECT.hhp to compile");
    return !parsed.project.isEmpty();
}

} // namespace

QString CompileCommand::description() const {
    return QStringLiteral(
        "Compiles an HTML Help project (its [OPTIONS], [WINDOWS] and [FILES], the contents\n"
        "and index it names, and every file their pages reference) into a .chm, by\n"
        "default the project's \"Compiled file=\". Problems are printed one a line,\n"
        "naming the file; a missing [FILES] entry means no book (exit 1).");
}

int CompileCommand::execute(const QStringList& arguments, ConsoleHost&) {
    CompileArguments parsed;
    QString error;
    if (!parse(arguments, parsed, &error)) {
        PrintError(
            QStringLiteral("quillmere compile: %1. See quillmere compile --help.").arg(error));
        return ExitBadInput;
    }
    if (!QFileInfo(parsed.project).isFile()) {
        PrintError(QStringLiteral("quillmere: %1: no such project file. Name an .hhp file.")
                       .arg(ToNativePath(parsed.project)));
        return ExitBadInput;
    }
    chm::CompileOptions options;
    options.outputPath = parsed.output;
    options.jobs = parsed.jobs;
    options.defaultLanguageId = chm::LanguageOfCodePage(LocalCodePage::name());
    chm::CompileLog log;
    QElapsedTimer timer;
    timer.start();
    const bool written = chm::CompileHelpProject(parsed.project, options, log);
    for (const QString& line : log.lines())
        (line.startsWith(QLatin1String("Error")) ? PrintError : PrintLine)(line);
    if (!written) return ExitFailed;
    PrintLine(QStringLiteral("Compiled in %1 s, %2 warning(s).")
                  .arg(double(timer.elapsed()) / 1000, 0, 'f', 1)
                  .arg(log.warningCount()));
    return ExitOk;
}

} // namespace qmr
