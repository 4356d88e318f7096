#include "platform/FolderLock.h"
#include "store/TaskStore.h"
#include "tests/support/Station.h"
#include "tests/support/Test.h"

#include <QDateTime>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>
#include <QtEndian>

namespace {

// The real executable in a program folder of its own.
class Program : public testing::Test
{
protected:
    Program()
    {
        QDir().mkpath(at(u"ostravelin/database"_s));
        QDir().mkpath(at(u"audio"_s));
        QFile::copy(QStringLiteral(PROGRAM), at(u"ostravelin/ostravelin"_s));
        QFile::copy(QStringLiteral(EMPTY_DATABASE), database);
        makeFile(settings,
                 "[Bestandsmappen]\r\nBestemmingsmap=" + at(u"audio"_s).toUtf8() + "\r\n");
    }

    QString at(const QString &path) const { return root.filePath(u"a b é/"_s + path); }

    /// Starts the program, in Dutch, with a local clock that shows 09:59:52: late enough for a
    /// short test, and early enough for a slow machine to show the window before the slot.
    void start(const Station &station)
    {
        const int offset = offsetShowing(QTime(9, 59, 52));
        const QString zone = (offset > 0 ? u"<XYZ>-"_s : u"<XYZ>+"_s) +
                             QTime(0, 0).addSecs(std::abs(offset)).toString();
        setEnvironment(station);
        qputenv("TZ", zone.toLatin1());
        process.start(program, QStringList());
    }

    /// Has a user at the program who does this; see User.cpp.
    static void attend(const QByteArray &chooses, const QByteArray &closesAt)
    {
        qputenv("LD_PRELOAD", USER);
        qputenv("ASAN_OPTIONS", "verify_asan_link_order=0"); // the user is loaded before it
        chooses.isEmpty() ? qunsetenv("USER_CHOOSES") : qputenv("USER_CHOOSES", chooses);
        qputenv("USER_CLOSES_AT", closesAt);
        qputenv("no_proxy", "station.example"); // its name is looked up
    }

    void setEnvironment(const Station &station)
    {
        qputenv("LC_ALL", "nl_NL.UTF-8");
        qputenv("XDG_CONFIG_HOME", at(u"config"_s).toUtf8());
        qputenv("http_proxy", "http://127.0.0.1:" + QByteArray::number(station.port()));
        useTemporaryFolder(root.path());
    }

    /// The seconds by which a local clock that shows the time is ahead of the universal one.
    static int offsetShowing(QTime shown)
    {
        return QDateTime::currentDateTimeUtc().time().secsTo(shown);
    }

    /// Makes a file of the system's zone that has this offset.
    void makeZone(const QString &path, int offset)
    {
        QByteArray header("TZif" + QByteArray(40, '\0'));
        header[39] = 1; // type
        header[43] = 4; // characters of its name
        QByteArray type(6, '\0');
        qToBigEndian(offset, type.data());
        makeFile(path, header + type + QByteArray("XYZ", 4));
    }

    /// Stores a task that is due at full hours, and what the station answers.
    void schedule(Station &station, const QList<int> &hours)
    {
        station.answer(u"/radio/latest.mp2"_s, {.body = audio});
        store::OpenDatabase(folder);
        store::dbConnection.execute(
            u"INSERT INTO Opdrachtgegevens VALUES ('Hourly', '%1', 'news.mp2', 0, 1)"_s.arg(
                Station::url(u"/radio/latest.mp2"_s)));
        for (int day = 1; day <= 7; ++day)
            for (const int hour : hours)
                store::dbConnection.execute(
                    u"INSERT INTO Tijden VALUES ('Hourly', %1, %2)"_s.arg(day).arg(hour));
    }

