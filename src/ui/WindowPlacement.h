#pragma once

#include <QSize>
#include <QString>

class QWidget;

namespace qmr {

// A window's placement kept between runs in a section of an ini file (in twips, as
// SaveFormPosition writes it), and put back inside the screen it is on. With none stored yet,
// the window takes `firstSize` in the middle of the screen.
void SaveWindowPlacement(const QWidget* window, const QString& iniPath, const QString& section);
void LoadWindowPlacement(QWidget* window, const QString& iniPath, const QString& section,
                         QSize minimum, QSize firstSize);

} // namespace qmr
