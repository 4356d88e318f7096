#include "tests/store/StoreTest.h"

#include <QProcess>

using DatabaseFile = StoreTest;

TEST_F(DatabaseFile, LiesInAnyProgramFolderAndIsNamedToOtherPrograms)
{
    EXPECT_EQ(store::connectionString(u"C:\\Ostravelin"_s),
              u"Provider=Microsoft.Jet.OLEDB.4.0;"
              "Data Source=C:\\Ostravelin\\database\\ostravelin.mdb;"
              "Jet OLEDB:Database Password = kelp@vastrumboren;"_s);
    EXPECT_EQ(store::taskDatabase(u"/"_s).path,
              u'/' + QDir::toNativeSeparators(u"/database/ostravelin.mdb"_s));
    for (const QString &name : {u"a;b=c"_s, u";"_s, u"=;Data Source=x"_s, u" Émission d'été "_s}) {
        SCOPED_TRACE(name.toStdString());
        const QString place = folder.filePath(name);
        QDir().mkpath(place + u"/database"_s);
        QFile::copy(databasePath(), place + u"/database/ostravelin.mdb"_s);
        store::Connection other;
        EXPECT_EQ(errorOf([&] { other.open(store::taskDatabase(place)); }), std::nullopt);
    }
}

TEST_F(DatabaseFile, FilesThatAreNoDatabaseAreToldFromThoseThatCannotBeDecrypted)
{
    connection.close();
    const QByteArray good = fileBytes(databasePath());
    QByteArray damaged = good;
    damaged[500] = static_cast<char>(good[500] + 1);
    QFile::remove(databasePath());
    ASSERT_EQ(withEngineAlone("CREATE TABLE Tijden (Dagen)"), SQLITE_OK);
    const std::tuple<const char *, QByteArray, ErrorNumber> cases[] = {
        {"empty", {}, NotADatabase},
        {"short text", "[Bestandsmappen]\r\n", NotADatabase},
        {"text of whole pages", QByteArray("Opdracht").repeated(512), NotADatabase},
        {"not encrypted", fileBytes(databasePath()), NotADatabase},
        {"cut inside a page", good.chopped(100), NotADatabase},
        {"cut behind a page", good.first(2048), WrongDatabasePassword},
        {"damaged", damaged, WrongDatabasePassword},
    };
    for (const auto &[name, content, error] : cases) {
        SCOPED_TRACE(name);
        makeFile(databasePath(), content);
        EXPECT_EQ(errorOf([&] { connect(); }), error);
        EXPECT_FALSE(connection.isOpen());
        EXPECT_EQ(fileBytes(databasePath()), content);
    }
}

TEST_F(DatabaseFile, IsNeitherMadeNorOpenedWithAnotherPassword)
{
    EXPECT_EQ(errorOf([&] { connect(); }), ObjectOpen);
    connection.close();
    EXPECT_EQ(errorOf([&] { slotRows(); }), ObjectClosed);
    const QString missing = programFolder() + u"/missing/a.mdb"_s;
    const std::tuple<QString, QString, ErrorNumber> cases[] = {
        {databasePath(), u"kelp@vastrumborem"_s, WrongDatabasePassword},
        {databasePath(), u""_s, WrongDatabasePassword},
        {u":memory:"_s, u""_s, DatabaseFileNotFound},
        {missing, u""_s, DatabaseFileNotFound},
        {programFolder(), u""_s, NotADatabase},
    };
    for (const auto &[path, password, error] : cases) {
        for (const auto mode : {store::OpenMode::ReadWrite, store::OpenMode::ReadOnly})
            EXPECT_EQ(errorOf([&, &file = path, &word = password] {
                          connection.open({file, word}, mode);
                      }),
                      error);
    }
    EXPECT_EQ(messageOf([&] { connection.open({missing, {}}); }),
              u"The database file was not found: "_s + missing);
    EXPECT_FALSE(QFile::exists(programFolder() + u"/missing"_s));
}

