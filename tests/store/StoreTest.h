#pragma once

#include "store/Recordset.h"
#include "tests/support/Test.h"

/// A connection to an empty task database of the test's own, and a recordset on it.
class StoreTest : public testing::Test
{
protected:
    StoreTest();

    QString programFolder() const { return folder.path(); }
    QString databasePath() const;
    /// Opens a connection, by default the test's own.
    void connect(store::Connection &other) const;
    void connect() { connect(connection); }
    /// What the engine says, without this program's means, to statements on the database file.
    int withEngineAlone(const QByteArray &statements) const;

    void addTask(const QString &name, int minute = 0, bool active = true);
    void addSlot(const QString &name, int day, int hour);

    void open(const QString &source);
    /// The current row as its fields with "|" between them and "-" for an empty one.
    QString row() const;
    /// All rows of a source.
    QStringList rowsOf(const QString &source) const;
    QStringList slotRows() const { return rowsOf(u"Tijden"_s); }

    QTemporaryDir folder;
    store::Connection connection;
    store::Recordset rows{connection};
};
