#pragma once

#include "host/BuildHost.h"

#include <QString>

namespace qmr {

// The command line's side of the build host: log lines and messages go to stdout as they
// happen, questions are answered OK (a headless run has no one to ask), and documents are
// opened only when viewing is allowed.
class ConsoleHost : public BuildHost {
  public:
    void add2loglist(const QString& line) override;
    void messageBox(const QString& text) override;
    bool askOkCancel(const QString& text) override;
    void openDocument(const QString& pathOrUrl) override;

    bool allowOpeningDocuments = false;
};

// Writes text as UTF-8 to stdout or stderr, a line feed after it.
void PrintLine(const QString& text);
void PrintError(const QString& text);

} // namespace qmr
