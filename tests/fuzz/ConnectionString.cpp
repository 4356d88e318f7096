#include "store/ConnectionString.h"

#include "tests/fuzz/Fuzz.h"

#include <QDir>

// Any text can be read, and the program's own text leads back to the folder that it was made for.
void fuzz::meet(const QByteArray &input)
{
    const QString folder = QString::fromUtf8(input);
    store::parsedConnectionString(folder);
    if (!folder.startsWith(u'/') || folder.contains(u';'))
        return;
    const auto address = store::parsedConnectionString(store::connectionString(folder));
    require(address.path == QDir::toNativeSeparators(folder + u"/database/ostravelin.mdb"_s));
    require(address.password == store::taskDatabasePassword);
}
