#pragma once

#include "chm/Reference.h"

#include <QByteArrayView>
#include <QList>

namespace qmr {
class CodePage;
}

namespace qmr::chm {

// The files an HTML page uses, in the order they stand, each once: src, href and background
// of any element, <object data>, <param name="movie" value> (and the src, url and filename
// parameters of players), srcset candidates, poster, xlink:href, and the url(...) and @import
// of style="..." attributes and <style> blocks. Values are decoded with the page's declared
// character set (else as UTF-8 when they are UTF-8, else with `fallback`), character
// references resolved. Addresses with a scheme are left out.
// The references are relative to the folder of the page's first <base href> when it has one:
// `base` receives that address ("./../../", "pages/x.html"; empty without one). A base with a
// scheme or an absolute one takes every reference out of the book, so none is returned.
QList<Reference> ScanHtmlReferences(QByteArrayView html, const CodePage& fallback,
                                    QString* base = nullptr);

// The files a style sheet uses: url(x), url('x'), url("x"), with blanks or without, and
// @import "x" / @import url(x); comments skipped. Decoded as UTF-8 when the names are UTF-8,
// else with the sheet's @charset, else with `fallback`.
QList<Reference> ScanCssReferences(QByteArrayView css, const CodePage& fallback);

} // namespace qmr::chm
