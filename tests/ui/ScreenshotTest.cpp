#include "WindowTestSupport.h"

#include "ui/AboutBox.h"
#include "ui/LanguageDialog.h"
#include "ui/PropertyPage.h"
#include "ui/ToolsWindow.h"

#include <QAbstractButton>

namespace qmr::test {
namespace {

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
    for (QAbstractButton* button : w.findChildren<QAbstractButton*>())
        if (button->text() == u"&Power User Function"_s) button->click();
    shoot(w.toolsWindow(), "7-tools");
}

} // namespace
} // namespace qmr::test
