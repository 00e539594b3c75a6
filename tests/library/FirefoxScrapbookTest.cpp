#include "library/FirefoxScrapbook.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace qmr {
namespace {

using test::TempFolder;

TEST(FirefoxScrapbook, TheDefaultProfileDecides) {
    struct Case {
        const char* profiles;
        const char* expected; // below the Firefox folder
    };
    const Case cases[] = {
        // One profile: its path, whatever Default says; "\" becomes "/".
        {"[General]\nStartWithLastProfile=1\n\n[Profile0]\nName=default\nIsRelative=1\n"
         "Path=Profiles\\x1y2.default\nDefault=0\n",
         "Profiles/x1y2.default/ScrapBook/"},
        // Two: the first marked Default=1; any case of "[p" starts a profile, other sections
        // do not count.
        {"[Install4F96D1932A9F858E]\r\nDefault=Profiles/b.work\r\n[profile0]\r\nPath=Profiles/"
         "a.default\r\n[Profile1]\r\nPath=Profiles/b.work\r\nDefault=1\r\n[Profile2]\r\n"
         "Path=Profiles/c.other\r\nDefault=1\r\n",
         "Profiles/b.work/ScrapBook/"},
        // None marked: the last Default read stands for the path.
        {"[Profile0]\nPath=a\nDefault=0\n[Profile1]\nPath=b\nDefault=7\n", "7/ScrapBook/"},
        {"[Profile0]\nPath=a\n[Profile1]\nPath=b\n", "ScrapBook/"},
        // The path is taken as relative to the Firefox folder even when it is not.
        {"[Profile0]\nIsRelative=0\nPath=/elsewhere/p.default\n",
         "/elsewhere/p.default/ScrapBook/"},
    };
    for (const Case& c : cases) {
        TempFolder firefox;
        firefox.write(QStringLiteral("profiles.ini"), c.profiles);
        EXPECT_EQ(FirefoxScrapbookFolder(firefox.path()),
                  firefox.path() + QString::fromUtf8(c.expected))
            << c.profiles;
    }
    TempFolder none;
    EXPECT_EQ(FirefoxScrapbookFolder(none.path()), none.path() + QStringLiteral("ScrapBook/"));
}

} // namespace
} // namespace qmr
