#include "store/TaskStore.h"

#include "tests/store/StoreTest.h"

using TaskStore = StoreTest;

TEST_F(TaskStore, RefusesADatabaseWithoutItsTables)
{
    connection.execute(u"DROP TABLE Tijden"_s);
    EXPECT_EQ(messageOf([&] { store::OpenDatabase(programFolder()); }), u"no such table: Tijden"_s);
    EXPECT_FALSE(store::dbConnection.isOpen());
}

TEST_F(TaskStore, SortsSlotsByDayHourAndMinuteAndTasksByTheLastMinuteFirst)
{
    addTask(u"c"_s, 9);
    addTask(u"a"_s, 10);
    addTask(u"b"_s, 2);
    connection.execute(u"INSERT INTO Tijden VALUES ('a', 2, 3), ('b', 2, 3), ('c', 2, 20), "
                       "('b', 1, 23), ('a', 2, 10)"_s);
    QStringList scheduled, byMinute;
    for (const QString &row : rowsOf(store::scheduleStatement()))
        scheduled += row.section(u'|', -3);
    for (const QString &row : rowsOf(store::tasksByMinuteStatement()))
        byMinute += row.section(u'|', 0, 0);
    EXPECT_EQ(scheduled.join(u' '), u"b|1|23 b|2|3 a|2|3 a|2|10 c|2|20"_s);
    EXPECT_EQ(byMinute.join(u' '), u"a c b"_s);
}

TEST(TaskStatements, AreSentInTheirCapitalsWithDoubledQuotes)
{
    EXPECT_EQ(store::chosenTaskStatement(u"it's"_s),
              u"SELECT * FROM Opdrachtgegevens WHERE Opdrachtnaam = 'it''s';"_s);
    EXPECT_EQ(store::newTaskStatement(u"it's"_s),
              u"Select * FROM Opdrachtgegevens where Opdrachtnaam = 'it''s';"_s);
    EXPECT_EQ(store::editedTaskStatement(u"it's"_s),
              u"SELECT * FROM Opdrachtgegevens where Opdrachtnaam = 'it''s';"_s);
}
