#pragma once

#include <QString>

namespace store {

/// How the rows of a recordset are read.
struct RowSource
{
    QString statement;
    bool isKeyed; ///< the rows are those of one table, with their row numbers as the last column
};

/// The source is the name of a table, whose rows come in the order of their row numbers, or a
/// statement. It is keyed when it is a table or "SELECT * FROM table", followed at most by WHERE,
/// ORDER BY and LIMIT.
RowSource rowSource(const QString &source);

} // namespace store
