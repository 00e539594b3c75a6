#pragma once

#include "cli/Command.h"

namespace qmr {

// quillmere ebook FOLDER [options]: builds the e-book of a scrapbook, as "Make Ebook" does.
class EbookCommand : public Command {
  public:
    QString name() const override { return QStringLiteral("ebook"); }
    QString arguments() const override;
    QString description() const override;
    int execute(const QStringList& arguments, ConsoleHost& host) override;
};

} // namespace qmr