    /// Waits for downloads that the log tells of, one at the start of each hour.
    void expectLog(const QStringList &hours)
    {
        QString pattern;
        for (const QString &hour : hours)
            pattern += u"\\d\\d-\\d\\d-\\d\\d "_s + hour +
                       u":00:0\\d - Hourly - 1234,567 kB - [\\d.]+,\\d\\d kB/s\r\n"_s;
        const QRegularExpression lines(QRegularExpression::anchoredPattern(pattern));
        const auto log = [this] {
            return QString::fromUtf8(fileBytes(at(u"ostravelin/OstravelinLog.txt"_s)));
        };
        EXPECT_TRUE(QTest::qWaitFor([&] { return lines.match(log()).hasMatch(); }, 60'000))
            << log().toStdString() << process.readAllStandardError().toStdString();
    }

    /// Waits until a started program tells what keeps it from going on, and ends it.
    static void expectTold(QProcess &started, const QByteArray &error)
    {
        QByteArray said;
        const auto isTold = [&] {
            return (said += started.readAllStandardError()).contains(error);
        };
        EXPECT_TRUE(QTest::qWaitFor(isTold, 60'000)) << error.toStdString();
        started.kill(); // its message box waits for somebody
        started.waitForFinished();
    }

    void expectTold(const QByteArray &error)
    {
        start(Station());
        expectTold(process, error);
    }

    const QByteArray audio = QByteArray(1'234'567, 'a');
    QTemporaryDir root;
    const QString folder = at(u"ostravelin"_s);
    const QString program = at(u"ostravelin/ostravelin"_s);
    const QString database = at(u"ostravelin/database/ostravelin.mdb"_s);
    const QString settings = at(u"config/Ostravelin.ini"_s);
    QProcess process;
};

} // namespace

TEST_F(Program, RunsAScheduledDownload)
{
    Station station;
    schedule(station, {10});
    start(station);
    expectLog({u"10"_s});
    const QString news = at(u"audio/news.mp2"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(news); }, 60'000));
    EXPECT_EQ(fileBytes(news), audio);
    EXPECT_EQ(filesIn(at(u"audio"_s)), QStringList{u"news.mp2"_s});
    EXPECT_EQ(station.requests().size(), 1U);
    EXPECT_EQ(process.state(), QProcess::Running);
}

TEST_F(Program, EndsWhenItsUserEndsItWhateverHangs)
{
    struct Case
    {
        const char *about;
        bool isFirstStart;
        QByteArray chooses, closesAt;    // empty: never
        QByteArray savedFolder, windows; // those that the menus opened
    };
    const QByteArray all = "frmOpdrachten frmForceDownload frmOptions frmAbout ";
    const QByteArray audioFolder = at(u"audio"_s).toUtf8();
    const Case cases[] = {
        {"uses all windows", false, {}, "Next Download", audioFolder, all},
        {"ends it during a look-up", false, {}, "Progress Download", audioFolder, all},
        {"cancels the first start", true, {}, {}, {}, {}},
        {"chooses a folder", true, audioFolder, "Next Download", audioFolder, all}};
    Station station;
    schedule(station, {10});
    for (const auto &[about, isFirstStart, chooses, closesAt, savedFolder, windows] : cases) {
        SCOPED_TRACE(about);
        if (isFirstStart)
            QFile::remove(settings);
        attend(chooses, closesAt);
        start(station);
        EXPECT_TRUE(process.waitForFinished(60'000));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        EXPECT_EQ(process.readAllStandardOutput(), windows);
        EXPECT_EQ(fileBytes(settings).contains("Bestemmingsmap=" + savedFolder + "\r\n"),
                  !savedFolder.isEmpty());
    }
}

TEST_F(Program, FollowsTheZoneOfTheMachine)
{
    Station station;
    schedule(station, {7, 10});
    setEnvironment(station);
    qunsetenv("TZ");
    const QString zone = at(u"zone"_s);
    makeZone(zone, offsetShowing(QTime(6, 59, 52)));
    makeZone(zone + u'2', 0);
    const QString bind = u"mount --bind \"$1\" /etc/localtime && echo mounted && read go && "_s;
    process.start(u"unshare"_s,
                  {u"--map-root-user"_s, u"--mount"_s, u"--pid"_s, u"--kill-child"_s, u"sh"_s,
                   u"-c"_s,
                   bind + u"{ \"$2\" & read go; mount --bind \"$1\"2 /etc/localtime; wait; }"_s,
                   u"sh"_s, zone, program});
    process.waitForReadyRead();
    if (process.readAllStandardOutput() != "mounted\n")
        GTEST_SKIP() << "no file system of its own for a process";
    process.write("go\n");
    expectLog({u"07"_s});
    // The toolkit asks for the zone when it paints frames anew, as after a download. It is the idle
    // program that has to see the change.
    QTest::qWait(6'000);
    makeZone(zone + u'2', offsetShowing(QTime(9, 59, 54)));
    process.write("go\n");
    expectLog({u"07"_s, u"10"_s});
}

TEST_F(Program, StartsOnceInItsFolder)
{
    start(Station());
    EXPECT_TRUE(QTest::qWaitFor([&] { return platform::isFolderLocked(folder); }, 60'000));
    qputenv("XDG_CONFIG_HOME", at(u"elsewhere"_s).toUtf8());
    makeFile(at(u"elsewhere/Ostravelin.ini"_s), "stale");
    QProcess second;
    second.start(program, QStringList());
    expectTold(second, "Ostravelin is already running from " + folder.toUtf8() + ".\n");
    EXPECT_EQ(fileBytes(at(u"elsewhere/Ostravelin.ini"_s)), "stale");
    process.kill();
    process.waitForFinished();
    EXPECT_FALSE(platform::isFolderLocked(folder));
}

TEST_F(Program, AFirstStartDeletesAStaleSettingsFile)
{
    makeFile(settings, "[Bestandsmappen]\r\nSPCmap=/srv/spc\r\n");
    start(Station());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !QFile::exists(settings); }, 60'000));
    EXPECT_EQ(process.state(), QProcess::Running);
}

TEST_F(Program, TakesTheDeliveredDatabaseOnlyWhereNoneIs)
{
    const QString delivered = at(u"ostravelin/database/empty.mdb"_s);
    const QByteArray tasks = fileBytes(database);
    makeFile(delivered, "brought by an update");
    start(Station());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !QFile::exists(delivered); }, 60'000));
    EXPECT_EQ(fileBytes(database), tasks);
    process.kill();
    process.waitForFinished();

    QFile::rename(database, delivered);
    start(Station());
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(database); }, 60'000));
    EXPECT_EQ(fileBytes(database), tasks);
    EXPECT_FALSE(QFile::exists(delivered));
    process.kill();
    process.waitForFinished();

    QFile::remove(database); // lost, so that nothing takes its place
    expectTold("The database file was not found");
}

TEST_F(Program, TellsWhatKeepsItFromStarting)
{
    makeFile(database, "no database");
    expectTold("Error 3343: ");

    QFile::remove(settings);
    QDir().mkpath(settings);
    expectTold("Error 75: ");
}
