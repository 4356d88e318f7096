#pragma once

#include <QStringList>

#include <vector>

struct sqlite3_stmt;

namespace store {

/// The fields of a result: the first `count` columns of a statement.
class Fields
{
public:
    Fields() = default;
    Fields(sqlite3_stmt *statement, int count);

    int count() const { return static_cast<int>(m_fields.size()); }

    /// The names in order. One that stands twice is preceded by its table's name and a point.
    QStringList names() const;

    /// The position, from 0, of the field of that name in any case. Raises UnknownField.
    int indexOf(QStringView name) const;

    /// Whether the field was declared as yes/no.
    bool isBoolean(int field) const { return m_fields[static_cast<std::size_t>(field)].isBoolean; }

private:
    struct Field
    {
        QString name;
        bool isBoolean;
    };

    std::vector<Field> m_fields;
};

} // namespace store
