#pragma once

#include "cli/Command.h"
#include "library/Session.h"

namespace qmr {

// quillmere list [File=CATALOGUE]: the scrapbook list as the desktop window shows it after
// start-up, one tab-separated line a row (name, page count, directory), then the row count.
class ListCommand : public Command {
  public:
    QString name() const override { return QStringLiteral("list"); }
    QString arguments() const override { return QStringLiteral("[File=CATALOGUE]"); }
    QString description() const override;
    int execute(const QStringList& arguments, ConsoleHost& host) override;
};

// Loads the session's list as the window does at start-up, telling on stderr of the store
// lines it skipped and of a command-line folder the store could not take. False when a line
// was skipped.
bool LoadListAtStartUp(Session& session);

} // namespace qmr
