#include "controls/PB/PB.h"
#include "tests/ui/main/MainFormTest.h"

#include <QGroupBox>

#include <limits>

namespace {

const QByteArray Audio(123'456, 'a');
const QString Place = u"http://station.example/"_s;

// A forced download, by default one that succeeds, and what becomes of it.
struct Download
{
    QString address = Place + u'a';
    Answer answer = {.body = Audio};
    QString logged = u"Hourly - 123.456 kB - 98.76 kB/s - Forced"_s;
    QString pause = u"Download completed... for 2000 ms"_s;
    QByteArray file = Audio;
    qint32 endTick = 1251; // of the tick counter, which starts at 1
};

// What the window shows of a download, whether tasks and options can be edited, and whether a
// download is armed.
using Shown = std::tuple<QString, QString, bool, bool, bool, Boolean>;
const Shown Waiting = {u"Next Download"_s, u""_s, false, true, true, Boolean::True};
const Shown Downloading = {
    u"Progress Download"_s, u"Hourly will now be downloaded..."_s, true, false, false,
    Boolean::False};

// One task in one slot of the week.
class DownloadCycle : public MainFormTest
{
protected:
    DownloadCycle() { addTaskAt(due, u"Hourly"_s, u"/latest.mp2"_s, u"news.mp2"_s); }

    Shown shown() const
    {
        return {formControl<QGroupBox>(u"frameDownload"_s)->title(),
                status(),
                formControl<QWidget>(u"pBar"_s)->isVisible(),
                formControl<QMenu>(u"mnuOpdrachten"_s)->menuAction()->isEnabled(),
                formControl<QAction>(u"mnuOpties"_s)->isEnabled(),
                form->DownloadEntry.DownloadFlag};
    }

    QString figuresAt(std::chrono::local_seconds moment)
    {
        host.clock = moment;
        tick();
        return labelText(u"Label1"_s) + u' ' + labelText(u"Label2"_s) + u' ' +
               labelText(u"Label3"_s);
    }

    void expectNextWeekArmed() const
    {
        EXPECT_EQ(form->DownloadEntry.DownloadTime, due + std::chrono::days(7));
        EXPECT_EQ(ui::ForcedDownload, Boolean::False);
        EXPECT_EQ(shown(), Waiting);
    }
};

} // namespace

TEST_F(DownloadCycle, CountsDownAndStartsOnTheSecond)
{
    station.answerOthers({.raw = ""}); // and never ends
    openForm();
    EXPECT_EQ(figuresAt(due - 61s), u"11:28 59 61"_s);
    EXPECT_TRUE(labelText(u"Label4"_s).contains(u" 11:30:00"_s));
    EXPECT_TRUE(labelText(u"Label4"_s).endsWith(u" ==> Hourly"_s));
    EXPECT_EQ(shown(), Waiting);
    formControl<controls::PB>()->setValue(50);
    host.failsToBeepAndToFindBatches = true; // which keeps nothing from being done
    EXPECT_EQ(figuresAt(due), u"11:30 00 0"_s);
    host.failsToBeepAndToFindBatches = false;
    EXPECT_EQ(log(), QStringList{u"Overflow"_s});
    EXPECT_EQ(shown(), Downloading);
    EXPECT_EQ(formControl<controls::PB>()->value(), 0);
    EXPECT_EQ(QDir::currentPath() + u'/', destination({}));
    EXPECT_EQ(figuresAt(due + 1s), u"11:30 01 0"_s);
    EXPECT_EQ(host.beeps, 1);

    lookUpBeforeDue();
    EXPECT_EQ(figuresAt(due - 1s), u"11:29 59 1"_s);
    EXPECT_EQ(figuresAt(due + 2h), u"13:30 00 1"_s); // jumped over it
    EXPECT_EQ(host.beeps, 2);
}

TEST_F(DownloadCycle, EveryOutcomeIsToldAndTheNextSlotArmed)
{
    const bool anyName = QDir::separator() == u'/'; // the other system has no "*" and "?" in names
    const QString news = destination(u"news.mp2"_s);
    const QString noFile = u"File not found"_s;
    const auto failed = [](const Answer &answer, const QString &told) {
        return Download{.answer = answer,
                        .logged = u"Hourly - "_s + told,
                        .pause = told + u"... for 3000 ms"_s,
                        .file = "old"};
    };
    const Download cases[] = {
        {Place + u"latest.mp2"_s},
        {Place + u"late st.mp2"_s},
        {Place + (anyName ? u"*"_s : u"b"_s)},
        {Place + u"50%25.mp2"_s + (anyName ? u"?x=1"_s : u""_s)},
        {Place + u"news.mp2"_s}, // the task's own file name
        {.logged = u"Hourly - 123.456 kB - -123.46 kB/s - Forced"_s, .endTick = -999},
        {.logged = u"Division by zero"_s, .endTick = 1},
        {.logged = u"Overflow"_s, .endTick = std::numeric_limits<qint32>::min()},
        {.address = Place, .logged = noFile, .file = "old"},
        {.address = Place + QString(2000, u'x'), .logged = noFile, .file = "old"},
        failed({.status = 404, .body = "no such page"}, u"Can not connect"_s),
        failed({.body = Audio, .cutAfter = 43'210, .ending = Ending::Close}, u"Disconnected"_s),
    };
    makeFile(destination(u"bystander"_s), {});
    makeFile(destination(u"latest.mp2"_s), "stale");
    openForm();
    qint32 endTick = 0;
    QString lastStatus;
    QStringList storing;
    QObject::connect(formControl<controls::DL>(), &controls::DL::Storing, form.get(),
                     [&] { storing << status(); });
    onProgress([&] {
        host.ticks = endTick;
        lastStatus = status();
    });
    for (const Download &download : cases) {
        SCOPED_TRACE(download.address.left(60).toStdString());
        makeFile(news, "old");
        station.answerOthers(download.answer);
        setTasks(u"Download_adres = '%1'"_s.arg(download.address));
        lookUpBeforeDue();
        ui::ForcedDownload = Boolean::True;
        host.ticks = 1;
        endTick = download.endTick;
        runDownload();
        EXPECT_EQ(log().back(), download.logged);
        EXPECT_EQ(pauses, QStringList{download.pause});
        EXPECT_EQ(fileBytes(news), download.file);
        EXPECT_EQ(destinationFiles(), (QStringList{u"bystander"_s, u"news.mp2"_s}));
        expectNextWeekArmed();
    }
    EXPECT_EQ(storing, QStringList(10, u"Hourly is being stored..."_s));
    EXPECT_EQ(log().size(), std::size(cases) + 2); // those without a file tell two things
    EXPECT_EQ(station.requests()[0].target, "http://station.example:80/latest.mp2");
    EXPECT_EQ(lastStatus, u"Download: Hourly   43.21 kB / 123.456 kB"_s);
    EXPECT_EQ(formControl<controls::PB>()->value(), 35);
}

TEST_F(DownloadCycle, ASlotThatCannotStartIsToldAndGivenUp)
{
    openForm();
    const std::pair<QString, QString> brokenTexts[] = {
        {u"Download_adres = 'http://h/a' || char(10) || 'b'"_s, u"The address"_s},
        {u"Download_adres = 'http://h/a', Filenaam = 'b' || char(13)"_s, u"The file name"_s}};
    for (const auto &[set, text] : brokenTexts) {
        setTasks(set);
        lookUpBeforeDue();
        EXPECT_EQ(figuresAt(due), u"11:30 00 0"_s);
        const QString fault = text + u" contains a line break or another control character"_s;
        EXPECT_EQ(log().back(), u"Hourly - "_s + fault);
        EXPECT_EQ(pauses, QStringList{fault + u" for 1000 ms"_s});
        expectNextWeekArmed();
    }
    for (const QString &folder : {host.folder() + u"/none"_s, u""_s, u"relative"_s, u"?"_s}) {
        app::sBestemmingsmap = folder;
        lookUpBeforeDue();
        EXPECT_EQ(figuresAt(due), u"11:30 00 0"_s);
        EXPECT_EQ(log().back(), u"Hourly - Destination folder not found"_s);
        EXPECT_EQ(pauses, QStringList{u"Destination folder not found for 1000 ms"_s});
        expectNextWeekArmed();
    }
    app::sBestemmingsmap = destination({});
    setTasks(
        u"Filenaam = 'a', Download_adres = '%1'"_s.arg(u"no slash after the seventh character"_s));
    lookUpBeforeDue();
    EXPECT_EQ(figuresAt(due), u"11:30 00 0"_s);
    EXPECT_EQ(log().back(), u"Invalid procedure call or argument"_s);
    EXPECT_EQ(recompute()->interval(), 3000);
    EXPECT_EQ(shown(), Downloading);
    EXPECT_TRUE(recompute()->isActive());
    EXPECT_TRUE(station.requests().empty());
    host.clock = due + 3s;
    tick(recompute());
    expectNextWeekArmed();
}

TEST_F(DownloadCycle, GoesOnWithoutALogOrAPlaceForTheFile)
{
    station.answerOthers({.body = Audio});
    QDir().mkpath(app::logFilePath()); // a folder in its place
    openForm();
    runDownload();
    EXPECT_EQ(fileBytes(destination(u"news.mp2"_s)), Audio);
    EXPECT_EQ(host.messages, QStringList{});
    expectNextWeekArmed();

    QDir().rmdir(app::logFilePath());
    setTasks(u"Download_adres = '%1', Filenaam = ''"_s.arg(Place));
    lookUpBeforeDue();
    runDownload();
    EXPECT_EQ(log().back(), u"File not found"_s);
    expectNextWeekArmed();
}
