#include "support/BookReaders.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>

namespace qmr::test {

namespace {

struct Output {
    int exitCode = -1;
    QString text;
};

Output Run(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    Output output;
    if (!process.waitForFinished(300000) || process.exitStatus() != QProcess::NormalExit)
        return output;
    output.exitCode = process.exitCode();
    output.text = QString::fromUtf8(process.readAllStandardOutput());
    return output;
}

} // namespace

bool ProgramAvailable(const QString& program) {
    if (program == QLatin1String("mspack_extract"))
        return QFile::exists(QStringLiteral(QMR_MSPACK_EXTRACT));
    return !QStandardPaths::findExecutable(program).isEmpty();
}

QStringList ChmLibListing(const QString& book) {
    const Output output = Run(QStringLiteral("enum_chmLib"), {book});
    QStringList names;
    // "   1     6081     4096   special file		/#IDXHDR": the name follows the tabs.
    for (const QString& line : output.text.split(QLatin1Char('\n'))) {
        const qsizetype tab = line.lastIndexOf(QLatin1Char('\t'));
        if (tab >= 0 && line.contains(QLatin1String(" file"))) names.append(line.mid(tab + 1));
    }
    return names;
}

QStringList SevenZipListing(const QString& book) {
    const Output output = Run(QStringLiteral("7z"), {QStringLiteral("l"), QStringLiteral("-slt"),
                                                     QStringLiteral("-sccUTF-8"), book});
    QStringList names;
    bool afterSeparator = false;
    for (const QString& line : output.text.split(QLatin1Char('\n'))) {
        if (line.startsWith(QLatin1String("----------")))
            afterSeparator = true;
        else if (afterSeparator && line.startsWith(QLatin1String("Path = ")))
            names.append(QLatin1Char('/') + line.mid(7).trimmed());
    }
    return names;
}

bool SevenZipTests(const QString& book) {
    return Run(QStringLiteral("7z"), {QStringLiteral("t"), book}).exitCode == 0;
}

bool ExtractWithChmLib(const QString& book, const QString& folder) {
    return Run(QStringLiteral("extract_chmLib"), {book, folder}).exitCode == 0;
}

bool ExtractWithSevenZip(const QString& book, const QString& folder) {
    return Run(QStringLiteral("7z"),
               {QStringLiteral("x"), QStringLiteral("-y"), QStringLiteral("-sccUTF-8"),
                QStringLiteral("-o") + folder, book})
               .exitCode == 0;
}

bool ExtractWithMspack(const QString& book, const QString& folder) {
    return Run(QStringLiteral(QMR_MSPACK_EXTRACT), {book, folder}).exitCode == 0;
}

std::vector<std::pair<int, QByteArray>> SystemEntries(const QByteArray& system) {
    std::vector<std::pair<int, QByteArray>> entries;
    for (qsizetype at = 4; at + 4 <= system.size();) {
        const int code = uchar(system[at]) | uchar(system[at + 1]) << 8;
        const int length = uchar(system[at + 2]) | uchar(system[at + 3]) << 8;
        entries.emplace_back(code, system.mid(at + 4, length));
        at += 4 + length;
    }
    return entries;
}

} // namespace qmr::test
