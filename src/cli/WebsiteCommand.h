#pragma once

#include "cli/Command.h"

namespace qmr {

// quillmere website FOLDER [--step icons|icons640|photos|home] [--jobs N] [--no-open]
// [--google-ad]: builds the website of a scrapbook, as "Build a website with All functions"
// does, or one step of it as its own menu command does.
class WebsiteCommand : public Command {
  public:
    QString name() const override { return QStringLiteral("website"); }
    QString arguments() const override;
    QString description() const override;
    int execute(const QStringList& arguments, ConsoleHost& host) override;
};

// quillmere websites [--no-open] [--jobs N] [--google-ad]: the website of every scrapbook of
// the list, as "Build all websites with all functions" does; meant for a scheduler.
class WebsitesCommand : public Command {
  public:
    QString name() const override { return QStringLiteral("websites"); }
    QString arguments() const override;
    QString description() const override;
    int execute(const QStringList& arguments, ConsoleHost& host) override;
};

} // namespace qmr
