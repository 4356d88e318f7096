#include "tests/store/StoreTest.h"

using store::Value;

// Three slots, Monday 1:00 to Wednesday 3:00, in an open recordset.
class RecordsetRows : public StoreTest
{
protected:
    RecordsetRows()
    {
        for (int day = 1; day <= 3; ++day)
            addSlot(u"slot"_s, day, day);
        open(u"Tijden"_s);
    }
};

TEST_F(RecordsetRows, AreGoneToAndNoFurther)
{
    rows.setAbsolutePosition(3);
    for (const int outside : {0, -1, 4})
        EXPECT_EQ(errorOf([&] { rows.setAbsolutePosition(outside); }), InvalidProcedureCall);
    EXPECT_EQ(row(), u"slot|3|3"_s);
    rows.moveNext();
    EXPECT_EQ(errorOf([&] { rows.moveNext(); }), NoCurrentRow);
    EXPECT_EQ(errorOf([&] { rows.value(u"Uren"); }), NoCurrentRow);
}

TEST_F(RecordsetRows, AreAddedAtTheEndAndGoneTo)
{
    rows.addNew();
    EXPECT_EQ(rows.value(u"Dagen"), Value());
    rows.setValue(u"OPDRACHTNAAM", u"Kid's \"hour\""_s);
    rows.setValue(u"dagen", 7);
    for (const int count : {3, 4}) {
        EXPECT_EQ(std::pair(rows.recordCount(), row()), std::pair(count, u"Kid's \"hour\"|7|-"_s));
        rows.update(); // what is stored once
    }
    EXPECT_EQ(rows.absolutePosition(), 4);
    EXPECT_EQ(slotRows().last(), row());
    rows.addNew();
    rows.update();
    EXPECT_EQ(row(), u"-|-|-"_s);
}

TEST_F(RecordsetRows, DropWhatIsNotStored)
{
    const std::function<void()> drops[] = {
        [&] { rows.close(), rows.open(); }, [&] { rows.requery(); }, [&] { rows.moveFirst(); },
        [&] { rows.setAbsolutePosition(1); }, [&] { rows.find(u"Dagen = '1'"_s); }};
    for (const auto &drop : drops) {
        for (const bool adding : {false, true}) {
            if (adding)
                rows.addNew();
            rows.setValue(u"Uren", 23);
            drop();
            EXPECT_EQ(row(), u"slot|1|1"_s);
            rows.update();
        }
    }
    EXPECT_EQ(slotRows(), (QStringList{u"slot|1|1"_s, u"slot|2|2"_s, u"slot|3|3"_s}));
}

TEST_F(RecordsetRows, AreChangedAndDeletedOneByOne)
{
    rows.moveNext();
    rows.setValue(u"Uren", Value());
    rows.update();
    EXPECT_EQ(row(), u"slot|2|-"_s);
    rows.deleteCurrent();
    EXPECT_EQ(slotRows(), (QStringList{u"slot|1|1"_s, u"slot|3|3"_s}));
    EXPECT_EQ(errorOf([&] { rows.value(u"Uren"); }), RowDeleted);
    EXPECT_EQ(errorOf([&] { rows.setValue(u"Uren", 1); }), RowDeleted);
    EXPECT_EQ(errorOf([&] { rows.deleteCurrent(); }), RowDeleted);
    rows.moveFirst();
    rows.find(u"Dagen = '2'"_s);
    EXPECT_TRUE(rows.atEnd());
    rows.setAbsolutePosition(3);
    EXPECT_EQ(row(), u"slot|3|3"_s);
}

TEST_F(RecordsetRows, ShowChangesOfTheConnectionWhenVisitedAgain)
{
    connection.execute(u"UPDATE Tijden SET Uren = Uren + 10"_s);
    connection.execute(u"DELETE FROM Tijden WHERE Dagen = 2"_s);
    EXPECT_EQ(row(), u"slot|1|1"_s); // not visited again
    rows.moveFirst();
    EXPECT_EQ(row(), u"slot|1|11"_s);
    rows.moveNext();
    EXPECT_EQ(errorOf([&] { rows.value(u"Uren"); }), RowDeleted);
    {
        const store::Transaction abandoned(connection);
        connection.execute(u"UPDATE Tijden SET Uren = 0"_s);
        rows.setAbsolutePosition(3);
        EXPECT_EQ(row(), u"slot|3|0"_s);
    }
    rows.setAbsolutePosition(3);
    EXPECT_EQ(row(), u"slot|3|13"_s);
}

TEST_F(RecordsetRows, AreNotWrittenOverChangesOfOthers)
{
    store::Connection other;
    other.open(store::taskDatabase(programFolder()));
    other.execute(u"UPDATE Tijden SET Opdrachtnaam = 'SLOT' WHERE Dagen = 1"_s);
    other.execute(u"UPDATE Tijden SET Uren = NULL WHERE Dagen = 2"_s);
    other.execute(u"DELETE FROM Tijden WHERE Dagen = 3"_s);
    for (const auto &[position, error] :
         {std::pair(1, RowChanged), std::pair(2, RowChanged), std::pair(3, RowDeleted)}) {
        rows.setAbsolutePosition(position);
        EXPECT_EQ(errorOf([&] { rows.deleteCurrent(); }), error);
        rows.setValue(u"Dagen", 6);
        EXPECT_EQ(errorOf([&] { rows.update(); }), error);
    }
    EXPECT_EQ(slotRows(), (QStringList{u"SLOT|1|1"_s, u"slot|2|-"_s}));
}

TEST_F(RecordsetRows, CanBeWrittenWhenTheyAreOfOneTable)
{
    const std::pair<QString, bool> cases[] = {
        {u"Tijden"_s, true},
        {u"select*from tijden;"_s, true},
        {u"SELECT * FROM Tijden WHERE Dagen = 1 LIMIT 1"_s, true},
        {u"SELECT * FROM \"Tijden\" ORDER BY 2 DESC, 1"_s, true},
        {u"SELECT Uren FROM Tijden"_s, false},
        {u"SELECT * FROM Tijden, Opdrachtgegevens"_s, false},
        {u"SELECT * FROM Tijden WHERE 1 GROUP BY Dagen"_s, false},
        {u"SELECT * FROM Tijden WHERE Dagen = 1 UNION SELECT * FROM Tijden"_s, false},
    };
    for (const auto &[source, writable] : cases) {
        SCOPED_TRACE(source.toStdString());
        open(source);
        const auto refusal = writable ? std::nullopt : std::optional(NotUpdatable);
        EXPECT_EQ(errorOf([&] { rows.addNew(); }), refusal);
        EXPECT_EQ(errorOf([&] { rows.setValue(u"Uren", 1); }), refusal);
    }

    addTask(u"slot"_s);
    open(u"SELECT Dagen, Uren FROM Opdrachtgegevens, Tijden"_s);
    connection.execute(u"DELETE FROM Tijden"_s);
    rows.setAbsolutePosition(3);
    EXPECT_EQ(row(), u"3|3"_s); // as it was read
    EXPECT_EQ(errorOf([&] { rows.deleteCurrent(); }), NotUpdatable);
}
