#pragma once

#include <QByteArrayView>
#include <QString>

namespace qmr {
class CodePage;
}

namespace qmr::chm {

// What a reader sees of an HTML page: its <title> (runs of blanks made one) and its visible text
// (markup, scripts, style sheets and comments removed, character references resolved, a blank
// between blocks). The text is what the full-text index breaks into words, which any run of
// blanks parts alike: its blanks stand as in the page.
struct PageText {
    QString title;
    QString text;
};

// The page is decoded with the character set it declares (a byte-order mark, or <meta charset>
// / <meta http-equiv="Content-Type" content="...; charset=...">), else with `fallback`.
PageText ExtractPageText(QByteArrayView html, const CodePage& fallback);

} // namespace qmr::chm
