#pragma once

#include "catalogue/Catalogue.h"
#include "support/TempFolder.h"
#include "website/PageChrome.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <algorithm>

#include <gtest/gtest.h>

namespace qmr::test {

// The frame the website tests build their pages in: addresses of their own, so that the
// footer and the advert block show where each comes from.
inline PageChrome SampleChrome() {
    PageChrome chrome;
    chrome.scrapbookName = QStringLiteral("My Travels");
    chrome.addresses.projectHomePage = QStringLiteral("https://home.example/");
    chrome.addresses.makerSite = QStringLiteral("https://maker.example/");
    chrome.addresses.adScript = QStringLiteral("https://ads.example/show_ads.js");
    chrome.addresses.adPublisherId = QStringLiteral("pub-42");
    return chrome;
}

inline CatalogueItem Item(const char* id, const char* type, const QString& title,
                          const char* source, bool placed, const char* parentId) {
    CatalogueItem item;
    item.id = QString::fromLatin1(id);
    item.type = QString::fromLatin1(type);
    item.title = title;
    item.source = QString::fromLatin1(source);
    item.placed = placed;
    item.parentId = QString::fromLatin1(parentId);
    return item;
}

inline const QString kTitle50 =
    QStringLiteral("Fifty characters exactly, counted one by one: 0123");
inline const QString kTitle51 =
    QStringLiteral("Fifty-one characters, the last one is cut off here!");
inline const QString kBig5Title = QStringLiteral("台灣旅遊");

// A scrapbook as the table-of-contents walk leaves it: Travel > Japan, with one item of each
// kind the list page treats differently.
inline Catalogue SampleCatalogue() {
    Catalogue catalogue;
    catalogue.folder = QStringLiteral("/scrapbook/");
    catalogue.items = {
        Item("20080101000000", "", QStringLiteral("Skipped first item"), "http://first.example/",
             true, "root"),
        Item("20080101000001", "folder", QStringLiteral("Travel"), "", true, "root"),
        Item("20080101000002", "folder", QStringLiteral("Japan"), "", true, "20080101000001"),
        Item("20080101000003", "", kTitle50, "http://example.com/a?x=1&amp;y=2", true,
             "20080101000002"),
        Item("20080101000004", "note", kTitle51, "", true, "20080101000002"),
        Item("20080101000005", "bookmark", QStringLiteral("A bookmark"),
             "https://bookmark.example/", true, "root"),
        Item("20080101000006", "file", QStringLiteral("a.wmv"), "file:///C:/clips/a.wmv", true,
             "20080101000001"),
        Item("20080101000007", "IMAGE", QStringLiteral("Not placed"), "", false, ""),
        Item("20080101000008", "separator", QStringLiteral("----"), "", true, "root"),
        Item("../evil", "", QStringLiteral("Unsafe"), "", true, "root"),
        Item("20080101000010", "Site", QStringLiteral("<b>R&amp;D</b>"), "", true,
             "20089999999999"),
        Item("20080101000011", "marked", kBig5Title, "", true, "20080101000002"),
    };
    catalogue.itemCount = int(catalogue.items.size());
    return catalogue;
}

inline QByteArray Golden(const char* name) {
    return ReadBytes(QStringLiteral(QMR_GOLDEN_DIR "/website/") + QString::fromLatin1(name));
}

// Compares a written file with its golden copy, naming the first line that differs.
inline void ExpectGolden(const QString& path, const char* goldenName) {
    const QByteArray actual = ReadBytes(path);
    const QByteArray expected = Golden(goldenName);
    ASSERT_FALSE(expected.isEmpty()) << goldenName;
    if (actual == expected) return;
    const QList<QByteArray> actualLines = actual.split('\n');
    const QList<QByteArray> expectedLines = expected.split('\n');
    for (qsizetype i = 0; i < std::max(actualLines.size(), expectedLines.size()); ++i) {
        const QByteArray a = actualLines.value(i);
        const QByteArray e = expectedLines.value(i);
        if (a != e) {
            ADD_FAILURE() << goldenName << " line " << i + 1 << "\n  written: " << a.toStdString()
                          << "\n  golden:  " << e.toStdString();
            return;
        }
    }
}

} // namespace qmr::test
