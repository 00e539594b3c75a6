#pragma once

#include "host/InputError.h"

#include <QString>
#include <QStringList>

namespace qmr {

// ScrapBookStore.txt in the application folder lists the scrapbooks the user works with, one a
// line: name, "*", folder (Recipes*/home/me/Books/Recipes/), in the local code page with CR LF
// line ends. The program only ever appends to it; the user edits it by hand. The name written
// there is not shown anywhere: the list shows the name in the scrapbook's own settings.

// The store in `applicationFolder` (ending in "/"): an existing file whose name is
// "ScrapBookStore.txt" in any case, else that name.
QString ScrapbookStorePath(const QString& applicationFolder);

// The store's lines, split at CR LF, CR or LF so that a file saved by any editor reads the
// same; blank lines are kept so that line numbers match the file. False when there is no file.
bool ReadScrapbookStore(const QString& storePath, QStringList& lines);

// One store line split at its first "*", both parts trimmed.
struct StoreEntry {
    QString name;
    QString folder;
};
// False when the line holds no "*".
bool SplitStoreEntry(const QString& line, StoreEntry& entry);

// What is wrong with a store line that holds no "*", and how to write it instead.
InputError StoreLineError(const QString& storePath, int lineNumber, const QString& line);

enum class StoreAddResult { Added, AlreadyIn, NoStoreFile, WriteFailed };

// Appends the line name*folder unless the folder already occurs, ignoring case, anywhere inside
// a line (a substring test). The store is read before anything is written, so with no store
// file nothing is added. `error` tells the user what happened when the line was not added.
StoreAddResult AddToScrapbookStore(const QString& storePath, const QString& name,
                                   const QString& folder, QString* error = nullptr);

} // namespace qmr
