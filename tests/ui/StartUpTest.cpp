#include "WindowTestSupport.h"

#include "library/ScrapbookList.h"
#include "platform/FileAssociation.h"
#include "support/Programs.h"

#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QStatusBar>
#include <QTreeView>

namespace qmr::test {
namespace {

QString statusText(const MainWindow& window, int panel) {
    return window.statusBar()->findChildren<QLabel*>().at(panel)->text();
}

bool buttonEnabled(const MainWindow& window, const QString& caption) {
    for (const QPushButton* button : window.findChildren<QPushButton*>())
        if (QString(button->text()).remove(u'&') == caption) return button->isEnabled();
    ADD_FAILURE() << "no button " << caption.toStdString();
    return false;
}

using StartUp = WindowTest;

TEST_F(StartUp, CommandLineScrapbookIsSelectedAddedToTheStoreOnceAndShown) {
    // A name in the local code page (Big5): the list draws it as the scrapbook calls itself.
    const QString cats =
        MakeScrapbook(root, u"Books/Cats"_s, 3, "\xbf\xdf\xaa\xba\xb5\xa7\xb0\x4f");
    MakeScrapbook(root, u"Books/Dogs"_s, 12, "Dogs");
    home.write(u"app/ScrapBookStore.txt"_s, "Dogs*" + root.path().toUtf8() + "Books/Dogs\r\n");
    MainWindow& w = startWith(cats);

    EXPECT_EQ(w.windowTitle(), u"Quillmere Ebook Converter Ver " QMR_VERSION ""_s);
    const ScrapbookList& list = w.session().list;
    ASSERT_EQ(list.count(), 2);
    EXPECT_EQ(list.row(list.selectedRow()).directory, cats.toLower());
    EXPECT_EQ(list.row(list.selectedRow()).name, u"貓的筆記"_s);
    EXPECT_EQ(list.row(list.selectedRow()).pageCount, u"0003"_s);
    auto* view = w.findChild<QTreeView*>();
    EXPECT_EQ(view->currentIndex().row(), list.selectedRow() - 1);
    EXPECT_EQ(view->model()->headerData(1, Qt::Horizontal).toString(), u"Local Page Count"_s);
    EXPECT_EQ(statusText(w, 0), u" 2 Scrapbooks "_s);
    EXPECT_EQ(statusText(w, 1), cats);
    for (const char* caption : {"View Books List", "View Content", "Open Ebook"})
        EXPECT_FALSE(buttonEnabled(w, QLatin1String(caption))) << caption;
    EXPECT_TRUE(buttonEnabled(w, u"Power User Function"_s));
    EXPECT_TRUE(w.command(u"Make Ebook"_s)->isEnabled());
    EXPECT_TRUE(QFileInfo(app() + u"chm"_s).isDir());
    const QByteArray store = ReadBytes(app() + u"ScrapBookStore.txt"_s);
    EXPECT_TRUE(store.endsWith("\r\nCats*" + cats.toUtf8() + "\r\n")) << store.toStdString();

    // A second start with the same catalogue finds it in the store and adds nothing.
    window.reset();
    startWith(cats);
    EXPECT_EQ(ReadBytes(app() + u"ScrapBookStore.txt"_s), store);
    EXPECT_EQ(window->session().list.row(window->session().list.selectedRow()).directory,
              cats.toLower());
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
    EXPECT_EQ(ReadBytes(home.path() + u"home/.config/mimeapps.list"_s),
              "[Added Associations]\nimage/png=viewer.desktop;\n"
              "[Default Applications]\n"
              "application/x-scrapbook-catalogue=quillmere.desktop;\n"
              "application/rdf+xml=editor.desktop;\n");

    trigger(u"Open .rdf Files with Quillmere"_s);
    EXPECT_EQ(desktop.messages,
              QStringList{u"ScrapBook catalogues (.rdf files) now open in Quillmere."_s});
    EXPECT_EQ(ReadBytes(home.path() + u"home/.config/mimeapps.list"_s),
              "[Added Associations]\nimage/png=viewer.desktop;\n"
              "[Default Applications]\n"
              "application/x-scrapbook-catalogue=quillmere.desktop;\n"
              "application/rdf+xml=quillmere.desktop;\n");
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
