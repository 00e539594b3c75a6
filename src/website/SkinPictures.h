#pragma once

#include "website/TypeIconFiles.h"

#include <QStringList>

namespace qmr {

// The pictures of the two decorated content page skins, built into the program.
const QList<EmbeddedFile>& SkinPictureFiles();

// The pictures each skin's markup names.
QStringList KioskSkinPictures();
QStringList LogitechSkinPictures();

// Writes the named skin pictures into `folder` (the folder the content page's base address
// points to: the scrapbook's own), leaving any picture that is already there alone, so a
// user's own logo stays. False with the reason when one cannot be written.
bool WriteSkinPictures(const QString& folder, const QStringList& names, QString* error = nullptr);

} // namespace qmr
