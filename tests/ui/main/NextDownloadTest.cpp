#include "tests/ui/main/MainFormTest.h"

using NextDownload = MainFormTest;

TEST_F(NextDownload, WithoutActiveTasksThatHaveSlotsSaysSoInRed)
{
    addTask(u"Idle"_s, u"http://station.example/a"_s, u"a"_s, 0, false);
    addSlot(u"Idle"_s, 4, 12);
    openForm();
    const auto taskColour = [label = formControl<QLabel>(u"Label4"_s)] {
        return label->palette().color(label->foregroundRole()).name();
    };
    for (const QStringList &logged : {QStringList(), {u"Invalid use of Null"_s}}) {
        tick();
        EXPECT_EQ(labelText(u"Label4"_s) + labelText(u"Label3"_s), u"No tasks"_s);
        EXPECT_EQ(taskColour(), u"#ff0000"_s);
        EXPECT_EQ(form->DownloadEntry.DownloadFlag, Boolean::False);
        EXPECT_FALSE(recompute()->isActive());
        EXPECT_EQ(log(), logged);
        addTask(u"No slots"_s, u"http://h/bad"_s, u"bad"_s);
        form->ZoekVolgende();
    }
    addSlot(u"No slots"_s, 4, 12);
    form->ZoekVolgende();
    EXPECT_EQ(taskColour(), u"#008000"_s);
}

TEST_F(NextDownload, SkipsRowsThatCannotBeReadWhole)
{
    addTask(u"Good"_s, u"http://h/good"_s, u" a good one "_s, 10);
    addSlot(u"Good"_s, 5, 6);
    for (const auto &name : {u"No slots"_s, u"No hour"_s, u"No number"_s, u"No address"_s})
        addTask(name, u"http://h/bad"_s, u"bad"_s, 20);
    execute(u"INSERT INTO Tijden VALUES ('No hour', 5, NULL)"_s);
    // sorts behind the chosen row, as text does behind numbers
    execute(u"INSERT INTO Tijden VALUES ('No number', 5, 'x')"_s);
    addSlot(u"No address"_s, 5, 1);
    setTasks(u"Download_adres = NULL WHERE Opdrachtnaam = 'No address'"_s);
    openForm();
    const app::DownloadRecord &entry = form->DownloadEntry;
    EXPECT_EQ((QStringList{entry.Opdracht, entry.DownloadAdres, entry.spcFilenaam}),
              (QStringList{u"Good"_s, u"http://h/good"_s, u" a good one "_s}));
    EXPECT_EQ(entry.DownloadTime, moment(2026, 3, 6, 6, 10));
    EXPECT_EQ(log(), QStringList(3, u"Invalid use of Null"_s));
    EXPECT_FALSE(recompute()->isActive());
}

TEST_F(NextDownload, AFailedComputationIsLoggedOnceAndTriedAgain)
{
    addTaskAt(due, u"T"_s, u"/a"_s, u"a"_s);
    openForm();
    tick();
    store::rsOpdrachten->setSource(u"Tijden"_s);
    store::rsOpdrachten->open(); // in use: the computation cannot open it
    form->ZoekVolgende();
    EXPECT_EQ(labelText(u"Label4"_s) + labelText(u"Label3"_s), u"No tasks"_s);
    EXPECT_EQ(form->DownloadEntry.DownloadFlag, Boolean::False);
    EXPECT_EQ(form->DownloadEntry.DownloadTime, std::chrono::local_seconds{});
    EXPECT_TRUE(recompute()->isActive());
    EXPECT_EQ(recompute()->interval(), 60'000);
    EXPECT_TRUE(store::rsOpdrachten->isOpen());
    store::rsOpdrachten->close();
    tick(recompute());
    EXPECT_EQ(form->DownloadEntry.DownloadFlag, Boolean::True);
    EXPECT_FALSE(recompute()->isActive());
    EXPECT_EQ(log().size(), 1);
}
