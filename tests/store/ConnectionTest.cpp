#include "tests/store/StoreTest.h"

#include <thread>

using Connection = StoreTest;

TEST_F(Connection, TruthIsANumberOutsideQuotesNamesAndComments)
{
    addTask(u"True"_s);
    addTask(u"it's True"_s);
    addTask(u"Trueman"_s, 0, false);
    const std::pair<QString, int> cases[] = {
        {u"WHERE Aktief = True"_s, 2},
        {u"WHERE NOT Aktief = true"_s, 1},
        {u"WHERE (true)AND Opdrachtnaam = 'True'"_s, 1},
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
    const std::tuple<QString, QString, bool> cases[] = {
        {u"Émission d'été"_s, u"éMISSION D'ÉTÉ"_s, true},
        {u"Новости"_s, u"НОВОСТИ"_s, true},
        {u"𐐀 x"_s, u"𐐨 X"_s, true},
        {u"kelp"_s, u"\u212Aelp"_s, true}, // the Kelvin sign is a k
        {u"Hourly"_s, u"Hourly "_s, false},
        {u"a"_s, u"á"_s, false},
        {u"[x"_s, u"{x"_s, false},
    };
    for (const auto &[task, slot, isEqual] : cases) {
        addSlot(slot, 1, 2);
        EXPECT_EQ(connection.execute(store::deleteSlotsStatement(task)), isEqual)
            << task.toStdString();
    }
}

TEST_F(Connection, ExecuteRunsOneStatement)
{
    EXPECT_EQ(connection.execute(u"INSERT INTO Tijden VALUES ('a', 1, 1), ('b', 2, 2);"_s), 2);
    for (const QString &wrong : {u""_s, u"-- nothing"_s, u"DELETE FROM Tijden; SELECT 1"_s,
                                 u"DELETE FROM Niets"_s, u"INSERT INTO Tijden VALUES ('it's')"_s})
        EXPECT_EQ(errorOf([&] { connection.execute(wrong); }), DatabaseEngine);
}

TEST_F(Connection, AnotherWriterIsWaitedForUnlessItStays)
{
    store::Connection other;
    other.open(store::taskDatabase(programFolder()));
    {
        store::Transaction lock(other);
        other.execute(u"INSERT INTO Tijden VALUES ('theirs', 1, 1)"_s);
        const std::jthread end([&] {
            std::this_thread::sleep_for(20ms);
            lock.commit();
        });
        addSlot(u"ours"_s, 2, 2);
    }
    const QStringList both = {u"theirs|1|1"_s, u"ours|2|2"_s};
    EXPECT_EQ(slotRows(), both);

    const store::Transaction lock(other);
    sqlite3_busy_timeout(connection.handle(), 1);
    EXPECT_EQ(slotRows(), both);
    EXPECT_EQ(errorOf([&] { addSlot(u"a"_s, 1, 1); }), DatabaseEngine);
    EXPECT_EQ(errorOf([&] { store::Transaction(connection).commit(); }), DatabaseEngine);
}
