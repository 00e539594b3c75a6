#pragma once

#include "support/Golden.h"
#include "support/TempFolder.h"
#include "ui/BuildRunner.h"
#include "ui/DesktopServices.h"
#include "ui/MainWindow.h"

#include <QAction>
#include <QListWidget>
#include <QPushButton>
#include <QStringList>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace qmr::test {

// A desktop that keeps what it was asked to show, start or open, answers from its fields and
// never waits for anyone.
class RecordingDesktop : public DesktopServices {
  public:
    void information(QWidget*, const QString& text) override { messages << text; }
    bool askOkCancel(QWidget*, const QString& text) override {
        messages << text;
        return true;
    }
    QString chooseFolder(QWidget*, const QString& prompt) override {
        prompts << prompt;
        return chosenFolders.isEmpty() ? QString() : chosenFolders.takeFirst();
    }
    bool startProgram(const QStringList& command) override {
        started << command;
        return programsStart;
    }
    bool openDocument(const QString& pathOrUrl) override {
        opened << pathOrUrl;
        return true;
    }

    QStringList messages;
    QStringList prompts;
    QStringList chosenFolders;
    QList<QStringList> started;
    QStringList opened;
    bool programsStart = true;
};

// The window's button with this caption (its mnemonic left out).
inline QPushButton* button(const QWidget& window, const QString& caption) {
    for (QPushButton* found : window.findChildren<QPushButton*>())
        if (QString(found->text()).remove(u'&') == caption) return found;
    ADD_FAILURE() << "no button " << caption.toStdString();
    return nullptr;
}

// One window over a home and an application folder of its own, and the scrapbooks a test
// makes below `root`.
class WindowTest : public ::testing::Test {
  protected:
    void SetUp() override {
        qputenv("QUILLMERE_HOME", (home.path() + u"app"_s).toLocal8Bit());
        qputenv("HOME", (home.path() + u"home"_s).toLocal8Bit());
        qputenv("XDG_DATA_HOME", (home.path() + u"home/.local/share"_s).toLocal8Bit());
        qputenv("XDG_CONFIG_HOME", (home.path() + u"home/.config"_s).toLocal8Bit());
        qputenv("VISUAL", "test-editor --wait");
    }
    void TearDown() override {
        if (window) idle();
        window.reset();
    }

    QString app() const { return home.path() + u"app/"_s; }
    // Quillmere.ini with these lines (CR LF added), before the window reads it.
    void globalIni(const QByteArray& lines) const { home.write(u"app/Quillmere.ini"_s, lines); }
    // An empty store, so that a command-line scrapbook is added to it.
    void emptyStore() const { home.write(u"app/ScrapBookStore.txt"_s, QByteArray()); }

    MainWindow& start(const QStringList& arguments = {}) {
        window = std::make_unique<MainWindow>(desktop);
        window->startUp(arguments);
        return *window;
    }
    // The window and a scrapbook given on its command line, selected.
    MainWindow& startWith(const QString& folder) {
        return start({u"File="_s + folder + u"scrapbook.rdf"_s});
    }
    void trigger(const QString& caption) {
        QAction* action = window->command(caption);
        ASSERT_NE(action, nullptr) << caption.toStdString();
        action->trigger();
    }
    // Waits until the work under way has ended.
    void idle() {
        ASSERT_TRUE(QTest::qWaitFor([this] { return !window->runner().busy(); }, 120000));
        QCoreApplication::processEvents();
    }
    // Waits until the window or dialog `open` returns has closed and gone.
    template <typename Open> static bool gone(Open open) {
        return QTest::qWaitFor([&] { return open() == nullptr; }, 5000);
    }
    QStringList log() const {
        QStringList lines;
        auto* list = window->findChild<QListWidget*>(u"log"_s);
        for (int i = 0; list && i < list->count(); ++i)
            lines << list->item(i)->text();
        return lines;
    }

    TempFolder home;
    TempFolder root;
    RecordingDesktop desktop;
    std::unique_ptr<MainWindow> window;
};

} // namespace qmr::test
