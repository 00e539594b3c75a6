#include "ui/PropertyPage.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTabWidget>
#include <QVBoxLayout>

namespace qmr {
namespace {

// A frame with a caption around one control.
QGroupBox* framed(const QString& caption, QWidget* control, QWidget* parent) {
    auto* frame = new QGroupBox(caption, parent);
    auto* layout = new QVBoxLayout(frame);
    if (control) layout->addWidget(control);
    return frame;
}

} // namespace

PropertyPage::PropertyPage(AppSettings& settings, const QString& scrapbookFolder, QWidget* parent)
    : QDialog(parent), m_settings(settings), m_iniPath(ScrapbookIniPath(scrapbookFolder)) {
    setWindowTitle(QStringLiteral("Options"));
    m_tabs = new QTabWidget(this);
    m_tabs->addTab(firstPage(), QStringLiteral("Scrapbook Property"));
    m_tabs->setTabToolTip(0, QStringLiteral("Set Options for Group 1"));
    m_tabs->addTab(secondPage(), QStringLiteral("Express Functions"));
    m_tabs->setTabToolTip(1, QStringLiteral("Set Options for Group 2"));
    m_tabs->setUsesScrollButtons(false); // every tab in view
    setMinimumWidth(420);

    auto* save = new QPushButton(QStringLiteral("&Save"), this);
    save->setObjectName(QStringLiteral("cmdOK"));
    save->setDefault(true);
    auto* cancel = new QPushButton(QStringLiteral("Cancel"), this);
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    cancel->setAutoDefault(false);
    m_make = new QPushButton(QStringLiteral("&Make"), this);
    m_make->setObjectName(QStringLiteral("cmdApply"));
    m_make->setAutoDefault(false);
    m_make->setToolTip(QStringLiteral("Build the e-book with these options, without saving them"));
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(save);
    buttons->addWidget(cancel);
    buttons->addWidget(m_make);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_tabs);
    layout->addLayout(buttons);

    connect(save, &QPushButton::clicked, this, &PropertyPage::save);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_make, &QPushButton::clicked, this, &PropertyPage::make);

    const ScrapbookProperties stored = m_settings.load_ScrapbookName(m_iniPath);
    m_name->setText(stored.name);
    m_linkToSource->setChecked(stored.linkToSourceURL);
    m_makeChm->setChecked(stored.makeChmFile);
    m_name->setFocus();

    // The page opens in the middle of the screen the window is on.
    adjustSize();
    const QRect screen = (parent ? parent->screen() : this->screen())->availableGeometry();
    move(screen.center() - rect().center());
}

QWidget* PropertyPage::firstPage() {
    auto* page = new QWidget(this);
    m_name = new QLineEdit(page);
    m_name->setObjectName(QStringLiteral("Text1"));
    m_linkToSource = new QCheckBox(QStringLiteral("&Link To Source URL"), page);
    m_linkToSource->setObjectName(QStringLiteral("LinkToSourceURL"));
    m_makeChm = new QCheckBox(QStringLiteral("Make &Chm file"), page);
    m_makeChm->setObjectName(QStringLiteral("MakeChmFile"));
    m_makeChm->setToolTip(QStringLiteral("Make chm ebook or Create content html only"));
    m_googleAD = new QCheckBox(QStringLiteral("&GoogleAD"), page);
    m_googleAD->setObjectName(QStringLiteral("GoogleADCheck"));
    m_contentFirst = new QCheckBox(QStringLiteral("&Used Conetnt Page"), page);
    m_contentFirst->setObjectName(QStringLiteral("FirstPageUsedConetnt"));

    auto* layout = new QVBoxLayout(page);
    layout->addWidget(framed(QStringLiteral("Scrapbook Name"), m_name, page));
    layout->addWidget(m_linkToSource);
    layout->addWidget(framed(QStringLiteral("Make Chm File"), m_makeChm, page));
    layout->addWidget(m_googleAD);
    layout->addWidget(framed(QStringLiteral("First Page"), m_contentFirst, page));
    layout->addStretch();
    return page;
}

QWidget* PropertyPage::secondPage() {
    auto* page = new QWidget(this);
    auto* layout = new QVBoxLayout(page);
    for (int sample = 2; sample <= 4; ++sample)
        layout->addWidget(framed(QStringLiteral("Sample %1").arg(sample), nullptr, page));
    layout->addStretch();
    return page;
}

ScrapbookProperties PropertyPage::properties() const {
    return {m_name->text(), m_linkToSource->isChecked(), m_makeChm->isChecked()};
}

bool PropertyPage::googleAD() const {
    return m_googleAD->isChecked();
}

void PropertyPage::setMakeEnabled(bool enabled) {
    m_make->setEnabled(enabled);
}

void PropertyPage::save() {
    m_settings.Save_ScrapbookProperties(m_iniPath, properties());
    accept();
}

void PropertyPage::make() {
    Q_EMIT makeRequested(properties(), googleAD());
    accept();
}

void PropertyPage::nextTab() {
    m_tabs->setCurrentIndex((m_tabs->currentIndex() + 1) % m_tabs->count());
}

// Inside the tabs the tab strip takes Ctrl+Tab itself; anywhere else on the page it comes here.
void PropertyPage::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Tab && event->modifiers() == Qt::ControlModifier)
        nextTab();
    else
        QDialog::keyPressEvent(event);
}

} // namespace qmr
