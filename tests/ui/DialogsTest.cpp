#include "WindowTestSupport.h"

#include "library/ScrapbookList.h"
#include "ui/AboutBox.h"
#include "ui/LanguageDialog.h"
#include "ui/PropertyPage.h"
#include "ui/ToolsWindow.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QStatusBar>
#include <QTabWidget>
#include <QTreeView>

namespace qmr::test {
namespace {

using Dialogs = WindowTest;

// Escape leaves the file as it was; Enter saves. (The settings' own tests show a failed save
// told to the user.)
TEST_F(Dialogs, PropertyPageShowsSavesAndMakesWithTheStoredOptions) {
    const QString folder = MakeScrapbook(root, u"Recipes"_s, 1);
    const QByteArray stored =
        "[Scrapbook]\r\nScrapbookName= Recipes \r\n[Build]\r\nLinkToSourceURL=abc\r\n";
    root.write(u"Recipes/ScrapbookPrj.ini"_s, stored);
    MainWindow& w = startWith(folder);
    trigger(u"Scrapbok Property"_s);
    w.propertyPage()->findChild<QLineEdit*>(u"Text1"_s)->setText(u"Changed"_s);
    QTest::keyClick(w.propertyPage(), Qt::Key_Escape);
    EXPECT_TRUE(gone([&] { return w.propertyPage(); }));
    EXPECT_EQ(ReadBytes(folder + u"ScrapbookPrj.ini"_s), stored);

    trigger(u"Scrapbok Property"_s);
    PropertyPage* page = w.propertyPage();
    ASSERT_NE(page, nullptr);
    QTabWidget* tabs = page->tabs();
    ASSERT_EQ(tabs->count(), 2);
    auto* name = page->findChild<QLineEdit*>(u"Text1"_s);
    auto* link = page->findChild<QCheckBox*>(u"LinkToSourceURL"_s);
    auto* makeChm = page->findChild<QCheckBox*>(u"MakeChmFile"_s);
    EXPECT_EQ(name->text(), u"Recipes"_s);
    EXPECT_FALSE(link->isChecked());   // "abc" is no number
    EXPECT_TRUE(makeChm->isChecked()); // missing: on

    QTest::keyClick(page, Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(tabs->currentIndex(), 1);
    QTest::keyClick(page, Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(tabs->currentIndex(), 0); // from the last tab back to the first

    name->setText(u"   "_s);
    link->setChecked(true);
    QTest::keyClick(makeChm, Qt::Key_Return);
    EXPECT_TRUE(gone([&] { return w.propertyPage(); }));
    const QByteArray saved = "[Scrapbook]\r\nScrapbookName=\r\n[Build]\r\nLinkToSourceURL=1\r\n"
                             "[Content]\r\nMakeChmFile=1\r\nHomePageFilename=index.html\r\n";
    EXPECT_EQ(ReadBytes(folder + u"ScrapbookPrj.ini"_s), saved);
    EXPECT_TRUE(desktop.messages.isEmpty());

    // Make builds with the page's options and writes none of them; once the page has closed,
    // the next build reads the stored options again.
    trigger(u"Scrapbok Property"_s);
    w.propertyPage()->findChild<QCheckBox*>(u"MakeChmFile"_s)->setChecked(false);
    w.propertyPage()->findChild<QPushButton*>(u"cmdApply"_s)->click();
    idle();
    EXPECT_TRUE(gone([&] { return w.propertyPage(); }));
    EXPECT_TRUE(log().contains(u"Pack all file to chm..."_s));
    EXPECT_TRUE(log().filter(u"Creating ebook now"_s).isEmpty()); // compiling was off
    EXPECT_EQ(ReadBytes(folder + u"ScrapbookPrj.ini"_s), saved);
    EXPECT_TRUE(QFile::exists(folder + u"Index.hhp"_s));
    EXPECT_TRUE(w.session().options().properties.makeChmFile);
}

TEST_F(Dialogs, LanguageDialogShowsAndWritesTheLanguage) {
    globalIni("[Language]\r\nLanguage=2\r\n");
    MainWindow& w = start();
    trigger(u"Select Ebook Language"_s);
    LanguageDialog* dialog = w.languageDialog();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->language(), EbookLanguage::ChineseTraditional);
    dialog->option(EbookLanguage::ChineseSimplified)->click();
    QTest::keyClick(dialog, Qt::Key_Escape);
    EXPECT_EQ(ReadBytes(app() + u"Quillmere.ini"_s), "[Language]\r\nLanguage=2\r\n");

    trigger(u"Select Ebook Language"_s);
    w.languageDialog()->option(EbookLanguage::ChineseSimplified)->click();
    QTest::keyClick(w.languageDialog(), Qt::Key_Return);
    EXPECT_EQ(ReadBytes(app() + u"Quillmere.ini"_s), "[Language]\r\nLanguage=3\r\n");
    EXPECT_EQ(w.session().options().language, EbookLanguage::ChineseSimplified);

    // Anything else in the file selects nothing, and OK then writes an empty value.
    globalIni("[Language]\r\nLanguage=7\r\n");
    trigger(u"Select Ebook Language"_s);
    EXPECT_EQ(w.languageDialog()->language(), EbookLanguage::None);
    QTest::keyClick(w.languageDialog(), Qt::Key_Return);
    EXPECT_EQ(ReadBytes(app() + u"Quillmere.ini"_s), "[Language]\r\nLanguage=\r\n");
}

// The programs the user names in [Tools] start from the tools window and the about box.
TEST_F(Dialogs, ToolsWindowAboutBoxAndTheMultiScrapbookScan) {
    globalIni("[Tools]\r\nFileManager=twopane --left\r\nDeviceSettings=devices\r\n"
              "SystemInformation=sysinfo --all\r\n");
    const QString folder = MakeScrapbook(root, u"Base/Cats"_s, 1, "Cats");
    MakeScrapbook(root, u"Base/Dogs"_s, 1, "Dogs");
    MainWindow& w = startWith(folder);
    button(w, u"Power User Function"_s)->click();
    ToolsWindow* tools = w.toolsWindow();
    ASSERT_NE(tools, nullptr);
    EXPECT_TRUE(tools->isVisible());
    tools->command(u"Open with Total commander"_s)->trigger();
    tools->command(u"Device Management"_s)->trigger();
    trigger(u"About"_s);
    AboutBox* box = w.aboutBox();
    ASSERT_NE(box, nullptr);
    box->showSystemInformation();
    EXPECT_EQ(desktop.started, (QList<QStringList>{{u"twopane"_s, u"--left"_s, folder},
                                                   {u"devices"_s},
                                                   {u"sysinfo"_s, u"--all"_s}}));
    desktop.programsStart = false;
    box->showSystemInformation();
    EXPECT_EQ(desktop.messages, QStringList{u"System Information Is Unavailable At This Time"_s});
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_TRUE(gone([&] { return w.aboutBox(); }));

    QDir().mkpath(home.path() + u"home/.mozilla/firefox/ScrapBook"_s);
    tools->baseFolder()->setText(root.path() + u"Base"_s);
    tools->command(u"Dir to Multi Scrapbook"_s)->trigger();
    EXPECT_EQ(tools->log()->item(tools->log()->count() - 1)->text(),
              u"multibook.txt has been created ok!"_s);
    EXPECT_TRUE(ReadBytes(root.path() + u"Base/multibook.txt"_s).contains("Cats\t"));
    w.close(); // the main window takes its other windows with it
    EXPECT_TRUE(gone([&] { return w.toolsWindow(); }));
}

// Pictures of the real window for a person to look at, written only when QMR_SCREENSHOTS
// names a folder; run under a real display (scripts/window-screenshots.sh uses Xvfb).
class Screenshots : public WindowTest {
  protected:
    void shoot(QWidget* widget, const char* name) {
        QCoreApplication::processEvents();
        widget->grab().save(QDir(qEnvironmentVariable("QMR_SCREENSHOTS"))
                                .filePath(QLatin1String(name) + u".png"_s));
    }
};

TEST_F(Screenshots, MainWindowBuildPropertyPageAndAboutBox) {
    if (qEnvironmentVariableIsEmpty("QMR_SCREENSHOTS")) GTEST_SKIP() << "set QMR_SCREENSHOTS";
    const QString sample = CopyOfExample(root);
    QStringList store;
    const QList<QPair<QString, QByteArray>> books = {
        {u"Cats"_s, "\xbf\xdf\xaa\xba\xb5\xa7\xb0\x4f"}, // a Big5 name
        {u"Recipes"_s, "Recipes from the family"},
        {u"Travel"_s, "Travel 2008"}};
    for (const auto& [folder, name] : books)
        store << folder + u'*' + MakeScrapbook(root, folder, int(name.size()) * 3, name);
    home.write(u"app/ScrapBookStore.txt"_s, store.join(u"\r\n"_s).toUtf8() + "\r\n");
    MainWindow& w = startWith(sample);
    w.resize(980, 620);
    shoot(&w, "1-list");
    trigger(u"Make Ebook"_s);
    ASSERT_TRUE(QTest::qWaitFor([this] { return log().size() > 6; }, 60000));
    shoot(&w, "2-building");
    idle();
    shoot(&w, "3-built");
    trigger(u"Scrapbok Property"_s);
    shoot(w.propertyPage(), "4-property-page");
    w.propertyPage()->reject();
    trigger(u"About"_s);
    shoot(w.aboutBox(), "5-about");
    w.aboutBox()->reject();
    trigger(u"Select Ebook Language"_s);
    shoot(w.languageDialog(), "6-language");
    w.languageDialog()->reject();
    button(w, u"Power User Function"_s)->click();
    shoot(w.toolsWindow(), "7-tools");
}

QString statusText(const MainWindow& window, int panel) {
    return window.statusBar()->findChildren<QLabel*>().at(panel)->text();
}

using StartUp = WindowTest;

TEST_F(StartUp, CommandLineScrapbookIsSelectedAndShown) {
    const QString cats = MakeScrapbook(root, u"Books/Cats"_s, 3, "Cats");
    MakeScrapbook(root, u"Books/Dogs"_s, 12, "Dogs");
    home.write(u"app/ScrapBookStore.txt"_s, "Dogs*" + root.path().toUtf8() + "Books/Dogs\r\n");
    MainWindow& w = startWith(cats);

    const ScrapbookList& list = w.session().list;
    ASSERT_EQ(list.count(), 2);
    EXPECT_EQ(list.row(list.selectedRow()).directory, cats.toLower());
    auto* view = w.findChild<QTreeView*>();
    EXPECT_EQ(view->currentIndex().row(), list.selectedRow() - 1);
    EXPECT_EQ(statusText(w, 0), u" 2 Scrapbooks "_s);
    EXPECT_EQ(statusText(w, 1), cats);
    for (const char* caption : {"View Books List", "View Content", "Open Ebook"})
        EXPECT_FALSE(button(w, QLatin1String(caption))->isEnabled()) << caption;
    EXPECT_TRUE(QFileInfo(app() + u"chm"_s).isDir());
}

TEST_F(StartUp, TheProgramTakesTheCatalogueTheDesktopPasses) {
    const QString folder = MakeScrapbook(root, u"My Books/Travel"_s, 2, "Travel");
    emptyStore();
    QProcess qmr;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    qmr.setProcessEnvironment(environment);
    // The desktop passes File=%1 unquoted on Windows, so a path with blanks comes in pieces.
    qmr.start(QStringLiteral(QMR_QMR_EXE), (u"File="_s + folder + u"scrapbook.rdf"_s).split(u' '));
    ASSERT_TRUE(qmr.waitForStarted());
    const bool added = QTest::qWaitFor(
        [&] { return ReadBytes(app() + u"ScrapBookStore.txt"_s).contains("Travel*"); }, 30000);
    qmr.kill();
    qmr.waitForFinished();
    EXPECT_TRUE(added);
    EXPECT_EQ(ReadBytes(app() + u"ScrapBookStore.txt"_s), "Travel*" + folder.toUtf8() + "\r\n");
}

TEST_F(StartUp, RdfFilesStayWithTheProgramThatOpensThemUntilTheUserAsks) {
    home.write(u"home/.config/mimeapps.list"_s,
               "[Added Associations]\nimage/png=viewer.desktop;\n"
               "[Default Applications]\napplication/rdf+xml=editor.desktop;\n");
    start();
    const QString data = home.path() + u"home/.local/share/"_s;
    // What the package installs, but with this program's own path.
    const QString installed = QStringLiteral(QMR_SOURCE_DIR "/src/ui/desktop/");
    EXPECT_EQ(ReadBytes(data + u"applications/quillmere.desktop"_s),
              ReadBytes(installed + u"quillmere.desktop"_s)
                  .replace("Exec=qmr", "Exec=" + QCoreApplication::applicationFilePath().toUtf8()));
    EXPECT_EQ(ReadBytes(data + u"mime/packages/quillmere.xml"_s),
              ReadBytes(installed + u"quillmere-mime.xml"_s));
    EXPECT_TRUE(
        ReadBytes(data + u"icons/hicolor/256x256/apps/quillmere.png"_s).startsWith("\x89PNG"));
    const QByteArray associations = "[Added Associations]\nimage/png=viewer.desktop;\n"
                                    "[Default Applications]\n"
                                    "application/x-scrapbook-catalogue=quillmere.desktop;\n";
    EXPECT_EQ(ReadBytes(home.path() + u"home/.config/mimeapps.list"_s),
              associations + "application/rdf+xml=editor.desktop;\n");

    trigger(u"Open .rdf Files with Quillmere"_s);
    EXPECT_EQ(desktop.messages,
              QStringList{u"ScrapBook catalogues (.rdf files) now open in Quillmere."_s});
    EXPECT_EQ(ReadBytes(home.path() + u"home/.config/mimeapps.list"_s),
              associations + "application/rdf+xml=quillmere.desktop;\n");
    EXPECT_TRUE(log().isEmpty());
}

TEST_F(StartUp, PlacementIsKeptBetweenRunsAndInsideTheScreen) {
    MainWindow& first = start();
    first.setGeometry(60, 50, 700, 500);
    first.close();
    const QByteArray ini = ReadBytes(app() + u"Quillmere.ini"_s);
    EXPECT_TRUE(ini.contains("[MainWindow]\r\nMaximised=0\r\nLeft=900\r\nTop=750\r\nWidth=10500\r\n"
                             "Height=7500\r\n"))
        << ini.toStdString();
    EXPECT_EQ(start().geometry(), QRect(60, 50, 700, 500));

    window.reset();
    globalIni("[MainWindow]\r\nLeft=-5000\r\nTop=300\r\nWidth=3000\r\nHeight=99999999\r\n");
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const QRect placed = start().geometry();
    EXPECT_EQ(placed.left(), screen.left() + 4);
    EXPECT_EQ(placed.width(), window->minimumWidth()); // raised to the smallest useful size
    EXPECT_EQ(placed.top(), screen.top() + 4);
    EXPECT_EQ(placed.bottom(), screen.bottom() - 4);
}

} // namespace
} // namespace qmr::test
