#pragma once

#include <QString>

namespace store {

/// The password of the task database, the same in every installation.
inline constexpr QStringView taskDatabasePassword = u"kelp@vastrumboren";

/// The text that names the task database below a program folder, and its password.
QString connectionString(const QString &programFolder);

struct DatabaseAddress
{
    QString path;
    QString password;
};

/// Reads "Data Source" and "Jet OLEDB:Database Password" out of a connection string; what it does
/// not name stays empty. Case of the keys and blanks around keys and values do not count. Since
/// folders may hold a ";", one ends a value only when nothing or another "key = value" follows it.
/// The database's place below the program folder comes with the platform's separators.
DatabaseAddress parsedConnectionString(const QString &text);

} // namespace store
