#include "cli/ConsoleHost.h"

#include "platform/Processes.h"

#include <cstdio>

namespace qmr {
namespace {

void write(FILE* stream, const QString& text) {
    const QByteArray bytes = (text + QLatin1Char('\n')).toUtf8();
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stream);
    std::fflush(stream);
}

} // namespace

void PrintLine(const QString& text) {
    write(stdout, text);
}
void PrintError(const QString& text) {
    write(stderr, text);
}

void ConsoleHost::add2loglist(const QString& line) {
    PrintLine(line);
}
void ConsoleHost::messageBox(const QString& text) {
    PrintLine(text);
}
bool ConsoleHost::askOkCancel(const QString& text) {
    PrintLine(text + QStringLiteral(" [OK]"));
    return true;
}
void ConsoleHost::openDocument(const QString& pathOrUrl) {
    if (allowOpeningDocuments && !OpenWithDefaultProgram(pathOrUrl))
        PrintLine(QStringLiteral("Cannot open ") + pathOrUrl);
}

} // namespace qmr
