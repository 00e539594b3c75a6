#include "ui/AboutBox.h"

#include "platform/DesktopPrograms.h"
#include "ui/DesktopServices.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace qmr {

AboutBox::AboutBox(DesktopServices& desktop, const DesktopTools& tools, QWidget* parent)
    : QDialog(parent), m_desktop(desktop), m_configuredSystemInformation(tools.systemInformation) {
    setWindowTitle(QStringLiteral("About ") + ApplicationTitle());
    auto* icon = new QLabel(this);
    icon->setPixmap(ApplicationIcon().pixmap(64, 64));
    icon->setAlignment(Qt::AlignTop);
    auto* title = new QLabel(QStringLiteral("Quillmere Ebook Converter"), this);
    QFont titleFont = title->font();
    titleFont.setBold(true);
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.4);
    title->setFont(titleFont);
    auto* version = new QLabel(QStringLiteral("Version " QMR_VERSION), this);
    version->setObjectName(QStringLiteral("lblVersion"));
    auto* description =
        new QLabel(QStringLiteral("Makes compiled HTML Help e-books, websites and new scrapbooks "
                                  "from ScrapBook collections."),
                   this);
    description->setWordWrap(true);
    auto* line = new QFrame(this);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);

    auto* ok = new QPushButton(QStringLiteral("OK"), this);
    ok->setDefault(true);
    auto* systemInfo = new QPushButton(QStringLiteral("&System Info..."), this);
    systemInfo->setAutoDefault(false);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(systemInfo, &QPushButton::clicked, this, &AboutBox::showSystemInformation);

    auto* grid = new QGridLayout(this);
    grid->addWidget(icon, 0, 0, 3, 1);
    grid->addWidget(title, 0, 1);
    grid->addWidget(version, 1, 1);
    grid->addWidget(description, 2, 1);
    grid->addWidget(line, 3, 0, 1, 2);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(systemInfo);
    grid->addLayout(buttons, 4, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    setMinimumWidth(420);
    ok->setFocus();
}

void AboutBox::showSystemInformation() {
    const QStringList command = SystemInformationCommand(m_configuredSystemInformation);
    if (command.isEmpty() || !m_desktop.startProgram(command))
        m_desktop.information(this, QStringLiteral("System Information Is Unavailable At This "
                                                   "Time"));
}

} // namespace qmr
