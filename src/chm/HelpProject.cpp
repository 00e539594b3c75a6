#include "chm/HelpProject.h"

#include "chm/BookLanguage.h"
#include "platform/CodePage.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace qmr::chm {
namespace {

enum class Section { None, Options, Windows, Files, Other };

Section SectionNamed(QByteArrayView name) {
    const QByteArray upper = name.trimmed().toByteArray().toUpper();
    if (upper == "OPTIONS") return Section::Options;
    if (upper == "WINDOWS") return Section::Windows;
    if (upper == "FILES") return Section::Files;
    return Section::Other;
}

// A file name as the project holds it: the file system's bytes, with "/" between folders.
QString FileName(QByteArrayView bytes) {
    return QFile::decodeName(bytes.trimmed().toByteArray()).replace(QLatin1Char('\\'), u'/');
}

// The project's lines, without their CR LF or LF, and without a UTF-8 byte-order mark.
QList<QByteArray> Lines(QByteArray bytes) {
    if (bytes.startsWith("\xEF\xBB\xBF")) bytes.remove(0, 3);
    QList<QByteArray> lines = bytes.split('\n');
    for (QByteArray& line : lines)
        if (line.endsWith('\r')) line.chop(1);
    if (!lines.isEmpty() && lines.last().isEmpty()) lines.removeLast();
    return lines;
}

bool IsBlankOrComment(QByteArrayView line) {
    const QByteArrayView trimmed = line.trimmed();
    return trimmed.isEmpty() || trimmed.startsWith(';');
}

// "0x404 Chinese (Traditional/Taiwan)": the number before the first blank, hexadecimal after
// "0x", else decimal.
bool ParseLanguage(QByteArrayView value, quint32& language) {
    QByteArrayView number = value.trimmed();
    const qsizetype blank = number.indexOf(' ');
    if (blank >= 0) number = number.first(blank);
    const bool hex = number.startsWith("0x") || number.startsWith("0X");
    bool ok = false;
    const uint parsed = (hex ? number.sliced(2) : number).toUInt(&ok, hex ? 16 : 10);
    if (!ok || parsed == 0 || parsed > 0xFFFF) return false;
    language = parsed;
    return true;
}

// The language line decides how every other text of the project is decoded, so it is found
// before anything else is read.
quint32 LanguageOf(const QList<QByteArray>& lines, quint32 language) {
    Section section = Section::None;
    for (const QByteArray& line : lines) {
        const QByteArrayView trimmed = QByteArrayView(line).trimmed();
        if (trimmed.startsWith('[') && trimmed.endsWith(']')) {
            section = SectionNamed(trimmed.sliced(1, trimmed.size() - 2));
            continue;
        }
        const qsizetype equals = line.indexOf('=');
        if (section == Section::Options && equals > 0 &&
            line.first(equals).trimmed().toLower() == "language")
            ParseLanguage(QByteArrayView(line).sliced(equals + 1), language);
    }
    return language;
}

// Splits a window definition's value at its commas: quoted fields may hold commas, and the
// [left,top,right,bottom] group is one field (brackets removed). False when a quote or the
// group is never closed.
bool SplitWindowFields(QByteArrayView value, QList<QByteArray>& fields) {
    QByteArray field;
    bool inQuotes = false;
    bool inGroup = false;
    bool wasQuoted = false;
    for (const char c : value) {
        if (inQuotes) {
            if (c == '"')
                inQuotes = false;
            else
                field += c;
        } else if (c == '"') {
            inQuotes = wasQuoted = true;
        } else if (inGroup) {
            if (c == ']')
                inGroup = false;
            else
                field += c;
        } else if (c == '[') {
            inGroup = true;
        } else if (c == ',') {
            fields.append(wasQuoted ? field : field.trimmed());
            field.clear();
            wasQuoted = false;
        } else {
            field += c;
        }
    }
    fields.append(wasQuoted ? field : field.trimmed());
    return !inQuotes && !inGroup;
}

// Which fields of a window definition are texts to show (caption and the two jump buttons'
// labels); the others name files or are numbers.
bool IsWindowText(qsizetype field) {
    return field == 0 || field == 5 || field == 7;
}

class ProjectReader {
  public:
    ProjectReader(HelpProject& project, CompileLog& log, const CodePage& codePage)
        : m_project(project), m_log(log), m_codePage(codePage) {}

    void readLine(const QByteArray& line, int number) {
        const QByteArrayView trimmed = QByteArrayView(line).trimmed();
        if (trimmed.startsWith('[') && trimmed.endsWith(']')) {
            m_section = SectionNamed(trimmed.sliced(1, trimmed.size() - 2));
            return;
        }
        if (IsBlankOrComment(line)) return;
        switch (m_section) {
        case Section::Options:
            readOption(line, number);
            break;
        case Section::Windows:
            readWindow(line, number);
            break;
        case Section::Files:
            m_project.files.append(FileName(line));
            m_project.fileLines.append(number);
            break;
        case Section::None:
        case Section::Other:
            break; // [ALIAS], [MAP], [TEXT POPUPS], [INFOTYPES], ...: nothing the book needs
        }
    }

