#include "ui/MainWindow.h"

#include "catalogue/TextFiles.h"
#include "platform/FileAssociation.h"
#include "platform/PathSeparators.h"
#include "ui/AboutBox.h"
#include "ui/BuildRunner.h"
#include "ui/DesktopServices.h"
#include "ui/LanguageDialog.h"
#include "ui/PropertyPage.h"
#include "ui/ScrapbookListModel.h"
#include "ui/SlideShow.h"
#include "ui/ToolsWindow.h"
#include "ui/WebsiteScheduleTimer.h"
#include "ui/WindowHost.h"
#include "ui/WindowPlacement.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTimer>
#include <QTreeView>
#include <QVBoxLayout>

namespace qmr {
namespace {

const QString kSelectFirst = QStringLiteral("Please select a scrapbook in the list first!");
const QSize kMinimumSize(640, 420);

int pixelsOfTwips(int twips) {
    return twips / 15;
}

QPushButton* button(const QString& caption, QWidget* parent) {
    auto* made = new QPushButton(caption, parent);
    made->setAutoDefault(false);
    return made;
}

} // namespace

MainWindow::MainWindow(DesktopServices& desktop, QWidget* parent)
    : QMainWindow(parent), m_desktop(desktop), m_host(std::make_unique<WindowHost>(desktop, this)),
      m_session(std::make_unique<Session>(*m_host)),
      m_runner(std::make_unique<BuildRunner>(*m_host)) {
    setWindowTitle(QStringLiteral("Quillmere Ebook Converter Ver " QMR_VERSION));
    setWindowIcon(ApplicationIcon());
    setMinimumSize(kMinimumSize);
    m_model = new ScrapbookListModel(m_session->list, this);
    m_schedule = new WebsiteScheduleTimer(this);
    buildWidgets();
    buildMenus();
    wireSignals();
    LoadWindowPlacement(this, m_session->settings.globalIniPath(),
                        QLatin1String(Keys::MainWindowSection), kMinimumSize, QSize(980, 640));
}

MainWindow::~MainWindow() = default;

void MainWindow::buildWidgets() {
    auto* central = new QWidget(this);
    auto* layout = new QVBoxLayout(central);

    m_caption = new QLabel(central);
    QFont captionFont = m_caption->font();
    captionFont.setBold(true);
    captionFont.setPointSizeF(captionFont.pointSizeF() * 1.25);
    m_caption->setFont(captionFont);
    m_caption->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(m_caption);

    m_listView = new QTreeView(central);
    m_listView->setModel(m_model);
    m_listView->setRootIsDecorated(false);
    m_listView->setItemsExpandable(false);
    m_listView->setUniformRowHeights(true);
    m_listView->setAlternatingRowColors(true);
    m_listView->setSelectionMode(QAbstractItemView::SingleSelection);
    m_listView->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_listView->setEditTriggers(QAbstractItemView::NoEditTriggers);
    for (std::size_t i = 0; i < kScrapbookListColumns.size(); ++i)
        m_listView->setColumnWidth(int(i), pixelsOfTwips(kScrapbookListColumns.at(i).widthTwips));
    m_listView->header()->setStretchLastSection(true);

    auto* buildFrame = new QGroupBox(QStringLiteral("Build"), central);
    auto* buildLayout = new QVBoxLayout(buildFrame);
    m_buildTitle = new QLabel(buildFrame);
    m_progress = new QProgressBar(buildFrame);
    m_progress->setTextVisible(false);
    m_finishedMark = new QLabel(buildFrame);
    m_finishedMark->hide();
    m_cancel = button(QStringLiteral("&Stop"), buildFrame);
    m_cancel->setToolTip(QStringLiteral("Stop the work after the step under way"));
    auto* markRow = new QHBoxLayout;
    markRow->addWidget(m_finishedMark);
    markRow->addStretch();
    markRow->addWidget(m_cancel);
    m_viewContent = button(QStringLiteral("View &Content"), buildFrame);
    m_openEbook = button(QStringLiteral("&Open Ebook"), buildFrame);
    m_viewBooksList = button(QStringLiteral("View &Books List"), buildFrame);
    auto* viewRow = new QHBoxLayout;
    viewRow->addWidget(m_viewContent);
    viewRow->addWidget(m_openEbook);
    viewRow->addWidget(m_viewBooksList);
    viewRow->addStretch();
    buildLayout->addWidget(m_buildTitle);
    buildLayout->addWidget(m_progress);
    buildLayout->addLayout(markRow);
    buildLayout->addLayout(viewRow);
    buildLayout->addStretch();

    m_frames = new QStackedWidget(central);
    m_frames->addWidget(m_listView);
    m_frames->addWidget(buildFrame);

    m_log = new QListWidget(central);
    m_log->setUniformItemSizes(true);
    m_log->setObjectName(QStringLiteral("log"));
    m_log->setAccessibleName(QStringLiteral("Log"));
    auto* splitter = new QSplitter(Qt::Vertical, central);
    splitter->addWidget(m_frames);
    splitter->addWidget(m_log);
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 2);
    splitter->setChildrenCollapsible(false);
    layout->addWidget(splitter, 1);

