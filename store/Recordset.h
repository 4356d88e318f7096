#pragma once

#include "store/Connection.h"
#include "store/Fields.h"
#include "store/PackedRows.h"
#include "store/TableRows.h"

#include <optional>
#include <vector>

namespace store {

/// The rows of a table or of a statement, one of them being the current row. Which rows there are,
/// and their order, is settled by open() and requery().
///
/// The rows of a table and of "SELECT * FROM table ..." can be written. Visited again, they show
/// what this connection has changed in them; a row that it has deleted keeps its place and raises
/// RowDeleted when it is read. Any other statement, such as one that joins tables, gives rows that
/// stay as they were read and raise NotUpdatable when they are written.
///
/// Calls while closed raise ObjectClosed, calls that need a current row raise NoCurrentRow past the
/// last row, and the engine's own errors are let out. Going to another row, deleteCurrent(),
/// requery() and close() drop assignments that update() has not stored.
class Recordset
{
public:
    /// The connection must outlive the recordset.
    explicit Recordset(const Connection &connection);

    /// A table's name or a statement. Raises ObjectOpen while open.
    void setSource(const QString &source);

    /// Reads the rows; the first one becomes the current row. Raises ObjectOpen when open already.
    void open();
    void close();
    bool isOpen() const { return m_isOpen; }
    /// Closes and opens anew.
    void requery();

    int recordCount() const;
    /// Whether the position is behind the last row, as it always is without rows.
    bool atEnd() const;
    void moveFirst();
    void moveNext();
    /// The current row's position, from 1.
    int absolutePosition() const;
    /// Raises InvalidProcedureCall for a position without a row.
    void setAbsolutePosition(int position);
    /// Goes to the first row, from the current one on, of which "Field = 'text'" is true, compared
    /// as the engine does, or behind the last row. See parsedCriterion() for the form.
    void find(const QString &criterion);

    /// The fields' names in order; one that stands twice is named "Table.Field".
    QStringList fieldNames() const;
    /// The position, from 0, of the field of that name in any case. Raises UnknownField. It holds
    /// as long as the recordset is open and makes reading many rows cheap.
    int fieldIndex(QStringView name) const;

    /// A field of the current row, or of the row being added.
    Value value(int field) const;
    Value value(QStringView name) const { return value(fieldIndex(name)); }
    /// Whether the field is not empty; cheaper than reading a text.
    bool holdsValue(int field) const;

    /// Begins a new row, to be stored by update().
    void addNew();
    /// Assigns to a field of the row being added or else of the current one.
    void setValue(QStringView name, const Value &value);
    /// Stores what was assigned. A new row goes to the end and becomes the current one. An existing
    /// row that another has written since it was read raises RowChanged or RowDeleted.
    void update();
    /// Deletes the current row; its place stays, without a row. Raises as update() does.
    void deleteCurrent();

private:
    struct Key
    {
        qint64 row;    ///< row number in the table
        qint64 readAt; ///< the connection's change stamp when it was read
    };

    void append(sqlite3_stmt *statement);
    void visit(int index);
    void rereadCurrent();
    void storeNewRow();
    void storeCurrentRow();
    void dropAssignments();
    void forgetRows();
    void requireOpen() const;
    void requireField(int field) const;
    void requireRow() const;
    TableRows &table();
    Key &currentKey();
    std::vector<Value> currentAsRead() const;

    const Connection &m_connection;
    QString m_source;
    bool m_isOpen = false;
    Fields m_fields;
    PackedRows m_rows;
    std::optional<TableRows> m_table; ///< the table that the rows are those of
    std::vector<Key> m_keys;          ///< of the rows, in their order, when there is such a table
    int m_current = 0;                ///< index of the current row
    ChangedValues m_assigned;         ///< empty when there is nothing to store
    bool m_isAdding = false;
};

/// Keeps a recordset open for the object's own life, however that ends.
class OpenRecordset
{
public:
    /// Opens the rows of a source. Raises what setSource() and open() raise.
    OpenRecordset(Recordset &rows, const QString &source)
        : m_rows(rows)
    {
        rows.setSource(source);
        rows.open();
    }
    Q_DISABLE_COPY_MOVE(OpenRecordset)
    ~OpenRecordset()
    {
        if (m_rows.isOpen()) // a failed requery() has closed it
            m_rows.close();
    }

    Recordset *operator->() const { return &m_rows; }
    Recordset &operator*() const { return m_rows; }

private:
    Recordset &m_rows;
};

} // namespace store
