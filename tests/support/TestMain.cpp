#include "platform/LocalCodePage.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#ifdef QMR_TEST_WIDGETS
#include <QApplication>

#include <memory>
#endif

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

// Every test runs with its own application folder and home: nothing is ever written into the
// profile of the machine running them.
class IsolatedHome : public ::testing::Environment {
  public:
    void SetUp() override {
        ASSERT_TRUE(m_home.isValid());
        qputenv("QUILLMERE_HOME", (m_home.path() + u"/app"_s).toLocal8Bit());
        qputenv("HOME", (m_home.path() + u"/home"_s).toLocal8Bit());
        qputenv("XDG_DATA_HOME", (m_home.path() + u"/home/.local/share"_s).toLocal8Bit());
        qmr::LocalCodePage::select(u"Big5"_s);
    }

  private:
    QTemporaryDir m_home;
};

#ifdef QMR_TEST_WIDGETS
// The window's suite makes its QApplication here rather than in main(), so that listing the
// tests at build time needs no display; without one named, the windows are drawn offscreen.
class WidgetApplication : public ::testing::Environment {
  public:
    WidgetApplication(int& argc, char** argv) : m_argc(argc), m_argv(argv) {}
    void SetUp() override {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
        m_app = std::make_unique<QApplication>(m_argc, m_argv);
    }
    void TearDown() override { m_app.reset(); }

  private:
    int& m_argc;
    char** m_argv;
    std::unique_ptr<QApplication> m_app;
};
#endif

} // namespace

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    ::testing::AddGlobalTestEnvironment(new IsolatedHome);
#ifdef QMR_TEST_WIDGETS
    ::testing::AddGlobalTestEnvironment(new WidgetApplication(argc, argv));
    return RUN_ALL_TESTS();
#else
    QCoreApplication app(argc, argv);
    return RUN_ALL_TESTS();
#endif
}
