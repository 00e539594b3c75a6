#pragma once

#include <QString>

namespace qmr {

// What a builder may ask of whoever runs it: the desktop window shows these, the command line
// prints them. The libraries never show a widget themselves.
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
};

} // namespace qmr
