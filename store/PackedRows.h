#pragma once

#include "store/Value.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

struct sqlite3_stmt;

namespace store {

/// Memory for many small pieces that go at once. It is kept for the next ones, because fresh memory
/// costs the system more time than filling it.
class Arena
{
public:
    /// Memory for a piece, aligned for any number, until clear().
    std::byte *allocate(std::size_t size)
    {
        size = (size + alignment - 1) / alignment * alignment;
        while (m_current < m_blocks.size() && m_blocks[m_current].size() - m_used < size) {
            ++m_current;
            m_used = 0;
        }
        if (m_current == m_blocks.size())
            m_blocks.emplace_back(std::max(size, usualBlockSize));
        std::byte *piece = m_blocks[m_current].data() + m_used;
        m_used += size;
        return piece;
    }

    void clear()
    {
        m_current = 0;
        m_used = 0;
    }

private:
    static constexpr std::size_t alignment = 8;
    static constexpr std::size_t usualBlockSize = 65536;

    std::vector<std::vector<std::byte>> m_blocks;
    std::size_t m_current = 0; ///< index of the block in use
    std::size_t m_used = 0;    ///< bytes of it
};

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
