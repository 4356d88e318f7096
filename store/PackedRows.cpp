#include "store/PackedRows.h"

#include <cstring>
#include <memory>
#include <sqlite3.h>

namespace store {

void PackedRows::clear(int columns)
{
    m_rows.clear();
    m_memory.clear();
    m_columns = columns;
}

void PackedRows::append(sqlite3_stmt *statement)
{
    m_rows.push_back(pack(statement));
}

void PackedRows::replace(int row, sqlite3_stmt *statement)
{
    m_rows[static_cast<std::size_t>(row)] = pack(statement);
}

void PackedRows::remove(int row)
{
    m_rows[static_cast<std::size_t>(row)] = nullptr;
}

bool PackedRows::holdsValue(int row, int column) const
{
    return cell(row, column).kind != Kind::Empty;
}

Value PackedRows::value(int row, int column) const
{
    const Cell &found = cell(row, column);
    switch (found.kind) {
    case Kind::Whole:
        return found.whole;
    case Kind::Floating:
        return found.floating;
    case Kind::Text:
        return QString::fromUtf8(found.text, found.size);
    case Kind::Empty:
        break;
    }
    return {};
}

const PackedRows::Cell &PackedRows::cell(int row, int column) const
{
    return m_rows[static_cast<std::size_t>(row)][column];
}

const PackedRows::Cell *PackedRows::pack(sqlite3_stmt *statement)
{
    const auto count = static_cast<std::size_t>(m_columns);
    auto *cells = reinterpret_cast<Cell *>(m_memory.allocate(count * sizeof(Cell)));
    for (int column = 0; column < m_columns; ++column)
        std::construct_at(cells + column, packed(statement, column));
    return cells;
}

// Asking for the value once and then for its parts is cheaper than asking the statement for each
// part; it is safe as long as one thread uses the connection.
PackedRows::Cell PackedRows::packed(sqlite3_stmt *statement, int column)
{
    sqlite3_value *value = sqlite3_column_value(statement, column);
    Cell cell = {};
    switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
        cell.kind = Kind::Whole;
        cell.whole = sqlite3_value_int64(value);
        break;
    case SQLITE_FLOAT:
        cell.kind = Kind::Floating;
        cell.floating = sqlite3_value_double(value);
        break;
    case SQLITE_NULL:
        cell.kind = Kind::Empty;
        break;
    default:
        const unsigned char *text = sqlite3_value_text(value);
        cell.kind = Kind::Text;
        cell.size = static_cast<std::uint32_t>(sqlite3_value_bytes(value));
        cell.text =
            static_cast<const char *>(std::memcpy(m_memory.allocate(cell.size), text, cell.size));
    }
    return cell;
}

} // namespace store
