#include "host/InputError.h"

#include "platform/PathSeparators.h"

namespace qmr {

QString InputError::text() const {
    QString out = ToNativePath(file);
    if (line > 0) out += QStringLiteral(": line %1").arg(line);
    out += QStringLiteral(": ") + problem;
    if (!advice.isEmpty()) out += QStringLiteral(". ") + advice;
    return out;
}

} // namespace qmr
