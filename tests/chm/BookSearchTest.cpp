// Books made by the compiler, searched by a reader we did not write (chmlib's Python module, as
// Debian's python3-chm ships it).

#include "chm/ChmCompiler.h"

#include "platform/CodePage.h"
#include "support/BookReaders.h"
#include "support/Programs.h"
#include "support/TempFolder.h"

#include <QFile>
#include <QtEndian>

#include <gtest/gtest.h>

using namespace qmr::chm;
using namespace qmr::test;

namespace {

const char kPython[] = "/usr/bin/python3";

bool PychmAvailable() {
    return RunProgram(QString::fromLatin1(kPython), {"-c", "import chm.chm"}).exitCode == 0;
}

// A Python search with chmlib's module: the titles of the topics found, sorted and decoded
// from `codePage`; the query is encoded in it, as a user of the book's language types it.
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
    const RunResult python = RunProgram(
        QString::fromLatin1(kPython),
        {QStringLiteral("-c"), script, book, QString::fromLatin1(encoding.encode(word).toHex()),
         QString::number(wholeWords ? 1 : 0), QString::number(titlesOnly ? 1 : 0)});
    if (python.exitCode != 0) {
        *error = python.err;
        return {};
    }
    QStringList titles;
    for (const QByteArray& line : python.outBytes.split('\n'))
        if (!line.isEmpty()) titles << encoding.decode(QByteArray::fromHex(line));
    titles.sort();
    return titles;
}

struct Page {
    QString title;
    QString text;
};

class BookSearch : public ::testing::Test {
  protected:
    void SetUp() override {
        if (!PychmAvailable())
            GTEST_SKIP() << "python3-chm is not installed: the books cannot be searched";
    }

    // Compiles a book of `pages`, each saved in the book's code page, and returns its
    // full-text index as chmlib extracts it.
    QByteArray makeBook(quint32 language, const QString& codePage, const std::vector<Page>& pages) {
        m_codePage = codePage;
        const qmr::CodePage encoding(codePage);
        const QString folder = m_folder.path() + codePage + QLatin1Char('/');
        QByteArray files;
        for (size_t i = 0; i < pages.size(); ++i) {
            const QByteArray name = "page" + QByteArray::number(qulonglong(i)) + ".html";
            m_folder.write(codePage + QLatin1Char('/') + QString::fromLatin1(name),
                           "<html><head><meta charset=\"" + codePage.toLatin1() + "\"><title>" +
                               encoding.encode(pages[i].title) + "</title></head><body><p>" +
                               encoding.encode(pages[i].text) + "</p></body></html>");
            files += name + "\r\n";
        }
        m_folder.write(codePage + QStringLiteral("/book.hhp"),
                       "[OPTIONS]\r\nCompiled file=book.chm\r\nFull-text search=Yes\r\n"
                       "Default topic=page0.html\r\nLanguage=0x" +
                           QByteArray::number(language, 16) + "\r\n[FILES]\r\n" + files);
        m_book = folder + QStringLiteral("book.chm");
        CompileLog log;
        CompileOptions options;
        options.outputPath = m_book;
        EXPECT_TRUE(CompileHelpProject(folder + QStringLiteral("book.hhp"), options, log))
            << log.lines().join(u'\n').toStdString();
        // QMR_KEEP_BOOKS=folder keeps a copy of each book, to open it in a viewer by hand.
        const QString keep = qEnvironmentVariable("QMR_KEEP_BOOKS");
        if (!keep.isEmpty()) QFile::copy(m_book, keep + QStringLiteral("/%1.chm").arg(codePage));
        EXPECT_TRUE(ExtractWithChmLib(m_book, folder + QStringLiteral("files")));
        return ReadBytes(folder + QStringLiteral("files/$FIftiMain"));
    }

    QStringList search(const QString& word, bool wholeWords = false, bool titlesOnly = false) {
        QString error;
        const QStringList found =
            SearchWithPychm(m_book, word, m_codePage, wholeWords, titlesOnly, &error);
        EXPECT_TRUE(error.isEmpty()) << error.toStdString();
        return found;
    }

    TempFolder m_folder;
    QString m_book, m_codePage;
};

} // namespace

