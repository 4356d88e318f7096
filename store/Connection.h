#pragma once

#include "store/DatabaseFile.h"
#include "store/PreparedStatement.h"

namespace store {

/// The connection to a password-protected database file, for one thread. Texts compare without
/// regard to the case of any letter. A database that another process has locked is waited for, 5 s
/// at most.
class Connection
{
public:
    Connection() = default;
    Q_DISABLE_COPY_MOVE(Connection)

    /// Raises ObjectOpen, or what openDatabaseFile() raises; the connection is then as it was.
    void open(const DatabaseFile &file, OpenMode mode = OpenMode::ReadWrite);
    void close();
    bool isOpen() const { return m_database != nullptr; }

    /// Runs a statement to its end. Returns how many rows it added, changed or deleted.
    qint64 execute(const QString &statement);

    PreparedStatement prepare(const QString &statement) const;

    /// A number that has changed when this connection has added, changed or deleted rows, or
    /// undone that, since it was asked for before.
    qint64 changeStamp() const;

    /// The engine's handle. Raises ObjectClosed.
    sqlite3 *handle() const;

private:
    DatabaseHandle m_database;
    qint64 m_rollbacks = 0;
};

/// Changes that take effect together at commit(), or not at all. Begins at once as the database's
/// only writer; what is not committed is undone at the end of the object's life.
class Transaction
{
public:
    explicit Transaction(Connection &connection);
    Q_DISABLE_COPY_MOVE(Transaction)
    ~Transaction();

    void commit();

private:
    Connection &m_connection;
};

} // namespace store
