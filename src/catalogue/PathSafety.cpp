#include "catalogue/PathSafety.h"

namespace qmr {

bool IsSafePathComponent(const QString& name) {
    if (name.isEmpty() || name.contains(QLatin1String(".."))) return false;
    for (QChar c : name) {
        if (c == QLatin1Char('/') || c == QLatin1Char('\\') || c == QLatin1Char(':') ||
            c == QChar(0))
            return false;
    }
    return true;
}

} // namespace qmr
