#include "ui/ToolsWindow.h"

#include "authoring/MultiBook.h"
#include "library/FirefoxScrapbook.h"
#include "library/Session.h"
#include "platform/DesktopPrograms.h"
#include "platform/PathSeparators.h"
#include "ui/DesktopServices.h"

#include <QDir>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace qmr {
namespace {

// The tools window's own log takes the multi-scrapbook list's lines.
class ToolsLogHost : public BuildHost {
  public:
    ToolsLogHost(QListWidget* log, DesktopServices& desktop, QWidget* window)
        : m_log(log), m_desktop(desktop), m_window(window) {}
    void add2loglist(const QString& line) override {
        m_log->addItem(line);
        m_log->setCurrentRow(m_log->count() - 1);
    }
    void messageBox(const QString& text) override { m_desktop.information(m_window, text); }
    bool askOkCancel(const QString& text) override { return m_desktop.askOkCancel(m_window, text); }
    void openDocument(const QString& pathOrUrl) override { m_desktop.openDocument(pathOrUrl); }

  private:
    QListWidget* m_log;
    DesktopServices& m_desktop;
    QWidget* m_window;
};

} // namespace

ToolsWindow::ToolsWindow(Session& session, DesktopServices& desktop, QWidget* parent)
    : QMainWindow(parent, Qt::Window), m_session(session), m_desktop(desktop) {
    setWindowTitle(QStringLiteral("Power User Function"));
    m_management = menuBar()->addMenu(QStringLiteral("&Scrapbook Management"));
    connect(m_management->addAction(QStringLiteral("Open &Default Scrapbook Data Folder")),
            &QAction::triggered, this, &ToolsWindow::openDefaultScrapbookFolder);
    connect(m_management->addAction(QStringLiteral("Open with &Total commander")),
            &QAction::triggered, this, &ToolsWindow::openWithFileManager);
    connect(m_management->addAction(QStringLiteral("Dir to &Multi Scrapbook")), &QAction::triggered,
            this, &ToolsWindow::dirToMultiScrapbook);
    m_thumbnails = menuBar()->addMenu(QStringLiteral("T&umbnail"));
    // Device settings are offered only where the desktop has a program for them.
    if (!DeviceSettingsCommand(m_session.settings.desktopTools().deviceSettings).isEmpty()) {
        QMenu* tools = menuBar()->addMenu(QStringLiteral("T&ools"));
        connect(tools->addAction(QStringLiteral("&Device Management")), &QAction::triggered, this,
                &ToolsWindow::deviceManagement);
    }

    auto* central = new QWidget(this);
    m_base = new QLineEdit(central);
    m_base->setPlaceholderText(QStringLiteral("A folder whose subfolders are scrapbooks"));
    auto* browse = new QPushButton(QStringLiteral("B&rowse..."), central);
    connect(browse, &QPushButton::clicked, this, [this] {
        const QString chosen = m_desktop.chooseFolder(this, QStringLiteral("Base folder"));
        if (!chosen.isEmpty()) m_base->setText(ToNativePath(chosen));
    });
    auto* baseRow = new QHBoxLayout;
    baseRow->addWidget(m_base, 1);
    baseRow->addWidget(browse);
    auto* baseLabel = new QLabel(QStringLiteral("&Base folder:"), central);
    baseLabel->setBuddy(m_base);
    auto* form = new QFormLayout;
    form->addRow(baseLabel, baseRow);
    m_log = new QListWidget(central);
    auto* layout = new QVBoxLayout(central);
    layout->addLayout(form);
    layout->addWidget(m_log, 1);
    setCentralWidget(central);
    resize(560, 360);
}

void ToolsWindow::addThumbnailCommands(const QList<QAction*>& commands) {
    for (QAction* action : commands)
        if (action) m_thumbnails->addAction(action);
}

void ToolsWindow::addStoreCommand(QAction* command) {
    if (command) m_management->addAction(command);
}

QAction* ToolsWindow::command(const QString& caption) const {
    for (QMenu* menu : menuBar()->findChildren<QMenu*>())
        for (QAction* action : menu->actions())
            if (QString(action->text()).remove(QLatin1Char('&')) == caption) return action;
    return nullptr;
}

void ToolsWindow::start(const QStringList& command, const char* settingKey) {
    StartOutsideProgram(m_desktop, this, command, settingKey, m_session.settings.globalIniPath());
}

void ToolsWindow::openDefaultScrapbookFolder() {
    start(FileManagerCommand(m_session.settings.desktopTools().fileManager,
                             FindFirefoxScrapbookFolder()),
          Keys::FileManager.key);
}

void ToolsWindow::openWithFileManager() {
    if (m_session.currentFolder().isEmpty()) {
        m_desktop.information(this, QStringLiteral("Please select a scrapbook in the list first!"));
        return;
    }
    start(TwoPaneFileManagerCommand(m_session.settings.desktopTools().fileManager,
                                    m_session.currentFolder()),
          Keys::FileManager.key);
}

void ToolsWindow::dirToMultiScrapbook() {
    QString base = QDir::fromNativeSeparators(m_base->text().trimmed());
    if (base.isEmpty()) {
        m_desktop.information(this, QStringLiteral("Type the base folder first: the folder whose "
                                                   "subfolders are scrapbooks."));
        return;
    }
    if (!base.endsWith(QLatin1Char('/'))) base += QLatin1Char('/');
    ToolsLogHost host(m_log, m_desktop, this);
    const MultiBookResult result = Menu_Dir2MultiScrapbook_Click(base, m_session.folders, host);
    for (const QString& problem : result.problems)
        host.add2loglist(problem);
}

void ToolsWindow::deviceManagement() {
    start(DeviceSettingsCommand(m_session.settings.desktopTools().deviceSettings),
          Keys::DeviceSettings.key);
}

} // namespace qmr
