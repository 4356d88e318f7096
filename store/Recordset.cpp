#include "store/Recordset.h"

#include "platform/RuntimeError.h"
#include "store/Collation.h"
#include "store/SourceText.h"

#include <sqlite3.h>

namespace store {

using platform::ErrorNumber;
using platform::RuntimeError;

static QString tableOf(sqlite3_stmt *statement)
{
    return QString::fromUtf8(sqlite3_column_table_name(statement, 0));
}

// The value of a Boolean field.
static Value withTruth(const Value &value)
{
    return value.isEmpty() ? value : Value(value.toBool());
}

Recordset::Recordset(const Connection &connection)
    : m_connection(connection)
{}

void Recordset::setSource(const QString &source)
{
    if (m_isOpen)
        throw RuntimeError(ErrorNumber::ObjectOpen);
    m_source = source;
}

void Recordset::open()
{
    if (m_isOpen)
        throw RuntimeError(ErrorNumber::ObjectOpen);
    const RowSource source = rowSource(m_source);
    PreparedStatement statement = m_connection.prepare(source.statement);
    const int columns = sqlite3_column_count(statement.handle());
    m_fields = Fields(statement.handle(), source.isKeyed ? columns - 1 : columns);
    forgetRows();
    if (source.isKeyed)
        m_table.emplace(m_connection, tableOf(statement.handle()), m_fields.names());
    while (statement.step())
        append(statement.handle());
    m_current = 0;
    m_isOpen = true;
}

void Recordset::close()
{
    requireOpen();
    dropAssignments();
    forgetRows();
    m_isOpen = false;
}

void Recordset::requery()
{
    close();
    open();
}

int Recordset::recordCount() const
{
    requireOpen();
    return m_rows.count();
}

bool Recordset::atEnd() const
{
    requireOpen();
    return m_current >= m_rows.count();
}

void Recordset::moveFirst()
{
    requireOpen();
    if (m_rows.count() == 0)
        throw RuntimeError(ErrorNumber::NoCurrentRow);
    visit(0);
}

void Recordset::moveNext()
{
    if (atEnd())
        throw RuntimeError(ErrorNumber::NoCurrentRow);
    visit(m_current + 1);
}

int Recordset::absolutePosition() const
{
    if (atEnd())
        throw RuntimeError(ErrorNumber::NoCurrentRow);
    return m_current + 1;
}

void Recordset::setAbsolutePosition(int position)
{
    if (position < 1 || position > recordCount())
        throw RuntimeError(ErrorNumber::InvalidProcedureCall);
    visit(position - 1);
}

void Recordset::find(const QString &criterion)
{
    if (atEnd())
        throw RuntimeError(ErrorNumber::NoCurrentRow);
    const auto [name, text] = parsedCriterion(criterion);
    const int field = fieldIndex(name);
    const std::string wanted = text.toStdString();
    const auto isFound = [&] {
        return !m_rows.isRemoved(m_current) && holdsValue(field) &&
               compareTexts(value(field).toText().toStdString(), wanted) == 0;
    };
    visit(m_current);
    while (!atEnd() && !isFound())
        moveNext();
}

QStringList Recordset::fieldNames() const
{
    requireOpen();
    return m_fields.names();
}

int Recordset::fieldIndex(QStringView name) const
{
    requireOpen();
    return m_fields.indexOf(name);
}

Value Recordset::value(int field) const
{
    requireField(field);
    if (!m_assigned.empty()) {
        const auto &assigned = m_assigned[static_cast<std::size_t>(field)];
        if (assigned || m_isAdding)
            return assigned.value_or(Value());
    }
    requireRow();
    if (m_fields.isBoolean(field))
        return withTruth(m_rows.value(m_current, field));
    return m_rows.value(m_current, field);
}

bool Recordset::holdsValue(int field) const
{
    if (!m_assigned.empty())
        return !value(field).isEmpty();
    requireField(field);
    requireRow();
    return m_rows.holdsValue(m_current, field);
}

void Recordset::addNew()
{
    table();
    m_assigned.assign(static_cast<std::size_t>(m_fields.count()), std::nullopt);
    m_isAdding = true;
}

void Recordset::setValue(QStringView name, const Value &value)
{
    table();
    const int field = fieldIndex(name);
    if (!m_isAdding)
        requireRow();
    if (m_assigned.empty())
        m_assigned.resize(static_cast<std::size_t>(m_fields.count()));
    m_assigned[static_cast<std::size_t>(field)] =
        m_fields.isBoolean(field) ? withTruth(value) : value;
}

void Recordset::update()
{
    requireOpen();
    if (m_assigned.empty())
        return;
    if (m_isAdding)
        storeNewRow();
    else
        storeCurrentRow();
    dropAssignments();
}

void Recordset::storeNewRow()
{
    PreparedStatement &reader = table().reader(table().add(m_assigned));
    reader.step();
    append(reader.handle());
    reader.reset();
    m_current = m_rows.count() - 1;
}

void Recordset::storeCurrentRow()
{
    table().change(currentKey().row, currentAsRead(), m_assigned);
    rereadCurrent();
}

void Recordset::deleteCurrent()
{
    dropAssignments();
    requireRow();
    table().remove(currentKey().row, currentAsRead());
    m_rows.remove(m_current);
}

void Recordset::append(sqlite3_stmt *statement)
{
    m_rows.append(statement);
    if (m_table)
        m_keys.push_back(
            {sqlite3_column_int64(statement, m_fields.count()), m_connection.changeStamp()});
}

// Goes to a row, which shows what this connection has changed in it.
void Recordset::visit(int index)
{
    dropAssignments();
    m_current = index;
    if (m_table && !atEnd() && !m_rows.isRemoved(index) &&
        currentKey().readAt != m_connection.changeStamp())
        rereadCurrent();
}

void Recordset::rereadCurrent()
{
    PreparedStatement &reader = m_table->reader(currentKey().row);
    if (reader.step())
        m_rows.replace(m_current, reader.handle());
    else
        m_rows.remove(m_current);
    reader.reset();
    currentKey().readAt = m_connection.changeStamp();
}

void Recordset::dropAssignments()
{
    m_assigned.clear();
    m_isAdding = false;
}

void Recordset::forgetRows()
{
    m_rows.clear(m_fields.count());
    m_keys.clear();
    m_table.reset();
}

void Recordset::requireOpen() const
{
    if (!m_isOpen)
        throw RuntimeError(ErrorNumber::ObjectClosed);
}

void Recordset::requireField(int field) const
{
    requireOpen();
    if (field < 0 || field >= m_fields.count())
        throw RuntimeError(ErrorNumber::UnknownField);
}

void Recordset::requireRow() const
{
    if (atEnd())
        throw RuntimeError(ErrorNumber::NoCurrentRow);
    if (m_rows.isRemoved(m_current))
        throw RuntimeError(ErrorNumber::RowDeleted);
}

TableRows &Recordset::table()
{
    requireOpen();
    if (!m_table)
        throw RuntimeError(ErrorNumber::NotUpdatable);
    return *m_table;
}

Recordset::Key &Recordset::currentKey()
{
    return m_keys[static_cast<std::size_t>(m_current)];
}

std::vector<Value> Recordset::currentAsRead() const
{
    std::vector<Value> values(static_cast<std::size_t>(m_fields.count()));
    for (int field = 0; field < m_fields.count(); ++field)
        values[static_cast<std::size_t>(field)] = m_rows.value(m_current, field);
    return values;
}

} // namespace store
