#pragma once

#include "store/Engine.h"
#include "store/Statement.h"

#include <chrono>

namespace store {

/// The connection to a password-protected database file, for one thread. Texts compare without
/// regard to the case of any letter. A database that another process has locked is waited for.
class Connection
{
public:
    Connection() = default;
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    /// Opens the file that the connection string names, see parsedConnectionString(). Never makes
    /// one. Raises ObjectOpen, what requireDatabaseFile() and raiseUndecipherable() tell, or the
    /// engine's error; the connection is then closed.
    void open(const QString &connectionString);
    void close();
    bool isOpen() const { return m_database != nullptr; }

    /// How long to wait for a locked database before its error is raised; 5 s unless set.
    void setBusyTimeout(std::chrono::milliseconds timeout);

    /// Runs a statement to its end. Returns how many rows it added, changed or deleted.
    qint64 execute(const QString &statement);

    Statement prepare(const QString &statement) const;

    /// A number that has changed when this connection has added, changed or deleted rows, or
    /// undone that, since it was asked for before.
    qint64 changeStamp() const;

    /// The engine's handle. Raises ObjectClosed.
    sqlite3 *handle() const;

private:
    DatabaseHandle m_database;
    std::chrono::milliseconds m_busyTimeout = std::chrono::seconds(5);
    qint64 m_rollbacks = 0;
};

} // namespace store
