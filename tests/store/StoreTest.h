#pragma once

#include "store/TaskStore.h"
#include "tests/support/Test.h"

#include <sqlite3.h>

/// The message of the error that the action raises, or nothing when it raises none.
template <typename Action>
QString messageOf(Action &&action)
{
    try {
        action();
        return {};
    } catch (const platform::RuntimeError &error) {
        return error.description();
    }
}

/// A connection to an empty task database of the test's own, and a recordset on it.
class StoreTest : public testing::Test
{
protected:
    StoreTest()
    {
        QDir().mkpath(programFolder() + u"/database"_s);
        QFile::copy(QStringLiteral(EMPTY_DATABASE), databasePath());
        connect();
    }

    QString programFolder() const { return folder.path(); }
    QString databasePath() const { return programFolder() + u"/database/ostravelin.mdb"_s; }

    void connect() { connection.open(store::taskDatabase(programFolder())); }

    /// What the engine says, without this program's means, to statements on the database file.
    int withEngineAlone(const QByteArray &statements) const
    {
        sqlite3 *database = nullptr;
        sqlite3_open(databasePath().toUtf8().constData(), &database);
        const int result = sqlite3_exec(database, statements, nullptr, nullptr, nullptr);
        sqlite3_close(database);
        return result;
    }

    void addTask(const QString &name, int minute = 0, bool active = true)
    {
        connection.execute(
            u"INSERT INTO Opdrachtgegevens VALUES ('%1', 'http://h/a', 'a', %2, %3)"_s.arg(
                store::withDoubledQuotes(name), QString::number(minute), QString::number(active)));
    }

    void addSlot(const QString &name, int day, int hour)
    {
        connection.execute(u"INSERT INTO Tijden VALUES ('%1', %2, %3)"_s.arg(
            store::withDoubledQuotes(name), QString::number(day), QString::number(hour)));
    }

    void open(const QString &source)
    {
        if (rows.isOpen())
            rows.close();
        rows.setSource(source);
        rows.open();
    }

    /// A recordset's current row as its fields with "|" between them and "-" for an empty one.
    static QString rowOf(const store::Recordset &records)
    {
        QStringList fields;
        for (int field = 0; field < records.fieldNames().size(); ++field)
            fields += records.holdsValue(field) ? records.value(field).toText() : u"-"_s;
        return fields.join(u'|');
    }
    QString row() const { return rowOf(rows); }

    static QStringList rowsOf(const QString &source, const store::Connection &from)
    {
        store::Recordset records(from);
        records.setSource(source);
        QStringList found;
        for (records.open(); !records.atEnd(); records.moveNext())
            found += rowOf(records);
        return found;
    }
    QStringList rowsOf(const QString &source) const { return rowsOf(source, connection); }
    QStringList slotRows() const { return rowsOf(u"Tijden"_s); }

    QTemporaryDir folder;
    store::Connection connection;
    store::Recordset rows{connection};
};
