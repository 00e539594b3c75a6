#pragma once

#include <QString>
#include <QStringView>

namespace qmr::chm {

// Text with its character references resolved: named ones of HTML 4 ("&amp;", "&nbsp;",
// "&eacute;"), decimal and hexadecimal ones ("&#20013;", "&#x4E2D;"). A reference the reader
// does not know stays as written; the common names are also taken without their ";", as
// browsers take them.
QString ResolveCharacterReferences(QStringView text);

} // namespace qmr::chm
