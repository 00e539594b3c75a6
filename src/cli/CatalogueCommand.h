#pragma once

#include "cli/Command.h"

namespace qmr {

// quillmere catalogue FOLDER: recodes and loads a scrapbook's catalogue and prints its items.
class CatalogueCommand : public Command {
  public:
    QString name() const override { return QStringLiteral("catalogue"); }
    QString arguments() const override { return QStringLiteral("FOLDER"); }
    QString description() const override;
    int execute(const QStringList& arguments, ConsoleHost& host) override;
};

} // namespace qmr
