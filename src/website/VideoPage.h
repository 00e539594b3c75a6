#pragma once

#include "website/PageChrome.h"

#include <QString>

namespace qmr {

// Appends the media player markup (one line, no line breaks) to `text` and returns it.
QString BuildPlayerHtml(QString text, const QString& videoUrl, const QString& caption,
                        const QString& autoStart, int width, int height);

// Writes a page that plays `videoUrl` (a clip, or a .wpl playlist beside the page).
bool WriteVideoPage(const PageChrome& chrome, const QString& pagePath, const QString& title,
                    const QString& videoUrl, QString* error = nullptr);

} // namespace qmr
