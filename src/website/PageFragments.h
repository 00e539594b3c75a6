#pragma once

#include "website/PageChrome.h"

#include <QString>

namespace qmr {

// The markup that frames every generated page. Each fragment returns its pieces joined with
// nothing between them; the caller writes the result as one line. Nothing is escaped.
// `prefix` leads from the page back to the scrapbook's root folder ("", "./", "./../../").

QString HtmlHead(const PageChrome& chrome, const QString& title, const QString& charset);
QString HtmlTitleBar(const PageChrome& chrome, const QString& prefix);
QString HtmlNavigationBar(const QString& prefix);
// Ends the document with "</BODY></HTML>"; nothing is written after it.
QString HtmlFooter(const PageChrome& chrome, const QString& prefix);

// Appends the thirteen-line advert block (each line after a CR LF) when advertising is on.
void AppendAdvertBlock(const PageChrome& chrome, QString& text);

// Writes folder + "index.html": a page that opens `target` (relative to the folder) at once.
bool WriteRedirectIndex(const PageChrome& chrome, const QString& folder, const QString& target,
                        QString* error = nullptr);

} // namespace qmr
