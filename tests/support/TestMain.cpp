#include "platform/LocalCodePage.h"

#include <QCoreApplication>
#include <QTemporaryDir>

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

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    ::testing::AddGlobalTestEnvironment(new IsolatedHome);
    return RUN_ALL_TESTS();
}
