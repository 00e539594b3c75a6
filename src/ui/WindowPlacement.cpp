#include "ui/WindowPlacement.h"

#include "library/FormPosition.h"

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
                         QSize minimum) {
    cInifile ini = placementIni(iniPath, section);
    const FormPlacement placed = LoadFormPosition(ini, {window->geometry(), false, false}, minimum,
                                                  window->screen()->availableGeometry());
    window->setGeometry(placed.frame);
    if (placed.maximised) window->setWindowState(window->windowState() | Qt::WindowMaximized);
}

} // namespace qmr
