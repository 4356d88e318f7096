#include "store/Engine.h"

#include "platform/RuntimeError.h"
#include "store/FileKey.h"

#include <QFileInfo>

#include <sqlite3.h>

namespace store {

using namespace Qt::StringLiterals;
using platform::ErrorNumber;
using platform::RuntimeError;

// Statements that outlive their connection keep it from being closed until the last is gone.
void DatabaseCloser::operator()(sqlite3 *database) const
{
    sqlite3_close_v2(database);
}

void raiseEngineError(sqlite3 *database)
{
    throw RuntimeError(ErrorNumber::DatabaseEngine, QString::fromUtf8(sqlite3_errmsg(database)));
}

void runScript(sqlite3 *database, const QString &script)
{
    if (sqlite3_exec(database, script.toUtf8().constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        raiseEngineError(database);
}

DatabaseHandle openDatabaseFile(const QString &path, const QString &password, OpenMode mode)
{
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX |
                      (mode == OpenMode::Create ? SQLITE_OPEN_CREATE : 0);
    const QByteArray file = QFileInfo(path).absoluteFilePath().toUtf8(); // never a special name
    sqlite3 *opened = nullptr;
    const int result = sqlite3_open_v2(file.constData(), &opened, flags, nullptr);
    DatabaseHandle database(opened);
    if (result != SQLITE_OK)
        raiseEngineError(database.get());

    if (!password.isEmpty()) {
        const QByteArray key = fileKey(path, password);
        if (sqlite3_key(database.get(), key.constData(), static_cast<int>(key.size())) != SQLITE_OK)
            raiseEngineError(database.get());
    }
    // Newer engines write another format unless they are told; this one ignores what it is told.
    runScript(database.get(), u"PRAGMA cipher_compatibility = 3;"_s);
    return database;
}

} // namespace store
