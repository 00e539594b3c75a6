#pragma once

#include <QString>

namespace qmr {

// Renames `from` over `to` in one step, replacing a file already at `to`: a reader sees either
// the old whole file or the new whole file, never a half-written one.
bool ReplaceFile(const QString& from, const QString& to);

} // namespace qmr
