#pragma once

#include "website/TypeIconFiles.h"

#include <QString>

namespace qmr {

// The files the website's pages rely on besides the pictures, built into the program: the
// stylesheet every page links as "index.css" beside it, and the icon the gallery shows for an
// item that holds no picture.
const QList<EmbeddedFile>& SiteFiles();

// Writes folder + "index.css" unless one is there (the user's own, or a saved page's, stays).
bool WriteSiteStylesheet(const QString& folder, QString* error = nullptr);

// Writes itemFolder + "100x75/qmr_icon.jpg" for an item without pictures, unless it has an
// icon already.
bool WriteNoPictureIcon(const QString& itemFolder, QString* error = nullptr);

} // namespace qmr
