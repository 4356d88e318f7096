#pragma once

#include <QString>

#include <memory>

struct sqlite3;

// The file of a task database: where it lies, what it is opened with, and opening it.
namespace store {

/// The password of the task database, the same in every installation.
inline constexpr QStringView taskDatabasePassword = u"kelp@vastrumboren";

struct DatabaseFile
{
    QString path;
    QString password; ///< empty for a file that is not encrypted
};

/// The task database of a program folder, whatever characters the folder's path holds.
DatabaseFile taskDatabase(const QString &programFolder);

/// The text that names the same database and its password to other programs, such as those that
/// make reports of the tasks. Nothing in this program reads it.
QString connectionString(const QString &programFolder);

struct DatabaseCloser
{
    void operator()(sqlite3 *database) const;
};
using DatabaseHandle = std::unique_ptr<sqlite3, DatabaseCloser>;

enum class OpenMode {
    ReadWrite, ///< reads only where the file must not be written
    ReadOnly,  ///< never writes anything, whatever it finds; others may write meanwhile
    Create,    ///< makes the file if there is none
};

/// The engine's handle for the file, for one thread. A database that another process has locked is
/// waited for. Except with Create, the file is found to be a database of this password before; then
/// it raises, beside the engine's errors, each time with the path: DatabaseFileNotFound;
/// PermissionDenied for a file that must not be read; NotADatabase for a folder, an empty file or
/// one whose content shows that it never was an encrypted database; WrongDatabasePassword, which
/// a damaged file cannot be told from; DatabaseEngine for one that a save was interrupted in, which
/// only an opening that may write can put right.
DatabaseHandle openDatabaseFile(const DatabaseFile &file, OpenMode mode);

/// Runs statements for their effect. Raises the engine's error.
void runScript(sqlite3 *database, const QString &script);

/// Raises the handle's last failure with the engine's own message.
[[noreturn]] void raiseEngineError(sqlite3 *database);

} // namespace store
