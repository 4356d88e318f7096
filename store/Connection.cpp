#include "store/Connection.h"

#include "platform/RuntimeError.h"
#include "store/Collation.h"
#include "store/ConnectionString.h"
#include "store/DatabaseFile.h"

#include <sqlite3.h>
#include <utility>

namespace store {

using platform::ErrorNumber;
using platform::RuntimeError;

static int compareForEngine(void *, int firstSize, const void *first, int secondSize,
                            const void *second)
{
    return compareTexts({static_cast<const char *>(first), static_cast<std::size_t>(firstSize)},
                        {static_cast<const char *>(second), static_cast<std::size_t>(secondSize)});
}

static void countRollback(void *counter)
{
    ++*static_cast<qint64 *>(counter);
}

static void readFirstPage(sqlite3 *database, const QString &path)
{
    const int result =
        sqlite3_exec(database, "SELECT count(*) FROM sqlite_master;", nullptr, nullptr, nullptr);
    if (result == SQLITE_NOTADB || result == SQLITE_CORRUPT)
        raiseUndecipherable(path);
    if (result != SQLITE_OK)
        raiseEngineError(database);
}

// The file names the engine's own collation, so that any tool can read it. On this connection its
// place is taken by one that knows every letter.
static void compareEveryLetter(sqlite3 *database)
{
    sqlite3_create_collation_v2(database, "NOCASE", SQLITE_UTF8, nullptr, compareForEngine,
                                nullptr);
}

void Connection::open(const QString &connectionString)
{
    if (isOpen())
        throw RuntimeError(ErrorNumber::ObjectOpen);
    const DatabaseAddress address = parsedConnectionString(connectionString);
    requireDatabaseFile(address.path);

    DatabaseHandle database = openDatabaseFile(address.path, address.password, OpenMode::Existing);
    sqlite3_busy_timeout(database.get(), static_cast<int>(m_busyTimeout.count()));
    readFirstPage(database.get(), address.path);
    compareEveryLetter(database.get());
    sqlite3_rollback_hook(database.get(), countRollback, &m_rollbacks);
    m_database = std::move(database);
}

void Connection::close()
{
    m_database.reset();
}

void Connection::setBusyTimeout(std::chrono::milliseconds timeout)
{
    m_busyTimeout = timeout;
    if (isOpen())
        sqlite3_busy_timeout(handle(), static_cast<int>(timeout.count()));
}

qint64 Connection::execute(const QString &statement)
{
    const int before = sqlite3_total_changes(handle());
    Statement prepared = prepare(statement);
    while (prepared.step()) {
    }
    return sqlite3_total_changes(handle()) - before;
}

Statement Connection::prepare(const QString &statement) const
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

} // namespace store
