#include "app/Module1.h"
#include "controls/PB/PB.h"
#include "tests/ui/main/MainFormTest.h"

#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QTest>

namespace {

constexpr auto due = moment(2026, 3, 4, 11, 30);

// One task in one slot of the week, with the station's audio under /radio/latest.mp2.
class DownloadCycle : public MainFormTest
{
protected:
    DownloadCycle()
    {
        addTaskAt(due, u"Hourly"_s, u"/radio/latest.mp2"_s, u"news.mp2"_s);
        station.answer(u"/radio/latest.mp2"_s, Answer{.body = audio});
    }

    void expectNextWeekArmed() const
    {
        EXPECT_EQ(form->DownloadEntry.DownloadTime, due + std::chrono::days(7));
        EXPECT_EQ(form->DownloadEntry.DownloadFlag, Boolean::True);
        EXPECT_TRUE(canUse(u"mnuOpdrachten"_s));
    }

    void setAddress(const QString &address)
    {
        execute(u"UPDATE Opdrachtgegevens SET Download_adres = '%1'"_s.arg(address));
    }

    const QByteArray audio = QByteArray(123456, 'a');
};

} // namespace

TEST_F(DownloadCycle, CountsDownAndStartsOnTheSecond)
{
    openForm();
    host.clock = due - 61s;
    tick();
    EXPECT_EQ(labelText(u"Label1"_s), u"11:28"_s);
    EXPECT_EQ(labelText(u"Label2"_s), u"59"_s);
    EXPECT_EQ(labelText(u"Label3"_s), u"61"_s);
    EXPECT_TRUE(labelText(u"Label4"_s).endsWith(u"11:30:00 ==> Hourly"_s));
    EXPECT_EQ(form->DownloadEntry.DownloadFlag, Boolean::True);

    host.clock = due;
    tick();
    EXPECT_EQ(labelText(u"Label3"_s), u"0"_s);
    EXPECT_EQ(form->DownloadEntry.DownloadFlag, Boolean::False);
    EXPECT_EQ(status(), u"Hourly will now be downloaded..."_s);
    EXPECT_EQ(form->findChild<QGroupBox *>(u"frameDownload"_s)->title(), u"Progress Download"_s);
    EXPECT_TRUE(form->findChild<QWidget *>(u"pBar"_s)->isVisible());
    EXPECT_FALSE(canUse(u"mnuOpdrachten"_s));
    EXPECT_FALSE(canUse(u"mnuOpties"_s));
    EXPECT_EQ(host.beeps, 1);
    EXPECT_EQ(QDir::currentPath() + u'/', destination({}));

    host.clock = due + 1s;
    tick();
    EXPECT_EQ(host.beeps, 1);
    EXPECT_EQ(labelText(u"Label3"_s), u"0"_s);
    EXPECT_EQ(labelText(u"Label2"_s), u"01"_s);
}

TEST_F(DownloadCycle, AMomentThatTheClockJumpedOverStartsAtTheNextTick)
{
    openForm();
    tick();
    const QString secondsToGo = labelText(u"Label3"_s);
    host.clock = due + 2h;
    tick();
    EXPECT_EQ(host.beeps, 1);
    EXPECT_EQ(labelText(u"Label3"_s), secondsToGo);
}

TEST_F(DownloadCycle, ReplacesTheFileLogsAndArmsTheNextSlot)
{
    makeFile(destination(u"news.mp2"_s), "old");
    makeFile(destination(u"latest.mp2"_s), "stale");
    openForm();
    host.onSleep = [this](auto) { statusesDuringPauses << status(); };
    QObject::connect(form->findChild<controls::DL *>(), &controls::DL::Progress, form.get(),
                     [this] { host.ticks = 1250; });
    runDownload();
    EXPECT_EQ(fileBytes(destination(u"news.mp2"_s)), audio);
    EXPECT_EQ(destinationFiles(), QStringList{u"news.mp2"_s});
    EXPECT_EQ(log(), QStringList{u"Hourly - 123.456 kB - 98.76 kB/s"_s});
    EXPECT_EQ(host.sleeps, QList{2000ms});
    EXPECT_EQ(statusesDuringPauses, QStringList{u"Download completed..."_s});
    EXPECT_EQ(form->findChild<controls::PB *>()->value(), 100);
    expectNextWeekArmed();
    ASSERT_EQ(station.requests().size(), 1);
    EXPECT_EQ(station.requests()[0].target, "http://station.example:80/radio/latest.mp2");
}

TEST_F(DownloadCycle, ShowsTheProgress)
{
    openForm();
    QStringList statuses;
    QList<qint32> values;
    QObject::connect(form->findChild<controls::DL *>(), &controls::DL::Progress, form.get(), [&] {
        statuses << status();
        values << form->findChild<controls::PB *>()->value();
    });
    station.answer(u"/radio/latest.mp2"_s,
                   Answer{.body = audio, .cutAfter = 43210, .ending = Ending::Close});
    runDownload();
    ASSERT_FALSE(statuses.isEmpty());
    EXPECT_EQ(statuses.back(), u"Download: Hourly   43.21 kB / 123.456 kB"_s);
    EXPECT_EQ(values.back(), 35);
}

