#include "store/Fields.h"

#include "platform/RuntimeError.h"

#include <algorithm>
#include <sqlite3.h>

namespace store {

using namespace Qt::StringLiterals;
using platform::ErrorNumber;
using platform::RuntimeError;

static QStringList plainNames(sqlite3_stmt *statement, int count)
{
    QStringList names;
    for (int column = 0; column < count; ++column)
        names += QString::fromUtf8(sqlite3_column_name(statement, column));
    return names;
}

static bool standsTwice(const QString &name, const QStringList &names)
{
    return std::count_if(names.begin(), names.end(), [&](const QString &other) {
               return other.compare(name, Qt::CaseInsensitive) == 0;
           }) > 1;
}

static bool isDeclaredBoolean(sqlite3_stmt *statement, int column)
{
    return qstricmp(sqlite3_column_decltype(statement, column), "BOOLEAN") == 0;
}

Fields::Fields(sqlite3_stmt *statement, int count)
{
    const QStringList names = plainNames(statement, count);
    for (int column = 0; column < count; ++column) {
        QString name = names[column];
        if (standsTwice(name, names))
            name.prepend(QString::fromUtf8(sqlite3_column_table_name(statement, column)) + u'.');
        m_fields.push_back({name, isDeclaredBoolean(statement, column)});
    }
}

QStringList Fields::names() const
{
    QStringList names;
    for (const Field &field : m_fields)
        names += field.name;
    return names;
}

int Fields::indexOf(QStringView name) const
{
    const auto found = std::find_if(m_fields.begin(), m_fields.end(), [&](const Field &field) {
        return name.compare(field.name, Qt::CaseInsensitive) == 0;
    });
    if (found == m_fields.end())
        throw RuntimeError(ErrorNumber::UnknownField,
                           RuntimeError(ErrorNumber::UnknownField).description() + u": "_s +
                               name.toString());
    return static_cast<int>(found - m_fields.begin());
}

} // namespace store
