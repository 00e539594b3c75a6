#pragma once

#include <QString>

namespace qmr {

// A portable implementation of the Windows profile-string calls over ini files in the local
// code page with CR LF lines: section and key names match ignoring case and surrounding
// blanks, a value is trimmed and loses one pair of enclosing quotes, the file and the section
// are created by the first write, and a null key or value deletes.

// The value of `key` in `section`, else `defaultValue` (trailing blanks removed), cut to
// `size` - 1 characters. With a null `key`: the section's key names, each followed by a NUL.
// With a null `section`: the file's section names likewise. Lists are cut to `size` - 2.
QString GetPrivateProfileString(const QString& section, const QString& key,
                                const QString& defaultValue, int size, const QString& path);

// Writes `key`=`value` in `section`. A null `value` deletes the key; a null `key` deletes the
// whole section. Returns false when the file cannot be written.
bool WritePrivateProfileString(const QString& section, const QString& key, const QString& value,
                               const QString& path);

} // namespace qmr
