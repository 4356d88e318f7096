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

TEST_F(TaskStore, RunsEveryStatementOfTheProgramForEachKindOfName)
{
    for (const QString &name : {u"News"_s, u"Kid's hour"_s, u"Émission \"d'été\""_s, u"''"_s}) {
        SCOPED_TRACE(name.toStdString());
        connection.execute(u"DELETE FROM Opdrachtgegevens"_s);
        connection.execute(u"DELETE FROM Tijden"_s);
        addTask(u"Idle"_s, 5, false);
        addTask(name, 30);
        addSlot(name.toUpper(), 2, 4);
        addSlot(u"Idle"_s, 1, 1);
        addSlot(name, 7, 23);

        const QString idle = u"Idle|http://station.example/a.mp3|a.mp3|5|False"_s;
        const QString task = name + u"|http://station.example/a.mp3|a.mp3|30|True"_s;
        const QString slot = name + u"|7|23"_s;
        const QString otherSlot = name.toUpper() + u"|2|4"_s;
        const std::pair<QString, QStringList> cases[] = {
            {store::scheduleStatement(), {task + u'|' + otherSlot, task + u'|' + slot}},
            {store::tasksSource(), {idle, task}},
            {store::tasksByMinuteStatement(), {task, idle}},
            {store::taskWithSlotsStatement(name), {task + u"|2|4"_s, task + u"|7|23"_s}},
            {store::taskStatement(name), {task}},
            {store::slotsSource(), {otherSlot, u"Idle|1|1"_s, slot}},
        };
        for (const auto &[statement, expected] : cases)
            EXPECT_EQ(rowsOf(statement), expected);
        EXPECT_EQ(connection.execute(store::deleteSlotsStatement(name)), 2);
        EXPECT_EQ(slotRows(), QStringList{u"Idle|1|1"_s});
    }
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
