#pragma once

#include <QFileInfo>
#include <QList>
#include <QString>
#include <QStringList>

namespace qmr {

// The folders of picture copies inside an item folder, and the item's icon among the small ones.
inline const QString kIconCopyFolder = QStringLiteral("100x75/");
inline const QString kScreenCopyFolder = QStringLiteral("640x480/");
inline const QString kItemIconName = QStringLiteral("qmr_icon.jpg");

// Whether a file of an item folder is a picture that gets copies: a JPG, JPEG, PNG, GIF, BMP,
// PBM or WebP by its extension in any case, and no name whose lower case holds "qmr" (the
// program's own files).
bool IsPictureSource(const QString& fileName);

// The name of a picture's copies: a JPG keeps its own name (the photo pages list "*.jpg" in
// any case); any other picture adds ".jpg" to its whole name, so "a.png" and "a.gif" never
// meet.
QString CopyName(const QString& fileName);

// The order in which pictures and their copies are listed: case ignored first, then exact, so
// that it is the same on every file system.
bool FileNameOrder(const QString& a, const QString& b);

// The pictures lying directly in `itemFolder` (never those in its copy folders), in name
// order: case ignored first, then exact, so the order is the same on every file system.
QList<QFileInfo> PictureSourcesIn(const QString& itemFolder);

// The item folders of a scrapbook: every folder in "data/" but the website's own "data/qmr/",
// in name order. Each ends in "/".
QStringList ItemFolders(const QString& scrapbookFolder);

} // namespace qmr
