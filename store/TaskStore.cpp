#include "store/TaskStore.h"

#include "platform/RuntimeError.h"
#include "store/ConnectionString.h"

#include <future>

namespace store {

using namespace Qt::StringLiterals;

Connection dbConnection;
std::unique_ptr<Recordset> rsOpdrachten; // behind the connection, which has to outlive it
platform::Boolean bNieuweOpdracht = platform::Boolean::False;
QString sOpdrachtnaam;

static void requireTables()
{
    dbConnection.prepare(u"SELECT * FROM Opdrachtgegevens, Tijden"_s);
}

static std::future<void> opening;

void beginOpenDatabase(const QString &programFolder)
{
    opening = std::async(std::launch::async,
                         [programFolder] { dbConnection.open(connectionString(programFolder)); });
}

void OpenDatabase(const QString &programFolder)
{
    if (!opening.valid())
        dbConnection.open(connectionString(programFolder));
    else
        opening.get();
    try {
        requireTables();
    } catch (const platform::RuntimeError &) {
        dbConnection.close();
        throw;
    }
}

void createTaskRecordset()
{
    rsOpdrachten = std::make_unique<Recordset>(dbConnection);
}

} // namespace store