    m_index2org = new QCheckBox(QStringLiteral("Index &2 ORG"), central);
    m_index2org->setToolTip(QStringLiteral("Keep each saved page as ORG.html before a build "
                                           "changes it"));
    m_appendRefList = new QCheckBox(QStringLiteral("Append &Ref List"), central);
    m_appendRefList->setToolTip(QStringLiteral("Append the list of its folder's pages to every "
                                               "saved page"));
    m_powerUser = button(QStringLiteral("&Power User Function"), central);
    m_showList = button(QStringLiteral("Show Scrapbooks &List"), central);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_index2org);
    bottom->addWidget(m_appendRefList);
    bottom->addStretch();
    bottom->addWidget(m_powerUser);
    bottom->addWidget(m_showList);
    layout->addLayout(bottom);
    setCentralWidget(central);

    m_statusCount = new QLabel(QStringLiteral("Not scanned"), this);
    m_statusFolder = new QLabel(QStringLiteral("Scrapbook statistics"), this);
    m_statusFolder->setTextInteractionFlags(Qt::TextSelectableByMouse);
    statusBar()->addWidget(m_statusCount);
    statusBar()->addWidget(m_statusFolder, 1);

    // Tab goes from the list to the log, the check boxes and the buttons, in reading order.
    setTabOrder(m_listView, m_cancel);
    setTabOrder(m_cancel, m_viewContent);
    setTabOrder(m_viewContent, m_openEbook);
    setTabOrder(m_openEbook, m_viewBooksList);
    setTabOrder(m_viewBooksList, m_log);
    setTabOrder(m_log, m_index2org);
    setTabOrder(m_index2org, m_appendRefList);
    setTabOrder(m_appendRefList, m_powerUser);
    setTabOrder(m_powerUser, m_showList);
}

QAction* MainWindow::addCommand(QMenu* menu, const QString& caption, void (MainWindow::*slot)(),
                                const QKeySequence& shortcut) {
    QAction* action = menu->addAction(caption);
    action->setShortcut(shortcut);
    connect(action, &QAction::triggered, this, slot);
    return action;
}

