#pragma once

#include <QByteArray>
#include <QtGlobal>

namespace qmr {

// Pages of HTML prose one after another, as a book's compressed section holds them: made-up
// words drawn by Zipf's law from a vocabulary of thousands, sentences and paragraphs of every
// length, headings, lists and links, and the same page frame around each, so the bytes compress
// about as real saved pages do. The same arguments always give the same bytes.
QByteArray GenerateHtmlPages(qsizetype bytes, quint32 seed = 1);

} // namespace qmr
