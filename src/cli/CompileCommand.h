#pragma once

#include "cli/Command.h"

namespace qmr {

// quillmere compile: the HTML Help compiler built into Quillmere, for any project.
class CompileCommand : public Command {
  public:
    QString name() const override { return QStringLiteral("compile"); }
    QString arguments() const override {
        return QStringLiteral("PROJECT.hhp [--output FILE.chm] [--jobs N]");
    }
    QString description() const override;
    int execute(const QStringList& arguments, ConsoleHost& host) override;
};

} // namespace qmr