void MainWindow::buildMenus() {
    QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
    addCommand(file, QStringLiteral("Open .rdf Files with &Quillmere"),
               &MainWindow::associateCatalogues);
    file->addSeparator();
    addCommand(file, QStringLiteral("E&xit"), &MainWindow::exitProgram, QKeySequence::Quit);

    QMenu* scrapbook = menuBar()->addMenu(QStringLiteral("&Scrapbook"));
    addCommand(scrapbook, QStringLiteral("&Open Scrapbook Folder"),
               &MainWindow::openScrapbookFolder, QKeySequence(Qt::CTRL | Qt::Key_O));
    addCommand(scrapbook, QStringLiteral("Open &Content Page"), &MainWindow::openContentPage);
    addCommand(scrapbook, QStringLiteral("&Automatic Slider Show Pictures"),
               &MainWindow::slideShowPictures, QKeySequence(Qt::Key_F11));
    scrapbook->addSeparator();
    m_buildCommands << addCommand(scrapbook,
                                  QStringLiteral("&DeleteScrapbook in this List but keep data"),
                                  &MainWindow::deleteScrapbookFromList, QKeySequence::Delete);
    addCommand(scrapbook, QStringLiteral("Scrapbok &Property"), &MainWindow::scrapbookProperty,
               QKeySequence(Qt::ALT | Qt::Key_Return));

    QMenu* ebook = menuBar()->addMenu(QStringLiteral("&Ebook"));
    m_buildCommands << addCommand(ebook, QStringLiteral("&Make Ebook"), &MainWindow::makeEbook,
                                  QKeySequence(Qt::Key_F9));
    addCommand(ebook, QStringLiteral("Select Ebook &Language"), &MainWindow::selectEbookLanguage);
    addCommand(ebook, QStringLiteral("&Open Chm Ebook Output Library"),
               &MainWindow::openEbookOutputLibrary);

    m_expressMenu = menuBar()->addMenu(QStringLiteral("E&xpress Functions"));
    QMenu* express = m_expressMenu;
    m_buildCommands
        << addCommand(express, QStringLiteral("Build &all websites with all functions"),
                      &MainWindow::buildAllWebsites)
        << addCommand(express, QStringLiteral("Build a &website with All functions"),
                      &MainWindow::buildWebsite)
        << addCommand(express, QStringLiteral("Create &Home Page"), &MainWindow::createHomePage)
        << addCommand(express, QStringLiteral("Create &Photo Page"), &MainWindow::createPhotoPage)
        << addCommand(express, QStringLiteral("Create &Icons"), &MainWindow::createIcons)
        << addCommand(express, QStringLiteral("Create Icons&640x480"),
                      &MainWindow::createScreenCopies);
    express->addSeparator();
    m_buildCommands << addCommand(express, QStringLiteral("&Converter File Folder to Scrapbook"),
                                  &MainWindow::convertFolderToScrapbook)
                    << addCommand(express, QStringLiteral("Add Scrapbook to &MutiScrapbook List"),
                                  &MainWindow::addScrapbookToMultiList)
                    << addCommand(express, QStringLiteral("&Save to MutiScrapbook"),
                                  &MainWindow::saveToMultiList);
    express->addSeparator();
    m_scheduleCommand =
        addCommand(express, QStringLiteral("Schedu&le Create All Scrapbook's Website"),
                   &MainWindow::toggleSchedule);
    m_scheduleCommand->setCheckable(true);
    express->addSeparator();
    addCommand(express, QStringLiteral("Con&tent Post for Forum"), &MainWindow::editForumPost);
    addCommand(express, QStringLiteral("Create Post for &Forum"), &MainWindow::editForumPost);
    addCommand(express, QStringLiteral("&Edit ScrapBookStore.txt "),
               &MainWindow::editScrapbookStore);
    express->addSeparator();
    m_buildCommands << addCommand(express, QStringLiteral("Make &Video on Html Page"),
                                  &MainWindow::makeVideoPage)
                    << addCommand(express,
                                  QStringLiteral("Create Windows Media Player List for Vi&deo"),
                                  &MainWindow::createMediaPlayerLists);

    QMenu* help = menuBar()->addMenu(QStringLiteral("&Help"));
    addCommand(help, QStringLiteral("&Project Page"), &MainWindow::openProjectPage,
               QKeySequence::HelpContents);
    addCommand(help, QStringLiteral("&Forum and Download"), &MainWindow::openForumPage);
    help->addSeparator();
    addCommand(help, QStringLiteral("&About"), &MainWindow::about);
}

PropertyPage* MainWindow::propertyPage() const {
    return m_propertyPage;
}
LanguageDialog* MainWindow::languageDialog() const {
    return m_languageDialog;
}
ToolsWindow* MainWindow::toolsWindow() const {
    return m_toolsWindow;
}
AboutBox* MainWindow::aboutBox() const {
    return m_aboutBox;
}
SlideShow* MainWindow::slideShow() const {
    return m_slideShow;
}

