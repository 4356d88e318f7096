#pragma once

#include "store/Arena.h"
#include "store/Value.h"

#include <cstdint>
#include <vector>

struct sqlite3_stmt;

namespace store {

/// The rows of a result as they were read, packed closely: a schedule has some ten thousand, most
/// of whose texts nobody asks for. Rows and columns are counted from 0.
class PackedRows
{
public:
    /// Forgets all rows. The next ones have this number of columns.
    void clear(int columns);

    /// Adds the statement's current row at the end.
    void append(sqlite3_stmt *statement);

    /// Puts the statement's current row in the place of an earlier one.
    void replace(int row, sqlite3_stmt *statement);

    /// Lets the place of a row stand empty.
    void remove(int row);

    int count() const { return static_cast<int>(m_rows.size()); }
    bool isRemoved(int row) const { return m_rows[static_cast<std::size_t>(row)] == nullptr; }

    bool holdsValue(int row, int column) const;
    Value value(int row, int column) const;

private:
    enum class Kind : std::uint32_t { Empty, Whole, Floating, Text };

    struct Cell
    {
        Kind kind;
        std::uint32_t size; ///< of the text, in bytes
        union {
            std::int64_t whole;
            double floating;
            const char *text; ///< UTF-8
        };
    };

    const Cell *pack(sqlite3_stmt *statement);
    Cell packed(sqlite3_stmt *statement, int column);
    const Cell &cell(int row, int column) const;

    Arena m_memory;
    int m_columns = 0;
    std::vector<const Cell *> m_rows; ///< the cells of each row
};

} // namespace store
