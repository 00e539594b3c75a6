#pragma once

#include "authoring/AuthoringContext.h"

#include <QString>
#include <QStringList>

namespace qmr {

// The outcome of turning a folder of files into a scrapbook. On success the caller registers
// the new scrapbook (the store entry and the multi-scrapbook list); on failure `problem` says
// which file is wrong, where, and what to do.
struct ConversionResult {
    bool ok = false;
    QString scrapbookName;   // the chosen folder's own name
    QString scrapbookFolder; // "<chosen folder>/scrapbook/"
    QString problem;
    int itemCount = 0; // file items described in the catalogue
};

// The names of the files directly in `folder`, sorted by name ignoring case; subfolders and
// hidden files are not listed.
QStringList ListFolderFiles(const QString& folder);

// Builds "<folder>/scrapbook/": one "file" item a file, each with a copy of the file, an
// index.dat and a redirecting index.html, under one folder item named after `folder`, and the
// catalogue listing them. The files themselves are only read. Everything is checked before the
// first file is written: names, File-Source.TXT, the limits.
ConversionResult ConvertFolderToScrapbook(const AuthoringContext& context, const QString& folder,
                                          const QStringList& fileNames);

// The name with every blank, "@", "&" and "=" turned into "-", one for one.
QString SanitizeItemName(const QString& name);

// The index of the last source line that holds the file name, ignoring case; -1 when none.
int FindSourceLine(const QString& fileName, const QStringList& sourceLines);

// Writes "<base>data/<id>/index.dat": seven records "key TAB value LF" (id, type, title,
// chars, comment, icon, source), by way of a working file index1.dat in the local code page
// that is rewritten as UTF-8 and then removed. `base` ends in "/".
bool WriteItemIndexDat(const QString& base, const QString& id, const QString& type,
                       const QString& title, const QString& source, QString* error = nullptr);

} // namespace qmr