QAction* MainWindow::command(const QString& caption) const {
    for (QAction* action : findChildren<QAction*>())
        if (QString(action->text()).remove(QLatin1Char('&')) == caption) return action;
    return nullptr;
}

void MainWindow::wireSignals() {
    connect(m_host.get(), &WindowHost::logLine, this, &MainWindow::add2loglist);
    connect(m_host.get(), &WindowHost::progressChanged, this, [this](qint64 value, qint64 total) {
        m_progress->setRange(0, total > 0 ? 1000 : 0);
        if (total > 0) m_progress->setValue(int(value * 1000 / total));
    });
    connect(m_runner.get(), &BuildRunner::busyChanged, this, [this](bool busy) {
        updateEnabledStates();
        if (!busy && m_closeWhenIdle) QTimer::singleShot(0, this, &QWidget::close);
    });
    connect(m_listView->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                if (!m_syncingSelection && current.isValid()) rowChosen(current.row() + 1);
            });
    connect(m_listView, &QTreeView::clicked, this,
            [this](const QModelIndex& index) { rowChosen(index.row() + 1); });
    connect(m_cancel, &QPushButton::clicked, this, [this] {
        m_host->requestCancel();
        add2loglist(QStringLiteral("Stopping after the step under way..."));
    });
    connect(m_viewContent, &QPushButton::clicked, this, &MainWindow::openContentPage);
    connect(m_openEbook, &QPushButton::clicked, this, &MainWindow::openEbook);
    connect(m_viewBooksList, &QPushButton::clicked, this, &MainWindow::viewBooksList);
    connect(m_powerUser, &QPushButton::clicked, this, &MainWindow::powerUserFunction);
    connect(m_showList, &QPushButton::clicked, this, &MainWindow::showListFrame);
    connect(m_schedule, &WebsiteScheduleTimer::due, this, &MainWindow::runScheduledBuild);
    // What a website build shows besides its log.
    connect(m_host.get(), &WindowHost::scrapbookFolderShown, this, [this](const QString& folder) {
        m_statusFolder->setText(ToNativePath(folder));
        m_statusFolder->setToolTip(m_statusFolder->text());
    });
    connect(m_host.get(), &WindowHost::scrapbookNameShown, m_caption, &QLabel::setText);
    connect(m_host.get(), &WindowHost::buildFrameWanted, this, &MainWindow::showBuildFrame);
}

void MainWindow::updateEnabledStates() {
    const bool busy = m_runner->busy();
    for (QAction* action : std::as_const(m_buildCommands))
        action->setEnabled(!busy);
    m_viewContent->setEnabled(m_ebookReady && !busy);
    m_openEbook->setEnabled(m_ebookReady && !busy && !m_lastBook.isEmpty());
    m_viewBooksList->setEnabled(m_ebookReady && !busy);
    m_showList->setEnabled(!busy);
    m_cancel->setEnabled(busy);
    if (busy) {
        m_progress->setRange(0, 0); // moving until the work reports how far it is
    } else {
        m_progress->setRange(0, 1);
        m_progress->setValue(m_finishedMark->isVisible() ? 1 : 0);
    }
}

void MainWindow::add2loglist(const QString& line) {
    m_log->addItem(line);
    m_log->setCurrentRow(m_log->count() - 1);
    m_log->scrollToBottom();
}

void MainWindow::showListFrame() {
    m_frames->setCurrentIndex(0);
}

void MainWindow::showBuildFrame() {
    m_frames->setCurrentIndex(1);
}

void MainWindow::syncList() {
    const ScrapbookList& list = m_session->list;
    m_syncingSelection = true;
    m_model->sync();
    if (list.selectedRow() > 0) {
        const QModelIndex selected = m_model->index(list.selectedRow() - 1, 0);
        m_listView->setCurrentIndex(selected);
        m_listView->scrollTo(selected);
    }
    m_syncingSelection = false;
    showCurrentScrapbook();
}

