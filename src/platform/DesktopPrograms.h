#pragma once

#include <QString>
#include <QStringList>

namespace qmr {

// The outside programs the window starts for the user, each as a command line (the program,
// then its arguments, the file or folder last). The user's own choice from the settings comes
// first; then the platform's program (on Windows those of the system, elsewhere the desktop's
// default programs). An empty list means this machine has no such program.

// The program that opens any file or address with the desktop's default application.
QStringList DefaultOpenerCommand(const QString& pathOrUrl);

// A text editor for `file`: the configured one, else Notepad on Windows, else $VISUAL, else
// $EDITOR, else the desktop's default program for the file.
QStringList TextEditorCommand(const QString& configured, const QString& file);

// A file manager on `folder`: the configured one, else Explorer on Windows, else the
// desktop's default program for folders.
QStringList FileManagerCommand(const QString& configured, const QString& folder);

// The two-pane file manager of the tools window: the configured file manager, else Total
// Commander in its usual place on Windows, else the desktop's default program for folders.
QStringList TwoPaneFileManagerCommand(const QString& configured, const QString& folder);

// A program that shows the machine's hardware and software: the configured one, else the
// system-information program the Windows registry names, else the first of the usual desktop
// ones found on the PATH. Empty when there is none.
QStringList SystemInformationCommand(const QString& configured);

// The desktop's settings for devices: the configured program, else the system's device
// settings on Windows, else the first desktop settings program found on the PATH.
QStringList DeviceSettingsCommand(const QString& configured);

} // namespace qmr