  private:
    void fail(int line, const QString& text) { m_log.error(m_project.projectPath, line, text); }

    // Where the "=" of a line stands; -1, with an error saying what the line should be, when
    // it has none.
    qsizetype equalsSign(QByteArrayView line, int number, QLatin1StringView what) {
        const qsizetype equals = line.indexOf('=');
        if (equals > 0) return equals;
        fail(number, QStringLiteral("%1; correct or remove this line").arg(what));
        return -1;
    }

    void readOption(QByteArrayView line, int number) {
        const qsizetype equals =
            equalsSign(line, number, QLatin1StringView("an option needs the form \"Name=value\""));
        if (equals < 0) return;
        const QByteArray key = line.first(equals).trimmed().toByteArray().toLower();
        const QByteArrayView value = line.sliced(equals + 1).trimmed();
        if (key == "compiled file")
            m_project.compiledFile = outputPath(FileName(value));
        else if (key == "title")
            m_project.title = m_codePage.decode(value);
        else if (key == "default topic")
            m_project.defaultTopic = FileName(value);
        else if (key == "contents file")
            m_project.contentsFile = FileName(value);
        else if (key == "index file")
            m_project.indexFile = FileName(value);
        else if (key == "default window")
            m_project.defaultWindow = m_codePage.decode(value);
        else if (key == "default font")
            m_project.defaultFont = m_codePage.decode(value);
        else if (key == "error log file")
            m_project.errorLogFile = FileName(value);
        else if (key == "language")
            readLanguage(value, number);
        else if (key == "binary toc")
            readFlag(value, number, m_project.binaryToc);
        else if (key == "binary index")
            readFlag(value, number, m_project.binaryIndex);
        else if (key == "full-text search")
            readFlag(value, number, m_project.fullTextSearch);
    }

    void readLanguage(QByteArrayView value, int number) {
        if (!ParseLanguage(value, m_project.languageId))
            fail(number, QStringLiteral("the language must be a number such as 0x409; "
                                        "correct the Language= line"));
    }

    void readFlag(QByteArrayView value, int number, bool& flag) {
        const QByteArray word = value.toByteArray().toLower();
        if (word == "yes" || word == "true" || word == "1")
            flag = true;
        else if (word == "no" || word == "false" || word == "0")
            flag = false;
        else
            fail(number, QStringLiteral("write Yes or No after the \"=\""));
    }

    // The book's path: absolute, or relative to the project folder.
    QString outputPath(const QString& name) const {
        if (name.isEmpty()) return {};
        return QDir::cleanPath(QDir(m_project.folder).absoluteFilePath(name));
    }

    void readWindow(QByteArrayView line, int number) {
        const qsizetype equals = equalsSign(
            line, number, QLatin1StringView("a window needs the form name=\"caption\",..."));
        if (equals < 0) return;
        QList<QByteArray> fields;
        if (!SplitWindowFields(line.sliced(equals + 1), fields)) {
            fail(number, QStringLiteral("a quote or a \"[\" of this window is not closed"));
            return;
        }
        HelpWindow window;
        window.name = m_codePage.decode(line.first(equals).trimmed()).remove(u'"');
        for (qsizetype i = 0; i < fields.size(); ++i)
            window.fields.append(IsWindowText(i) ? m_codePage.decode(fields[i])
                                                 : FileName(fields[i]));
        m_project.windows.append(window);
    }

    HelpProject& m_project;
    CompileLog& m_log;
    const CodePage& m_codePage;
    Section m_section = Section::None;
};

} // namespace

bool ReadHelpProject(const QString& path, HelpProject& project, CompileLog& log,
                     quint32 defaultLanguage) {
    project = HelpProject();
    const QFileInfo info(path);
    project.projectPath = info.absoluteFilePath();
    project.folder = info.absolutePath() + QLatin1Char('/');
    QFile file(path);
    if (!info.isFile() || !file.open(QIODevice::ReadOnly)) {
        log.error(
            project.projectPath, 0,
            QStringLiteral("cannot read the project file (%1); check its name and folder")
                .arg(info.exists() ? file.errorString() : QStringLiteral("it does not exist")));
        return false;
    }
    const QList<QByteArray> lines = Lines(file.readAll());
    project.languageId = LanguageOf(lines, defaultLanguage);
    const CodePage codePage(CodePageOfLanguage(project.languageId));
    ProjectReader reader(project, log, codePage);
    const int errorsBefore = log.errorCount();
    for (qsizetype i = 0; i < lines.size(); ++i)
        reader.readLine(lines[i], int(i + 1));
    if (project.compiledFile.isEmpty())
        log.error(project.projectPath, 0,
                  QStringLiteral("the project names no book to write; add a line such as "
                                 "\"Compiled file=book.chm\" to [OPTIONS]"));
    return log.errorCount() == errorsBefore;
}

} // namespace qmr::chm
