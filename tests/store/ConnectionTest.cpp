#include "store/ConnectionString.h"
#include "store/Transaction.h"
#include "tests/store/StoreTest.h"

#include <QFile>

#include <optional>
#include <sqlite3.h>
#include <thread>
#include <unistd.h>

using platform::RuntimeError;

class Connection : public StoreTest
{};

class ConnectionFault : public StoreTest
{
protected:
    // Lets everyone into the folder, and gives the database file these permissions.
    void permit(QFile::Permissions permissions) const
    {
        QFile::setPermissions(programFolder(), QFile::ReadOwner | QFile::WriteOwner |
                                                   QFile::ExeOwner | QFile::ReadGroup |
                                                   QFile::ExeGroup | QFile::ReadOther |
                                                   QFile::ExeOther);
        QFile::setPermissions(databasePath(), permissions);
    }
};

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void replaceContent(const QString &path, const QByteArray &content)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
}

QByteArray unencryptedDatabase(const QString &path)
{
    sqlite3 *database = nullptr;
    sqlite3_open(path.toUtf8().constData(), &database);
    sqlite3_exec(database, "CREATE TABLE Tijden (Dagen)", nullptr, nullptr, nullptr);
    sqlite3_close(database);
    return contentOf(path);
}

QByteArray withOtherByteAt(QByteArray content, qsizetype position)
{
    content[position] = static_cast<char>(content[position] + 1);
    return content;
}

// File permissions bind ordinary users only.
class AsOrdinaryUser
{
public:
    AsOrdinaryUser() { EXPECT_EQ(m_isRoot ? seteuid(65534) : 0, 0); }
    AsOrdinaryUser(const AsOrdinaryUser &) = delete;
    AsOrdinaryUser &operator=(const AsOrdinaryUser &) = delete;
    ~AsOrdinaryUser() { EXPECT_EQ(m_isRoot ? seteuid(0) : 0, 0); }

private:
    bool m_isRoot = geteuid() == 0;
};

} // namespace

TEST_F(ConnectionFault, FilesThatAreNoDatabaseAreToldFromThoseThatCannotBeDecrypted)
{
    const QByteArray good = contentOf(databasePath());
    const QByteArray unencrypted = unencryptedDatabase(programFolder() + u"/plain"_s);
    ASSERT_GE(good.size(), 3 * 1024);
    ASSERT_EQ(unencrypted.size() % 1024, 0);
    struct Case
    {
        const char *name;
        QByteArray content;
        ErrorNumber error;
    };
    const Case cases[] = {
        {"empty", {}, ErrorNumber::NotADatabase},
        {"short text", "[Bestandsmappen]\r\n", ErrorNumber::NotADatabase},
        {"text of whole pages", QByteArray("Opdracht").repeated(512), ErrorNumber::NotADatabase},
        {"not encrypted", unencrypted, ErrorNumber::NotADatabase},
        {"cut inside a page", good.chopped(100), ErrorNumber::NotADatabase},
        {"cut behind a page", good.first(2048), ErrorNumber::WrongDatabasePassword},
        {"damaged", withOtherByteAt(good, 500), ErrorNumber::WrongDatabasePassword},
    };
    connection.close();
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        replaceContent(databasePath(), c.content);
        EXPECT_EQ(errorOf([&] { connection.open(store::connectionString(programFolder())); }),
                  c.error);
        EXPECT_FALSE(connection.isOpen());
        EXPECT_EQ(contentOf(databasePath()), c.content);
    }
}

TEST_F(ConnectionFault, AnotherPasswordIsRefused)
{
    connection.close();
    for (const QString &password : {u"kelp@vastrumborem"_s, u"KELP@VASTRUMBOREN"_s, u""_s}) {
        const QString text =
            u"Data Source="_s + databasePath() + u";Jet OLEDB:Database Password="_s;
        EXPECT_EQ(errorOf([&] { connection.open(text + password); }),
                  ErrorNumber::WrongDatabasePassword);
    }
}

