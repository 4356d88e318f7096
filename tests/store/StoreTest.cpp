#include "tests/store/StoreTest.h"

#include "store/ConnectionString.h"
#include "store/Statements.h"

#include <QDir>
#include <QFile>

StoreTest::StoreTest()
{
    QDir().mkpath(programFolder() + u"/database"_s);
    QFile::copy(QStringLiteral(EMPTY_DATABASE), databasePath());
    connection.open(store::connectionString(programFolder()));
}

QString StoreTest::databasePath() const
{
    return programFolder() + u"/database/ostravelin.mdb"_s;
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

QStringList StoreTest::rowsOf(const QString &source) const
{
    store::Recordset rows(connection);
    rows.setSource(source);
    QStringList found;
    for (rows.open(); !rows.atEnd(); rows.moveNext())
        found += currentRow(rows);
    return found;
}

QString StoreTest::currentRow(const store::Recordset &rows)
{
    QStringList fields;
    for (int field = 0; field < rows.fieldNames().size(); ++field)
        fields += rows.holdsValue(field) ? rows.value(field).toText() : u"-"_s;
    return fields.join(u'|');
}
