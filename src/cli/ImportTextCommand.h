#pragma once

#include "cli/Command.h"

namespace qmr {

// quillmere import-text FOLDER: turns FOLDER/data.txt into a scrapbook in FOLDER.
class ImportTextCommand : public Command {
  public:
    QString name() const override { return QStringLiteral("import-text"); }
    QString arguments() const override { return QStringLiteral("FOLDER"); }
    QString description() const override;
    int execute(const QStringList& arguments, ConsoleHost& host) override;
};

} // namespace qmr