TEST_F(DatabaseFile, IsReadBesideTheProgramWithoutATrace)
{
    addSlot(u"old"_s, 1, 1);
    const QByteArray content = fileBytes(databasePath());
    sqlite3_busy_timeout(connection.handle(), 1);
    store::Connection &reader = store::dbConnection;
    store::OpenDatabaseForReading(programFolder());
    {
        store::Transaction save(connection);
        addSlot(u"new"_s, 2, 2);
        EXPECT_EQ(rowsOf(u"Tijden"_s, reader), QStringList{u"old|1|1"_s});
        EXPECT_EQ(errorOf([&] { reader.execute(u"DELETE FROM Tijden"_s); }), DatabaseEngine);
        EXPECT_EQ(fileBytes(databasePath()), content);
        save.commit(); // nothing holds it up
    }
    EXPECT_EQ(rowsOf(u"Tijden"_s, reader).size(), 2);
    reader.close();
    connection.close();

    // What a save that was cut off leaves is not put right by a reader.
    const QByteArray saved = fileBytes(databasePath());
    makeFile(databasePath() + u"-journal"_s, "cut off");
    EXPECT_TRUE(messageOf([&] {
                    store::OpenDatabaseForReading(programFolder());
                }).startsWith(u"A save in the database was interrupted"));
    EXPECT_EQ(fileBytes(databasePath() + u"-journal"_s), "cut off");
    EXPECT_EQ(fileBytes(databasePath()), saved);
    connect();
    EXPECT_EQ(slotRows().size(), 2);
}

TEST_F(DatabaseFile, IsMadeWholeOrNotAtAllAndNeverTouchesAnExistingFile)
{
    const auto make = [](const QString &schema, const QString &target) {
        return QProcess::execute(QStringLiteral(MAKE_DATABASE), {schema, target});
    };
    const QString schema = QStringLiteral(SCHEMA);
    const QString broken = folder.filePath(u"broken.sql"_s);
    connection.close();
    QFile::remove(databasePath());
    makeFile(broken, "CREATE TABLE Tijden (Dagen); CREATE TABEL x;");
    EXPECT_NE(make(broken, databasePath()), 0);
    EXPECT_EQ(make(schema, databasePath()), 0);
    EXPECT_EQ(filesIn(folder.filePath(u"database"_s)), QStringList{u"ostravelin.mdb"_s});
    connect();
    const QString noTruth = u"INSERT INTO Opdrachtgegevens (Aktief) VALUES (-1)"_s;
    EXPECT_EQ(errorOf([&] { connection.execute(noTruth); }), DatabaseEngine);

    addSlot(u"kept"_s, 1, 1);
    EXPECT_EQ(make(schema, databasePath()), 0);
    EXPECT_EQ(slotRows(), QStringList{u"kept|1|1"_s});
}

// Files keep one format, which other tools open with the password, and which each release of the
// engine makes and reads: the files here were made by one release each.
TEST_F(DatabaseFile, IsExchangedWithEachReleaseOfTheEngineAndWithTheEngineAlone)
{
    static const QByteArray key = "PRAGMA key = 'kelp@vastrumboren'; "
                                  "PRAGMA cipher_compatibility = 3; ";
    addSlot(u"Été"_s, 1, 1);
    connection.close();
    EXPECT_EQ(withEngineAlone(key + "SELECT Dagen FROM Tijden WHERE Opdrachtnaam = 'ÉtÉ' "
                                    "ORDER BY Opdrachtnaam; PRAGMA integrity_check;"),
              SQLITE_OK);

    QFile::remove(databasePath());
    EXPECT_EQ(withEngineAlone(key + "CREATE TABLE Tijden (Dagen); INSERT INTO Tijden VALUES (5);"),
              SQLITE_OK);
    connect();
    EXPECT_EQ(slotRows(), QStringList{u"5"_s});

    for (const QFileInfo &made : QDir(QStringLiteral(MADE_DATABASES)).entryInfoList(QDir::Files)) {
        SCOPED_TRACE(made.fileName().toStdString());
        connection.close();
        makeFile(databasePath(), fileBytes(made.filePath()));
        connect();
        addSlot(u"new"_s, 2, 2);
        EXPECT_EQ(slotRows(), (QStringList{u"Été|1|1"_s, u"new|2|2"_s}));
        EXPECT_EQ(rowsOf(u"PRAGMA integrity_check"_s), QStringList{u"ok"_s});
    }
}
