#pragma once

#include "store/Connection.h"

#include <QStringList>

#include <optional>
#include <vector>

namespace store {

/// New values of a row's columns, in their order; a column without one is left alone.
using ChangedValues = std::vector<std::optional<Value>>;

/// Reads and writes single rows of one table by their row numbers. No row is locked in advance: a
/// write is refused when the row no longer holds the values that were read from it.
class TableRows
{
public:
    TableRows(const Connection &connection, const QString &table, const QStringList &columns);

    /// A statement whose first step, if it gives a row, gives the columns of the row and then its
    /// number. To be reset after that; it is one and the same for each call.
    PreparedStatement &reader(qint64 row);

    /// Adds a row, in which columns without a value get their default. Returns its number.
    qint64 add(const ChangedValues &values);

    /// Raises RowDeleted, or RowChanged when the values are no longer those that were read.
    void change(qint64 row, const std::vector<Value> &asRead, const ChangedValues &values);
    void remove(qint64 row, const std::vector<Value> &asRead);

private:
    void writeUnchanged(const QString &statement, std::vector<Value> parameters, qint64 row,
                        const std::vector<Value> &asRead);

    const Connection &m_connection;
    QString m_table;
    QStringList m_columns;
    PreparedStatement m_reader;
};

} // namespace store
