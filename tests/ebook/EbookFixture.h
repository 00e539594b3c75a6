#pragma once

#include "catalogue/CatalogueWalk.h"
#include "catalogue/RdfReader.h"
#include "ebook/EbookContext.h"
#include "ebook/Sitemap.h"
#include "support/Golden.h"
#include "support/RecordingHost.h"
#include "support/TempFolder.h"

#include <memory>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qmr::test {

// The addresses and name every golden file of the e-book was written with.
inline PageChrome EbookTestChrome() {
    PageChrome chrome;
    chrome.scrapbookName = u"Toc Test"_s;
    chrome.addresses.projectHomePage = u"https://quillmere.example/"_s;
    chrome.addresses.makerSite = u"https://maker.example/"_s;
    return chrome;
}

// One e-book build over a catalogue in a temporary folder: the catalogue loaded (or given),
// its walk, and the build's context over both.
class EbookFixture {
  public:
    explicit EbookFixture(const QByteArray& rdf = Fixture(u"toc/scrapbook.rdf"_s)) {
        folder.write(u"scrapbook.rdf"_s, rdf);
        InputError error;
        EXPECT_TRUE(RecodeAndLoadCatalogue(folder.path(), catalogue, &error))
            << error.text().toStdString();
        start();
    }
    explicit EbookFixture(const Catalogue& given) : catalogue(given) { start(); }

    // After a change to the catalogue, as a new build would see it.
    void start() {
        walk = std::make_unique<CatalogueWalk>(catalogue);
        build = std::make_unique<EbookContext>(host, catalogue, *walk);
        build->folder = folder.path();
        build->chrome = EbookTestChrome();
    }

    // What the build writes beside the table of contents: content page, forum file,
    // Index.hhc, then Index.hhk.
    void writeSitemaps(const QString& contentMode = QString()) {
        build->content.ChooseContentTemplate(build->chrome, catalogue, build->folder, contentMode);
        build->forum.open(path("forum.txt"));
        QString error;
        ASSERT_TRUE(HHC(*build, path("Index.hhc"), &error)) << error.toStdString();
        ASSERT_TRUE(build->forum.close(&error) && build->content.CloseContentPage(&error) &&
                    hhk2(*build, path("Index.hhk"), &error))
            << error.toStdString();
    }

    QString path(const QString& name) const { return folder.path() + name; }
    QByteArray read(const QString& name) const { return ReadBytes(path(name)); }

    TempFolder folder;
    RecordingHost host;
    Catalogue catalogue;
    std::unique_ptr<CatalogueWalk> walk;
    std::unique_ptr<EbookContext> build;
};

} // namespace qmr::test
