#include "store/PackedRows.h"

#include <cstring>
#include <memory>
#include <span>
#include <sqlite3.h>

namespace store {

void PackedRows::clear(int columns)
{
    m_rows.clear();
    m_memory.clear();
    m_packing.resize(static_cast<std::size_t>(columns));
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

// Asking for the value once and then for its parts is cheaper than asking the statement for each
// part; it is safe as long as one thread uses the connection.
PackedRows::Cell PackedRows::columnOf(sqlite3_stmt *statement, int column)
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
        cell.kind = Kind::Text;
        cell.text = reinterpret_cast<const char *>(sqlite3_value_text(value));
        cell.size = static_cast<std::uint32_t>(sqlite3_value_bytes(value));
    }
    return cell;
}

const PackedRows::Cell *PackedRows::pack(sqlite3_stmt *statement)
{
    std::size_t textSize = 0;
    for (std::size_t column = 0; column < m_packing.size(); ++column) {
        m_packing[column] = columnOf(statement, static_cast<int>(column));
        textSize += m_packing[column].size;
    }

    const std::size_t cellSize = m_packing.size() * sizeof(Cell);
    std::byte *memory = m_memory.allocate(cellSize + textSize);
    auto *cells = reinterpret_cast<Cell *>(memory);
    auto *text = reinterpret_cast<char *>(memory + cellSize);
    std::uninitialized_copy(m_packing.begin(), m_packing.end(), cells);
    for (Cell &cell : std::span(cells, m_packing.size())) {
        if (cell.kind != Kind::Text)
            continue;
        std::memcpy(text, cell.text, cell.size);
        cell.text = text;
        text += cell.size;
    }
    return cells;
}

} // namespace store
