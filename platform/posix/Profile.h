#pragma once

#include <QString>

// Settings files in the INI form of the Windows profile functions, for platforms without these:
// UTF-8 text (a byte-order mark is accepted) of "[section]" and "key=value" lines, both names
// without regard to case, the first of equal names counting; lines that begin with ";" are
// comments.
namespace platform {

/// The value of a key without surrounding blanks and without one pair of single or double quotes
/// around it, or `defaultValue` when the file cannot be read or holds no such section or key. At
/// most size - 1 UTF-16 units of either are returned; a character is never split.
QString readProfile(const QString &path, const QString &section, const QString &key,
                    const QString &defaultValue, int size);

/// Sets the value of a key as it stands (line breaks included) and keeps all other lines of the
/// file as they are. A missing file (with its folder), section or key is added. The file is
/// replaced as a whole or not at all; returns whether it was.
bool writeProfile(const QString &path, const QString &section, const QString &key,
                  const QString &value);

} // namespace platform
