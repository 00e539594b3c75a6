#include "website/PictureCopies.h"

#include "host/BuildHost.h"
#include "platform/PathSeparators.h"
#include "website/ParallelJobs.h"
#include "website/PictureCopyJob.h"
#include "website/PictureSources.h"
#include "website/PixelBudget.h"
#include "website/WholeFile.h"

#include <QDir>
#include <QFile>
#include <QSet>

#include <thread>

namespace qmr {
namespace {

const QSize kIconBox(100, 75);
const QSize kScreenBox(640, 480);

// Pixels decoded at once by all workers together: two large photos, not ten panoramas.
constexpr qint64 kPixelsInFlight = 300'000'000;

// What one item folder needs: the copies to make, and the copy names in name order, from which
// the item icon is taken once the copies are made.
struct FolderPlan {
    QString folder;
    QStringList copyNames;
};

struct Plan {
    QList<PictureCopyJob> jobs;
    QList<FolderPlan> folders;
};

bool isFresh(const QString& copy, const QFileInfo& source) {
    const QFileInfo info(copy);
    return info.exists() && info.lastModified() >= source.lastModified();
}

void logSkipped(BuildHost& host, const QString& path, const QString& problem) {
    host.add2loglist(QStringLiteral("Skipped picture %1: %2").arg(ToNativePath(path), problem));
}

// The job of one picture: a box and a target for each copy that is missing or older than the
// picture.
PictureCopyJob jobFor(const QString& folder, const QFileInfo& source, const QString& copyName,
                      const PictureCopyOptions& options) {
    PictureCopyJob job;
    job.source = source.filePath();
    const auto want = [&](bool wanted, const QString& subfolder, QSize box) {
        const QString target = folder + subfolder + copyName;
        if (!wanted || isFresh(target, source)) return;
        job.boxes.append(box);
        job.targets.append(target);
    };
    want(options.screenCopies, kScreenCopyFolder, kScreenBox);
    want(options.iconCopies, kIconCopyFolder, kIconBox);
    return job;
}

Plan planCopies(BuildHost& host, const QString& scrapbookFolder, const PictureCopyOptions& options,
                PictureCopyReport& report) {
    Plan plan;
    for (const QString& folder : ItemFolders(scrapbookFolder)) {
        FolderPlan folderPlan{folder, {}};
        QSet<QString> names;
        for (const QFileInfo& source : PictureSourcesIn(folder)) {
            const QString copyName = CopyName(source.fileName());
            if (names.contains(copyName)) {
                logSkipped(
                    host, source.filePath(),
                    QStringLiteral("another picture already has copies named %1").arg(copyName));
                ++report.skipped;
                continue;
            }
            names.insert(copyName);
            folderPlan.copyNames.append(copyName);
            PictureCopyJob job = jobFor(folder, source, copyName, options);
            if (job.boxes.isEmpty()) {
                ++report.upToDate;
                continue;
            }
            for (const QString& target : job.targets)
                QDir().mkpath(QFileInfo(target).path());
            plan.jobs.append(job);
        }
        if (!folderPlan.copyNames.isEmpty()) plan.folders.append(folderPlan);
        host.yield(); // a scrapbook may hold thousands of item folders to look into
    }
    return plan;
}

// The item icon is the small copy of the first picture in name order that has one, so a
// broken first picture does not leave the item without an icon.
void makeItemIcon(BuildHost& host, const FolderPlan& plan) {
    const QString icons = plan.folder + kIconCopyFolder;
    for (const QString& name : plan.copyNames) {
        const QFileInfo copy(icons + name);
        if (!copy.exists()) continue;
        const QString icon = icons + kItemIconName;
        if (isFresh(icon, copy)) return;
        QFile file(copy.filePath());
        QString problem;
        if (!file.open(QIODevice::ReadOnly))
            problem = file.errorString();
        else
            WriteWholeFile(icon, file.readAll(), &problem);
        if (!problem.isEmpty()) logSkipped(host, icon, problem);
        return;
    }
}

int workerCount(int jobs) {
    if (jobs > 0) return jobs;
    return qMax(1, int(std::thread::hardware_concurrency()));
}

} // namespace

PictureCopyReport MakePictureCopies(BuildHost& host, const QString& scrapbookFolder,
                                    const PictureCopyOptions& options) {
    PictureCopyReport report;
    const Plan plan = planCopies(host, scrapbookFolder, options, report);
    const int total = int(plan.jobs.size());
    PixelBudget budget(kPixelsInFlight);
    int done = 0;
    RunParallelJobs<QString>(
        total, workerCount(options.jobs),
        [&](int i) { return CopyPicture(plan.jobs.at(i), budget); },
        [&](int i, QString problem) {
            if (problem.isEmpty()) {
                ++report.made;
            } else {
                ++report.skipped;
                logSkipped(host, plan.jobs.at(i).source, problem);
            }
            host.progress(++done, total);
            host.yield();
            return !host.cancelled();
        },
        [&] {
            host.yield();
            return !host.cancelled();
        });
    report.cancelled = done < total;
    if (options.iconCopies && !report.cancelled)
        for (const FolderPlan& folder : plan.folders)
            makeItemIcon(host, folder);
    host.add2loglist(QStringLiteral("Picture copies%1: %2 made, %3 up to date, %4 skipped")
                         .arg(report.cancelled ? QStringLiteral(" stopped") : QString())
                         .arg(report.made)
                         .arg(report.upToDate)
                         .arg(report.skipped));
    return report;
}

} // namespace qmr
