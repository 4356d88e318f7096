#include "store/TaskStore.h"
#include "tests/support/Station.h"
#include "tests/support/Test.h"

#include <QDateTime>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

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
        QFile::copy(QStringLiteral(EMPTY_DATABASE), at(u"ostravelin/database/ostravelin.mdb"_s));
        makeFile(at(u"config/Ostravelin.ini"_s),
                 "[Bestandsmappen]\r\nBestemmingsmap=" + at(u"audio"_s).toUtf8() + "\r\n");
    }

    ~Program() override
    {
        process.kill();
        process.waitForFinished();
    }

    QString at(const QString &path) const { return root.filePath(u"a b é/"_s + path); }

    void addTask(const QString &address)
    {
        store::OpenDatabase(at(u"ostravelin"_s));
        store::dbConnection.execute(
            u"INSERT INTO Opdrachtgegevens VALUES ('Hourly', '%1', 'news.mp2', 0, 1)"_s.arg(
                address));
        for (int day = 1; day <= 7; ++day)
            store::dbConnection.execute(u"INSERT INTO Tijden VALUES ('Hourly', %1, 10)"_s.arg(day));
    }

    /// Starts the program with a local clock that shows 09:59:52, in Dutch: late enough for a short
    /// test, and early enough for a slow machine to show the window before the slot.
    void start(const Station &station)
    {
        constexpr int shown = (9 * 60 + 59) * 60 + 52;
        const int west =
            QDateTime::currentDateTimeUtc().time().msecsSinceStartOfDay() / 1000 - shown;
        const QTime offset = QTime(0, 0).addSecs(std::abs(west));
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"TZ"_s, u"<XYZ>"_s + (west < 0 ? u"-"_s : u"+"_s) +
                                        offset.toString(u"hh:mm:ss"_s));
        environment.insert(u"LC_ALL"_s, u"nl_NL.UTF-8"_s);
        environment.insert(u"XDG_CONFIG_HOME"_s, at(u"config"_s));
        environment.insert(u"http_proxy"_s, u"http://127.0.0.1:%1"_s.arg(station.port()));
        environment.insert(u"TMPDIR"_s, root.path());
        process.setProcessEnvironment(environment);
        process.start(at(u"ostravelin/ostravelin"_s), QStringList());
        ASSERT_TRUE(process.waitForStarted());
    }

    QTemporaryDir root;
    QProcess process;
};

} // namespace

TEST_F(Program, RunsAScheduledDownload)
{
    Station station;
    const QByteArray audio(1'234'567, 'a');
    station.answer(u"/radio/latest.mp2"_s, {.body = audio});
    addTask(Station::url(u"/radio/latest.mp2"_s));
    start(station);
    ASSERT_TRUE(QTest::qWaitFor([this] { return QFile::exists(at(u"audio/news.mp2"_s)); }, 60'000))
        << process.readAllStandardError().toStdString();
    EXPECT_EQ(fileBytes(at(u"audio/news.mp2"_s)), audio);
    EXPECT_EQ(QDir(at(u"audio"_s)).entryList(QDir::Files | QDir::Hidden),
              QStringList{u"news.mp2"_s});
    const QString log = QString::fromUtf8(fileBytes(at(u"ostravelin/OstravelinLog.txt"_s)));
    const QRegularExpression line(
        u"^\\d\\d-\\d\\d-\\d\\d 10:00:0\\d - Hourly - 1234,567 kB - [\\d.]+,\\d\\d kB/s\r\n$"_s);
    EXPECT_TRUE(line.match(log).hasMatch()) << log.toStdString();
    EXPECT_EQ(station.requests().size(), 1U);
    EXPECT_EQ(process.state(), QProcess::Running);
}

TEST_F(Program, AFirstStartDeletesAStaleSettingsFile)
{
    const QString settings = at(u"config/Ostravelin.ini"_s);
    makeFile(settings, "[Bestandsmappen]\r\nSPCmap=/srv/spc\r\n");
    start(Station());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !QFile::exists(settings); }, 60'000));
    EXPECT_EQ(process.state(), QProcess::Running);
}

TEST_F(Program, TellsWhatKeepsItFromStarting)
{
    const QString database = at(u"ostravelin/database/ostravelin.mdb"_s);
    const Station station;
    const struct
    {
        std::function<void()> prepare;
        QByteArray told;
    } cases[] = {
        {[&] { QFile::remove(database); }, "Error 3024: "},
        {[&] { makeFile(database, "no database"); }, "Error 3343: "},
        {[&] {
             QFile::remove(at(u"config/Ostravelin.ini"_s));
             QDir().mkpath(at(u"config/Ostravelin.ini"_s));
         },
         "Error 75: "},
    };
    for (const auto &[prepare, expected] : cases) {
        const QByteArray told = expected; // what a lambda may capture
        prepare();
        start(station);
        EXPECT_TRUE(QTest::qWaitFor(
            [&, said = QByteArray()]() mutable {
                said += process.readAllStandardError();
                return said.contains(told);
            },
            60'000))
            << told.toStdString();
        process.kill(); // its message box waits for somebody
        process.waitForFinished();
    }
}
