#pragma once

#include "chm/HtmlTokenizer.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace qmr {
class CodePage;
}

namespace qmr::chm {

// A page's bytes ready for the tokenizer: without a UTF-8 byte-order mark, and a UTF-16 page
// (known by its mark) turned into UTF-8, which then counts as declared.
class PageBytes {
  public:
    explicit PageBytes(QByteArrayView html);
    QByteArrayView bytes() const { return m_bytes; }
    // "UTF-8" after a byte-order mark; empty otherwise.
    const QString& markedCharset() const { return m_marked; }

  private:
    QByteArray m_converted;
    QByteArrayView m_bytes;
    QString m_marked;
};

// The character set a <meta> tag names: <meta charset="big5"> or <meta http-equiv=
// "Content-Type" content="text/html; charset=big5">; empty for any other tag.
QByteArrayView MetaCharset(const HtmlToken& token);

// The character set a page declares: its byte-order mark, else the first <meta> naming one
// before the page's <body>. Empty when it declares none.
QString DeclaredCharset(const PageBytes& page);

// The converter for a character set's name as pages write it ("big5", "gb2312", "utf-8",
// "x-sjis", "iso-8859-1", ...); `fallback` when the name is empty or unknown. Converters are
// kept per thread, so asking again is cheap.
const CodePage& CodePageOfCharset(const QString& name, const CodePage& fallback);

} // namespace qmr::chm