void MainWindow::showCurrentScrapbook() {
    const ScrapbookList& list = m_session->list;
    // A scrapbook whose settings name it not goes by its folder's name, as in the list.
    m_caption->setText(list.caption.isEmpty() && !list.currentFolder.isEmpty()
                           ? GetLastFolderName(RemoveBackslash(list.currentFolder))
                           : list.caption);
    m_statusCount->setText(list.statusCount);
    m_statusFolder->setText(ToNativePath(list.statusFolder));
    m_statusFolder->setToolTip(m_statusFolder->text());
}

// The rows stay as they are: only what shows the current scrapbook changes.
void MainWindow::rowChosen(int number) {
    m_session->selectRow(number);
    showCurrentScrapbook();
}

QString MainWindow::selectedFolder() const {
    return m_session->list.selectedRow() > 0 ? m_session->currentFolder() : QString();
}

bool MainWindow::requireSelection() {
    if (!selectedFolder().isEmpty()) return true;
    m_desktop.information(this, kSelectFirst);
    return false;
}

void MainWindow::startUp(const QStringList& arguments) {
    registerAssociation(false);
    m_ebookReady = false;
    m_finishedMark->hide();
    updateEnabledStates();
    QString folder = CommandLineFolder(arguments.join(QLatin1Char(' ')));
    if (!folder.isEmpty() && QDir::isRelativePath(folder))
        folder = QDir(folder).absolutePath() + QLatin1Char('/');
    m_session->commandLineFolder = folder;
    if (!folder.isEmpty()) m_session->list.currentFolder = folder;
    // From here on nothing stops the program: what goes wrong is told in the log.
    QDir().mkpath(m_session->ebookOutputFolder());
    const WebsiteSchedule schedule = m_session->settings.websiteSchedule();
    m_scheduleCommand->setChecked(schedule.enabled);
    m_schedule->setSchedule(schedule);
    loadList();
}

void MainWindow::loadList() {
    if (!m_runner->enterBusy()) return;
    show();
    showListFrame();
    // The list yields after every entry: the view takes a new copy then, and keeps it while
    // the next entry goes in.
    const QMetaObject::Connection perEntry =
        connect(m_host.get(), &WindowHost::yielding, this, &MainWindow::syncList);
    const ListLoadReport report = m_session->loadList();
    disconnect(perEntry);
    m_runner->leaveBusy();
    syncList();
    m_listView->setFocus();
    showLoadReport(report);
}

void MainWindow::showLoadReport(const ListLoadReport& report) {
    for (const InputError& skipped : report.skippedStoreLines)
        add2loglist(skipped.text());
    if (!report.storeProblem.isEmpty()) add2loglist(report.storeProblem);
}

void MainWindow::registerAssociation(bool claim) {
    DesktopIntegration integration;
    integration.programPath = QCoreApplication::applicationFilePath();
    integration.iconPng = ApplicationIconPng();
    const AssociationReport report = RegisterCatalogueAssociation(
        integration, claim ? AssociationClaim::TakeDefault : AssociationClaim::KeepOtherDefault);
    if (!report.problem.isEmpty())
        add2loglist(QStringLiteral("The .rdf file association was not registered: ") +
                    report.problem);
    if (!claim) return;
    if (report.isDefault)
        m_desktop.information(this, QStringLiteral("ScrapBook catalogues (.rdf files) now open "
                                                   "in Quillmere."));
    else
        m_desktop.information(this, QStringLiteral(".rdf files could not be given to "
                                                   "Quillmere: ") +
                                        report.problem);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (m_runner->busy()) {
        // Work under way ends first: the window closes as soon as it has stopped.
        m_closeWhenIdle = true;
        m_host->requestCancel();
        add2loglist(QStringLiteral("Closing once the work under way has stopped..."));
        event->ignore();
        return;
    }
    SaveWindowPlacement(this, m_session->settings.globalIniPath(),
                        QLatin1String(Keys::MainWindowSection));
    const QList<QWidget*> others{toolsWindow(), slideShow(), propertyPage(), languageDialog(),
                                 aboutBox()};
    for (QWidget* other : others)
        if (other) other->close();
    event->accept();
}

} // namespace qmr
