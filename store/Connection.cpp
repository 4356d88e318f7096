#include "store/Connection.h"

#include "platform/RuntimeError.h"
#include "store/Collation.h"

#include <sqlite3.h>

namespace store {

using namespace Qt::StringLiterals;
using platform::ErrorNumber;
using platform::RuntimeError;

static int compareForEngine(void *, int firstSize, const void *first, int secondSize,
                            const void *second)
{
    return compareTexts({static_cast<const char *>(first), static_cast<std::size_t>(firstSize)},
                        {static_cast<const char *>(second), static_cast<std::size_t>(secondSize)});
}

// The file names the engine's own collation, so that any tool can read it. On this connection its
// place is taken by one that knows every letter.
static void compareEveryLetter(sqlite3 *database)
{
    sqlite3_create_collation_v2(database, "NOCASE", SQLITE_UTF8, nullptr, compareForEngine,
                                nullptr);
}

static void countRollback(void *counter)
{
    ++*static_cast<qint64 *>(counter);
}

void Connection::open(const DatabaseFile &file, OpenMode mode)
{
    if (isOpen())
        throw RuntimeError(ErrorNumber::ObjectOpen);
    m_database = openDatabaseFile(file, mode);
    compareEveryLetter(handle());
    sqlite3_rollback_hook(handle(), countRollback, &m_rollbacks);
}

void Connection::close()
{
    m_database.reset();
}

qint64 Connection::execute(const QString &statement)
{
    const int before = sqlite3_total_changes(handle());
    PreparedStatement prepared = prepare(statement);
    while (prepared.step()) {
    }
    return sqlite3_total_changes(handle()) - before;
}

PreparedStatement Connection::prepare(const QString &statement) const
{
    return {handle(), statement};
}

qint64 Connection::changeStamp() const
{
    return (m_rollbacks << 32) + sqlite3_total_changes(handle());
}

sqlite3 *Connection::handle() const
{
    if (!m_database)
        throw RuntimeError(ErrorNumber::ObjectClosed);
    return m_database.get();
}

Transaction::Transaction(Connection &connection)
    : m_connection(connection)
{
    m_connection.execute(u"BEGIN IMMEDIATE"_s);
}

// The engine has ended the transaction itself after a commit and after some failures (a full disk).
Transaction::~Transaction()
{
    if (m_connection.isOpen() && sqlite3_get_autocommit(m_connection.handle()) == 0)
        sqlite3_exec(m_connection.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void Transaction::commit()
{
    m_connection.execute(u"COMMIT"_s);
}

} // namespace store
