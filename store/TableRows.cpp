#include "store/TableRows.h"

#include "platform/RuntimeError.h"

#include <sqlite3.h>

namespace store {

using namespace Qt::StringLiterals;
using platform::ErrorNumber;
using platform::RuntimeError;

static QString quotedName(QString name)
{
    return u'"' + name.replace(u"\""_s, u"\"\""_s) + u'"';
}

static QStringList quotedNames(const QStringList &names)
{
    QStringList quoted;
    for (const QString &name : names)
        quoted += quotedName(name);
    return quoted;
}

// Returns the number of rows that were written.
static int run(PreparedStatement statement, const std::vector<Value> &parameters)
{
    for (std::size_t index = 0; index < parameters.size(); ++index)
        statement.bind(static_cast<int>(index) + 1, parameters[index]);
    statement.step();
    return sqlite3_changes(sqlite3_db_handle(statement.handle()));
}

TableRows::TableRows(const Connection &connection, const QString &table, const QStringList &columns)
    : m_connection(connection)
    , m_table(quotedName(table))
    , m_columns(quotedNames(columns))
    , m_reader(connection.prepare(u"SELECT *, rowid FROM %1 WHERE rowid = ?"_s.arg(m_table)))
{}

PreparedStatement &TableRows::reader(qint64 row)
{
    m_reader.reset();
    m_reader.bind(1, row);
    return m_reader;
}

qint64 TableRows::add(const ChangedValues &values)
{
    QStringList columns;
    QStringList places;
    std::vector<Value> parameters;
    for (std::size_t column = 0; column < values.size(); ++column) {
        if (!values[column])
            continue;
        columns += m_columns[static_cast<int>(column)];
        places += u"?"_s;
        parameters.push_back(*values[column]);
    }
    const QString source = columns.isEmpty()
                               ? u"DEFAULT VALUES"_s
                               : u"(%1) VALUES (%2)"_s.arg(columns.join(u','), places.join(u','));
    run(m_connection.prepare(u"INSERT INTO %1 %2"_s.arg(m_table, source)), parameters);
    return sqlite3_last_insert_rowid(m_connection.handle());
}

void TableRows::change(qint64 row, const std::vector<Value> &asRead, const ChangedValues &values)
{
    QStringList assignments;
    std::vector<Value> parameters;
    for (std::size_t column = 0; column < values.size(); ++column) {
        if (!values[column])
            continue;
        assignments += m_columns[static_cast<int>(column)] + u" = ?"_s;
        parameters.push_back(*values[column]);
    }
    writeUnchanged(u"UPDATE %1 SET %2"_s.arg(m_table, assignments.join(u", "_s)),
                   std::move(parameters), row, asRead);
}

void TableRows::remove(qint64 row, const std::vector<Value> &asRead)
{
    writeUnchanged(u"DELETE FROM %1"_s.arg(m_table), {}, row, asRead);
}

// The texts are compared letter by letter, since another case is a change as well.
void TableRows::writeUnchanged(const QString &statement, std::vector<Value> parameters, qint64 row,
                               const std::vector<Value> &asRead)
{
    QStringList conditions(u"rowid = ?"_s);
    for (const QString &column : m_columns)
        conditions += column + u" IS ? COLLATE BINARY"_s;
    parameters.emplace_back(row);
    parameters.insert(parameters.end(), asRead.begin(), asRead.end());

    const QString condition = conditions.join(u" AND "_s);
    if (run(m_connection.prepare(statement + u" WHERE "_s + condition), parameters) > 0)
        return;
    const bool isThere = reader(row).step();
    m_reader.reset();
    throw RuntimeError(isThere ? ErrorNumber::RowChanged : ErrorNumber::RowDeleted);
}

} // namespace store
