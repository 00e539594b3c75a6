#include "website/PictureSources.h"

#include <QDir>

#include <algorithm>

namespace qmr {
bool FileNameOrder(const QString& a, const QString& b) {
    const int folded = a.compare(b, Qt::CaseInsensitive);
    return folded != 0 ? folded < 0 : a < b;
}

bool IsPictureSource(const QString& fileName) {
    static const QStringList kinds = {
        QStringLiteral("jpg"), QStringLiteral("jpeg"), QStringLiteral("png"), QStringLiteral("gif"),
        QStringLiteral("bmp"), QStringLiteral("pbm"),  QStringLiteral("webp")};
    const QString lower = fileName.toLower();
    if (lower.contains(QLatin1String("qmr"))) return false;
    const qsizetype dot = lower.lastIndexOf(QLatin1Char('.'));
    return dot > 0 && kinds.contains(lower.mid(dot + 1));
}

QString CopyName(const QString& fileName) {
    if (fileName.endsWith(QLatin1String(".jpg"), Qt::CaseInsensitive)) return fileName;
    return fileName + QStringLiteral(".jpg");
}

QList<QFileInfo> PictureSourcesIn(const QString& itemFolder) {
    QList<QFileInfo> pictures;
    const QFileInfoList files = QDir(itemFolder).entryInfoList(QDir::Files, QDir::NoSort);
    for (const QFileInfo& file : files)
        if (IsPictureSource(file.fileName())) pictures.append(file);
    std::sort(pictures.begin(), pictures.end(), [](const QFileInfo& a, const QFileInfo& b) {
        return FileNameOrder(a.fileName(), b.fileName());
    });
    return pictures;
}

QStringList ItemFolders(const QString& scrapbookFolder) {
    const QString data = scrapbookFolder + QStringLiteral("data/");
    QStringList folders;
    const QStringList names = QDir(data).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::NoSort);
    for (const QString& name : names)
        if (name.compare(QLatin1String("qmr"), Qt::CaseInsensitive) != 0)
            folders.append(data + name + QLatin1Char('/'));
    std::sort(folders.begin(), folders.end(), FileNameOrder);
    return folders;
}

} // namespace qmr
