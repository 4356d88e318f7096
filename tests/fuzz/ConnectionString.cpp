#include "store/ConnectionString.h"

#include "tests/fuzz/Fuzz.h"

#include <QDir>

using namespace Qt::StringLiterals;

// Any text can be read, and the program's own text leads back to the folder that it was made for.
int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString folder = fuzz::text(data, size);
    store::parsedConnectionString(folder);

    const bool isPlain = folder.startsWith(u'/') && !folder.contains(u';');
    if (!isPlain)
        return 0;
    const auto address = store::parsedConnectionString(store::connectionString(folder));
    fuzz::require(address.path == QDir::toNativeSeparators(folder + u"/database/ostravelin.mdb"_s));
    fuzz::require(address.password == store::taskDatabasePassword);
    return 0;
}
