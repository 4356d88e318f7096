#include "tests/store/StoreTest.h"

#include "store/ConnectionString.h"
#include "store/Statements.h"

#include <QDir>
#include <QFile>

#include <sqlite3.h>

StoreTest::StoreTest()
{
    QDir().mkpath(programFolder() + u"/database"_s);
    QFile::copy(QStringLiteral(EMPTY_DATABASE), databasePath());
    connect();
}

QString StoreTest::databasePath() const
{
    return programFolder() + u"/database/ostravelin.mdb"_s;
}

void StoreTest::connect(store::Connection &other) const
{
    other.open(store::connectionString(programFolder()));
}

int StoreTest::withEngineAlone(const QByteArray &statements) const
{
    sqlite3 *database = nullptr;
    sqlite3_open(databasePath().toUtf8().constData(), &database);
    const int result = sqlite3_exec(database, statements, nullptr, nullptr, nullptr);
    sqlite3_close(database);
    return result;
}

void StoreTest::addTask(const QString &name, int minute, bool active)
{
    connection.execute(
        u"INSERT INTO Opdrachtgegevens VALUES ('%1', 'http://station.example/a.mp3', 'a.mp3', %2, %3)"_s
            .arg(store::withDoubledQuotes(name))
            .arg(minute)
            .arg(active));
}

void StoreTest::addSlot(const QString &name, int day, int hour)
{
    connection.execute(
        u"INSERT INTO Tijden VALUES ('%1', %2, %3)"_s.arg(store::withDoubledQuotes(name))
            .arg(day)
            .arg(hour));
}

void StoreTest::open(const QString &source)
{
    rows.setSource(source);
    rows.open();
}

static QString rowOf(const store::Recordset &rows)
{
    QStringList fields;
    for (int field = 0; field < rows.fieldNames().size(); ++field)
        fields += rows.holdsValue(field) ? rows.value(field).toText() : u"-"_s;
    return fields.join(u'|');
}

QString StoreTest::row() const
{
    return rowOf(rows);
}

QStringList StoreTest::rowsOf(const QString &source) const
{
    store::Recordset others(connection);
    others.setSource(source);
    QStringList found;
    for (others.open(); !others.atEnd(); others.moveNext())
        found += rowOf(others);
    return found;
}
