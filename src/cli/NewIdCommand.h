#pragma once

#include "cli/Command.h"

namespace qmr {

// quillmere new-id: hands out the next item identifier and prints it.
class NewIdCommand : public Command {
  public:
    QString name() const override { return QStringLiteral("new-id"); }
    QString arguments() const override { return QString(); }
    QString description() const override;
    int execute(const QStringList& arguments, ConsoleHost& host) override;
};

} // namespace qmr
