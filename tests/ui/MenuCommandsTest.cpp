#include "WindowTestSupport.h"

#include "ui/SlideShow.h"
#include "ui/WebsiteScheduleTimer.h"
#include "website/WebsiteCommands.h"

#include <QElapsedTimer>
#include <QImage>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QStackedWidget>

namespace qmr::test {
namespace {

using MenuCommands = WindowTest;

// Every command has a mnemonic of its own within its menu, and each menu one of its own.
TEST_F(MenuCommands, EveryCommandHasAMnemonicOfItsOwn) {
    MainWindow& w = start();
    QSet<QChar> topMnemonics;
    const auto mnemonic = [](const QAction* action) {
        const QString text = action->text();
        EXPECT_GE(text.indexOf(u'&'), 0) << text.toStdString();
        return text.at(text.indexOf(u'&') + 1).toLower();
    };
    const QList<QAction*> menus = w.menuBar()->actions();
    for (const QAction* menu : menus) {
        topMnemonics.insert(mnemonic(menu));
        QSet<QChar> mnemonics;
        for (const QAction* action : menu->menu()->actions()) {
            if (action->isSeparator()) continue;
            const QChar key = mnemonic(action);
            EXPECT_FALSE(mnemonics.contains(key)) << action->text().toStdString();
            mnemonics.insert(key);
        }
    }
    EXPECT_EQ(topMnemonics.size(), menus.size());
}

TEST_F(MenuCommands, WebsitesAreBuiltOffTheWindowThread) {
    const QString folder = CopyOfExample(root);
    MainWindow& w = startWith(folder);
    trigger(u"Build a website with All functions"_s);
    EXPECT_FALSE(w.command(u"Build all websites with all functions"_s)->isEnabled());
    idle();
    EXPECT_EQ(log().last(), u"Quillmere Sample ScrapbookBuild all things for this Website ok!"_s)
        << log().join(u'\n').toStdString();
    EXPECT_TRUE(desktop.opened.contains(folder + u"data/qmr/PhotoIcons001.html"_s));
    EXPECT_TRUE(desktop.messages.isEmpty()) << desktop.messages.join(u'\n').toStdString();

    trigger(u"Build all websites with all functions"_s);
    idle();
    EXPECT_TRUE(log().contains(u"Start Build:1/1...Quillmere Sample Scrapbook"_s));
    EXPECT_EQ(log().last(), u"Build all things for all Websites ok!"_s);
    EXPECT_TRUE(w.command(u"Create Photo Page"_s)->isEnabled());

    // A command that replaces pages asks first, on the window's thread.
    trigger(u"Make Video on Html Page"_s);
    idle();
    EXPECT_EQ(desktop.messages, (QStringList{kVideoPagesWarning, u"Create Video Page ok!"_s}));
}

TEST_F(MenuCommands, OutsideProgramsTheUserChoosesOrTheDesktopHas) {
    const QString folder = MakeScrapbook(root, u"Travel"_s, 1);
    emptyStore();
    startWith(folder);
    trigger(u"Edit ScrapBookStore.txt "_s);
    trigger(u"Content Post for Forum"_s);
    trigger(u"Open Scrapbook Folder"_s);
    trigger(u"Project Page"_s);
    trigger(u"Forum and Download"_s);
    EXPECT_EQ(desktop.started,
              (QList<QStringList>{{u"test-editor"_s, u"--wait"_s, app() + u"ScrapBookStore.txt"_s},
                                  {u"test-editor"_s, u"--wait"_s, folder + u"forum.txt"_s},
                                  {u"xdg-open"_s, folder}}));
    EXPECT_EQ(desktop.opened,
              (QStringList{u"https://quillmere.org/"_s, u"https://quillmere.org/forum/"_s}));
    trigger(u"Open Content Page"_s);
    EXPECT_TRUE(desktop.messages.last().startsWith(folder + u"index.html does not exist yet"_s));

    // The user's own choice comes first; one that cannot start names the setting to change.
    globalIni("[Tools]\r\nTextEditor=my editor\r\n");
    desktop.programsStart = false;
    trigger(u"Create Post for Forum"_s);
    EXPECT_EQ(desktop.started.last(), (QStringList{u"my"_s, u"editor"_s, folder + u"forum.txt"_s}));
    EXPECT_EQ(
        desktop.messages.last(),
        u"Cannot start \"my\". Name the program to use as TextEditor in the [Tools] section of "_s +
            app() + u"Quillmere.ini."_s);
    EXPECT_TRUE(log().isEmpty()) << log().join(u'\n').toStdString();
}

TEST_F(MenuCommands, ScheduleTogglesItsMarkAndIsKeptBetweenRuns) {
    MainWindow& w = start();
    QAction* schedule = w.command(u"Schedule Create All Scrapbook's Website"_s);
    ASSERT_TRUE(schedule->isCheckable());
    EXPECT_FALSE(schedule->isChecked());
    EXPECT_FALSE(w.findChild<WebsiteScheduleTimer*>()->armed());
    schedule->trigger();
    EXPECT_TRUE(schedule->isChecked());
    EXPECT_TRUE(w.findChild<WebsiteScheduleTimer*>()->armed());
    EXPECT_EQ(ReadBytes(app() + u"Quillmere.ini"_s),
              "[Schedule]\r\nBuildAllWebsites=1\r\nTime=03:00\r\n");
    w.close();
    window.reset();
    EXPECT_TRUE(start().command(u"Schedule Create All Scrapbook's Website"_s)->isChecked());
    window->command(u"Schedule Create All Scrapbook's Website"_s)->trigger();
    EXPECT_FALSE(window->findChild<WebsiteScheduleTimer*>()->armed());
    EXPECT_TRUE(ReadBytes(app() + u"Quillmere.ini"_s).contains("BuildAllWebsites=0\r\n"));

    const QDateTime morning(QDate(2024, 5, 1), QTime(2, 59));
    EXPECT_EQ(WebsiteScheduleTimer::nextRun(QTime(3, 0), morning),
              QDateTime(QDate(2024, 5, 1), QTime(3, 0)));
    EXPECT_EQ(WebsiteScheduleTimer::nextRun(QTime(3, 0), morning.addSecs(60)),
              QDateTime(QDate(2024, 5, 2), QTime(3, 0)));
}

TEST_F(MenuCommands, SlideShowOfTheScreenSizeCopiesWithItsKeys) {
    const QString folder = MakeScrapbook(root, u"Photos"_s, 2);
    MainWindow& w = startWith(folder);
    trigger(u"Automatic Slider Show Pictures"_s);
    EXPECT_TRUE(desktop.messages.last().startsWith(folder + u" holds no screen-size picture"_s));
    QImage picture(64, 48, QImage::Format_RGB32);
    picture.fill(Qt::darkCyan);
    for (const char* name :
         {"data/20080309000000/640x480/b.jpg", "data/20080309000000/640x480/A.JPG",
          "data/20080309000001/640x480/c.jpg", "data/20080309000001/d.jpg"}) {
        QDir().mkpath(QFileInfo(folder + QLatin1String(name)).absolutePath());
        picture.save(folder + QLatin1String(name), "JPG");
    }
    EXPECT_EQ(ScreenPictureCopies(folder),
              (QStringList{folder + u"data/20080309000000/640x480/A.JPG"_s,
                           folder + u"data/20080309000000/640x480/b.jpg"_s,
                           folder + u"data/20080309000001/640x480/c.jpg"_s}));
    trigger(u"Automatic Slider Show Pictures"_s);
    SlideShow* show = w.slideShow();
    ASSERT_NE(show, nullptr);
    EXPECT_TRUE(show->isFullScreen());
    EXPECT_TRUE(show->playing());
    QTest::keyClick(show, Qt::Key_Left);
    EXPECT_EQ(show->current(), 2);
    QTest::keyClick(show, Qt::Key_Right);
    QTest::keyClick(show, Qt::Key_Right);
    EXPECT_EQ(show->current(), 1);
    QTest::keyClick(show, Qt::Key_Space);
    EXPECT_FALSE(show->playing());
    QTest::keyClick(show, Qt::Key_Escape);
    EXPECT_TRUE(gone([&] { return w.slideShow(); }));
}

TEST_F(MenuCommands, FolderConversionJoinsTheListAndTheStore) {
    emptyStore();
    root.write(u"Trip/notes one.txt"_s, "first");
    root.write(u"Trip/b.pdf"_s, "second");
    // A name for the scrapbook to be made, which its list row and multibook.txt then show.
    root.write(u"Trip/scrapbook/ScrapbookPrj.ini"_s, "[Scrapbook]\r\nScrapbookName=Trip Notes\r\n");
    MainWindow& w = start();
    trigger(u"Converter File Folder to Scrapbook"_s); // cancelled: nothing happens
    EXPECT_FALSE(w.runner().busy());
    desktop.chosenFolders << root.path() + u"Trip/"_s;
    trigger(u"Converter File Folder to Scrapbook"_s);
    idle();
    EXPECT_EQ(desktop.prompts, QStringList(2, u"Please Select Folder to Converter to Scrapbook"_s));
    EXPECT_TRUE(desktop.messages.isEmpty()) << desktop.messages.join(u'\n').toStdString();
    const QString made = root.path() + u"Trip/scrapbook/"_s;
    EXPECT_TRUE(QFile::exists(made + u"scrapbook.rdf"_s));
    EXPECT_TRUE(log().contains(u"Converted 2 files into "_s + made));
    EXPECT_TRUE(w.session().list.IsalreadyIn(made));
    EXPECT_EQ(ReadBytes(app() + u"ScrapBookStore.txt"_s),
              "Trip*" + root.path().toUtf8() + "Trip/scrapbook\r\n");

    // The browser extension's own folder takes the list of scrapbooks.
    QDir().mkpath(home.path() + u"home/.mozilla/firefox/ScrapBook"_s);
    w.session().list.SnapSelectItem(1);
    trigger(u"Save to MutiScrapbook"_s);
    EXPECT_EQ(log().last(), u"multibook.txt lists 1 scrapbooks"_s);
    EXPECT_TRUE(ReadBytes(home.path() + u"home/.mozilla/firefox/ScrapBook/multibook.txt"_s)
                    .contains("Trip Notes\t" + made.toUtf8()));
    trigger(u"DeleteScrapbook in this List but keep data"_s);
    EXPECT_EQ(w.session().list.count(), 0);
    EXPECT_TRUE(QFile::exists(made + u"scrapbook.rdf"_s));
    EXPECT_TRUE(ReadBytes(app() + u"ScrapBookStore.txt"_s).contains("Trip*"));
    trigger(u"Make Ebook"_s); // with nothing selected
    EXPECT_FALSE(w.runner().busy());
    EXPECT_EQ(desktop.messages.last(), u"Please select a scrapbook in the list first!"_s);
}

using EbookBuild = WindowTest;

TEST_F(EbookBuild, MakeEbookRunsOffTheWindowThreadThenOffersTheBook) {
    const QString folder = CopyOfExample(root);
    MainWindow& w = startWith(folder);
    trigger(u"Make Ebook"_s);
    ASSERT_TRUE(w.runner().busy());
    // While it runs, nothing else starts, and the window still answers.
    EXPECT_FALSE(w.command(u"Make Ebook"_s)->isEnabled());
    EXPECT_TRUE(w.command(u"About"_s)->isEnabled());
    EXPECT_EQ(w.findChild<QStackedWidget*>()->currentIndex(), 1);
    EXPECT_EQ(w.findChild<QProgressBar*>()->maximum(), 0);
    idle();

    const QStringList lines = log();
    ASSERT_FALSE(lines.isEmpty());
    EXPECT_TRUE(lines.contains(u"Creating ebook now...1"_s)); // the compiler's steps are shown
    EXPECT_EQ(lines.last(), u"ok!"_s);
    auto* logList = w.findChild<QListWidget*>(u"log"_s);
    EXPECT_EQ(logList->currentRow(), logList->count() - 1);
    const QString book = app() + u"chm/Index.chm"_s;
    EXPECT_TRUE(ReadBytes(book).startsWith("ITSF"));
    EXPECT_EQ(desktop.opened, QStringList{book});
    EXPECT_TRUE(desktop.messages.isEmpty()) << desktop.messages.join(u'\n').toStdString();
    for (const char* caption : {"View Content", "Open Ebook", "View Books List"})
        EXPECT_TRUE(button(w, QLatin1String(caption))->isEnabled()) << caption;

    button(w, u"Open Ebook"_s)->click();
    EXPECT_EQ(desktop.opened.size(), 2);
    button(w, u"View Content"_s)->click();
    ASSERT_EQ(desktop.opened.size(), 3);
    EXPECT_TRUE(desktop.opened.last().startsWith(folder + u"data/"_s)); // the marked item's page
    EXPECT_TRUE(desktop.opened.last().endsWith(u"/index.html"_s));
    button(w, u"View Books List"_s)->click();
    EXPECT_TRUE(log().isEmpty());
    EXPECT_EQ(w.findChild<QStackedWidget*>()->currentIndex(), 0);
    for (const char* caption : {"View Content", "Open Ebook", "View Books List"})
        EXPECT_FALSE(button(w, QLatin1String(caption))->isEnabled()) << caption;
    EXPECT_TRUE(button(w, u"Show Scrapbooks List"_s)->isEnabled());
}

TEST_F(EbookBuild, StopEndsTheCompilerAndKeepsNoBook) {
    // A compiler that would take a minute.
    globalIni("[Tools]\r\nHelpCompiler=sh -c \"sleep 60\"\r\n");
    MainWindow& w = startWith(CopyOfExample(root));
    QElapsedTimer timer;
    timer.start();
    trigger(u"Make Ebook"_s);
    ASSERT_TRUE(
        QTest::qWaitFor([this] { return log().contains(u"Creating ebook now...2"_s); }, 60000))
        << log().join(u'\n').toStdString();
    button(w, u"Stop"_s)->click();
    idle();
    EXPECT_LT(timer.elapsed(), 30000);
    EXPECT_EQ(log().last(), CancelledProblem());
    EXPECT_FALSE(QFile::exists(app() + u"chm/Index.chm"_s));
    EXPECT_TRUE(desktop.messages.isEmpty());
    EXPECT_TRUE(desktop.opened.isEmpty());
    EXPECT_FALSE(button(w, u"Open Ebook"_s)->isEnabled());
    EXPECT_TRUE(w.command(u"Make Ebook"_s)->isEnabled());
}

TEST_F(EbookBuild, ABrokenCatalogueIsToldNamingTheFile) {
    const QString folder = MakeScrapbook(root, u"Broken"_s, 1);
    root.write(
        u"Broken/scrapbook.rdf"_s,
        "<RDF:RDF>\n<RDF:Description RDF:about=\"urn:scrapbook:item1\"\nNS1:id=\"1\n</RDF:RDF>\n");
    startWith(folder);
    trigger(u"Make Ebook"_s);
    idle();
    ASSERT_EQ(desktop.messages.size(), 1);
    EXPECT_TRUE(desktop.messages.first().contains(folder + u"scrapbook.rdf"_s))
        << desktop.messages.first().toStdString();
    EXPECT_EQ(log().last(), desktop.messages.first());
}

} // namespace
} // namespace qmr::test
