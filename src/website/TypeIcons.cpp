#include "website/TypeIcons.h"

namespace qmr {

QString TypeIconFile(const QString& type) {
    const QString kind = type.toLower();
    if (kind.isEmpty() || kind == u"note" || kind == u"site" || kind == u"file" ||
        kind == u"image" || kind == u"marked")
        return QStringLiteral("images-D(2007-0418-162822).jpg");
    if (kind == u"bookmark") return QStringLiteral("images-D(2007-0426-225435).jpg");
    if (kind == u"folder") return QStringLiteral("images-D(2007-0423-011620).jpg");
    return QString();
}

QString TypeIconTag(const QString& type, const QString& prefix) {
    return QStringLiteral("<img border=\"0\" src=\"") + prefix + TypeIconFile(type) +
           QStringLiteral("\" width=\"20\" height=\"20\">");
}

} // namespace qmr
