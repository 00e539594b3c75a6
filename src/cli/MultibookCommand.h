#pragma once

#include "cli/Command.h"

namespace qmr {

// quillmere multibook add FOLDER | scan FOLDER: writes the multi-scrapbook list (multibook.txt)
// of Firefox's ScrapBook folder, from the known scrapbooks plus one, or from the scrapbooks
// found below a base folder.
class MultibookCommand : public Command {
  public:
    QString name() const override { return QStringLiteral("multibook"); }
    QString arguments() const override { return QStringLiteral("add FOLDER | scan FOLDER"); }
    QString description() const override;
    int execute(const QStringList& arguments, ConsoleHost& host) override;
};

} // namespace qmr
