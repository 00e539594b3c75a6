#pragma once

#include <QString>
#include <QStringList>

namespace qmr::test {

// Whether an outside program is on the PATH.
bool HasProgram(const QString& name);

struct RunResult {
    int exitCode = -1; // -1 when the program crashed, could not start or did not end in time
    QString out;       // standard output as UTF-8 text
    QString err;
    QByteArray outBytes; // standard output as written
};
// Runs a program to its end, in `folder` when one is named; `environment` adds or replaces
// "NAME=value" pairs.
RunResult RunProgram(const QString& program, const QStringList& arguments,
                     const QStringList& environment = {}, const QString& folder = {});
// The quillmere program of this build.
RunResult RunQuillmereProgram(const QStringList& arguments, const QStringList& environment = {});

// The names stored in a compiled book, as 7-Zip lists them.
QStringList BookListing(const QString& chmPath);

} // namespace qmr::test
