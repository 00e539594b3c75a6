#pragma once

#include "cli/Command.h"

namespace qmr {

// quillmere convert-folder FOLDER: turns the files of FOLDER into a new scrapbook in
// FOLDER/scrapbook/ and registers it (the store and Firefox's multibook.txt).
class ConvertFolderCommand : public Command {
  public:
    QString name() const override { return QStringLiteral("convert-folder"); }
    QString arguments() const override { return QStringLiteral("FOLDER"); }
    QString description() const override;
    int execute(const QStringList& arguments, ConsoleHost& host) override;
};

} // namespace qmr
