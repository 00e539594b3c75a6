#include "ui/WindowPlacement.h"

#include "library/FormPosition.h"
#include "library/cInifile.h"

#include <QScreen>
#include <QWidget>

namespace qmr {
namespace {

cInifile placementIni(const QString& iniPath, const QString& section) {
    cInifile ini;
    ini.Path = iniPath;
    ini.Section = section;
    return ini;
}

} // namespace

void SaveWindowPlacement(const QWidget* window, const QString& iniPath, const QString& section) {
    cInifile ini = placementIni(iniPath, section);
    SaveFormPosition(ini, {window->normalGeometry().isValid() && window->isMaximized()
                               ? window->normalGeometry()
                               : window->geometry(),
                           window->isMaximized(), window->isMinimized()});
}

void LoadWindowPlacement(QWidget* window, const QString& iniPath, const QString& section,
                         QSize minimum, QSize firstSize) {
    const QRect screen = window->screen()->availableGeometry();
    QString stored;
    IniRead(iniPath, section, QStringLiteral("Width"), stored);
    if (stored.isEmpty()) { // the first run: a good size in the middle of the screen
        window->resize(firstSize.boundedTo(screen.size()).expandedTo(minimum));
        window->move(screen.center() - window->rect().center());
        return;
    }
    cInifile ini = placementIni(iniPath, section);
    const FormPlacement placed =
        LoadFormPosition(ini, {window->geometry(), false, false}, minimum, screen);
    window->setGeometry(placed.frame);
    if (placed.maximised) window->setWindowState(window->windowState() | Qt::WindowMaximized);
}

} // namespace qmr
