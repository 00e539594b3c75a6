#pragma once

#include "cli/ConsoleHost.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace qmr {

// Exit codes of the quillmere program.
enum ExitCode : int { ExitOk = 0, ExitFailed = 1, ExitBadInput = 2 };

// One command of the quillmere program. `quillmere --help` is made from the list of commands,
// so each command describes itself here.
class Command {
  public:
    virtual ~Command() = default;
    virtual QString name() const = 0;
    // The arguments after the name, as --help shows them ("FOLDER").
    virtual QString arguments() const = 0;
    // What the command does, in lines at the margin; the list of commands indents them.
    virtual QString description() const = 0;
    virtual int execute(const QStringList& arguments, ConsoleHost& host) = 0;

    static const std::vector<std::unique_ptr<Command>>& all();
    static Command* find(const QString& name);
};

// The text of `quillmere --help`.
QString UsageText();

// Runs the quillmere program on its arguments (without the program name); returns the exit code.
int RunQuillmere(const QStringList& arguments);

// A scrapbook folder named on the command line, made absolute, with "/" at its end.
QString ScrapbookFolderArgument(const QString& argument);

// Selects the local code page from Quillmere.ini; prints the reason and returns false when
// the setting names an unknown one.
bool PrepareEnvironment();

} // namespace qmr
