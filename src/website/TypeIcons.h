#pragma once

#include <QString>

namespace qmr {

// The 20 by 20 icon file of an item type (compared in lower case): the page icon for saved
// pages, notes, sites, files, images and marked pages; the bookmark and folder icons; none for
// any other type.
QString TypeIconFile(const QString& type);

// `<img border="0" src="` + prefix + icon file + `" width="20" height="20">`
QString TypeIconTag(const QString& type, const QString& prefix = QString());

} // namespace qmr
