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

    // The scheduler's rows in their order, each as its slot's name, day and hour.
    QString schedule() const
    {
        QStringList scheduled;
        for (const QString &row : rowsOf(store::scheduleStatement()))
            scheduled += row.section(u'|', -3);
        return scheduled.join(u' ');
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
    EXPECT_EQ(store::rsOpdrachten->value(u"Opdrachtnaam"), store::Value(u"Hourly"_s));
    EXPECT_EQ(errorOf([&] { store::OpenDatabase(programFolder()); }), ObjectOpen);
}

TEST_F(TaskStore, RefusesADatabaseWithoutItsTables)
{
    connection.execute(u"DROP TABLE Tijden"_s);
    try {
        store::OpenDatabase(programFolder());
        FAIL();
    } catch (const platform::RuntimeError &error) {
        EXPECT_EQ(error.description(), u"no such table: Tijden"_s);
    }
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
    for (const auto &[name, day, hour] : {std::tuple(u"a"_s, 2, 3),
                                          {u"b"_s, 2, 3},
                                          {u"c"_s, 2, 20},
                                          {u"b"_s, 1, 23},
                                          {u"a"_s, 2, 10}})
        addSlot(name, day, hour);
    EXPECT_EQ(schedule(), u"b|1|23 b|2|3 a|2|3 a|2|10 c|2|20"_s);
}

// A deleted task leaves its slots behind, and a later task of that name takes them over. So does a
// rename. Both are required.
TEST_F(TaskStore, LeavesSlotsBehindForLaterTasksOfTheName)
{
    addTask(u"Hourly"_s);
    addSlot(u"Hourly"_s, 3, 7);
    open(u"Opdrachtgegevens"_s);
    rows.setValue(u"Opdrachtnaam", u"Renamed"_s);
    rows.update();
    EXPECT_EQ(slotRows(), QStringList{u"Hourly|3|7"_s});
    rows.deleteCurrent();
    EXPECT_EQ(schedule(), u""_s);

    addTask(u"HOURLY"_s);
    addSlot(u"HOURLY"_s, 4, 8);
    EXPECT_EQ(schedule(), u"Hourly|3|7 HOURLY|4|8"_s);
}

// A rename may take another task's name.
TEST_F(TaskStore, AllowsTwoTasksOfOneName)
{
    addTask(u"a"_s, 1);
    addTask(u"b"_s, 2);
    connection.execute(u"UPDATE Opdrachtgegevens SET Opdrachtnaam = 'A'"_s);
    addSlot(u"a"_s, 1, 1);
    EXPECT_EQ(schedule(), u"a|1|1 a|1|1"_s);
}