TEST_F(ConnectionFault, MissingFilesAreNamedAndNotMade)
{
    connection.close();
    const QString missing = programFolder() + u"/missing"_s;
    try {
        connection.open(store::connectionString(missing));
        FAIL();
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.number(), ErrorNumber::DatabaseFileNotFound);
        EXPECT_EQ(error.description(),
                  u"The database file was not found: "_s + missing + u"/database/ostravelin.mdb"_s);
    }
    EXPECT_FALSE(QFile::exists(missing));
    EXPECT_EQ(errorOf([&] { connection.open(u"Data Source=:memory:"_s); }),
              ErrorNumber::DatabaseFileNotFound);
    EXPECT_EQ(errorOf([&] { connection.open(u"Data Source="_s + programFolder()); }),
              ErrorNumber::NotADatabase);
}

TEST_F(ConnectionFault, FilesThatMustNotBeWrittenCanBeRead)
{
    connection.close();
    permit(QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
    const AsOrdinaryUser user;
    connection.open(store::connectionString(programFolder()));
    EXPECT_EQ(rowsOf(u"Tijden"_s), QStringList());
    EXPECT_EQ(errorOf([&] { addSlot(u"Hourly"_s, 1, 1); }), ErrorNumber::DatabaseEngine);
}

TEST_F(ConnectionFault, FilesThatMustNotBeReadAreDenied)
{
    connection.close();
    permit({});
    const AsOrdinaryUser user;
    EXPECT_EQ(errorOf([&] { connection.open(store::connectionString(programFolder())); }),
              ErrorNumber::PermissionDenied);
}

TEST_F(Connection, RefusesUseWhileClosedAndOpeningTwice)
{
    EXPECT_EQ(errorOf([&] { connection.open(store::connectionString(programFolder())); }),
              ErrorNumber::ObjectOpen);
    connection.close();
    EXPECT_EQ(errorOf([&] { connection.execute(u"DELETE FROM Tijden"_s); }),
              ErrorNumber::ObjectClosed);
}

TEST_F(Connection, TruthIsANumberOutsideQuotesNamesAndComments)
{
    addTask(u"True"_s, 1);
    addTask(u"it's True"_s, 2);
    addTask(u"Trueman"_s, 3, false);
    const std::pair<QString, int> cases[] = {
        {u"WHERE Aktief = True"_s, 2},
        {u"WHERE aktief=TRUE;"_s, 2},
        {u"WHERE NOT Aktief = true"_s, 1},
        {u"WHERE (true)AND Opdrachtnaam = 'True'"_s, 1},
        {u"WHERE Opdrachtnaam = 'it''s True'"_s, 1},
        {u"WHERE \"Aktief\" = True -- True's\nAND 1 = True"_s, 2},
        {u"WHERE [Aktief]/* = 'True */= tRuE /* True"_s, 2},
        {u"WHERE Opdrachtnaam = 'Trueman' AND 2 > True"_s, 1},
    };
    for (const auto &[condition, count] : cases)
        EXPECT_EQ(rowsOf(u"SELECT * FROM Opdrachtgegevens "_s + condition).size(), count)
            << condition.toStdString();
    EXPECT_EQ(connection.execute(u"DELETE FROM Opdrachtgegevens WHERE Aktief = True"_s), 2);
}

TEST_F(Connection, TextsCompareWithoutCaseOfAnyLetter)
{
    const std::pair<QString, QString> equal[] = {
        {u"Hourly"_s, u"hOURLY"_s},
        {u"Émission d'été"_s, u"éMISSION D'ÉTÉ"_s},
        {u"ÅÖ nieuws"_s, u"åö NIEUWS"_s},
        {u"Новости"_s, u"НОВОСТИ"_s},
        {u"𐐀 x"_s, u"𐐨 X"_s},
        {u"kelp"_s, u"\u212Aelp"_s}, // the Kelvin sign is a k
    };
    const std::pair<QString, QString> different[] = {
        {u"Hourly"_s, u"Hourly "_s}, {u"a"_s, u"á"_s},  {u"[x"_s, u"{x"_s},
        {u"@a"_s, u"`a"_s},          {u"é"_s, u"éé"_s},
    };
    const auto matches = [&](const std::pair<QString, QString> &texts) {
        connection.execute(u"DELETE FROM Opdrachtgegevens"_s);
        connection.execute(u"DELETE FROM Tijden"_s);
        addTask(texts.first);
        addSlot(texts.second, 1, 2);
        return rowsOf(u"SELECT * FROM Opdrachtgegevens INNER JOIN Tijden ON "
                      "Opdrachtgegevens.Opdrachtnaam = Tijden.Opdrachtnaam"_s)
            .size();
    };
    for (const auto &texts : equal)
        EXPECT_EQ(matches(texts), 1) << texts.first.toStdString();
    for (const auto &texts : different)
        EXPECT_EQ(matches(texts), 0) << texts.first.toStdString();
}

TEST_F(Connection, TextsSortAlikeInAnyCase)
{
    for (const QString &name : {u"é2"_s, u"B"_s, u"É1"_s, u"a"_s, u"Z"_s, u"ab"_s, u"É3"_s})
        addSlot(name, 1, 1);
    EXPECT_EQ(rowsOf(u"SELECT Opdrachtnaam FROM Tijden ORDER BY Opdrachtnaam"_s).join(u' '),
              u"a ab B Z É1 é2 É3"_s);
}

TEST_F(Connection, ExecuteCountsTheRowsOfItsOwnStatement)
{
    EXPECT_EQ(connection.execute(u"INSERT INTO Tijden VALUES ('a', 1, 1), ('b', 2, 2)"_s), 2);
    EXPECT_EQ(connection.execute(u"SELECT * FROM Tijden"_s), 0);
    EXPECT_EQ(connection.execute(u"UPDATE Tijden SET Uren = 5 WHERE Dagen = 2;"_s), 1);
    EXPECT_EQ(connection.execute(u"DELETE FROM Tijden"_s), 2);
    for (const QString &wrong : {u""_s, u"-- nothing"_s, u"DELETE FROM Tijden; SELECT 1"_s,
                                 u"DELETE FROM Niets"_s, u"INSERT INTO Tijden VALUES ('it's')"_s})
        EXPECT_EQ(errorOf([&] { connection.execute(wrong); }), ErrorNumber::DatabaseEngine);
}

TEST_F(Connection, TransactionsTakeEffectWholeOrNotAtAll)
{
    {
        store::Transaction abandoned(connection);
        addSlot(u"a"_s, 1, 1);
        EXPECT_EQ(rowsOf(u"Tijden"_s), QStringList{u"a|1|1"_s});
    }
    EXPECT_EQ(rowsOf(u"Tijden"_s), QStringList());
    store::Transaction kept(connection);
    addSlot(u"b"_s, 2, 2);
    kept.commit();
    store::Transaction next(connection);
    EXPECT_EQ(rowsOf(u"Tijden"_s), QStringList{u"b|2|2"_s});
}

TEST_F(Connection, AnotherWriterIsWaitedFor)
{
    store::Connection other;
    other.open(store::connectionString(programFolder()));
    auto lock = std::make_optional<store::Transaction>(other);
    other.execute(u"INSERT INTO Tijden VALUES ('theirs', 1, 1)"_s);

    std::jthread end([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        lock->commit();
    });
    addSlot(u"ours"_s, 2, 2);
    EXPECT_EQ(rowsOf(u"Tijden"_s), (QStringList{u"theirs|1|1"_s, u"ours|2|2"_s}));
}

TEST_F(Connection, AnotherWriterThatStaysIsAnError)
{
    store::Connection other;
    other.open(store::connectionString(programFolder()));
    const store::Transaction lock(other);
    connection.setBusyTimeout(std::chrono::milliseconds(1));
    EXPECT_EQ(rowsOf(u"Tijden"_s), QStringList());
    EXPECT_EQ(errorOf([&] { addSlot(u"a"_s, 1, 1); }), ErrorNumber::DatabaseEngine);
    EXPECT_EQ(errorOf([&] { store::Transaction(connection).commit(); }),
              ErrorNumber::DatabaseEngine);
}
