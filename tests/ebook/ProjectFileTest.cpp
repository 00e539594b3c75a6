#include "ebook/ProjectFile.h"

#include "ebook/EbookFixture.h"
#include "platform/AppFolder.h"
#include "platform/PathSeparators.h"
#include "support/CatalogueBuilder.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr {
namespace {

using test::SameText;
using test::TempFolder;

// Saved pages by identifier; those marked placed are in the top-level list.
Catalogue pages(const QList<std::pair<QString, bool>>& items) {
    test::CatalogueBuilder b;
    QStringList listed;
    for (const auto& [id, placed] : items) {
        b.item(id, QString());
        if (placed) listed << id;
    }
    return b.list(u"root"_s, listed).build();
}

TEST(ProjectFile, WritesEveryLineAsTheGoldenFilesShow) {
    TempFolder book;
    const QString names = u"ErrorLog.log Index.hhc Index.hhk Thumbs.db forum.txt index.html "
                          u"scrapbook.rdf scrapbook.txt data/qmr/list.html data/qmr/root.html "
                          u"data/20080101000001/a.css data/20080101000001/index.dat "
                          u"data/20080101000001/index.html data/20080101000001/pic.gif "
                          u"data/20080101000001/x.JPG data/20080101000001/x.jpg "
                          u"data/20080101000001/說明.html data/20080101000001/img/b.png "
                          u"data/20080101000002/a.css data/20080101000002/index.html "
                          u"data/20080101000009/index.html"_s;
    for (const QString& name : names.split(u' '))
        book.write(name, "x");
    const QStringList files = GatherScrapbookFiles(book.path());
    const struct {
        EbookLanguage language;
        bool linkToSourceURL;
        const char* startPage;
        const char* golden;
    } cases[] = {
        {EbookLanguage::English, false, "index.html", "Index-english.hhp"},
        {EbookLanguage::ChineseTraditional, false, "index.html", "Index-traditional.hhp"},
        {EbookLanguage::ChineseSimplified, true, "start.html", "Index-simplified-source-links.hhp"},
    };
    for (const auto& c : cases) {
        test::EbookFixture s(pages({{u"20080101000001"_s, true},
                                    {u"20080101000002"_s, false},
                                    {u"20080101000003"_s, true}}));
        s.build->folder = book.path();
        s.build->options.language = c.language;
        s.build->options.linkToSourceURL = c.linkToSourceURL;
        s.build->options.homePageFilename = QString::fromLatin1(c.startPage);
        QString error;
        ASSERT_TRUE(hhp(*s.build, book.path() + u"Index.hhp"_s, files, &error))
            << error.toStdString();
        EXPECT_TRUE(SameText(test::Golden(u"ebook/"_s + QLatin1String(c.golden), "{app}",
                                          QFile::encodeName(ToNativePath(ApplicationFolder()))),
                             test::ReadBytes(book.path() + u"Index.hhp"_s)))
            << c.golden;
        EXPECT_EQ(s.build->outputPath, ApplicationFolder() + u"chm/Index.chm"_s);
    }
}

TEST(ProjectFile, GathersFilesByNameThenSubFoldersAndStaysInside) {
    TempFolder outside;
    outside.write(u"secret.txt"_s, "s");
    TempFolder book;
    for (const char* name : {"b.txt", "a.txt", "B.txt", "sub/z.txt", "sub/deeper/y.txt",
                             "other/x.txt", ".hidden/h.txt"})
        book.write(QString::fromLatin1(name), "x");
    const QString root = book.path();
    QFile::link(outside.path() + u"secret.txt"_s, root + u"leak.txt"_s);
    QFile::link(outside.path(), root + u"leakdir"_s);
    QFile::link(root + u"sub/z.txt"_s, root + u"alias.txt"_s);
    QFile::link(root, root + u"sub/loop"_s);
    EXPECT_EQ(GatherScrapbookFiles(root.chopped(1)),
              (QStringList{root + "B.txt", root + "a.txt", root + "alias.txt", root + "b.txt",
                           root + ".hidden/h.txt", root + "other/x.txt", root + "sub/z.txt",
                           root + "sub/deeper/y.txt"}));
    EXPECT_TRUE(GatherScrapbookFiles(root + u"missing/"_s).isEmpty());

    // An unwritable path fails with the reason.
    test::EbookFixture s(pages({}));
    QString error;
    EXPECT_FALSE(hhp(*s.build, book.write(u"file"_s, "x") + "/Index.hhp", {}, &error));
    EXPECT_FALSE(error.isEmpty());
}

} // namespace
} // namespace qmr
