#include "support/TempFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace qmr::test {

QString TempFolder::path() const {
    return m_dir.path() + QLatin1Char('/');
}

QString TempFolder::write(const QString& relative, const QByteArray& bytes) const {
    const QString full = path() + relative;
    QDir().mkpath(QFileInfo(full).absolutePath());
    QFile file(full);
    if (file.open(QIODevice::WriteOnly)) file.write(bytes);
    return full;
}

QByteArray ReadBytes(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void CopyTree(const QString& from, const QString& to) {
    QDir().mkpath(to);
    const QDir source(from);
    for (const QString& name : source.entryList(QDir::Files | QDir::Hidden))
        QFile::copy(from + QLatin1Char('/') + name, to + QLatin1Char('/') + name);
    for (const QString& name : source.entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot))
        CopyTree(from + QLatin1Char('/') + name, to + QLatin1Char('/') + name);
}

QString CopyOfExample(const TempFolder& folder) {
    const QString target = folder.path() + u"sample-scrapbook/"_s;
    CopyTree(QStringLiteral(QMR_SOURCE_DIR "/examples/sample-scrapbook"), target);
    return target;
}

QString MakeScrapbook(const TempFolder& root, const QString& relative, int items,
                      const QByteArray& iniName) {
    const QString folder = root.path() + relative + QLatin1Char('/');
    root.write(relative + u"/scrapbook.rdf"_s, "<RDF:RDF/>\n");
    for (int i = 0; i < items; ++i)
        QDir().mkpath(folder + u"data/200803090%1"_s.arg(i, 5, 10, QLatin1Char('0')));
    if (!iniName.isEmpty())
        root.write(relative + u"/ScrapbookPrj.ini"_s,
                   "[Scrapbook]\r\nScrapbookName=" + iniName + "\r\n");
    return folder;
}

} // namespace qmr::test
