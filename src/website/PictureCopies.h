#pragma once

#include <QString>

namespace qmr {

class BuildHost;

// What the picture-copy maker is asked to make: the website build makes both kinds from one
// decode of each picture; the menu's "Create Icons" makes only the small copies and the item
// icons, "Create Icons640x480" only the screen-sized ones.
struct PictureCopyOptions {
    bool iconCopies = true;   // "100x75/": copies inside 100 by 75, and "100x75/qmr_icon.jpg"
    bool screenCopies = true; // "640x480/": copies inside 640 by 480
    int jobs = 0;             // worker threads; 0 for one a core
};

struct PictureCopyReport {
    int made = 0;     // pictures whose copies were made now
    int upToDate = 0; // pictures whose copies were all newer than the picture
    int skipped = 0;  // pictures that could not be copied, each with a log line
    bool cancelled = false;
};

// Fills the copy folders of every item folder of the scrapbook that holds pictures (see
// PictureSources.h for which files are pictures and what their copies are called). A copy
// newer than its picture is kept, so an unchanged scrapbook costs a look at each file's time.
// A picture that cannot be read is logged with its path and skipped; the rest go on. Talks to
// `host` from the calling thread only: log lines, progress by pictures, and a check for
// cancellation between pictures.
PictureCopyReport MakePictureCopies(BuildHost& host, const QString& scrapbookFolder,
                                    const PictureCopyOptions& options = {});

} // namespace qmr
