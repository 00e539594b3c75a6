#include "WindowTestSupport.h"

#include "ui/AboutBox.h"
#include "ui/LanguageDialog.h"
#include "ui/PropertyPage.h"
#include "ui/ToolsWindow.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

namespace qmr::test {
namespace {

QStringList captions(const QList<QAbstractButton*>& buttons) {
    QStringList texts;
    for (const QAbstractButton* button : buttons)
        texts << QString(button->text()).remove(u'&');
    return texts;
}

using Dialogs = WindowTest;

TEST_F(Dialogs, PropertyPageShowsTheStoredOptionsAndSavesThemOnEnter) {
    const QString folder = MakeScrapbook(root, u"Recipes"_s, 1);
    root.write(u"Recipes/ScrapbookPrj.ini"_s,
               "[Scrapbook]\r\nScrapbookName= Recipes \r\n[Build]\r\nLinkToSourceURL=abc\r\n");
    MainWindow& w = startWith(folder);
    trigger(u"Scrapbok Property"_s);
    PropertyPage* page = w.propertyPage();
    ASSERT_NE(page, nullptr);
    EXPECT_EQ(page->windowTitle(), u"Options"_s);
    QTabWidget* tabs = page->tabs();
    ASSERT_EQ(tabs->count(), 2);
    EXPECT_EQ(tabs->tabText(0), u"Scrapbook Property"_s);
    EXPECT_EQ(tabs->tabToolTip(0), u"Set Options for Group 1"_s);
    EXPECT_EQ(tabs->tabText(1), u"Express Functions"_s);
    EXPECT_EQ(tabs->tabToolTip(1), u"Set Options for Group 2"_s);
    QStringList frames;
    for (const QGroupBox* frame : page->findChildren<QGroupBox*>())
        frames << frame->title();
    frames.sort();
    EXPECT_EQ(frames, (QStringList{u"First Page"_s, u"Make Chm File"_s, u"Sample 2"_s,
                                   u"Sample 3"_s, u"Sample 4"_s, u"Scrapbook Name"_s}));
    QStringList buttons = captions(page->findChildren<QAbstractButton*>());
    buttons.removeAll(QString()); // the tab strip's scroll arrows
    buttons.sort();
    EXPECT_EQ(buttons, (QStringList{u"Cancel"_s, u"GoogleAD"_s, u"Link To Source URL"_s, u"Make"_s,
                                    u"Make Chm file"_s, u"Save"_s, u"Used Conetnt Page"_s}));
    auto* name = page->findChild<QLineEdit*>(u"Text1"_s);
    auto* link = page->findChild<QCheckBox*>(u"LinkToSourceURL"_s);
    auto* makeChm = page->findChild<QCheckBox*>(u"MakeChmFile"_s);
    EXPECT_EQ(makeChm->toolTip(), u"Make chm ebook or Create content html only"_s);
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
    EXPECT_EQ(ReadBytes(folder + u"ScrapbookPrj.ini"_s),
              "[Scrapbook]\r\nScrapbookName=\r\n[Build]\r\nLinkToSourceURL=1\r\n"
              "[Content]\r\nMakeChmFile=1\r\nHomePageFilename=index.html\r\n");
    EXPECT_TRUE(desktop.messages.isEmpty());
}

TEST_F(Dialogs, PropertyPageEscapeWritesNothingAndAFailedWriteIsTold) {
    const QString folder = MakeScrapbook(root, u"Locked"_s, 1);
    QDir().mkpath(folder + u"ScrapbookPrj.ini"_s); // a folder where the file should be
    MainWindow& w = startWith(folder);
    trigger(u"Scrapbok Property"_s);
    w.propertyPage()->findChild<QLineEdit*>(u"Text1"_s)->setText(u"Changed"_s);
    QTest::keyClick(w.propertyPage(), Qt::Key_Escape);
    EXPECT_TRUE(gone([&] { return w.propertyPage(); }));
    EXPECT_TRUE(desktop.messages.isEmpty());

    trigger(u"Scrapbok Property"_s);
    w.propertyPage()->findChild<QPushButton*>(u"cmdOK"_s)->click();
    EXPECT_EQ(desktop.messages, QStringList{u"Failed to set value."_s});
}

TEST_F(Dialogs, LanguageDialogShowsAndWritesTheLanguage) {
    globalIni("[Language]\r\nLanguage=2\r\n");
    MainWindow& w = start();
    trigger(u"Select Ebook Language"_s);
    LanguageDialog* dialog = w.languageDialog();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->windowTitle(), u"Select Ebook Language"_s);
    EXPECT_EQ(
        captions(dialog->findChildren<QAbstractButton*>()),
        (QStringList{u"English"_s, u"Chinese Traditional"_s, u"Chinese Simplified"_s, u"OK"_s}));
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

TEST_F(Dialogs, AboutBoxAndItsSystemInformation) {
    globalIni("[Tools]\r\nSystemInformation=sysinfo --all\r\n");
    MainWindow& w = start();
    trigger(u"About"_s);
    AboutBox* box = w.aboutBox();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->windowTitle(), u"About Quillmere"_s);
    EXPECT_EQ(box->findChild<QLabel*>(u"lblVersion"_s)->text(), u"Version " QMR_VERSION ""_s);
    EXPECT_EQ(captions(box->findChildren<QAbstractButton*>()),
              (QStringList{u"OK"_s, u"System Info..."_s}));
    box->showSystemInformation();
    EXPECT_EQ(desktop.started, (QList<QStringList>{{u"sysinfo"_s, u"--all"_s}}));
    desktop.programsStart = false;
    box->showSystemInformation();
    EXPECT_EQ(desktop.messages, QStringList{u"System Information Is Unavailable At This Time"_s});
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_TRUE(gone([&] { return w.aboutBox(); }));
}

TEST_F(Dialogs, ToolsWindowMenusAndTheMultiScrapbookScan) {
    globalIni("[Tools]\r\nFileManager=twopane --left\r\nDeviceSettings=devices\r\n");
    const QString folder = MakeScrapbook(root, u"Base/Cats"_s, 1, "Cats");
    MakeScrapbook(root, u"Base/Dogs"_s, 1, "Dogs");
    MainWindow& w = startWith(folder);
    for (QPushButton* b : w.findChildren<QPushButton*>())
        if (QString(b->text()).remove(u'&') == u"Power User Function"_s) b->click();
    ToolsWindow* tools = w.toolsWindow();
    ASSERT_NE(tools, nullptr);
    EXPECT_TRUE(tools->isVisible());
    QStringList menus;
    for (const QAction* menu : tools->menuBar()->actions())
        menus << QString(menu->text()).remove(u'&');
    EXPECT_EQ(menus, (QStringList{u"Scrapbook Management"_s, u"Tumbnail"_s, u"Tools"_s}));
    EXPECT_NE(tools->command(u"Create Icons640x480"_s), nullptr);
    EXPECT_NE(tools->command(u"Edit ScrapBookStore.txt "_s), nullptr);

    tools->command(u"Open with Total commander"_s)->trigger();
    tools->command(u"Device Management"_s)->trigger();
    EXPECT_EQ(desktop.started,
              (QList<QStringList>{{u"twopane"_s, u"--left"_s, folder}, {u"devices"_s}}));

    QDir().mkpath(home.path() + u"home/.mozilla/firefox/ScrapBook"_s);
    tools->baseFolder()->setText(root.path() + u"Base"_s);
    tools->command(u"Dir to Multi Scrapbook"_s)->trigger();
    EXPECT_EQ(tools->log()->item(tools->log()->count() - 1)->text(),
              u"multibook.txt has been created ok!"_s);
    EXPECT_TRUE(ReadBytes(root.path() + u"Base/multibook.txt"_s).contains("Cats\t"));
    w.close(); // the main window takes its other windows with it
    EXPECT_TRUE(gone([&] { return w.toolsWindow(); }));
}

} // namespace
} // namespace qmr::test
