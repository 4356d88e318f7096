#pragma once

#include <QString>

#include <memory>

struct sqlite3;

// The parts of the database engine's C interface that several files need.
namespace store {

struct DatabaseCloser
{
    void operator()(sqlite3 *database) const;
};
using DatabaseHandle = std::unique_ptr<sqlite3, DatabaseCloser>;

enum class OpenMode { Existing, Create };

/// A handle for the file, with its password set; an empty password is that of a file that is not
/// encrypted. A wrong password shows at the first read only.
/// The handle is for one thread. Raises the engine's error.
DatabaseHandle openDatabaseFile(const QString &path, const QString &password, OpenMode mode);

/// Runs statements for their effect. Raises the engine's error.
void runScript(sqlite3 *database, const QString &script);

/// Raises the handle's last failure with the engine's own message.
[[noreturn]] void raiseEngineError(sqlite3 *database);

} // namespace store
