#pragma once

#include "host/BuildHost.h"
#include "library/ScrapbookList.h"

#include <QString>
#include <QStringList>

namespace qmr {

// The browser extension switches between scrapbooks listed in multibook.txt in its ScrapBook
// system folder: one scrapbook a line, name + TAB + folder, in UTF-8 with a byte-order mark.
// Each list is written first in the local code page under a "-BIG5" name, rewritten as UTF-8
// and copied to that folder.

// What became of writing the list.
struct MultiBookResult {
    // The lines written, name + TAB + folder, in order.
    QStringList entries;
    // The list was written (its local-code-page working file and its UTF-8 copy).
    bool written = false;
    // multibook.txt reached the ScrapBook system folder.
    bool copied = false;
    // The scan could not start (no such folder, or a store line without "*"): nothing written.
    bool badInput = false;
    // One message for each place the list or the scrapbook did not reach, saying what to do.
    QStringList problems;
};

// Adds the scrapbook `name` in `path` to the store and to `list`, then writes the list's rows
// (the name column and the folder, skipping a row named like the one before it, ignoring
// case) to "multibook-BIG5.txt" and "multibook1.txt" in the ScrapBook system folder and
// copies the latter to multibook.txt there. Without that folder only the store and the list
// take the scrapbook; the result says so.
MultiBookResult AddToMultiScrapbookList(ScrapbookList& list, const QString& name,
                                        const QString& path, const LibraryFolders& folders);

// The last step of making a scrapbook: the list receives its entry name*path, then
// AddToMultiScrapbookList registers it everywhere else.
MultiBookResult RegisterNewScrapbook(ScrapbookList& list, const QString& name, const QString& path,
                                     const LibraryFolders& folders);

// Copies `file` over multibook.txt in `scrapbookSystemFolder` when `file` exists; a CopyStatus.
int CopyMutiBooktoScrapbookSystemFolder(const QString& file, const QString& scrapbookSystemFolder);

// The tools menu's scan: every direct subfolder of `base` and every line of ScrapBookStore.txt
// that holds a scrapbook.rdf, then the "default" entry for the extension's own scrapbook, into
// "<base>multibook-BIG5.txt" and "<base>multibook.txt", which is copied to the ScrapBook
// system folder. An entry equal to the one before it, ignoring case, is written once. Logs
// "multibook.txt has been created ok!" when the list was written. An empty `base` does nothing.
MultiBookResult Menu_Dir2MultiScrapbook_Click(const QString& base, const LibraryFolders& folders,
                                              BuildHost& host);

} // namespace qmr
