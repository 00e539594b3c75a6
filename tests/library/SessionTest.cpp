#include "library/Session.h"

#include "support/RecordingHost.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

using test::MakeScrapbook;
using test::RecordingHost;
using test::TempFolder;

// The builders' options are those of the scrapbook that is current when they ask, read again
// once the property page has closed; its GoogleAD box is never kept.
TEST(Session, OptionsFollowTheCurrentScrapbook) {
    TempFolder root;
    const QString compiled = MakeScrapbook(root, u"a"_s, 1, "Compiled");
    const QString pagesOnly = MakeScrapbook(root, u"b"_s, 1, "Pages only");
    root.write(u"b/ScrapbookPrj.ini"_s,
               "[Scrapbook]\r\nScrapbookName=Pages only\r\n[Content]\r\nMakeChmFile=0\r\n");
    root.write(u"app/Quillmere.ini"_s, "[Language]\r\nLanguage=3\r\n");
    RecordingHost host;
    Session session(host, {root.path() + u"app/"_s, root.path() + u"firefox/"_s});
    EXPECT_EQ(session.options().language, EbookLanguage::ChineseSimplified);

    session.useScrapbook(compiled);
    session.options().googleAD = true;
    EXPECT_TRUE(session.options().properties.makeChmFile);
    EXPECT_EQ(session.displayName(), u"Compiled"_s);
    session.list.currentFolder = pagesOnly;
    EXPECT_FALSE(session.options().properties.makeChmFile);
    EXPECT_FALSE(session.options().googleAD);
    EXPECT_EQ(session.displayName(), u"Pages only"_s);

    session.options().properties.makeChmFile = true; // edited on the page, then Cancel
    session.forgetProperties();
    EXPECT_FALSE(session.options().properties.makeChmFile);
    EXPECT_TRUE(host.messages.isEmpty());
}

} // namespace
} // namespace qmr
