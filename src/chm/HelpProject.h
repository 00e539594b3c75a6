#pragma once

#include "chm/CompileLog.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace qmr::chm {

// One window of a project's [WINDOWS] section:
//   name="caption","contents","index","default topic","home",jump 1 text,jump 1 url,
//   jump 2 text,jump 2 url,navigation style,navigation width,buttons,[left,top,right,bottom],
//   window style,extended style,show state,navigation closed,default tab,tab position,unused
// The group [left,top,right,bottom] is one field, "left,top,right,bottom" without brackets.
// The caption and the two jump labels are texts in the project's code page; the other fields
// name files (the file system's bytes) or are numbers.
struct HelpWindow {
    QString name;
    QStringList fields; // the values after "=", quotes removed, in order; empty where left out
};

// An HTML Help project (.hhp) as the compiler reads it. Paths inside the project are relative
// to its folder, use "/" and keep the file system's spelling.
struct HelpProject {
    QString folder;      // absolute, ending in "/"
    QString projectPath; // the .hhp itself

    // [OPTIONS]
    QString compiledFile; // absolute path of the book to write
    QString title;
    QString defaultTopic;
    QString contentsFile; // empty when the project names none
    QString indexFile;
    QString defaultWindow;
    QString defaultFont;
    QString errorLogFile;
    quint32 languageId = 0x409; // "Language=0x404 ..." as a Windows language identifier
    bool binaryToc = false;
    bool binaryIndex = true;
    bool fullTextSearch = false;

    QList<HelpWindow> windows;
    QStringList files;    // [FILES], in order
    QList<int> fileLines; // the project line (1-based) of each of `files`, for messages
};

// Reads the project at `path`: keys in any case with blanks around "=", CR LF or LF lines,
// "\" taken as "/" in paths, [FILES] without its blank and ";" comment lines, and sections the
// compiler has no use for ([ALIAS], [MAP], [TEXT POPUPS], [INFOTYPES], ...) skipped. Texts are
// decoded with the code page of the project's language (the Language= line, wherever it
// stands); file names ([FILES], "Compiled file=", "Default topic=", the contents, index and
// error log files) keep the file system's bytes. A project that cannot be read, names no
// output, or has a line that cannot be made sense of ([OPTIONS] and [WINDOWS] lines without
// "=", a flag other than Yes or No, a language that is no number, an unclosed quote) gives
// errors in `log` naming the file and line; false then.
// Without a Language= line the project is in `defaultLanguage`.
bool ReadHelpProject(const QString& path, HelpProject& project, CompileLog& log,
                     quint32 defaultLanguage = 0x409);

} // namespace qmr::chm
