#include "support/BookReaders.h"

#include "support/Programs.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace qmr::test {

bool ProgramAvailable(const QString& program) {
    if (program == "mspack_extract"_L1) return QFile::exists(QStringLiteral(QMR_MSPACK_EXTRACT));
    return HasProgram(program);
}

QStringList ChmLibListing(const QString& book) {
    QStringList names;
    // "   1     6081     4096   special file		/#IDXHDR": the name follows the tabs.
    for (const QString& line : RunProgram(u"enum_chmLib"_s, {book}).out.split(u'\n')) {
        const qsizetype tab = line.lastIndexOf(u'\t');
        if (tab >= 0 && line.contains(" file"_L1)) names.append(line.mid(tab + 1));
    }
    return names;
}

QStringList SevenZipListing(const QString& book) {
    QStringList names;
    bool afterSeparator = false;
    for (const QString& line :
         RunProgram(u"7z"_s, {u"l"_s, u"-slt"_s, u"-sccUTF-8"_s, book}).out.split(u'\n')) {
        if (line.startsWith("----------"_L1))
            afterSeparator = true;
        else if (afterSeparator && line.startsWith("Path = "_L1))
            names.append(u'/' + line.mid(7).trimmed());
    }
    return names;
}

bool SevenZipTests(const QString& book) {
    return RunProgram(u"7z"_s, {u"t"_s, book}).exitCode == 0;
}

bool ExtractWithChmLib(const QString& book, const QString& folder) {
    return RunProgram(u"extract_chmLib"_s, {book, folder}).exitCode == 0;
}

bool ExtractWithSevenZip(const QString& book, const QString& folder) {
    return RunProgram(u"7z"_s, {u"x"_s, u"-y"_s, u"-sccUTF-8"_s, u"-o"_s + folder, book})
               .exitCode == 0;
}

bool ExtractWithMspack(const QString& book, const QString& folder) {
    return RunProgram(QStringLiteral(QMR_MSPACK_EXTRACT), {book, folder}).exitCode == 0;
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
