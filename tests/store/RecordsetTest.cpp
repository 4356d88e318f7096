#include "tests/store/StoreTest.h"

using store::Value;

using Recordset = StoreTest;

TEST_F(Recordset, RaisesWithoutRowsAndWhenClosedOrOpenAlready)
{
    const std::function<void()> needRow[] = {
        [&] { rows.moveFirst(); },        [&] { rows.moveNext(); },
        [&] { rows.value(u"Uren"); },     [&] { rows.setValue(u"Uren", 1); },
        [&] { rows.absolutePosition(); }, [&] { rows.find(u"Opdrachtnaam = 'a'"_s); }};
    const std::function<void()> needOpen[] = {
        [&] { rows.close(); },      [&] { rows.requery(); }, [&] { rows.recordCount(); },
        [&] { rows.fieldNames(); }, [&] { rows.addNew(); },  [&] { rows.update(); }};
    open(u"Tijden"_s);
    EXPECT_TRUE(rows.atEnd());
    for (const auto &call : needRow)
        EXPECT_EQ(errorOf(call), NoCurrentRow);
    EXPECT_EQ(errorOf([&] { rows.open(); }), ObjectOpen);
    EXPECT_EQ(errorOf([&] { rows.setSource(u"Tijden"_s); }), ObjectOpen);
    rows.close();
    for (const auto &call : needRow)
        EXPECT_EQ(errorOf(call), ObjectClosed);
    for (const auto &call : needOpen)
        EXPECT_EQ(errorOf(call), ObjectClosed);
}

TEST_F(Recordset, NamesFieldsInAnyCaseAndByTableWhereANameStandsTwice)
{
    addTask(u"Hourly"_s, 5);
    addSlot(u"hourly"_s, 7, 23);
    open(store::scheduleStatement());
    EXPECT_EQ(rows.fieldNames().join(u' '),
              u"Opdrachtgegevens.Opdrachtnaam Download_adres Filenaam Minuten Aktief "
              "Tijden.Opdrachtnaam Dagen Uren"_s);
    EXPECT_EQ(rows.value(u"TIJDEN.opdrachtnaam"), Value(u"hourly"_s));
    for (const QString &unknown : {u"Opdrachtnaam"_s, u""_s, u"rowid"_s})
        EXPECT_EQ(errorOf([&] { rows.fieldIndex(unknown); }), UnknownField);
    for (const int outside : {-1, 8})
        EXPECT_EQ(errorOf([&] { rows.value(outside); }), UnknownField);
}

TEST_F(Recordset, KeepsEachKindOfValue)
{
    const QString name = u"Émission \"d'été\" 日本 𐐀"_s;
    const QString address(100'000, u'x'); // longer than any block of memory for rows
    connection.execute(u"INSERT INTO Opdrachtgegevens VALUES ('%1', '%2', '', 7.5, 1)"_s.arg(
        store::withDoubledQuotes(name), address));
    connection.execute(u"INSERT INTO Opdrachtgegevens VALUES (NULL, '2', NULL, 15.0, 0)"_s);
    open(u"Opdrachtgegevens"_s);
    EXPECT_EQ(row(), name + u'|' + address + u"||7.5|True"_s);
    EXPECT_EQ(rows.value(4), Value(true));
    rows.moveNext();
    EXPECT_EQ(row(), u"-|2|-|15|False"_s);
    EXPECT_EQ(rows.value(0), Value());
    EXPECT_EQ(errorOf([&] { rows.setValue(u"Aktief", u"ja"_s); }), TypeMismatch);
    rows.setValue(u"Aktief", -1); // stored as the truth that the table takes
    rows.update();
    EXPECT_EQ(rows.value(4), Value(true));
}

TEST_F(Recordset, FindsForwardFromTheCurrentRow)
{
    for (const QString &name : {u"Kid's hour"_s, u"ÉTÉ"_s, u"kid's HOUR"_s, u"''"_s})
        addTask(name);
    connection.execute(u"INSERT INTO Opdrachtgegevens (Download_adres) VALUES ('Zürich')"_s);
    open(u"Opdrachtgegevens"_s);
    // from a row, a criterion, and the row that is found, or 0 for behind the last one
    const std::tuple<int, QString, int> cases[] = {
        {1, u"Opdrachtnaam = 'Kid''s hour'"_s, 1},
        {2, u"Opdrachtnaam = 'Kid''s hour'"_s, 3},
        {4, u"Opdrachtnaam = 'Kid''s hour'"_s, 0},
        {1, u"opdrachtnaam='été'"_s, 2},
        {1, u"  Opdrachtnaam  =  '''''' "_s, 4},
        {1, u"Download_adres = 'zÜRICH'"_s, 5},
        {1, u"Minuten = '0'"_s, 1},
        {1, u"Opdrachtnaam = ''"_s, 0},
    };
    for (const auto &[from, criterion, found] : cases) {
        rows.setAbsolutePosition(from);
        rows.find(criterion);
        EXPECT_EQ(rows.atEnd() ? 0 : rows.absolutePosition(), found) << criterion.toStdString();
    }
    rows.moveFirst();
    for (const QString &wrong : {u"Opdrachtnaam = 'it's'"_s, u"Opdrachtnaam = 'a"_s, u"= 'a'"_s,
                                 u"Opdrachtnaam = 'a' OR 1"_s, u"Opdrachtnaam > 'a'"_s, u""_s})
        EXPECT_EQ(errorOf([&] { rows.find(wrong); }), InvalidProcedureCall) << wrong.toStdString();
    EXPECT_EQ(errorOf([&] { rows.find(u"Naam = 'a'"_s); }), UnknownField);
}
