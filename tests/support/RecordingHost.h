#pragma once

#include "host/BuildHost.h"

#include <QStringList>

namespace qmr::test {

// A build host that keeps what it was told, for tests to check.
class RecordingHost : public BuildHost {
  public:
    void add2loglist(const QString& line) override { log.append(line); }
    void messageBox(const QString& text) override { messages.append(text); }
    bool askOkCancel(const QString& text) override {
        questions.append(text);
        return answer;
    }
    void openDocument(const QString& pathOrUrl) override { opened.append(pathOrUrl); }

    QStringList log;
    QStringList messages;
    QStringList questions;
    QStringList opened;
    bool answer = true;
};

} // namespace qmr::test
