#pragma once

#include "library/Session.h"

#include <QMainWindow>
#include <QPointer>

#include <functional>
#include <memory>

class QAction;
class QCheckBox;
class QLabel;
class QListWidget;
class QMenu;
class QProgressBar;
class QPushButton;
class QStackedWidget;
class QTreeView;

namespace qmr {

class AboutBox;
class BuildHost;
class BuildRunner;
class DesktopServices;
class LanguageDialog;
class PropertyPage;
class ScrapbookListModel;
class SlideShow;
class ToolsWindow;
class WebsiteScheduleTimer;
class WindowHost;
struct EbookRequest;
struct WebsiteOptions;
struct WebsiteRequest;
struct WebsiteResult;

// The program's main window: the scrapbook list, the log list, the build frame, the status
// bar and the menus whose commands run the builders on the current scrapbook. Long work runs
// on a thread of its own (BuildRunner); the window stays responsive and starts nothing else
// meanwhile.
class MainWindow : public QMainWindow {
    Q_OBJECT
  public:
    explicit MainWindow(DesktopServices& desktop, QWidget* parent = nullptr);
    ~MainWindow() override;

    // The start-up sequence: the .rdf association, the window's first state, the command line
    // (`arguments` without the program name: "File=<catalogue>.rdf", perhaps split at blanks),
    // the e-book output folder and the list. Nothing after the command line stops it.
    void startUp(const QStringList& arguments);

    // One line at the end of the log list, selected so that it is in view.
    void add2loglist(const QString& line);

    Session& session() { return *m_session; }
    BuildRunner& runner() { return *m_runner; }
    WindowHost& host() { return *m_host; }
    // The menu command with this caption (without its "&"), or null.
    QAction* command(const QString& caption) const;
    // The dialogs and windows while they are open (null otherwise).
    PropertyPage* propertyPage() const;
    LanguageDialog* languageDialog() const;
    ToolsWindow* toolsWindow() const;
    AboutBox* aboutBox() const;
    SlideShow* slideShow() const;

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    // Building the window (MainWindow.cpp).
    void buildWidgets();
    void buildMenus();
    QAction* addCommand(QMenu* menu, const QString& caption, void (MainWindow::*slot)(),
                        const QKeySequence& shortcut = {});
    void wireSignals();
    void updateEnabledStates();
    void showListFrame();
    void showBuildFrame();
    // Shows the list's rows again, and the current scrapbook in the caption and status bar.
    void syncList();
    void showCurrentScrapbook();
    void rowChosen(int number);
    void loadList();
    void showLoadReport(const ListLoadReport& report);
    void registerAssociation(bool claim);
    // Whether a scrapbook is selected; says so when none is.
    bool requireSelection();
    QString selectedFolder() const;
    // Starts an outside program, telling the user which setting chooses it when it fails.
    void startOutsideProgram(const QStringList& command, const char* settingKey);
    void buildFinished(bool succeeded);

    // The menu commands (MainWindowCommands.cpp).
    void exitProgram();
    void associateCatalogues();
    void openScrapbookFolder();
    void openContentPage();
    // The current scrapbook's own start page, else the content page the last build wrote.
    QString contentPagePath() const;
    void slideShowPictures();
    void deleteScrapbookFromList();
    void scrapbookProperty();
    void makeEbook();
    void selectEbookLanguage();
    void openEbookOutputLibrary();
    void buildAllWebsites();
    void buildWebsite();
    void createHomePage();
    void createPhotoPage();
    void createIcons();
    void createScreenCopies();
    void convertFolderToScrapbook();
    void addScrapbookToMultiList();
    void saveToMultiList();
    // Adds the scrapbook in `path` to the store, the list and the browser's multibook.txt.
    void addToMultiList(const QString& path);
    void toggleSchedule();
    void editForumPost();
    void editScrapbookStore();
    void makeVideoPage();
    void createMediaPlayerLists();
    void openProjectPage();
    void openForumPage();
    void about();
    void powerUserFunction();
    void viewBooksList();
    void openEbook();
    void runScheduledBuild();
    void startEbookBuild(EbookRequest request);
    // Runs one website command on the selected scrapbook off the window's thread.
    using WebsiteCommand = std::function<WebsiteResult(BuildHost&, const WebsiteRequest&)>;
    void runWebsiteCommand(const QString& title, WebsiteCommand command);
    WebsiteOptions websiteOptions() const;

    DesktopServices& m_desktop;
    std::unique_ptr<WindowHost> m_host;
    std::unique_ptr<Session> m_session;
    std::unique_ptr<BuildRunner> m_runner;
    ScrapbookListModel* m_model = nullptr;
    WebsiteScheduleTimer* m_schedule = nullptr;

    QLabel* m_caption = nullptr;
    QStackedWidget* m_frames = nullptr;
    QTreeView* m_listView = nullptr;
    QLabel* m_finishedMark = nullptr;
    QLabel* m_buildTitle = nullptr;
    QProgressBar* m_progress = nullptr;
    QPushButton* m_cancel = nullptr;
    QListWidget* m_log = nullptr;
    QPushButton* m_viewBooksList = nullptr;
    QPushButton* m_viewContent = nullptr;
    QPushButton* m_openEbook = nullptr;
    QPushButton* m_powerUser = nullptr;
    QPushButton* m_showList = nullptr;
    QCheckBox* m_index2org = nullptr;
    QCheckBox* m_appendRefList = nullptr;
    QLabel* m_statusCount = nullptr;
    QLabel* m_statusFolder = nullptr;
    QMenu* m_expressMenu = nullptr;
    QList<QAction*> m_buildCommands; // disabled while work runs
    QAction* m_scheduleCommand = nullptr;

    QPointer<PropertyPage> m_propertyPage;
    QPointer<LanguageDialog> m_languageDialog;
    QPointer<ToolsWindow> m_toolsWindow;
    QPointer<AboutBox> m_aboutBox;
    QPointer<SlideShow> m_slideShow;

    bool m_syncingSelection = false;
    bool m_ebookReady = false;    // a book was built: the view buttons may be used
    QString m_lastBook;           // the book the last build compiled
    QString m_lastContentPage;    // and the content page it wrote
    bool m_closeWhenIdle = false; // the user closed the window while work ran
};

} // namespace qmr
