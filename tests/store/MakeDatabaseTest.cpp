#include "store/ConnectionString.h"
#include "tests/store/StoreTest.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <sqlite3.h>

class MakeDatabase : public StoreTest
{
protected:
    static int make(const QString &schema, const QString &target)
    {
        return QProcess::execute(QStringLiteral(MAKE_DATABASE), {schema, target});
    }
};

TEST_F(MakeDatabase, MakesTheTwoTables)
{
    connection.close();
    QFile::remove(databasePath());
    ASSERT_EQ(make(QStringLiteral(SCHEMA), databasePath()), 0);
    EXPECT_EQ(QDir(folder.filePath(u"database"_s)).entryList(QDir::Files),
              QStringList{u"ostravelin.mdb"_s});
    connection.open(store::connectionString(programFolder()));
    const std::pair<QString, QString> tables[] = {
        {u"Opdrachtgegevens"_s, u"Opdrachtnaam Download_adres Filenaam Minuten Aktief"_s},
        {u"Tijden"_s, u"Opdrachtnaam Dagen Uren"_s},
    };
    for (const auto &[table, fields] : tables) {
        store::Recordset rows(connection);
        rows.setSource(table);
        rows.open();
        EXPECT_EQ(rows.recordCount(), 0);
        EXPECT_EQ(rows.fieldNames().join(u' '), fields);
    }
    EXPECT_EQ(errorOf([&] {
                  connection.execute(u"INSERT INTO Opdrachtgegevens (Aktief) VALUES (-1)"_s);
              }),
              ErrorNumber::DatabaseEngine);
}

TEST_F(MakeDatabase, NeverTouchesAnExistingFile)
{
    addSlot(u"kept"_s, 1, 1);
    connection.close();
    EXPECT_EQ(make(QStringLiteral(SCHEMA), databasePath()), 0);
    connection.open(store::connectionString(programFolder()));
    EXPECT_EQ(rowsOf(u"Tijden"_s), QStringList{u"kept|1|1"_s});
}

TEST_F(MakeDatabase, LeavesNothingWhenItFails)
{
    const QString broken = folder.filePath(u"broken.sql"_s);
    QFile script(broken);
    ASSERT_TRUE(script.open(QIODevice::WriteOnly));
    script.write("CREATE TABLE Tijden (Dagen); CREATE TABEL x;");
    script.close();
    for (const QString &schema : {broken, folder.filePath(u"missing.sql"_s)}) {
        EXPECT_NE(make(schema, folder.filePath(u"new.mdb"_s)), 0);
        EXPECT_FALSE(QFile::exists(folder.filePath(u"new.mdb"_s)));
    }
}

// Databases from elsewhere have a salt of their own.
TEST_F(MakeDatabase, TheSaltOfAnotherMakerIsTaken)
{
    connection.close();
    QFile::remove(databasePath());
    sqlite3 *database = nullptr;
    sqlite3_open(databasePath().toUtf8().constData(), &database);
    EXPECT_EQ(sqlite3_exec(database,
                           "PRAGMA key = 'kelp@vastrumboren'; "
                           "CREATE TABLE Tijden (Dagen); INSERT INTO Tijden VALUES (5);",
                           nullptr, nullptr, nullptr),
              SQLITE_OK);
    sqlite3_close(database);
    connection.open(store::connectionString(programFolder()));
    EXPECT_EQ(rowsOf(u"Tijden"_s), QStringList{u"5"_s});
}

// Other tools open the file with the password and the engine's own settings.
TEST_F(MakeDatabase, IsReadableWithTheEnginesDefaults)
{
    addSlot(u"Été"_s, 1, 1);
    connection.close();
    sqlite3 *database = nullptr;
    sqlite3_open(databasePath().toUtf8().constData(), &database);
    EXPECT_EQ(sqlite3_exec(database,
                           "PRAGMA key = 'kelp@vastrumboren'; SELECT Dagen FROM Tijden "
                           "WHERE Opdrachtnaam = 'ÉtÉ' ORDER BY Opdrachtnaam; "
                           "PRAGMA integrity_check;",
                           nullptr, nullptr, nullptr),
              SQLITE_OK);
    sqlite3_close(database);
}
