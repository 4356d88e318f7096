#pragma once

#include "store/Value.h"

#include <memory>

struct sqlite3;
struct sqlite3_stmt;

namespace store {

/// One prepared statement. The literal True, in any case, stands for the stored truth, 1. Every
/// failure raises the engine's error.
class PreparedStatement
{
public:
    /// Raises as well when the text holds no statement or more than one.
    PreparedStatement(sqlite3 *database, const QString &text);

    /// Gives the parameter, counted from 1, its value. Booleans are stored as 1 and 0.
    void bind(int parameter, const Value &value);

    /// Goes to the next row of the result. Returns whether there is one.
    bool step();

    /// Ends the run, so that the statement can be bound and stepped anew.
    void reset();

    /// The engine's handle, for reading the current row.
    sqlite3_stmt *handle() const { return m_handle.get(); }

private:
    struct Finalizer
    {
        void operator()(sqlite3_stmt *statement) const;
    };

    std::unique_ptr<sqlite3_stmt, Finalizer> m_handle;
};

} // namespace store
