#include "store/Transaction.h"

#include <sqlite3.h>

namespace store {

using namespace Qt::StringLiterals;

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
