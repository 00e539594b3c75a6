#pragma once

#include "catalogue/Catalogue.h"
#include "website/PageChrome.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace qmr {

// The pictures of one copy folder ("100x75/" or "640x480/" of an item): the "*.jpg" files in
// any case, in name order, without the program's own files (names holding "qmr"). Nothing,
// with the reason, when it holds more than a photo page can list.
std::optional<QStringList> PictureList(const QString& copyFolder, QString* error);
inline constexpr int kMostPicturesListed = 10000;

// One large picture of a photo page, as one line: its number, links to the gallery, the top
// of the page and the previous and next pictures (wrapping around at either end), then the
// picture itself, which shows the next one when clicked, and its name.
QString PictureBlock(const QString& fileName, int index, int count);

// Writes itemFolder + "Photo.html" (and "photo.html", the name the gallery links, where the
// file system tells the two apart): the item's icons, each picture at screen size, then its
// clips in players. An item folder without "index.html" gets the same page under that name.
// A photo page holds 800 pictures; an item with more keeps only the last 800-picture part
// (an item of exactly 800 gets the empty part after them).
bool BuildPhotoPage(const PageChrome& chrome, const QString& itemFolder, const CatalogueItem& item,
                    QString* error = nullptr);

} // namespace qmr
