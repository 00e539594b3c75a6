#include "chm/BookFiles.h"

#include "support/Programs.h"
#include "support/TempFolder.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <gtest/gtest.h>

#include <iostream>

namespace qmr::chm {
namespace {

// Copies a collection and has the e-book build write its project; empty when that fails.
QString ProjectOf(const QString& collection, const test::TempFolder& work) {
    const QString folder = work.path() + QStringLiteral("book/");
    test::CopyTree(collection, folder);
    const test::RunResult run = test::RunQuillmereProgram(
        {QStringLiteral("--home"), work.path() + QStringLiteral("home"), QStringLiteral("ebook"),
         folder, QStringLiteral("--no-compile"), QStringLiteral("--no-view")});
    return run.exitCode == 0 ? folder + QStringLiteral("Index.hhp") : QString();
}

// The files a book that chmcmd compiled holds, as 7z lists them, without its internal files.
QStringList PackedByChmcmd(const HelpProject& project) {
    QDir().mkpath(QFileInfo(project.compiledFile).absolutePath());
    test::RunProgram(QStringLiteral("chmcmd"), {QFileInfo(project.projectPath).fileName()}, {},
                     project.folder);
    QStringList packed;
    for (const QString& name : test::BookListing(project.compiledFile))
        if (!name.contains(u'#') && !name.contains(u'$') &&
            QFileInfo(project.folder + name).isFile())
            packed.append(name);
    return packed;
}

// The sample scrapbook's project: every file the outside compiler packs is gathered too, and
// more (the pictures its pages use only through style sheets).
TEST(GatherRealProjects, PacksAtLeastWhatChmcmdPacks) {
    test::TempFolder work;
    const QString path =
        ProjectOf(QStringLiteral(QMR_SOURCE_DIR "/examples/sample-scrapbook"), work);
    ASSERT_FALSE(path.isEmpty());
    HelpProject project;
    CompileLog log;
    ASSERT_TRUE(ReadHelpProject(path, project, log));
    const QStringList files = GatherBookFiles(project, log);
    EXPECT_EQ(log.errorCount(), 0);
    EXPECT_TRUE(files.contains(u"data/20240302103010/garden-terraces.jpg")); // by its style sheet
    if (!test::HasProgram(QStringLiteral("chmcmd")) || !test::HasProgram(QStringLiteral("7z")))
        GTEST_SKIP() << "chmcmd or 7z is not installed";
    const QStringList packed = PackedByChmcmd(project);
    EXPECT_GE(packed.size(), 20);
    for (const QString& file : packed)
        EXPECT_TRUE(files.contains(file)) << file.toStdString();
}

// A project over a collection read in place: its data folder linked into `work`, every file
// listed as the e-book build lists them (pictures left to the pages that use them).
QString ProjectInPlace(const QString& collection, const test::TempFolder& work) {
    QFile::link(collection + QStringLiteral("/data"), work.path() + QStringLiteral("data"));
    QByteArray hhp = "[OPTIONS]\r\nCompiled file=book.chm\r\n[FILES]\r\n";
    QDirIterator it(collection + QStringLiteral("/data"), QDir::Files | QDir::Hidden,
                    QDirIterator::Subdirectories);
    const QStringList left = {"JPG", "GIF", "DAT", "ICO"};
    while (it.hasNext()) {
        const QString file = it.next().mid(collection.size() + 1);
        if (!left.contains(file.right(3).toUpper())) hhp += QFile::encodeName(file) + "\r\n";
    }
    return work.write(QStringLiteral("Index.hhp"), hhp);
}

// Real collections gather without errors, and every warning is a real broken reference: its
// target is on disk in no spelling. QMR_SHOW_WARNINGS=1 prints them to be read.
TEST(GatherRealProjects, WildCollectionsGatherWithOnlyRealWarnings) {
    const QDir wild(QStringLiteral(QMR_WILD_DIR));
    const QStringList names = wild.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    if (names.isEmpty()) GTEST_SKIP() << "no shared collections here";
    for (const QString& name : names) {
        SCOPED_TRACE(name.toStdString());
        test::TempFolder work;
        HelpProject project;
        CompileLog log;
        ASSERT_TRUE(ReadHelpProject(ProjectInPlace(wild.filePath(name), work), project, log));
        const QStringList files = GatherBookFiles(project, log);
        EXPECT_EQ(log.errorCount(), 0) << log.lines().join(u'\n').toStdString();
        EXPECT_GE(files.size(), project.files.size());
        for (const QString& line : log.lines()) {
            const qsizetype from = line.lastIndexOf(u'(') + 1;
            const QString target = line.mid(from, line.lastIndexOf(u" is missing") - from);
            EXPECT_FALSE(QFileInfo::exists(project.folder + target)) << line.toStdString();
        }
        if (qEnvironmentVariableIsSet("QMR_SHOW_WARNINGS"))
            std::cout << name.toStdString() << ": " << files.size() << " files, "
                      << log.warningCount() << " warnings\n"
                      << log.lines().join(u'\n').toStdString() << "\n";
    }
}

} // namespace
} // namespace qmr::chm
