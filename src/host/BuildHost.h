#pragma once

#include <QString>

namespace qmr {

// What a builder may ask of whoever runs it: the desktop window shows these, the command line
// prints them. The libraries never show a widget themselves. A builder calls its host from the
// thread that runs the build, never from the workers it starts.
class BuildHost {
  public:
    virtual ~BuildHost() = default;

    // One progress line in the log list.
    virtual void add2loglist(const QString& line) = 0;
    // A result that needs the user's attention (an information box in the window).
    virtual void messageBox(const QString& text) = 0;
    // An OK/Cancel question; true for OK.
    virtual bool askOkCancel(const QString& text) = 0;
    // Lets the window repaint and take input during a long loop.
    virtual void yield() {}
    // Opens a document, folder or web address with the desktop's default program.
    virtual void openDocument(const QString& pathOrUrl) = 0;
    // How far the current step is: `value` out of `total` (0 when the end is not known).
    virtual void progress(qint64 value, qint64 total) {
        Q_UNUSED(value);
        Q_UNUSED(total);
    }
    // True once the user has asked the build to stop. Builders ask where they yield, and stop
    // cleanly: no half-written file is left where a whole one stood.
    virtual bool cancelled() const { return false; }
};

// What a builder that stopped because the user asked it to says in its result and the log.
inline QString CancelledProblem() {
    return QStringLiteral("Stopped on request: the files made so far stay, the rest were not "
                          "made.");
}

} // namespace qmr
