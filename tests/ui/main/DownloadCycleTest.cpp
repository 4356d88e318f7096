#include "controls/PB/PB.h"
#include "tests/ui/main/MainFormTest.h"

#include <QGroupBox>

namespace {

// One task in one slot of the week, with the station's audio under /radio/latest.mp2.
class DownloadCycle : public MainFormTest
{
protected:
    DownloadCycle()
    {
        addTaskAt(due, u"Hourly"_s, u"/radio/latest.mp2"_s, u"news.mp2"_s);
        answer({.body = audio});
    }

    void answer(const Answer &answer) { station.answer(u"/radio/latest.mp2"_s, answer); }

    void setAddress(const QString &address) { setTasks(u"Download_adres = '%1'"_s.arg(address)); }

    QString frameTitle() const { return formControl<QGroupBox>(u"frameDownload"_s)->title(); }
    QByteArray news() const { return fileBytes(destination(u"news.mp2"_s)); }

    void expectNextWeekArmed() const
    {
        EXPECT_EQ(form->DownloadEntry.DownloadTime, due + std::chrono::days(7));
        EXPECT_EQ(form->DownloadEntry.DownloadFlag, Boolean::True);
        EXPECT_TRUE(canUse(u"mnuOpdrachten"_s));
    }

    const QByteArray audio = QByteArray(123456, 'a');
    const QStringList newsOnly = {u"news.mp2"_s};
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
    EXPECT_TRUE(labelText(u"Label4"_s).contains(u" 11:30:00"_s));
    EXPECT_TRUE(labelText(u"Label4"_s).endsWith(u" ==> Hourly"_s));
    EXPECT_EQ(form->DownloadEntry.DownloadFlag, Boolean::True);

