#pragma once

#include "catalogue/RdfReader.h"
#include "ebook/EbookContext.h"
#include "ebook/Sitemap.h"
#include "platform/LocalCodePage.h"
#include "support/RecordingHost.h"
#include "support/TempFolder.h"

#include <QFile>
#include <QList>

#include <gtest/gtest.h>

namespace qmr::test {

// The addresses and name every golden file of the table of contents was written with.
inline PageChrome SitemapTestChrome() {
    PageChrome chrome;
    chrome.scrapbookName = QStringLiteral("Toc Test");
    chrome.addresses.projectHomePage = QStringLiteral("https://quillmere.example/");
    chrome.addresses.makerSite = QStringLiteral("https://maker.example/");
    return chrome;
}

inline QByteArray ReadFixture(const char* relative) {
    QFile file(QStringLiteral(QMR_SOURCE_DIR "/tests/fixtures/") + QLatin1String(relative));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline QByteArray Golden(const char* name) {
    QFile file(QStringLiteral(QMR_GOLDEN_DIR "/ebook/") + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The lines of a generated file, each with its CR LF, so that a comparison names the line.
inline QList<QByteArray> CrLfLines(const QByteArray& bytes) {
    QList<QByteArray> lines;
    qsizetype start = 0;
    while (start < bytes.size()) {
        qsizetype end = bytes.indexOf("\r\n", start);
        end = end < 0 ? bytes.size() : end + 2;
        lines.append(bytes.mid(start, end - start));
        start = end;
    }
    return lines;
}

// Byte for byte, naming the first line that differs, decoded from the local code page.
inline ::testing::AssertionResult SameLines(const QList<QByteArray>& expected,
                                            const QList<QByteArray>& actual) {
    for (qsizetype i = 0; i < std::max(expected.size(), actual.size()); ++i) {
        const QByteArray want = i < expected.size() ? expected.at(i) : QByteArray("<none>");
        const QByteArray got = i < actual.size() ? actual.at(i) : QByteArray("<none>");
        if (want != got)
            return ::testing::AssertionFailure()
                   << "line " << i + 1
                   << "\n  expected: " << LocalCodePage::decode(want).toStdString()
                   << "\n  actual:   " << LocalCodePage::decode(got).toStdString();
    }
    return ::testing::AssertionSuccess();
}

inline ::testing::AssertionResult SameBytes(const QByteArray& expected, const QByteArray& actual) {
    if (expected.isEmpty()) return ::testing::AssertionFailure() << "no expected bytes";
    return SameLines(CrLfLines(expected), CrLfLines(actual));
}

// An e-book build over a scrapbook in a temporary folder.
class SitemapBuild {
  public:
    SitemapBuild() : build(host) {
        build.folder = folder.path();
        build.chrome = SitemapTestChrome();
    }

    // Copies a catalogue into the folder and loads it, as the build does.
    void load(const QByteArray& rdf) {
        folder.write(QStringLiteral("scrapbook.rdf"), rdf);
        InputError error;
        ASSERT_TRUE(RecodeAndLoadCatalogue(build.folder, build.catalogue, &error))
            << error.text().toStdString();
    }
    void loadFixture() { load(ReadFixture("toc/scrapbook.rdf")); }

    // The stage of the build that writes beside the table of contents: content page, forum
    // file, Index.hhc, then Index.hhk.
    void writeSitemaps(const QString& contentMode = QString()) {
        build.content.ChooseContentTemplate(build.chrome, build.catalogue, build.folder,
                                            contentMode);
        build.forum.open(path("forum.txt"));
        QString error;
        ASSERT_TRUE(HHC(build, path("Index.hhc"), &error)) << error.toStdString();
        ASSERT_TRUE(build.forum.close(&error)) << error.toStdString();
        ASSERT_TRUE(build.content.CloseContentPage(&error)) << error.toStdString();
        ASSERT_TRUE(hhk2(build, path("Index.hhk"), &error)) << error.toStdString();
    }

    QString path(const char* name) const { return build.folder + QLatin1String(name); }
    QByteArray read(const char* name) const { return ReadBytes(path(name)); }

    TempFolder folder;
    RecordingHost host;
    EbookContext build;
};

// Item identifiers of the fixture: "202401010000" + two digits.
inline QString FixtureId(int n) {
    return QStringLiteral("202401010000%1").arg(n, 2, 10, QLatin1Char('0'));
}

} // namespace qmr::test
