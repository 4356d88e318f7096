#include "store/TaskStore.h"

#include "tests/store/StoreTest.h"

class TaskStore : public StoreTest
{
protected:
    void TearDown() override
    {
        store::rsOpdrachten.reset();
        store::dbConnection.close();
    }
};

TEST_F(TaskStore, OpensTheDatabaseBelowTheProgramFolder)
{
    addSlot(u"Hourly"_s, 1, 2);
    store::OpenDatabase(programFolder());
    EXPECT_EQ(store::rsOpdrachten, nullptr);
    store::createTaskRecordset();
    EXPECT_FALSE(store::rsOpdrachten->isOpen());
    store::rsOpdrachten->setSource(u"Tijden"_s);
    store::rsOpdrachten->open();
    EXPECT_EQ(rowOf(*store::rsOpdrachten), u"Hourly|1|2"_s);
    EXPECT_EQ(errorOf([&] { store::OpenDatabase(programFolder()); }), ObjectOpen);
}

TEST_F(TaskStore, RefusesADatabaseWithoutItsTables)
{
    connection.execute(u"DROP TABLE Tijden"_s);
    EXPECT_EQ(messageOf([&] { store::OpenDatabase(programFolder()); }), u"no such table: Tijden"_s);
    EXPECT_FALSE(store::dbConnection.isOpen());
}

TEST_F(TaskStore, SchedulesInTheOrderOfDayHourAndMinute)
{
    addTask(u"c"_s, 9);
    addTask(u"a"_s, 10);
    addTask(u"b"_s, 2);
    connection.execute(u"INSERT INTO Tijden VALUES ('a', 2, 3), ('b', 2, 3), ('c', 2, 20), "
                       "('b', 1, 23), ('a', 2, 10)"_s);
    QStringList scheduled;
    for (const QString &row : rowsOf(store::scheduleStatement()))
        scheduled += row.section(u'|', -3);
    EXPECT_EQ(scheduled.join(u' '), u"b|1|23 b|2|3 a|2|3 a|2|10 c|2|20"_s);
}
