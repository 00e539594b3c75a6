#include "platform/LocalCodePage.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

// Every test runs with its own application folder and home: nothing is ever written into the
// profile of the machine running them.
class IsolatedHome : public ::testing::Environment {
  public:
    void SetUp() override {
        ASSERT_TRUE(m_home.isValid());
        qputenv("QUILLMERE_HOME", (m_home.path() + QStringLiteral("/app")).toLocal8Bit());
        qputenv("HOME", (m_home.path() + QStringLiteral("/home")).toLocal8Bit());
        qputenv("XDG_DATA_HOME",
                (m_home.path() + QStringLiteral("/home/.local/share")).toLocal8Bit());
        qmr::LocalCodePage::select(QStringLiteral("Big5"));
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
