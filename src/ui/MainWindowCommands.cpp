// The menu commands and buttons of the main window.
#include "ui/MainWindow.h"

#include "authoring/FolderConversion.h"
#include "authoring/MultiBook.h"
#include "catalogue/TextFiles.h"
#include "ebook/EbookBuild.h"
#include "ebook/LinkedPages.h"
#include "platform/DesktopPrograms.h"
#include "platform/PathSeparators.h"
#include "ui/AboutBox.h"
#include "ui/BuildRunner.h"
#include "ui/DesktopServices.h"
#include "ui/LanguageDialog.h"
#include "ui/PropertyPage.h"
#include "ui/SlideShow.h"
#include "ui/ToolsWindow.h"
#include "ui/WebsiteScheduleTimer.h"
#include "ui/WindowHost.h"
#include "website/WebsiteCommands.h"

#include <QAction>
#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

#include <memory>

namespace qmr {
namespace {

const QString kChooseFolder = QStringLiteral("Please Select Folder to Converter to Scrapbook");

QString chosenPath(const QString& folder) {
    return RemoveBackslash(QDir::fromNativeSeparators(folder));
}

} // namespace

void MainWindow::startOutsideProgram(const QStringList& command, const char* settingKey) {
    StartOutsideProgram(m_desktop, this, command, settingKey, m_session->settings.globalIniPath());
}

void MainWindow::buildFinished(bool succeeded) {
    m_finishedMark->setText(succeeded ? QStringLiteral("\u2714 Finished")
                                      : QStringLiteral("\u2716 Stopped: see the log below"));
    m_finishedMark->setStyleSheet(succeeded ? QStringLiteral("color: #008080; font-weight: bold;")
                                            : QStringLiteral("color: #a00000; font-weight: bold;"));
    m_finishedMark->show();
    updateEnabledStates();
}

void MainWindow::exitProgram() {
    close();
}

void MainWindow::associateCatalogues() {
    registerAssociation(true);
}

void MainWindow::openScrapbookFolder() {
    if (m_session->currentFolder().isEmpty()) {
        requireSelection();
        return;
    }
    startOutsideProgram(FileManagerCommand(m_session->settings.desktopTools().fileManager,
                                           m_session->currentFolder()),
                        Keys::FileManager.key);
}

QString MainWindow::contentPagePath() const {
    const QString start = m_session->currentFolder() + QStringLiteral("index.html");
    if (QFileInfo(start).isFile() || m_lastContentPage.isEmpty() ||
        !m_lastContentPage.startsWith(m_session->currentFolder()))
        return start;
    return m_lastContentPage;
}

void MainWindow::openContentPage() {
    const QString page = contentPagePath();
    if (m_session->currentFolder().isEmpty()) {
        requireSelection();
    } else if (!QFileInfo(page).isFile()) {
        m_desktop.information(this, QStringLiteral("%1 does not exist yet. Make Ebook writes the "
                                                   "scrapbook's content page.")
                                        .arg(ToNativePath(page)));
    } else if (!m_desktop.openDocument(page)) {
        m_desktop.information(this, QStringLiteral("Cannot open ") + ToNativePath(page));
    }
}

void MainWindow::slideShowPictures() {
    if (!requireSelection()) return;
    const QStringList pictures = ScreenPictureCopies(selectedFolder());
    if (pictures.isEmpty()) {
        m_desktop.information(this, QStringLiteral("%1 holds no screen-size picture copies yet. "
                                                   "Make them with Express Functions, Create "
                                                   "Icons640x480.")
                                        .arg(ToNativePath(selectedFolder())));
        return;
    }
    if (m_slideShow) m_slideShow->close();
    m_slideShow = new SlideShow(pictures);
    m_slideShow->setAttribute(Qt::WA_DeleteOnClose);
    m_slideShow->showFullScreen();
}

void MainWindow::deleteScrapbookFromList() {
    if (!requireSelection()) return;
    m_session->list.DeleteSelectedRow();
    syncList();
}

void MainWindow::scrapbookProperty() {
    if (m_session->currentFolder().isEmpty()) {
        requireSelection();
        return;
    }
    m_propertyPage = new PropertyPage(m_session->settings, m_session->currentFolder(), this);
    m_propertyPage->setAttribute(Qt::WA_DeleteOnClose);
    m_propertyPage->setMakeEnabled(!m_runner->busy());
    connect(m_runner.get(), &BuildRunner::busyChanged, m_propertyPage,
            [page = m_propertyPage](bool busy) { page->setMakeEnabled(!busy); });
    connect(m_propertyPage, &PropertyPage::makeRequested, this,
            [this](const ScrapbookProperties& properties, bool googleAD) {
                EbookRequest request = EbookRequestFor(*m_session);
                request.folder = selectedFolder();
                request.options.linkToSourceURL = properties.linkToSourceURL;
                request.options.makeChmFile = properties.makeChmFile;
                request.options.googleAD = googleAD;
                request.chrome.scrapbookName = properties.name.trimmed().isEmpty()
                                                   ? request.chrome.scrapbookName
                                                   : properties.name.trimmed();
                startEbookBuild(request);
            });
    // Once the page has closed, the builders read what is stored again.
    connect(m_propertyPage, &QDialog::finished, this, [this] { m_session->forgetProperties(); });
    m_propertyPage->open();
}

void MainWindow::makeEbook() {
    EbookRequest request = EbookRequestFor(*m_session);
    request.folder = selectedFolder();
    startEbookBuild(request);
}

void MainWindow::startEbookBuild(EbookRequest request) {
    if (request.folder.isEmpty()) {
        requireSelection();
        return;
    }
    request.options.index2org = m_index2org->isChecked();
    request.options.appendFolderPage = m_appendRefList->isChecked();
    m_log->clear();
    m_finishedMark->hide();
    m_ebookReady = false;
    m_buildTitle->setText(QStringLiteral("Building the e-book of %1 in %2")
                              .arg(request.chrome.scrapbookName, ToNativePath(request.folder)));
    showBuildFrame();
    auto result = std::make_shared<EbookResult>();
    m_runner->start(
        [request, result](BuildHost& host) { *result = StartCreateChmEbook(host, request); },
        [this, result] {
            m_lastBook = result->chmPath;
            m_lastContentPage = result->contentPage;
            m_ebookReady = result->ok;
            buildFinished(result->ok);
            if (!result->ok && !result->cancelled && !result->problem.isEmpty())
                m_desktop.information(this, result->problem);
        });
}

void MainWindow::selectEbookLanguage() {
    m_languageDialog = new LanguageDialog(m_session->settings, this);
    m_languageDialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(m_languageDialog, &QDialog::accepted, this,
            [this, dialog = m_languageDialog] { m_session->setLanguage(dialog->language()); });
    m_languageDialog->open();
}

void MainWindow::openEbookOutputLibrary() {
    startOutsideProgram(FileManagerCommand(m_session->settings.desktopTools().fileManager,
                                           m_session->ebookOutputFolder()),
                        Keys::FileManager.key);
}

WebsiteOptions MainWindow::websiteOptions() const {
    WebsiteOptions options;
    options.addresses = m_session->settings.siteAddresses();
    options.limits = m_session->settings.catalogueLimits();
    return options;
}

void MainWindow::runWebsiteCommand(const QString& title, WebsiteCommand command) {
    if (!requireSelection()) return;
    const WebsiteRequest request = WebsiteRequestFor(m_session->settings, selectedFolder(),
                                                     m_session->list.caption, websiteOptions());
    m_finishedMark->hide();
    m_buildTitle->setText(title.arg(ToNativePath(request.folder)));
    showBuildFrame();
    auto result = std::make_shared<WebsiteResult>();
    m_runner->start(
        [request, command, result](BuildHost& host) { *result = command(host, request); },
        [this, result] {
            buildFinished(result->ok);
            if (!result->ok && !m_host->cancelled() && !result->problem.isEmpty())
                m_desktop.information(this, result->problem);
        });
}

void MainWindow::buildAllWebsites() {
    // The run reads each scrapbook's settings through a copy of the settings object of its
    // own, so that the window may go on reading its own meanwhile.
    auto settings = std::make_shared<AppSettings>(m_session->settings);
    const QList<ScrapbookRow> rows = m_session->list.rows();
    WebsiteOptions options = websiteOptions();
    options.prepare = [this, settings](const WebsiteRequest& request) {
        return WriteMissingLinkedPages(*m_host, request, settings->Load_Settings(),
                                       settings->HomePageFilename);
    };
    m_finishedMark->hide();
    m_buildTitle->setText(QStringLiteral("Building the website of every scrapbook in the list"));
    showBuildFrame();
    auto all = std::make_shared<AllWebsitesResult>();
    m_runner->start(
        [this, rows, settings, options, all](BuildHost& host) {
            *all = BuildAllWebsites(host, *m_host, rows, *settings, options);
        },
        [this, all] {
            if (!all->failed.isEmpty())
                add2loglist(QStringLiteral("These websites failed: ") +
                            all->failed.join(QStringLiteral(", ")));
            buildFinished(all->failed.isEmpty() && !all->cancelled);
        });
}

void MainWindow::buildWebsite() {
    // The pages the site links come first, where the e-book build has not written them yet.
    const EbookLanguage language = m_session->options().language;
    const QString homePage = m_session->settings.HomePageFilename;
    runWebsiteCommand(QStringLiteral("Building the website of %1"),
                      [this, language, homePage](BuildHost& host, const WebsiteRequest& request) {
                          const WebsiteResult linked =
                              WriteMissingLinkedPages(host, request, language, homePage);
                          if (!linked.ok) return linked;
                          return menu_Build_Website_All(host, *m_host, request);
                      });
}

void MainWindow::createHomePage() {
    runWebsiteCommand(QStringLiteral("Making the gallery of %1"), &CreateHomePage);
}

void MainWindow::createPhotoPage() {
    runWebsiteCommand(QStringLiteral("Making the photo pages of %1"), &CreatePhotoPages);
}

void MainWindow::createIcons() {
    runWebsiteCommand(QStringLiteral("Making the 100x75 picture copies in %1"), &CreateIcons);
}

void MainWindow::createScreenCopies() {
    runWebsiteCommand(QStringLiteral("Making the 640x480 picture copies in %1"),
                      &CreateIcons640x480);
}

void MainWindow::convertFolderToScrapbook() {
    const QString folder = chosenPath(m_desktop.chooseFolder(this, kChooseFolder));
    if (folder.isEmpty()) return;
    PageChrome chrome;
    chrome.scrapbookName = GetLastFolderName(folder);
    chrome.addresses = m_session->settings.siteAddresses();
    m_finishedMark->hide();
    m_buildTitle->setText(QStringLiteral("Converting ") + ToNativePath(folder));
    showBuildFrame();
    auto result = std::make_shared<ConversionResult>();
    m_runner->start(
        [folder, chrome, result](BuildHost& host) {
            AuthoringContext context(host);
            context.chrome = chrome;
            *result = ConvertFolderToScrapbook(context, folder, ListFolderFiles(folder));
        },
        [this, result] {
            if (!result->ok) {
                add2loglist(result->problem);
                buildFinished(false);
                if (!m_host->cancelled()) m_desktop.information(this, result->problem);
                return;
            }
            add2loglist(QStringLiteral("Converted %1 files into %2")
                            .arg(result->itemCount)
                            .arg(ToNativePath(result->scrapbookFolder)));
            const MultiBookResult registered =
                RegisterNewScrapbook(m_session->list, result->scrapbookName,
                                     RemoveBackslash(result->scrapbookFolder), m_session->folders);
            for (const QString& problem : registered.problems)
                add2loglist(QStringLiteral("The scrapbook was made, but ") + problem);
            syncList();
            buildFinished(true);
        });
}

void MainWindow::addToMultiList(const QString& path) {
    const MultiBookResult result =
        AddToMultiScrapbookList(m_session->list, GetLastFolderName(path), path, m_session->folders);
    for (const QString& problem : result.problems)
        add2loglist(problem);
    if (result.copied)
        add2loglist(QStringLiteral("multibook.txt lists %1 scrapbooks").arg(result.entries.size()));
    syncList();
}

void MainWindow::addScrapbookToMultiList() {
    const QString path = chosenPath(m_desktop.chooseFolder(this, kChooseFolder));
    if (!path.isEmpty()) addToMultiList(path);
}

void MainWindow::saveToMultiList() {
    if (requireSelection()) addToMultiList(RemoveBackslash(selectedFolder()));
}

void MainWindow::toggleSchedule() {
    WebsiteSchedule schedule = m_session->settings.websiteSchedule();
    schedule.enabled = m_scheduleCommand->isChecked();
    m_session->settings.saveWebsiteSchedule(schedule);
    m_schedule->setSchedule(schedule);
    if (schedule.enabled)
        add2loglist(QStringLiteral("Every website will be built each day at %1 ([Schedule] Time "
                                   "in %2).")
                        .arg(schedule.time.toString(QStringLiteral("HH:mm")),
                             ToNativePath(m_session->settings.globalIniPath())));
    else
        add2loglist(QStringLiteral("The daily build of every website is off."));
}

void MainWindow::runScheduledBuild() {
    if (m_runner->busy()) {
        add2loglist(QStringLiteral("The daily build of every website was skipped: other work "
                                   "was under way."));
        return;
    }
    buildAllWebsites();
}

void MainWindow::editForumPost() {
    if (!requireSelection()) return;
    startOutsideProgram(TextEditorCommand(m_session->settings.desktopTools().textEditor,
                                          selectedFolder() + QStringLiteral("forum.txt")),
                        Keys::TextEditor.key);
}

void MainWindow::editScrapbookStore() {
    startOutsideProgram(
        TextEditorCommand(m_session->settings.desktopTools().textEditor, m_session->storePath()),
        Keys::TextEditor.key);
}

void MainWindow::makeVideoPage() {
    runWebsiteCommand(QStringLiteral("Making the video pages of %1"), &MakeVideoPages);
}

void MainWindow::createMediaPlayerLists() {
    runWebsiteCommand(QStringLiteral("Making the media player lists of %1"),
                      &CreateMediaPlayerLists);
}

void MainWindow::openProjectPage() {
    m_host->openDocument(m_session->settings.siteAddresses().projectHomePage);
}

void MainWindow::openForumPage() {
    m_host->openDocument(m_session->settings.siteAddresses().forumPage);
}

void MainWindow::about() {
    m_aboutBox = new AboutBox(m_desktop, m_session->settings.desktopTools(), this);
    m_aboutBox->setAttribute(Qt::WA_DeleteOnClose);
    m_aboutBox->open();
}

void MainWindow::powerUserFunction() {
    if (!m_toolsWindow) {
        m_toolsWindow = new ToolsWindow(*m_session, m_desktop, this);
        m_toolsWindow->setAttribute(Qt::WA_DeleteOnClose);
        m_toolsWindow->addThumbnailCommands({command(QStringLiteral("Create Icons")),
                                             command(QStringLiteral("Create Icons640x480"))});
        m_toolsWindow->addStoreCommand(command(QStringLiteral("Edit ScrapBookStore.txt ")));
    }
    m_toolsWindow->show();
    m_toolsWindow->raise();
    m_toolsWindow->activateWindow();
}

void MainWindow::viewBooksList() {
    showListFrame();
    m_log->clear();
    m_ebookReady = false;
    updateEnabledStates();
    m_showList->setEnabled(true);
}

void MainWindow::openEbook() {
    ViewChm(*m_host, m_session->settings.helpTools(), m_lastBook);
}

} // namespace qmr
