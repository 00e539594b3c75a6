#pragma once

#include "library/Settings.h"

#include <QDialog>

namespace qmr {

class DesktopServices;

// "About Quillmere": the program's title, version and description, "OK" and
// "&System Info...", which starts the machine's system-information program or says that
// there is none.
class AboutBox : public QDialog {
    Q_OBJECT
  public:
    AboutBox(DesktopServices& desktop, const DesktopTools& tools, QWidget* parent);

    void showSystemInformation();

  private:
    DesktopServices& m_desktop;
    QString m_configuredSystemInformation;
};

} // namespace qmr
