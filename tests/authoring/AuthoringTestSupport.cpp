#include "authoring/AuthoringTestSupport.h"

#include "support/TempFolder.h"

#include <QDirIterator>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include <gtest/gtest.h>

namespace qmr::test {

AuthoringContext FixedContext(BuildHost& host, const QString& appFolder,
                              const QString& scrapbookName) {
    AuthoringContext context(host);
    context.applicationFolder = appFolder;
    context.today = [] { return kIdentifierDay; };
    context.chrome.scrapbookName = scrapbookName;
    return context;
}

QByteArray Golden(const QString& relative) {
    const QString path = QStringLiteral(QMR_GOLDEN_DIR "/authoring/") + relative;
    EXPECT_TRUE(QFileInfo(path).isFile()) << "missing golden file " << path.toStdString();
    return ReadBytes(path);
}

QMap<QString, QByteArray> FilesBelow(const QString& folder) {
    QMap<QString, QByteArray> files;
    QDirIterator it(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        files.insert(path.mid(folder.size()), ReadBytes(path));
    }
    return files;
}

void ExpectSameFile(const QByteArray& actual, const QByteArray& expected, const QString& name) {
    const QList<QByteArray> got = actual.split('\n');
    const QList<QByteArray> want = expected.split('\n');
    for (qsizetype i = 0; i < qMin(got.size(), want.size()); ++i) {
        if (got.at(i) != want.at(i)) {
            ADD_FAILURE() << name.toStdString() << ": line " << i + 1
                          << " differs\n  got:  " << got.at(i).toStdString()
                          << "\n  want: " << want.at(i).toStdString();
            return;
        }
    }
    EXPECT_EQ(got.size(), want.size()) << name.toStdString() << ": line counts differ";
}

QMap<QString, QStringList> CatalogueTree(const Catalogue& catalogue) {
    static const QString open = QStringLiteral("<RDF:Seq RDF:about=\"urn:scrapbook:");
    static const QString entry = QStringLiteral("<RDF:li RDF:resource=\"urn:scrapbook:item");
    QMap<QString, QStringList> tree;
    QString current;
    for (const QString& line : catalogue.lines) {
        if (line.startsWith(open)) {
            current = line.mid(open.size()).section(QLatin1Char('"'), 0, 0);
            current.remove(QStringLiteral("item"));
            tree[current];
        } else if (line.startsWith(entry)) {
            tree[current].append(line.mid(entry.size()).section(QLatin1Char('"'), 0, 0));
        }
    }
    return tree;
}

bool XmllintInstalled() {
    return !QStandardPaths::findExecutable(QStringLiteral("xmllint")).isEmpty();
}

bool XmllintAccepts(const QString& path, QString* output) {
    QProcess process;
    process.start(QStringLiteral("xmllint"), {QStringLiteral("--noout"), path});
    if (!process.waitForFinished(30000)) return false;
    if (output) *output = QString::fromUtf8(process.readAllStandardError());
    return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

QMap<QString, FileSnapshot> SnapshotFiles(const QString& folder, const QString& skipFolder) {
    QMap<QString, FileSnapshot> files;
    QDirIterator it(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        if (!skipFolder.isEmpty() && path.startsWith(skipFolder)) continue;
        files.insert(path, {ReadBytes(path), QFileInfo(path).lastModified()});
    }
    return files;
}

} // namespace qmr::test