    host.clock = due;
    tick();
    EXPECT_EQ(labelText(u"Label3"_s), u"0"_s);
    EXPECT_EQ(form->DownloadEntry.DownloadFlag, Boolean::False);
    EXPECT_EQ(status(), u"Hourly will now be downloaded..."_s);
    EXPECT_EQ(frameTitle(), u"Progress Download"_s);
    EXPECT_TRUE(formControl<QWidget>(u"pBar"_s)->isVisible());
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
    onProgress([this] { host.ticks = 1250; });
    runDownload();
    EXPECT_EQ(news(), audio);
    EXPECT_EQ(destinationFiles(), newsOnly);
    EXPECT_EQ(log(), QStringList{u"Hourly - 123.456 kB - 98.76 kB/s"_s});
    EXPECT_EQ(host.sleeps, QList{2000ms});
    EXPECT_EQ(statusesDuringPauses, QStringList{u"Download completed..."_s});
    EXPECT_EQ(formControl<controls::PB>()->value(), 100);
    expectNextWeekArmed();
    ASSERT_EQ(station.requests().size(), 1);
    EXPECT_EQ(station.requests()[0].target, "http://station.example:80/radio/latest.mp2");
}

TEST_F(DownloadCycle, ShowsTheProgress)
{
    openForm();
    QString lastStatus;
    qint32 lastValue = 0;
    onProgress([&] {
        lastStatus = status();
        lastValue = formControl<controls::PB>()->value();
    });
    answer({.body = audio, .cutAfter = 43210, .ending = Ending::Close});
    runDownload();
    EXPECT_EQ(lastStatus, u"Download: Hourly   43.21 kB / 123.456 kB"_s);
    EXPECT_EQ(lastValue, 35);
}

TEST_F(DownloadCycle, EveryFailureIsToldAndTheNextSlotArmed)
{
    const QString noConnection = u"Can not connect"_s, cutOff = u"Disconnected"_s;
    // Wine does not always tell of a reset, so that the idle limit ends the transfer.
    const Ending reset = QDir::separator() == u'\\' ? Ending::Close : Ending::Reset;
    const std::tuple<const char *, Answer, QString> cases[] = {
        {"missing", {.status = 404, .body = "no such page"}, noConnection},
        {"empty", {.body = ""}, noConnection},
        {"reset at once", {.raw = "", .ending = reset}, noConnection},
        {"garbage", {.raw = "\x01 not HTTP\r\n\r\n", .ending = Ending::Close}, noConnection},
        {"too little", {.body = audio, .cutAfter = 1000, .ending = Ending::Close}, cutOff},
        {"no length",
         {.body = audio, .framing = Framing::UntilClose, .ending = Ending::Close},
         cutOff},
        {"redirect loop",
         {.status = 302, .headers = {"Location: http://station.example/radio/latest.mp2"}},
         noConnection},
    };
    makeFile(destination(u"news.mp2"_s), "old");
    openForm();
    for (const auto &[what, faulty, outcome] : cases) {
        SCOPED_TRACE(what);
        answer(faulty);
        ui::ForcedDownload = Boolean::True;
        lookUpBeforeDue();
        runDownload();
        EXPECT_EQ(log().back(), u"Hourly - "_s + outcome);
        EXPECT_EQ(statusesDuringPauses, QStringList{outcome + u"..."_s});
        EXPECT_EQ(host.sleeps, QList{3000ms});
        EXPECT_EQ(ui::ForcedDownload, Boolean::False);
        expectNextWeekArmed();
    }
    for (const QString &address :
         {u"https://station.example/radio/latest.mp2"_s, u"file:///etc/passwd"_s,
          u"http://station.example/"_s + QString(2000, u'x')}) {
        setAddress(address);
        lookUpBeforeDue();
        runDownload();
        EXPECT_EQ(log().back(), u"Hourly - Can not connect"_s) << address.toStdString();
        expectNextWeekArmed();
    }
    EXPECT_EQ(log().size(), std::size(cases) + 3);
    EXPECT_EQ(destinationFiles(), newsOnly);
    EXPECT_EQ(news(), "old");
}

// Where speed or its measuring fails, the file stays nevertheless.
TEST_F(DownloadCycle, LogsTheSpeedByTheTickCounter)
{
    constexpr qint32 last = 2'147'483'647;
    const struct
    {
        qint32 start, end;
        bool isForced;
        QString logged;
    } cases[] = {
        {last, last - 1000, true, u"Hourly - 123.456 kB - -123.46 kB/s - Forced"_s},
        {0, 0, false, u"Division by zero"_s},
        {last, -last, false, u"Overflow"_s},
    };
    openForm();
    for (const auto &[start, end, isForced, logged] : cases) {
        SCOPED_TRACE(logged.toStdString());
        lookUpBeforeDue();
        ui::ForcedDownload = platform::toBoolean(isForced);
        host.ticks = start;
        onProgress([this, ticks = end] { host.ticks = ticks; });
        runDownload();
        EXPECT_EQ(log().back(), logged);
        EXPECT_EQ(ui::ForcedDownload, Boolean::False);
        EXPECT_EQ(destinationFiles(), newsOnly);
        EXPECT_EQ(news(), audio);
        expectNextWeekArmed();
        QFile::remove(destination(u"news.mp2"_s));
    }
    EXPECT_EQ(log().size(), std::size(cases));
}

TEST_F(DownloadCycle, AMissingDestinationGivesTheSlotUp)
{
    openForm();
    for (const QString &folder : {host.folder() + u"/none"_s, u""_s, u"relative"_s, u"?"_s}) {
        app::sBestemmingsmap = folder;
        lookUpBeforeDue();
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
    EXPECT_EQ(frameTitle(), u"Progress Download"_s);
    EXPECT_TRUE(recompute()->isActive());
    host.clock = due + 3s;
    tick(recompute());
    expectNextWeekArmed();
}

TEST_F(DownloadCycle, NamesAreUsedAsTheyStandInTheAddress)
{
    station.answerOthers({.body = audio});
    openForm();
    // the last one is the task's own file name
    for (const QString &name : {u"late st.mp2"_s, u"a;b$(c)&d.mp2"_s, u"*"_s, u"--help"_s,
                                u"50%25.mp2?x=1"_s, u"news.mp2"_s}) {
        if (QDir::separator() == u'\\' && (name.contains(u'*') || name.contains(u'?')))
            continue; // no names on Windows
        SCOPED_TRACE(name.toStdString());
        makeFile(destination(u"bystander"_s), "untouched");
        setAddress(u"http://station.example/"_s + name);
        lookUpBeforeDue();
        EXPECT_EQ(form->DownloadEntry.Filenaam, name);
        runDownload();
        EXPECT_EQ(news(), audio);
        EXPECT_EQ(destinationFiles(), (QStringList{u"bystander"_s, u"news.mp2"_s}));
        expectNextWeekArmed();
        QFile::remove(destination(u"news.mp2"_s));
    }
}

TEST_F(DownloadCycle, AFileThatCannotBePutInItsPlaceIsLogged)
{
    station.answerOthers({.body = audio});
    openForm();
    const std::pair<QString, QString> cases[] = {{u"latest.mp2"_s, u"Path not found"_s},
                                                 {u"news.mp2"_s, u"File not found"_s}};
    for (const auto &[name, told] : cases) {
        makeFile(destination(u"bystander"_s), {});
        setAddress(u"http://station.example/"_s + name);
        lookUpBeforeDue();
        bool isGone = false;
        onProgress([&] { isGone = QDir(destination({})).removeRecursively() || isGone; });
        runDownload();
        if (!isGone)
            GTEST_SKIP() << "the system keeps the current folder";
        EXPECT_EQ(log().back(), told);
        expectNextWeekArmed();
    }
}

TEST_F(DownloadCycle, AnAddressThatEndsInASlashHasNoFileAndIsLogged)
{
    makeFile(destination(u"news.mp2"_s), "old");
    setAddress(u"http://station.example/radio/"_s);
    station.answer(u"/radio/"_s, {.body = audio});
    openForm();
    runDownload();
    EXPECT_EQ(log().back(), u"File not found"_s);
    EXPECT_EQ(news(), "old");
    EXPECT_EQ(destinationFiles(), newsOnly);
    expectNextWeekArmed();
}

TEST_F(DownloadCycle, TheLargestDownloadAndTheErrorReportBeyond)
{
    openForm();
    const QByteArray largest(21'474'836, 'x');
    answer({.body = largest});
    runDownload();
    EXPECT_EQ(news().size(), largest.size());
    EXPECT_EQ(host.messages, QStringList{});

    answer({.body = largest + 'x'});
    host.clock = form->DownloadEntry.DownloadTime;
    tick();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !host.endings.isEmpty(); }));
    EXPECT_EQ(host.messages, QStringList{u"Ostravelin 1.8.1 | Error 6: Overflow"_s});
    EXPECT_EQ(host.endings, QList{1});
    EXPECT_EQ(log().back(), u"Overflow"_s);
    EXPECT_FALSE(countdown()->isActive());
    EXPECT_EQ(destinationFiles(), newsOnly);
}

TEST_F(DownloadCycle, GoesOnWithoutALog)
{
    QDir().mkpath(app::logFilePath()); // a folder in its place
    openForm();
    runDownload();
    EXPECT_EQ(news(), audio);
    expectNextWeekArmed();
    EXPECT_EQ(host.messages, QStringList{});
}
