#include "store/DatabaseFile.h"

#include "platform/RuntimeError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <bitset>
#include <sqlite3.h>

namespace store {

using namespace Qt::StringLiterals;
using platform::ErrorNumber;
using platform::RuntimeError;

DatabaseFile taskDatabase(const QString &programFolder)
{
    return {programFolder + QDir::toNativeSeparators(u"/database/ostravelin.mdb"_s),
            taskDatabasePassword.toString()};
}

QString connectionString(const QString &programFolder)
{
    return u"Provider=Microsoft.Jet.OLEDB.4.0;"_s + u"Data Source="_s + programFolder +
           u"\\database\\ostravelin.mdb;"_s + u"Jet OLEDB:Database Password = "_s +
           taskDatabasePassword.toString() + u';';
}

[[noreturn]] static void raise(ErrorNumber number, const QString &path)
{
    throw RuntimeError(number, RuntimeError(number).description() + u": "_s + path);
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

// Statements that outlive their connection keep it from being closed until the last is gone.
void DatabaseCloser::operator()(sqlite3 *database) const
{
    sqlite3_close_v2(database);
}

static void requireReadableFile(const QString &path)
{
    const QFileInfo file(path);
    if (!file.exists())
        raise(ErrorNumber::DatabaseFileNotFound, path);
    if (!file.isFile() || file.size() == 0)
        raise(ErrorNumber::NotADatabase, path);
    if (!QFile(path).open(QIODevice::ReadOnly))
        raise(ErrorNumber::PermissionDenied, path);
}

static int openFlags(OpenMode mode)
{
    switch (mode) {
    case OpenMode::ReadOnly:
        return SQLITE_OPEN_READONLY;
    case OpenMode::Create:
        return SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    case OpenMode::ReadWrite:
        break;
    }
    return SQLITE_OPEN_READWRITE;
}

static constexpr int busyTimeout = 5000; // in ms

static DatabaseHandle openHandle(const QString &path, OpenMode mode)
{
    const QByteArray name = QFileInfo(path).absoluteFilePath().toUtf8(); // never a special name
    sqlite3 *opened = nullptr;
    const int result =
        sqlite3_open_v2(name.constData(), &opened, openFlags(mode) | SQLITE_OPEN_NOMUTEX, nullptr);
    DatabaseHandle database(opened);
    if (result != SQLITE_OK)
        raiseEngineError(opened);
    sqlite3_busy_timeout(opened, busyTimeout);
    return database;
}

// The engine derives a key by 64,000 rounds of PBKDF2-HMAC-SHA1, which would be half of the whole
// program's start. Every installation has the same password, so that a salt of its own would
// protect nothing: task databases are made with this one, the first 16 bytes of their file, and
// their key is known.
static constexpr QByteArrayView knownSalt = "Ostravelin tasks";
static constexpr QByteArrayView knownKey =
    "79c43dacfa12b2206f02959d97b55d73893ba27b30f039d4c3ae774b5a60ed1e";

static QByteArray keyOf(const DatabaseFile &database)
{
    QFile file(database.path);
    const bool isNew = !file.open(QIODevice::ReadOnly) || file.size() == 0;
    const bool isKnown = isNew || file.read(knownSalt.size()) == knownSalt;
    if (!isKnown || database.password != taskDatabasePassword)
        return database.password.toUtf8();
    return "x'" + knownKey.toByteArray() + knownSalt.toByteArray().toHex() + "'";
}

static void setKey(sqlite3 *database, const DatabaseFile &file)
{
    if (!file.password.isEmpty()) {
        const QByteArray key = keyOf(file);
        if (sqlite3_key(database, key.constData(), static_cast<int>(key.size())) != SQLITE_OK)
            raiseEngineError(database);
    }
    // Newer engines write another format unless they are told, and faults to standard error, which
    // our errors tell. Older ones ignore both.
    runScript(database, u"PRAGMA cipher_compatibility = 3; PRAGMA cipher_log_level = NONE;"_s);
}

// Encrypted data is as good as random: a page of it holds about 251 of the 256 byte values and, in
// practice, never fewer than 200. Headers, texts and unencrypted databases stay far below.
static bool looksRandom(const QByteArray &page)
{
    std::bitset<256> values;
    for (const char byte : page)
        values.set(static_cast<unsigned char>(byte));
    return values.count() >= 200;
}

static bool looksEncrypted(const QString &path)
{
    constexpr qint64 pageSize = 1024;
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.size() % pageSize == 0 &&
           looksRandom(file.read(pageSize));
}

// A wrong password shows at the first read only.
static void readFirstPage(sqlite3 *database, const QString &path)
{
    switch (
        sqlite3_exec(database, "SELECT count(*) FROM sqlite_master;", nullptr, nullptr, nullptr)) {
    case SQLITE_OK:
        return;
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
        raise(looksEncrypted(path) ? ErrorNumber::WrongDatabasePassword : ErrorNumber::NotADatabase,
              path);
    case SQLITE_READONLY:
        throw RuntimeError(
            ErrorNumber::DatabaseEngine,
            u"A save in the database was interrupted, which the next start of the program puts right: "_s +
                path);
    default:
        raiseEngineError(database);
    }
}

DatabaseHandle openDatabaseFile(const DatabaseFile &file, OpenMode mode)
{
    if (mode != OpenMode::Create)
        requireReadableFile(file.path);
    DatabaseHandle database = openHandle(file.path, mode);
    setKey(database.get(), file);
    if (mode != OpenMode::Create)
        readFirstPage(database.get(), file.path);
    // What was saved outlasts a power cut: the journal's end is put on the disk as well.
    runScript(database.get(), u"PRAGMA synchronous = EXTRA;"_s);
    return database;
}

} // namespace store
