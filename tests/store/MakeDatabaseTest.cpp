#include "tests/store/StoreTest.h"

#include <QProcess>

using MakeDatabase = StoreTest;

static int make(const QString &target, const QString &schema = QStringLiteral(SCHEMA))
{
    return QProcess::execute(QStringLiteral(MAKE_DATABASE), {schema, target});
}

TEST_F(MakeDatabase, MakesTheTwoTablesButNeverTouchesAnExistingFile)
{
    connection.close();
    QFile::remove(databasePath());
    ASSERT_EQ(make(databasePath()), 0);
    EXPECT_EQ(filesIn(folder.filePath(u"database"_s)), QStringList{u"ostravelin.mdb"_s});
    connect();
    const QString noTruth = u"INSERT INTO Opdrachtgegevens (Aktief) VALUES (-1)"_s;
    EXPECT_EQ(errorOf([&] { connection.execute(noTruth); }), DatabaseEngine);

    addSlot(u"kept"_s, 1, 1);
    connection.close();
    EXPECT_EQ(make(databasePath()), 0);
    connect();
    EXPECT_EQ(slotRows(), QStringList{u"kept|1|1"_s});
}

TEST_F(MakeDatabase, LeavesNothingWhenItFails)
{
    const QString broken = folder.filePath(u"broken.sql"_s);
    makeFile(broken, "CREATE TABLE Tijden (Dagen); CREATE TABEL x;");
    EXPECT_NE(make(folder.filePath(u"new.mdb"_s), broken), 0);
    EXPECT_FALSE(QFile::exists(folder.filePath(u"new.mdb"_s)));
}

// Other tools open the file with the password and the engine's own settings, and make files with a
// salt of their own.
TEST_F(MakeDatabase, IsExchangedWithTheEngineAlone)
{
    addSlot(u"Été"_s, 1, 1);
    connection.close();
    EXPECT_EQ(withEngineAlone("PRAGMA key = 'kelp@vastrumboren'; SELECT Dagen FROM Tijden "
                              "WHERE Opdrachtnaam = 'ÉtÉ' ORDER BY Opdrachtnaam; "
                              "PRAGMA integrity_check;"),
              SQLITE_OK);

    QFile::remove(databasePath());
    EXPECT_EQ(withEngineAlone("PRAGMA key = 'kelp@vastrumboren'; CREATE TABLE Tijden (Dagen); "
                              "INSERT INTO Tijden VALUES (5);"),
              SQLITE_OK);
    connect();
    EXPECT_EQ(slotRows(), QStringList{u"5"_s});
}
