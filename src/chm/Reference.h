#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringView>

namespace qmr {
class CodePage;
}

namespace qmr::chm {

// A file that a page, a style sheet or a sitemap uses, as written there and made ready to be
// looked up: blanks around it and line breaks in it removed, "?query" and "#fragment" cut off,
// "\" made "/".
struct Reference {
    QString path;      // %XX escapes decoded (as UTF-8, else in the page's code page)
    QString asWritten; // the same with its %XX escapes kept, for a file whose name holds "%"

    bool operator==(const Reference& other) const = default;
};

// Makes a reference from a value whose character references are already resolved. `codePage`
// decodes the escaped bytes of a name that are not UTF-8. The path is empty for a reference
// to the page itself ("#top", "?page=2").
Reference CleanReference(QStringView value, const CodePage& codePage);

// True for an address that names no file of the book: with a scheme ("http:", "mailto:",
// "javascript:", "data:", a drive "C:"), or absolute ("/x", "//host/x").
bool IsOutsideAddress(QStringView path);

// True when the bytes are well-formed UTF-8 (names on disk are; many pages' names are not).
bool IsValidUtf8(QByteArrayView bytes);

} // namespace qmr::chm
