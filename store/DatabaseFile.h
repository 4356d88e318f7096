#pragma once

#include <QString>

// What can be told about a database file without its password.
namespace store {

/// Raises an error that names the path when no file that could be a database lies there:
/// DatabaseFileNotFound, NotADatabase for a folder or an empty file, PermissionDenied for a file
/// that must not be read.
void requireDatabaseFile(const QString &path);

/// Raises why a file cannot be decrypted: NotADatabase when its content shows that it never was an
/// encrypted database, else WrongDatabasePassword, which a damaged file cannot be told from.
[[noreturn]] void raiseUndecipherable(const QString &path);

} // namespace store
