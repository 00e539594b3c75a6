#include "platform/LocalCodePage.h"

#include "platform/CodePage.h"

#include <QMutex>
#include <QMutexLocker>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace qmr {
namespace {

QMutex nameMutex;
QString& currentName() {
    static QString name = LocalCodePage::systemDefaultName();
    return name;
}

CodePage current() {
    QMutexLocker lock(&nameMutex);
    return CodePage(currentName());
}

} // namespace

QString LocalCodePage::systemDefaultName() {
#ifdef Q_OS_WIN
    return QStringLiteral("windows-%1").arg(GetACP());
#else
    return QStringLiteral("windows-950");
#endif
}

bool LocalCodePage::systemDefaultAllowsChoice() {
#ifdef Q_OS_WIN
    return false;
#else
    return true;
#endif
}

QString LocalCodePage::name() {
    QMutexLocker lock(&nameMutex);
    return currentName();
}

bool LocalCodePage::select(const QString& requested, QString* error) {
    const CodePage chosen(requested.trimmed().isEmpty() ? systemDefaultName() : requested);
    if (!chosen.isValid()) {
        if (error)
            *error = QStringLiteral("unknown code page \"%1\"; use a name such as Big5, GB2312 "
                                    "or windows-1252")
                         .arg(requested);
        return false;
    }
    QMutexLocker lock(&nameMutex);
    currentName() = chosen.name();
    return true;
}

QByteArray LocalCodePage::encode(QStringView text) {
    return current().encode(text);
}

QByteArray LocalCodePage::encode(QStringView text, QString* asRead) {
    return current().encode(text, asRead);
}

QString LocalCodePage::decode(QByteArrayView bytes) {
    return current().decode(bytes);
}

} // namespace qmr
