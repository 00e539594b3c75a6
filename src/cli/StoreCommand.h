#pragma once

#include "cli/Command.h"

namespace qmr {

// quillmere store add NAME FOLDER: adds a scrapbook to ScrapBookStore.txt, the list of the
// scrapbooks the user works with.
class StoreCommand : public Command {
  public:
    QString name() const override { return QStringLiteral("store"); }
    QString arguments() const override { return QStringLiteral("add NAME FOLDER"); }
    QString description() const override;
    int execute(const QStringList& arguments, ConsoleHost& host) override;
};

} // namespace qmr
