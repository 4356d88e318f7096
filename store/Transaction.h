#pragma once

#include "store/Connection.h"

namespace store {

/// Changes that take effect together at commit(), or not at all. Begins at once as the database's
/// only writer; what is not committed is undone at the end of the object's life.
class Transaction
{
public:
    explicit Transaction(Connection &connection);
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;
    ~Transaction();

    void commit();

private:
    Connection &m_connection;
};

} // namespace store
