#pragma once

#include <QIcon>
#include <QString>
#include <QStringList>

class QWidget;

namespace qmr {

// Everything the window asks of the desktop and of the user outside its own widgets: message
// boxes, questions, the folder chooser, outside programs and documents. The window is given
// one; the tests give a recording one, so no dialog waits and nothing is started.
class DesktopServices {
  public:
    virtual ~DesktopServices() = default;
    // An information box with the application's title.
    virtual void information(QWidget* parent, const QString& text) = 0;
    // True for OK.
    virtual bool askOkCancel(QWidget* parent, const QString& text) = 0;
    // A folder the user picks, empty when cancelled.
    virtual QString chooseFolder(QWidget* parent, const QString& prompt) = 0;
    // Starts a program and leaves it running; false when it cannot be started.
    virtual bool startProgram(const QStringList& command) = 0;
    // Opens a document, folder or address with the desktop's default program.
    virtual bool openDocument(const QString& pathOrUrl) = 0;
};

// The real desktop: Qt's message boxes and folder chooser, detached programs.
class SystemDesktop : public DesktopServices {
  public:
    void information(QWidget* parent, const QString& text) override;
    bool askOkCancel(QWidget* parent, const QString& text) override;
    QString chooseFolder(QWidget* parent, const QString& prompt) override;
    bool startProgram(const QStringList& command) override;
    bool openDocument(const QString& pathOrUrl) override;
};

// Starts an outside program; when there is none, or it cannot start, tells the user which
// [Tools] setting of `iniPath` names the program to use instead.
void StartOutsideProgram(DesktopServices& desktop, QWidget* parent, const QStringList& command,
                         const char* settingKey, const QString& iniPath);

// The quill of the window, the about box and the desktop, in every size it is drawn in.
QIcon ApplicationIcon();
// The icon as a 256-pixel PNG file's bytes, for the desktop's icon folder.
QByteArray ApplicationIconPng();

// The application's title, in every message box and the about box.
inline QString ApplicationTitle() {
    return QStringLiteral("Quillmere");
}

} // namespace qmr
