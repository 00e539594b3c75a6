#pragma once

#include "support/CatalogueBuilder.h"
#include "website/PageChrome.h"

using namespace Qt::StringLiterals;

namespace qmr::test {

// The frame the website tests build their pages in: addresses of their own, so that the
// footer and the advert block show where each comes from.
inline PageChrome SampleChrome() {
    PageChrome chrome;
    chrome.scrapbookName = u"My Travels"_s;
    chrome.addresses.projectHomePage = u"https://home.example/"_s;
    chrome.addresses.makerSite = u"https://maker.example/"_s;
    chrome.addresses.adScript = u"https://ads.example/show_ads.js"_s;
    chrome.addresses.adPublisherId = u"pub-42"_s;
    return chrome;
}

inline const QString kTitle50 = u"Fifty characters exactly, counted one by one: 0123"_s;
inline const QString kTitle51 = u"Fifty-one characters, the last one is cut off here!"_s;
inline const QString kBig5Title = u"台灣旅遊"_s;

// Travel > Japan, with one item of each kind the pages treat differently: the first item
// (never found by FindItemById), titles of 50 and 51 characters, a web source, a note, a
// bookmark, a local file, an unplaced item, a separator, an unsafe identifier, a type in
// capitals and a Big5 title.
inline Catalogue SampleCatalogue() {
    auto id = [](int n) { return u"200801010000%1"_s.arg(n, 2, 10, QLatin1Char('0')); };
    return CatalogueBuilder()
        .item(id(0), "", "Skipped first item", "http://first.example/")
        .item(id(1), "folder", "Travel")
        .item(id(2), "folder", "Japan")
        .item(id(3), "", kTitle50, "http://example.com/a?x=1&amp;y=2")
        .item(id(4), "note", kTitle51)
        .item(id(5), "bookmark", "A bookmark", "https://bookmark.example/")
        .item(id(6), "file", "a.wmv", "file:///C:/clips/a.wmv")
        .item(id(7), "IMAGE", "Not placed")
        .item(id(8), "separator", "----")
        .item("../evil", "", "Unsafe")
        .item(id(10), "Site", "<b>R&amp;D</b>")
        .item(id(11), "marked", kBig5Title)
        .list("root", {id(0), id(1), id(5), id(8), "../evil", id(10)})
        .list(id(1), {id(2), id(6)})
        .list(id(2), {id(3), id(4), id(11)})
        .build();
}

} // namespace qmr::test
