#include "ui/DesktopServices.h"

#include "platform/PathSeparators.h"
#include "platform/Processes.h"

#include <QFile>
#include <QFileDialog>
#include <QMessageBox>

// The icons are built into the window's library, which the program links statically.
static void initialiseUiResources() {
    Q_INIT_RESOURCE(quillmere);
}

namespace qmr {

QIcon ApplicationIcon() {
    initialiseUiResources();
    QIcon icon;
    for (const char* size : {"16", "32"})
        icon.addFile(QStringLiteral(":/quillmere/quillmere-%1.png").arg(QLatin1String(size)));
    icon.addFile(QStringLiteral(":/quillmere/quillmere.png"));
    return icon;
}

QByteArray ApplicationIconPng() {
    initialiseUiResources();
    QFile file(QStringLiteral(":/quillmere/quillmere.png"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void SystemDesktop::information(QWidget* parent, const QString& text) {
    QMessageBox::information(parent, ApplicationTitle(), text);
}

bool SystemDesktop::askOkCancel(QWidget* parent, const QString& text) {
    return QMessageBox::question(parent, ApplicationTitle(), text,
                                 QMessageBox::Ok | QMessageBox::Cancel) == QMessageBox::Ok;
}

QString SystemDesktop::chooseFolder(QWidget* parent, const QString& prompt) {
    return QFileDialog::getExistingDirectory(parent, prompt);
}

bool SystemDesktop::startProgram(const QStringList& command) {
    return StartDetached(command);
}

bool SystemDesktop::openDocument(const QString& pathOrUrl) {
    return OpenWithDefaultProgram(pathOrUrl);
}

void StartOutsideProgram(DesktopServices& desktop, QWidget* parent, const QStringList& command,
                         const char* settingKey, const QString& iniPath) {
    if (!command.isEmpty() && desktop.startProgram(command)) return;
    const QString problem = command.isEmpty()
                                ? QStringLiteral("No program for this is known on this computer.")
                                : QStringLiteral("Cannot start \"%1\".").arg(command.first());
    desktop.information(parent,
                        problem + QStringLiteral(" Name the program to use as %1 in the "
                                                 "[Tools] section of %2.")
                                      .arg(QLatin1String(settingKey), ToNativePath(iniPath)));
}

} // namespace qmr
