#include "chm/PlainBook.h"

#include "platform/CodePage.h"

#include <QFile>
#include <QProcess>
#include <QtEndian>

#include <algorithm>

namespace qmr::test {

namespace {

const char kPython[] = "/usr/bin/python3";

void Put16(QByteArray& out, quint16 value) {
    char bytes[2];
    qToLittleEndian(value, bytes);
    out.append(bytes, 2);
}

void Put32(QByteArray& out, quint32 value) {
    char bytes[4];
    qToLittleEndian(value, bytes);
    out.append(bytes, 4);
}

void Put64(QByteArray& out, quint64 value) {
    char bytes[8];
    qToLittleEndian(value, bytes);
    out.append(bytes, 8);
}

// The directory's numbers: 7-bit groups, the highest first.
void PutDirectoryInt(QByteArray& out, quint64 value) {
    QByteArray groups(1, char(value & 0x7F));
    for (value >>= 7; value > 0; value >>= 7)
        groups.prepend(char(0x80 | (value & 0x7F)));
    out.append(groups);
}

QByteArray Directory(const std::vector<std::pair<QByteArray, QByteArray>>& files) {
    QByteArray entries;
    quint64 offset = 0;
    for (const auto& [name, bytes] : files) {
        PutDirectoryInt(entries, quint64(name.size()));
        entries.append(name);
        PutDirectoryInt(entries, 0); // the uncompressed section
        PutDirectoryInt(entries, offset);
        PutDirectoryInt(entries, quint64(bytes.size()));
        offset += quint64(bytes.size());
    }
    QByteArray chunk("PMGL");
    Put32(chunk, quint32(0x1000 - 0x14 - entries.size()));
    Put32(chunk, 0);
    Put32(chunk, 0xFFFFFFFF);
    Put32(chunk, 0xFFFFFFFF);
    chunk.append(entries);
    chunk.append(QByteArray(0x1000 - chunk.size(), '\0'));

    QByteArray directory("ITSP");
    for (quint32 value :
         {1u, 0x54u, 0x0Au, 0x1000u, 2u, 1u, 0xFFFFFFFFu, 0u, 0u, 0xFFFFFFFFu, 1u, 0x409u})
        Put32(directory, value);
    directory.append(QByteArray::fromHex("6a92025d2e21d0119df900a0c922e6ec"));
    for (quint32 value : {0x54u, 0xFFFFFFFFu, 0xFFFFFFFFu, 0xFFFFFFFFu})
        Put32(directory, value);
    return directory + chunk;
}

} // namespace

QByteArray MakePlainBook(const std::vector<PlainBookTopic>& topics, const QByteArray& fullText,
                         quint32 languageId) {
    QByteArray strings(1, '\0'), topicTable, urlTable, urlStrings(1, '\0');
    for (size_t i = 0; i < topics.size(); ++i) {
        Put32(topicTable, 0);
        Put32(topicTable, quint32(strings.size()));
        Put32(topicTable, quint32(urlTable.size()));
        Put16(topicTable, 6);
        Put16(topicTable, 0);
        strings.append(topics[i].title + '\0');
        Put32(urlTable, quint32(i));
        Put32(urlTable, quint32(i));
        Put32(urlTable, quint32(urlStrings.size()));
        Put32(urlStrings, 0);
        Put32(urlStrings, 0);
        urlStrings.append(topics[i].path + '\0');
    }
    // #SYSTEM: the first topic opens the book; the language tells a viewer the code page.
    QByteArray system;
    Put32(system, 3);
    const QByteArray home = topics.empty() ? QByteArray() : topics.front().path + '\0';
    Put16(system, 2);
    Put16(system, quint16(home.size()));
    system.append(home);
    Put16(system, 4);
    Put16(system, 28);
    for (quint32 value : {languageId, 0u, 1u, 0u, 0u, 0u, 0u})
        Put32(system, value);
    std::vector<std::pair<QByteArray, QByteArray>> files{
        {"/#SYSTEM", system},   {"/#STRINGS", strings},   {"/#TOPICS", topicTable},
        {"/#URLTBL", urlTable}, {"/#URLSTR", urlStrings}, {"/$FIftiMain", fullText}};
    for (const PlainBookTopic& topic : topics)
        files.emplace_back('/' + topic.path, "<html><body>" + topic.title + "</body></html>");

    const QByteArray directory = Directory(files);
    QByteArray content;
    for (const auto& file : files)
        content.append(file.second);
    const quint64 sectionStart = 0x60, directoryStart = sectionStart + 0x18;
    const quint64 contentStart = directoryStart + quint64(directory.size());
    QByteArray book("ITSF");
    for (quint32 value : {3u, 0x60u, 1u, 0u, languageId})
        Put32(book, value);
    book.append(QByteArray::fromHex("10fd017caa7bd0119e0c00a0c922e6ec"));
    book.append(QByteArray::fromHex("11fd017caa7bd0119e0c00a0c922e6ec"));
    Put64(book, sectionStart);
    Put64(book, 0x18);
    Put64(book, directoryStart);
    Put64(book, quint64(directory.size()));
    Put64(book, contentStart);
    QByteArray section = QByteArray::fromHex("fe01000000000000");
    Put64(section, contentStart + quint64(content.size()));
    Put64(section, 0);
    return book + section + directory + content;
}

bool PychmAvailable() {
    QProcess python;
    python.start(QString::fromLatin1(kPython),
                 {QStringLiteral("-c"), QStringLiteral("import chm.chm")});
    return python.waitForFinished(30000) && python.exitStatus() == QProcess::NormalExit &&
           python.exitCode() == 0;
}

QStringList SearchWithPychm(const QString& book, const QString& word, const QString& codePage,
                            bool wholeWords, bool titlesOnly, QString* error) {
    const qmr::CodePage encoding(codePage);
    const QString script = QStringLiteral(
        "import sys\n"
        "from chm import chm\n"
        "f = chm.CHMFile()\n"
        "if not f.LoadCHM(sys.argv[1].encode()): sys.exit('cannot open the book')\n"
        "found = f.Search(bytes.fromhex(sys.argv[2]), int(sys.argv[3]), int(sys.argv[4]))\n"
        "for t in sorted(found[1] if found else []):\n"
        "    print((t if isinstance(t, bytes) else t.encode('latin-1')).hex())\n");
    QProcess python;
    python.start(QString::fromLatin1(kPython),
                 {QStringLiteral("-c"), script, book,
                  QString::fromLatin1(encoding.encode(word).toHex()),
                  QString::number(wholeWords ? 1 : 0), QString::number(titlesOnly ? 1 : 0)});
    if (!python.waitForFinished(60000) || python.exitStatus() != QProcess::NormalExit ||
        python.exitCode() != 0) {
        *error = QString::fromUtf8(python.readAllStandardError());
        return {};
    }
    QStringList titles;
    for (const QByteArray& line : python.readAllStandardOutput().split('\n'))
        if (!line.isEmpty()) titles << encoding.decode(QByteArray::fromHex(line));
    titles.sort();
    return titles;
}

} // namespace qmr::test
