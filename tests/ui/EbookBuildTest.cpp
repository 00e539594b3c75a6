#include "WindowTestSupport.h"

#include "support/Programs.h"
#include "ui/PropertyPage.h"
#include "ui/WindowHost.h"

#include <QCheckBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QStackedWidget>

namespace qmr::test {
namespace {

QPushButton* button(const MainWindow& window, const QString& caption) {
    for (QPushButton* found : window.findChildren<QPushButton*>())
        if (QString(found->text()).remove(u'&') == caption) return found;
    return nullptr;
}

using EbookBuild = WindowTest;

TEST_F(EbookBuild, MakeEbookRunsOffTheWindowThreadThenOffersTheBook) {
    if (!HasProgram(u"chmcmd"_s)) GTEST_SKIP() << "chmcmd (fp-utils) compiles the book";
    const QString folder = CopyOfExample(root);
    MainWindow& w = startWith(folder);
    trigger(u"Make Ebook"_s);
    ASSERT_TRUE(w.runner().busy());
    // While it runs, nothing else starts, and the window still answers.
    EXPECT_FALSE(w.command(u"Make Ebook"_s)->isEnabled());
    EXPECT_FALSE(w.command(u"Create Icons"_s)->isEnabled());
    EXPECT_FALSE(w.command(u"Converter File Folder to Scrapbook"_s)->isEnabled());
    EXPECT_TRUE(w.command(u"About"_s)->isEnabled());
    EXPECT_EQ(w.findChild<QStackedWidget*>()->currentIndex(), 1);
    EXPECT_EQ(w.findChild<QProgressBar*>()->maximum(), 0);
    idle();

    const QStringList lines = log();
    ASSERT_FALSE(lines.isEmpty());
    EXPECT_EQ(lines.first(), u"Starting Build Quillmere ebook..."_s);
    for (const char* line : {"Loading all pages...", "create chm content...", "create chm index...",
                             "Create Page List page...(List.html)", "Pack all file to chm...",
                             "Creating ebook now...1", "View Chm ebook..."})
        EXPECT_TRUE(lines.contains(QLatin1String(line))) << line;
    EXPECT_EQ(lines.last(), u"ok!"_s);
    EXPECT_TRUE(lines.filter(u"Make Chm ok! Time="_s).size() == 1);
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

TEST_F(EbookBuild, MakeOnThePropertyPageBuildsWithItsOptionsAndWritesNothing) {
    const QString folder = CopyOfExample(root);
    const QByteArray ini = "[Content]\r\nMakeChmFile=1\r\n";
    root.write(u"sample-scrapbook/ScrapbookPrj.ini"_s, ini);
    MainWindow& w = startWith(folder);
    trigger(u"Scrapbok Property"_s);
    PropertyPage* page = w.propertyPage();
    ASSERT_NE(page, nullptr);
    page->findChild<QCheckBox*>(u"MakeChmFile"_s)->setChecked(false);
    page->findChild<QPushButton*>(u"cmdApply"_s)->click();
    idle();
    EXPECT_TRUE(gone([&] { return w.propertyPage(); }));
    EXPECT_TRUE(log().contains(u"Pack all file to chm..."_s));
    EXPECT_TRUE(log().filter(u"Creating ebook now"_s).isEmpty()); // compiling was off
    EXPECT_EQ(ReadBytes(folder + u"ScrapbookPrj.ini"_s), ini);
    EXPECT_TRUE(QFile::exists(folder + u"Index.hhp"_s));
    // The page has closed: the next build reads the stored options again.
    EXPECT_TRUE(w.session().options().properties.makeChmFile);
}

TEST_F(EbookBuild, NothingSelectedAsksForASelectionAndABrokenCatalogueIsTold) {
    const QString folder = MakeScrapbook(root, u"Broken"_s, 1);
    root.write(
        u"Broken/scrapbook.rdf"_s,
        "<RDF:RDF>\n<RDF:Description RDF:about=\"urn:scrapbook:item1\"\nNS1:id=\"1\n</RDF:RDF>\n");
    MainWindow& w = startWith(folder);
    trigger(u"DeleteScrapbook in this List but keep data"_s);
    EXPECT_EQ(w.session().list.count(), 0);
    trigger(u"Make Ebook"_s);
    EXPECT_FALSE(w.runner().busy());
    EXPECT_EQ(desktop.messages, QStringList{u"Please select a scrapbook in the list first!"_s});

    window.reset();
    desktop.messages.clear();
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
