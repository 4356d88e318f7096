#include "store/TaskStore.h"

#include "platform/RuntimeError.h"
#include "store/ConnectionString.h"

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

void OpenDatabase(const QString &programFolder)
{
    dbConnection.open(connectionString(programFolder));
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