TEST_F(DownloadCycle, EveryFailureIsToldAndTheNextSlotArmed)
{
    const struct
    {
        const char *what;
        Answer answer;
        QString outcome;
    } cases[] = {
        {"missing", {.status = 404, .body = "no such page"}, u"Can not connect"_s},
        {"empty", {.body = ""}, u"Can not connect"_s},
        {"reset at once", {.raw = "", .ending = Ending::Reset}, u"Can not connect"_s},
        {"garbage",
         {.raw = "\x01\x02 not HTTP\r\n\r\n", .ending = Ending::Close},
         u"Can not connect"_s},
        {"too little",
         {.body = audio, .cutAfter = 1000, .ending = Ending::Close},
         u"Disconnected"_s},
        {"no length",
         {.body = audio, .framing = Framing::UntilClose, .ending = Ending::Close},
         u"Disconnected"_s},
        {"redirect loop",
         {.status = 302, .headers = {"Location: http://station.example/radio/latest.mp2"}},
         u"Can not connect"_s},
    };
    makeFile(destination(u"news.mp2"_s), "old");
    openForm();
    for (const auto &[what, answer, outcome] : cases) {
        SCOPED_TRACE(what);
        station.answer(u"/radio/latest.mp2"_s, answer);
        ui::ForcedDownload = Boolean::True;
        host.clock = due - 1s;
        host.sleeps.clear();
        statusesDuringPauses.clear();
        form->ZoekVolgende();
        runDownload();
        EXPECT_EQ(log().back(), u"Hourly - "_s + outcome);
        EXPECT_EQ(statusesDuringPauses, QStringList{outcome + u"..."_s});
        EXPECT_EQ(host.sleeps, QList{3000ms});
        EXPECT_EQ(ui::ForcedDownload, Boolean::False);
        EXPECT_EQ(destinationFiles(), QStringList{u"news.mp2"_s});
        expectNextWeekArmed();
    }
    EXPECT_EQ(log().size(), std::size(cases));
    EXPECT_EQ(fileBytes(destination(u"news.mp2"_s)), "old");
}