TEST_F(BookSearch, EnglishWordsTitlesAndManyPages) {
    std::vector<Page> pages{
        {QStringLiteral("Garden"), QStringLiteral("Roses and tulips grow in the garden.")},
        {QStringLiteral("Kitchen"), QStringLiteral("Apple pie with Roses? No: apples.")},
        {QStringLiteral("Zebra crossing"), QStringLiteral("Cars stop here.")}};
    for (int i = 0; i < 60; ++i)
        pages.push_back(
            {QStringLiteral("Note %1").arg(i), QStringLiteral("every note says hello")});
    makeBook(0x409, QStringLiteral("windows-1252"), pages);

    EXPECT_EQ(search(QStringLiteral("roses"), true), (QStringList{"Garden", "Kitchen"}));
    EXPECT_EQ(search(QStringLiteral("ROSES"), true), (QStringList{"Garden", "Kitchen"}));
    EXPECT_EQ(search(QStringLiteral("apple")), (QStringList{"Kitchen"}));
    EXPECT_EQ(search(QStringLiteral("hello"), true).size(), 60);
    EXPECT_TRUE(search(QStringLiteral("orchid")).isEmpty());
    EXPECT_TRUE(search(QStringLiteral("orchid"), true).isEmpty());
    EXPECT_EQ(search(QStringLiteral("zebra"), true), (QStringList{"Zebra crossing"}));
    EXPECT_EQ(search(QStringLiteral("zebra"), true, true), (QStringList{"Zebra crossing"}));
    EXPECT_TRUE(search(QStringLiteral("tulips"), true, true).isEmpty());
}

TEST_F(BookSearch, ChineseWordsInBig5AndGb2312Books) {
    const std::vector<Page> pages{
        {QStringLiteral("\u9996\u9801"), QStringLiteral("\u6B61\u8FCE")},
        {QStringLiteral("\u5927\u5B78"),
         QStringLiteral("\u6211\u5728\u5317\u4EAC\u5927\u5B78\u5B78\u7FD2\u4E2D\u6587\u3002")},
        {QStringLiteral("\u5730\u5716"), QStringLiteral("\u4E2D\u570B\u5730\u5716")}};
    for (const auto& [language, codePage] :
         {std::pair{0x404u, QStringLiteral("Big5")}, std::pair{0x804u, QStringLiteral("GB2312")}}) {
        SCOPED_TRACE(codePage.toStdString());
        makeBook(language, codePage, pages);
        const QString university = QStringLiteral("\u5927\u5B78");
        EXPECT_EQ(search(QStringLiteral("\u5317\u4EAC")), QStringList{university});
        EXPECT_EQ(search(QStringLiteral("\u5927\u5B78"), true), QStringList{university});
        EXPECT_EQ(search(QStringLiteral("\u4E2D\u6587")), QStringList{university});
        EXPECT_EQ(search(QStringLiteral("\u4E2D"), true),
                  (QStringList{QStringLiteral("\u5730\u5716"), university}));
        EXPECT_EQ(search(QStringLiteral("\u9996\u9801"), false, true),
                  QStringList{QStringLiteral("\u9996\u9801")});
        EXPECT_TRUE(search(QStringLiteral("\u65E5\u672C")).isEmpty());
    }
}

TEST_F(BookSearch, ManyWordsKeepATreeTheReaderCanDescend) {
    std::vector<Page> pages;
    for (int topic = 0; topic < 200; ++topic) {
        QString text;
        for (int i = 0; i < 1000; ++i)
            text += QStringLiteral("w%1x%2 shared ").arg(topic).arg(i);
        pages.push_back({QStringLiteral("Page %1").arg(topic), text});
    }
    const QByteArray index = makeBook(0x409, QStringLiteral("windows-1252"), pages);
    // The reader cannot descend more than one index node, so the nodes grew instead.
    EXPECT_EQ(qFromLittleEndian<quint16>(index.constData() + 0x18), 2);
    EXPECT_GT(qFromLittleEndian<quint32>(index.constData() + 0x2E), 4096u);
    for (int topic : {0, 57, 131, 199}) {
        for (int i : {0, 500, 999}) {
            EXPECT_EQ(search(QStringLiteral("w%1x%2").arg(topic).arg(i), true),
                      QStringList{QStringLiteral("Page %1").arg(topic)});
        }
    }
    EXPECT_EQ(search(QStringLiteral("shared"), true).size(), 200);
    EXPECT_EQ(search(QStringLiteral("w19")).size(), 11); // w19x.., w190x.. to w199x..: many leaves
}
