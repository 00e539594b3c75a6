#include "ebook/SavedPages.h"

#include "catalogue/PathSafety.h"
#include "catalogue/TextFiles.h"
#include "platform/LocalCodePage.h"

#include <QFile>

namespace qmr {
namespace {

constexpr int kMostAppendedLines = 1000;

// The page as it was saved, kept beside it before anything changes it. Both options keep it
// under one name; a scrapbook made where names ignore case may hold "ORG.html", which is
// taken as the same file.
QString originalPage(const QString& itemFolder) {
    const QString upper = itemFolder + QStringLiteral("ORG.html");
    if (!QFile::exists(itemFolder + QStringLiteral("org.html")) && QFile::exists(upper))
        return upper;
    return itemFolder + QStringLiteral("org.html");
}

QStringList readLocalLines(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    return SplitLocalLines(LocalCodePage::decode(file.readAll()));
}

bool safeItem(BuildHost& host, const CatalogueItem& item) {
    if (IsSafePathComponent(item.id)) return true;
    host.add2loglist(
        QStringLiteral("Skipped item \"%1\": its identifier cannot name a folder").arg(item.id));
    return false;
}

// Makes `target` from `source`: a plain copy, or recoded to the local code page for a UTF-8
// page (and back again).
bool copyOrRecode(const QString& source, const QString& target, bool utf8ToLocal, bool toUtf8,
                  QString* error) {
    if (toUtf8) return ConvertLocalTextToUtf8(source, target, error);
    if (utf8ToLocal) return ConvertUtf8ToLocalText(source, target, error);
    if (CopyFileIfExists(source, target) == CopyFailed) {
        if (error) *error = QStringLiteral("cannot copy %1 to %2").arg(source, target);
        return false;
    }
    return true;
}

bool rebuildPage(const CatalogueItem& item, const QString& folder, const QString& side,
                 const QStringList& gathered, QString* error) {
    const QString dir = ItemFolder(folder, item.id);
    const QString idx = dir + QStringLiteral("index.html");
    const QString tmp = dir + QStringLiteral("index.tmp");
    const QString org = originalPage(dir);
    const bool utf8 = item.chars == u"UTF-8";
    if (!QFile::exists(org) && QFile::exists(idx) && CopyFileIfExists(idx, org) == CopyFailed) {
        if (error) *error = QStringLiteral("cannot keep %1 as org.html").arg(idx);
        return false;
    }
    if (QFile::exists(side) && !copyOrRecode(org, tmp, utf8, false, error)) return false;
    if (!QFile::exists(tmp)) return true;
    QString appended;
    for (const QString& line : gathered)
        appended += line + QStringLiteral("\r\n");
    QFile out(tmp);
    if (!out.open(QIODevice::Append) || out.write(LocalCodePage::encode(appended)) < 0) {
        if (error) *error = QStringLiteral("cannot write %1").arg(tmp);
        return false;
    }
    out.close();
    const bool made = copyOrRecode(tmp, idx, false, utf8, error);
    QFile::remove(tmp);
    return made;
}

} // namespace

void Index2ORG(BuildHost& host, const Catalogue& catalogue, const QString& folder) {
    for (int i = 0; i < catalogue.itemCount; ++i) {
        const CatalogueItem& item = catalogue.items.at(i);
        if (!item.hasSavedPage() || !safeItem(host, item)) continue;
        const QString dir = ItemFolder(folder, item.id);
        const QString org = originalPage(dir);
        if (!QFile::exists(org)) CopyFileIfExists(dir + QStringLiteral("index.html"), org);
        host.yield();
        if (host.cancelled()) return;
    }
}

bool AppendFolderPage(BuildHost& host, const Catalogue& catalogue, const CatalogueWalk& walk,
                      const QString& folder, bool googleAD, const QStringList& midAdvertLines,
                      QString* error) {
    for (int i = 0; i < catalogue.itemCount; ++i) {
        const CatalogueItem& item = catalogue.items.at(i);
        if (!item.hasSavedPage() || !safeItem(host, item)) continue;
        // An item in the top-level list has "root" as its folder; one that no list names has
        // none, and so no folder page beside it.
        const QString side =
            folder + QStringLiteral("data/qmr/") + walk.parentId(i) + QStringLiteral(".html");
        QStringList gathered;
        if (googleAD) {
            gathered = midAdvertLines + readLocalLines(side);
            if (gathered.size() > kMostAppendedLines) {
                if (error)
                    *error = QStringLiteral("%1: more than %2 lines to append to a saved page")
                                 .arg(side)
                                 .arg(kMostAppendedLines);
                return false;
            }
        }
        if (!rebuildPage(item, folder, side, gathered, error)) return false;
        host.yield();
        if (host.cancelled()) {
            if (error) *error = CancelledProblem();
            return false;
        }
    }
    return true;
}

} // namespace qmr
