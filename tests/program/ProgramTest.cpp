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
        QFile::copy(QStringLiteral(EMPTY_DATABASE), database);
        makeFile(settings,
                 "[Bestandsmappen]\r\nBestemmingsmap=" + at(u"audio"_s).toUtf8() + "\r\n");
    }

    QString at(const QString &path) const { return root.filePath(u"a b é/"_s + path); }

    /// Starts the program with a local clock that shows 09:59:52, in Dutch: late enough for a short
    /// test, and early enough for a slow machine to show the window before the slot.
    void start(const Station &station)
    {
        constexpr int shown = (9 * 60 + 59) * 60 + 52;
        const int now = QDateTime::currentDateTimeUtc().time().msecsSinceStartOfDay() / 1000;
        const QTime offset = QTime(0, 0).addSecs(std::abs(now - shown));
        const QString zone = (now < shown ? u"<XYZ>-"_s : u"<XYZ>+"_s) + offset.toString();
        qputenv("TZ", zone.toLatin1());
        qputenv("LC_ALL", "nl_NL.UTF-8");
        qputenv("XDG_CONFIG_HOME", at(u"config"_s).toUtf8());
        qputenv("http_proxy", "http://127.0.0.1:" + QByteArray::number(station.port()));
        useTemporaryFolder(root.path());
        process.start(at(u"ostravelin/ostravelin"_s), QStringList());
    }

    /// Starts the program until it tells of an error.
    void expectTold(const QByteArray &error)
    {
        start(Station());
        QByteArray said;
        const auto isTold = [&] {
            return (said += process.readAllStandardError()).contains(error);
        };
        EXPECT_TRUE(QTest::qWaitFor(isTold, 60'000)) << error.toStdString();
        process.kill(); // its message box waits for somebody
        process.waitForFinished();
    }

    QTemporaryDir root;
    const QString database = at(u"ostravelin/database/ostravelin.mdb"_s);
    const QString settings = at(u"config/Ostravelin.ini"_s);
    QProcess process;
};

} // namespace

TEST_F(Program, RunsAScheduledDownload)
{
    Station station;
    const QByteArray audio(1'234'567, 'a');
    station.answer(u"/radio/latest.mp2"_s, {.body = audio});
    store::OpenDatabase(at(u"ostravelin"_s));
    store::dbConnection.execute(
        u"INSERT INTO Opdrachtgegevens VALUES ('Hourly', '%1', 'news.mp2', 0, 1)"_s.arg(
            Station::url(u"/radio/latest.mp2"_s)));
    for (int day = 1; day <= 7; ++day)
        store::dbConnection.execute(u"INSERT INTO Tijden VALUES ('Hourly', %1, 10)"_s.arg(day));
    start(station);
    const QString news = at(u"audio/news.mp2"_s);
    ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(news); }, 60'000))
        << process.readAllStandardError().toStdString();
    EXPECT_EQ(fileBytes(news), audio);
    EXPECT_EQ(filesIn(at(u"audio"_s)), QStringList{u"news.mp2"_s});
    const QString log = QString::fromUtf8(fileBytes(at(u"ostravelin/OstravelinLog.txt"_s)));
    const QRegularExpression line(
        u"^\\d\\d-\\d\\d-\\d\\d 10:00:0\\d - Hourly - 1234,567 kB - [\\d.]+,\\d\\d kB/s\r\n$"_s);
    EXPECT_TRUE(line.match(log).hasMatch()) << log.toStdString();
    EXPECT_EQ(station.requests().size(), 1U);
    EXPECT_EQ(process.state(), QProcess::Running);
}

TEST_F(Program, AFirstStartDeletesAStaleSettingsFile)
{
    makeFile(settings, "[Bestandsmappen]\r\nSPCmap=/srv/spc\r\n");
    start(Station());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !QFile::exists(settings); }, 60'000));
    EXPECT_EQ(process.state(), QProcess::Running);
}

TEST_F(Program, TellsWhatKeepsItFromStarting)
{
    makeFile(database, "no database");
    expectTold("Error 3343: ");

    QFile::remove(settings);
    QDir().mkpath(settings);
    expectTold("Error 75: ");
}
