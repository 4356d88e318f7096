#include "tests/ui/main/MainFormTest.h"

#include <QGroupBox>

class NextDownload : public MainFormTest
{
protected:
    QString taskColour() const
    {
        const auto *label = formControl<QLabel>(u"Label4"_s);
        return label->palette().color(label->foregroundRole()).name();
    }
};

TEST_F(NextDownload, WithoutActiveTasksThatHaveSlotsSaysSoInRed)
{
    addTask(u"Idle"_s, u"http://station.example/a"_s, u"a"_s, 0, false);
    addSlot(u"Idle"_s, 4, 12);
    openForm();
    for (const QStringList &logged : {QStringList(), {u"Invalid use of Null"_s}}) {
        EXPECT_EQ(labelText(u"Label4"_s), u"No tasks"_s);
        EXPECT_EQ(taskColour(), u"#ff0000"_s);
        EXPECT_EQ(labelText(u"Label3"_s), u""_s);
        EXPECT_EQ(form->DownloadEntry.DownloadFlag, Boolean::False);
        EXPECT_EQ(form->DownloadEntry.DownloadTime, std::chrono::local_seconds{});
        EXPECT_FALSE(recompute()->isActive());
        EXPECT_EQ(log(), logged);
        addTask(u"No slots"_s, u"http://h/bad"_s, u"bad"_s);
        form->ZoekVolgende();
    }
}

TEST_F(NextDownload, FillsTheRecordFromTheChosenRow)
{
    addTask(u"Kid''s hour"_s, u"  http://station.example/kids/late%20st.mp3  "_s, u" kids .mp3 "_s,
            30);
    execute(u"INSERT INTO Tijden VALUES ('KID''S HOUR', 3, 11)"_s);
    openForm();
    const ui::DownloadRecord &entry = form->DownloadEntry;
    EXPECT_EQ(entry.DownloadTime, moment(2026, 3, 4, 11, 30));
    EXPECT_EQ(entry.Opdracht, u"Kid's hour"_s);
    EXPECT_EQ(entry.DownloadAdres, u"http://station.example/kids/late%20st.mp3"_s);
    EXPECT_EQ(entry.Filenaam, u"late%20st.mp3"_s);
    EXPECT_EQ(entry.spcFilenaam, u" kids .mp3 "_s);
    EXPECT_EQ(entry.DownloadFlag, Boolean::True);
    EXPECT_EQ(taskColour(), u"#008000"_s);
}

TEST_F(NextDownload, CutsTheFileNameFromTheAddress)
{
    const std::pair<QString, QString> cases[] = {
        {u"http://h/a/hourly.mp3"_s, u"hourly.mp3"_s},
        {u"no slash keeps the last name"_s, u"hourly.mp3"_s},
        {u"http://h/a.mp3?x=1&y=%2F"_s, u"a.mp3?x=1&y=%2F"_s},
        {u"http://h/folder/"_s, u""_s},
        {u"http://h/"_s + QString(2000, u'x'), QString(2000, u'x')},
    };
    addTask(u"T"_s, u""_s, u"f"_s);
    addSlot(u"T"_s, 5, 0);
    openForm();
    for (const auto &[address, fileName] : cases) {
        setTasks(u"Download_adres = '%1'"_s.arg(address));
        form->ZoekVolgende();
        EXPECT_EQ(form->DownloadEntry.Filenaam, fileName);
    }
}

TEST_F(NextDownload, SkipsRowsThatCannotBeReadWhole)
{
    addTask(u"Good"_s, u"http://h/good"_s, u"good"_s, 10);
    addSlot(u"Good"_s, 5, 6);
    addTask(u"No slots"_s, u"http://h/bad"_s, u"bad"_s, 20);
    addTask(u"No hour"_s, u"http://h/bad"_s, u"bad"_s, 30);
    execute(u"INSERT INTO Tijden VALUES ('No hour', 5, NULL)"_s);
    addTask(u"No number"_s, u"http://h/bad"_s, u"bad"_s, 40);
    execute(u"INSERT INTO Tijden VALUES ('No number', 5, 'x')"_s);
    execute(u"INSERT INTO Opdrachtgegevens VALUES ('No address', NULL, 'bad', 50, 1)"_s);
    addSlot(u"No address"_s, 5, 1);
    openForm();
    EXPECT_EQ(form->DownloadEntry.Opdracht, u"Good"_s);
    EXPECT_EQ(form->DownloadEntry.DownloadAdres, u"http://h/good"_s);
    EXPECT_EQ(form->DownloadEntry.DownloadTime, moment(2026, 3, 6, 6, 10));
    // "No number" sorts behind the chosen row, as text does behind numbers
    EXPECT_EQ(log(), QStringList(3, u"Invalid use of Null"_s));
    EXPECT_FALSE(recompute()->isActive());
}

TEST_F(NextDownload, AFailedComputationIsLoggedOnceAndTriedAgain)
{
    addTaskAt(due, u"T"_s, u"/a"_s, u"a"_s);
    openForm();
    tick();
    execute(u"ALTER TABLE Tijden RENAME TO Gone"_s);
    form->ZoekVolgende();
    EXPECT_EQ(labelText(u"Label3"_s), u""_s);
    EXPECT_EQ(labelText(u"Label4"_s), u"No tasks"_s);
    EXPECT_EQ(form->DownloadEntry.DownloadFlag, Boolean::False);
    EXPECT_EQ(log().size(), 1);
    EXPECT_TRUE(recompute()->isActive());

    execute(u"ALTER TABLE Gone RENAME TO Tijden"_s);
    tick(recompute());
    EXPECT_EQ(form->DownloadEntry.DownloadFlag, Boolean::True);
    EXPECT_EQ(log().size(), 1);
    EXPECT_FALSE(recompute()->isActive());
}

TEST_F(NextDownload, AnOtherComputationCancelsTheOneThatWaits)
{
    addTaskAt(due, u"T"_s, u"/a"_s, u"a"_s);
    openForm();
    store::rsOpdrachten->setSource(u"Tijden"_s);
    store::rsOpdrachten->open(); // in use: the computation cannot open it
    form->ZoekVolgende();
    EXPECT_TRUE(recompute()->isActive());
    EXPECT_TRUE(store::rsOpdrachten->isOpen());
    store::rsOpdrachten->close();
    form->ZoekVolgende();
    EXPECT_FALSE(recompute()->isActive());
    EXPECT_EQ(form->DownloadEntry.DownloadFlag, Boolean::True);
}

TEST_F(NextDownload, ResetsTheDisplay)
{
    addTaskAt(due, u"T"_s, u"/a"_s, u"a"_s);
    openForm();
    formControl<QGroupBox>(u"frameDownload"_s)->setTitle(u"Progress Download"_s);
    formControl<QWidget>(u"pBar"_s)->show();
    form->mnuInstelling(Boolean::False);
    form->ZoekVolgende();
    EXPECT_EQ(formControl<QGroupBox>(u"frameDownload"_s)->title(), u"Next Download"_s);
    EXPECT_FALSE(formControl<QWidget>(u"pBar"_s)->isVisible());
    EXPECT_TRUE(canUse(u"mnuOpdrachten"_s));
    EXPECT_TRUE(canUse(u"mnuOpties"_s));
}