TEST_F(DownloadCycle, AForcedDownloadSaysSoInTheLog)
{
    openForm();
    ui::ForcedDownload = Boolean::True;
    host.ticks = 2'147'483'647; // the same tick at start and end would be a division by zero
    QObject::connect(form->findChild<controls::DL *>(), &controls::DL::Progress, form.get(),
                     [this] { host.ticks = 2'147'483'647 - 1000; });
    runDownload();
    EXPECT_EQ(log(), QStringList{u"Hourly - 123.456 kB - -123.46 kB/s - Forced"_s});
    EXPECT_EQ(ui::ForcedDownload, Boolean::False);
}

TEST_F(DownloadCycle, WithoutMeasurableTimeTheErrorIsLoggedAndTheFileKept)
{
    openForm();
    runDownload();
    EXPECT_EQ(log(), QStringList{u"Division by zero"_s});
    EXPECT_EQ(fileBytes(destination(u"news.mp2"_s)), audio);
    expectNextWeekArmed();
}

TEST_F(DownloadCycle, AWrappedTickCounterIsLoggedAsOverflow)
{
    openForm();
    host.ticks = 2'147'483'647;
    QObject::connect(form->findChild<controls::DL *>(), &controls::DL::Progress, form.get(),
                     [this] { host.ticks = -2'147'483'647; });
    runDownload();
    EXPECT_EQ(log(), QStringList{u"Overflow"_s});
    EXPECT_EQ(destinationFiles(), QStringList{u"news.mp2"_s});
}

TEST_F(DownloadCycle, AMissingDestinationGivesTheSlotUp)
{
    const QString folders[] = {host.folder() + u"/none"_s, u""_s, u"relative"_s, u"?"_s};
    openForm();
    for (const QString &folder : folders) {
        app::sBestemmingsmap = folder;
        host.clock = due - 1s;
        host.sleeps.clear();
        statusesDuringPauses.clear();
        form->ZoekVolgende();
        host.clock = due;
        tick();
        EXPECT_EQ(log().back(), u"Hourly - Destination folder not found"_s);
        EXPECT_EQ(statusesDuringPauses, QStringList{u"Destination folder not found"_s});
        EXPECT_EQ(host.sleeps, QList{1000ms});
        expectNextWeekArmed();
    }
    EXPECT_TRUE(station.requests().empty());
}

TEST_F(DownloadCycle, ADownloadThatCannotStartIsLoggedAndDoesNotStayStuck)
{
    setAddress(u"no slash after the seventh character"_s);
    openForm();
    host.clock = due;
    tick();
    EXPECT_EQ(log(), QStringList{u"Invalid procedure call or argument"_s});
    EXPECT_EQ(status(), u"Hourly will now be downloaded..."_s);
    EXPECT_EQ(form->findChild<QGroupBox *>(u"frameDownload"_s)->title(), u"Progress Download"_s);
    EXPECT_TRUE(waitsForRecompute());
    host.clock = due + 3s;
    runRecomputeLater();
    expectNextWeekArmed();
}

TEST_F(DownloadCycle, AddressesThatCannotBeFetchedFailLikeConnections)
{
    const QString addresses[] = {u"https://station.example/radio/latest.mp2"_s,
                                 u"http://station.example:8000/radio/latest.mp2"_s,
                                 u"file:///etc/passwd"_s, u"http:///radio/latest.mp2"_s,
                                 u"http://station.example/"_s + QString(2000, u'x')};
    openForm();
    for (const QString &address : addresses) {
        setAddress(address);
        host.clock = due - 1s;
        form->ZoekVolgende();
        runDownload();
        EXPECT_EQ(log().back(), u"Hourly - Can not connect"_s) << address.toStdString();
        expectNextWeekArmed();
    }
    EXPECT_EQ(destinationFiles(), QStringList{});
}

TEST_F(DownloadCycle, NamesAreUsedAsTheyStandInTheAddress)
{
    const QString names[] = {u"late st.mp2"_s, u"a;b$(c)&d.mp2"_s, u"*"_s, u"--help"_s,
                             u"50%25.mp2?x=1"_s};
    station.answerOthers(Answer{.body = audio});
    openForm();
    for (const QString &name : names) {
        SCOPED_TRACE(name.toStdString());
        makeFile(destination(u"bystander"_s), "untouched");
        setAddress(u"http://station.example/"_s + name);
        host.clock = due - 1s;
        form->ZoekVolgende();
        EXPECT_EQ(form->DownloadEntry.Filenaam, name);
        runDownload();
        EXPECT_EQ(fileBytes(destination(u"news.mp2"_s)), audio);
        EXPECT_EQ(destinationFiles(), (QStringList{u"bystander"_s, u"news.mp2"_s}));
        QFile::remove(destination(u"news.mp2"_s));
    }
}

TEST_F(DownloadCycle, AnAddressThatEndsInTheTasksFileNameKeepsTheDownload)
{
    execute(u"UPDATE Opdrachtgegevens SET Filenaam = 'latest.mp2'"_s);
    openForm();
    runDownload();
    EXPECT_EQ(fileBytes(destination(u"latest.mp2"_s)), audio);
    expectNextWeekArmed();
}

TEST_F(DownloadCycle, AnAddressThatEndsInASlashHasNoFileAndIsLogged)
{
    makeFile(destination(u"news.mp2"_s), "old");
    setAddress(u"http://station.example/radio/"_s);
    station.answer(u"/radio/"_s, Answer{.body = audio});
    openForm();
    runDownload();
    EXPECT_EQ(log().back(), u"File not found"_s);
    EXPECT_EQ(fileBytes(destination(u"news.mp2"_s)), "old");
    EXPECT_EQ(destinationFiles(), QStringList{u"news.mp2"_s});
    expectNextWeekArmed();
}

TEST_F(DownloadCycle, TheLargestDownloadAndTheErrorReportBeyond)
{
    openForm();
    const QByteArray largest(21'474'836, 'x');
    station.answer(u"/radio/latest.mp2"_s, Answer{.body = largest});
    runDownload();
    EXPECT_EQ(QFile(destination(u"news.mp2"_s)).size(), largest.size());
    EXPECT_EQ(host.messages, QStringList{});

    station.answer(u"/radio/latest.mp2"_s, Answer{.body = largest + 'x'});
    host.clock = form->DownloadEntry.DownloadTime;
    tick();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !host.endings.isEmpty(); }));
    EXPECT_EQ(host.messages, QStringList{u"Ostravelin 1.8.1 | Error 6: Overflow"_s});
    EXPECT_EQ(host.endings, QList{1});
    EXPECT_EQ(log().back(), u"Overflow"_s);
    EXPECT_FALSE(form->findChild<QTimer *>(u"Timer1"_s)->isActive());
    EXPECT_EQ(destinationFiles(), QStringList{u"news.mp2"_s});
}

TEST_F(DownloadCycle, GoesOnWithoutALog)
{
    QDir().mkpath(app::logFilePath()); // a folder in its place
    openForm();
    runDownload();
    EXPECT_EQ(fileBytes(destination(u"news.mp2"_s)), audio);
    expectNextWeekArmed();
    EXPECT_EQ(host.messages, QStringList{});
}
