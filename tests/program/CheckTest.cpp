#include "platform/FolderLock.h"
#include "store/TaskStore.h"
#include "tests/support/Test.h"

#include <QDateTime>
#include <QProcess>
#include <QTemporaryDir>

#include <optional>

namespace {

constexpr auto now = "2026-03-02 07:30";

// The companion in a program folder of its own, in March 2026, whose 2nd is a Monday.
class Check : public testing::Test
{
protected:
    Check()
    {
        QDir().mkpath(folder + u"/database"_s);
        QFile::copy(QStringLiteral(CHECK), folder + u"/ostravelin-check"_s);
        QFile::copy(QStringLiteral(EMPTY_DATABASE), database);
        change(u"INSERT INTO Opdrachtgegevens VALUES "
               "('News', 'http://a.example/latest.mp2', 'news.mp2', 55, 1), "
               "('News - long', 'http://a.example/long.mp2', 'long.mp2', 50, 1), "
               "('Night', 'http://a.example/night.mp2', 'night.mp2', 30, 1), "
               "('Jingles', 'http://a.example/j.mp2', 'jingles.mp2', 1, 1), "
               "('Resting', 'http://a.example/r.mp2', 'resting.mp2', 2, 0)"_s);
        change(u"INSERT INTO Tijden VALUES ('News', 1, 5), ('News', 1, 6), ('News - long', 1, 6), "
               "('Night', 7, 2), ('Resting', 1, 1)"_s);
        putAllWell();
        running.emplace(folder);
    }

    QString at(const QString &path) const { return root.filePath(u"a b é/"_s + path); }

    void change(const QString &statement) const
    {
        store::OpenDatabase(folder);
        store::dbConnection.execute(statement);
        store::dbConnection.close();
    }

    void putSettings(bool spc, const QString &spcFolder = u"spc"_s) const
    {
        makeFile(settings, u"[Bestandsmappen]\r\nBestemmingsmap=%1\r\nSPCmap=%2\r\n[Opties]\r\n"
                           "SPC=%3\r\n"_s.arg(at(u"audio"_s), at(spcFolder))
                               .arg(spc ? 1 : 0)
                               .toUtf8());
    }

    /// A file of a local time.
    void putFile(const QString &path, const QString &time, qsizetype size = 1'920'999) const
    {
        makeFile(at(path), QByteArray(size, 'a'));
        QFile file(at(path));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(QDateTime::fromString(time, u"yyyy-MM-dd HH:mm:ss"_s),
                                     QFileDevice::FileModificationTime));
    }

    void putAllWell() const
    {
        putSettings(false);
        for (const QString &place : {u"audio/"_s, u"spc/"_s}) {
            putFile(place + u"news.mp2"_s, u"2026-03-02 06:55:05"_s);
            putFile(place + u"long.mp2"_s, u"2026-03-02 06:50:09"_s);
            putFile(place + u"night.mp2"_s, u"2026-03-01 02:30:07"_s);
        }
        putLog("02-03-26 06:55:05 - News - 1920.999 kB - 1.239,79 kB/s");
    }

    void putLog(const QByteArray &lines) const
    {
        makeFile(log, QByteArray(lines + '\n').replace('\n', "\r\n"));
    }

    /// Runs it as cron does, with hardly any environment, and expects a status and a part of the
    /// answer, which is returned.
    QString expect(const QStringList &arguments, int status, const QString &words) const
    {
        QProcess process;
        QProcessEnvironment environment;
        environment.insert(u"XDG_CONFIG_HOME"_s, at(u"config"_s));
        environment.insert(u"TZ"_s, qEnvironmentVariable("TZ"));
        process.setProcessEnvironment(environment);
        process.start(folder + u"/ostravelin-check"_s, arguments);
        EXPECT_TRUE(process.waitForFinished(60'000));
        EXPECT_EQ(process.readAllStandardError(), QByteArray());
        const QString answer = QString::fromUtf8(process.readAllStandardOutput());
        EXPECT_EQ(process.exitCode(), status) << answer.toStdString();
        EXPECT_TRUE(answer.contains(words)) << answer.toStdString();
        return answer;
    }

    /// The same at a moment, which further options may follow behind commas.
    QString expectAt(const char *moment, int status, const QString &words) const
    {
        const QStringList options = QString::fromLatin1(moment).split(u',');
        return expect(QStringList(u"--at"_s) + options, status, words);
    }

    QTemporaryDir root;
    std::optional<platform::FolderLock> running; ///< as the program that runs in a folder has one
    const QString folder = at(u"ostravelin"_s);
    const QString database = folder + u"/database/ostravelin.mdb"_s;
    const QString log = folder + u"/OstravelinLog.txt"_s;
    const QString settings = at(u"config/Ostravelin.ini"_s);
};

} // namespace

TEST_F(Check, TellsWhatIsWellInPlainWordsAndChangesNothing)
{
    const auto everything = [&] {
        return QList{filesIn(folder),
                     filesIn(folder + u"/database"_s),
                     filesIn(at(u"audio"_s)),
                     {QString::fromLatin1(fileBytes(database) + fileBytes(log))}};
    };
    const auto before = everything();
    EXPECT_EQ(expectAt(now, 0, {}), uR"(Ostravelin OK: 4 tasks, all well
Jingles: well. It has no hours, so it is never due.
News: well. Due today 06:55. news.mp2 came today 06:55, 1920 kB, 34 min ago. The log says today 06:55:05: 1920.999 kB - 1.239,79 kB/s.
News - long: well. Due today 06:50. long.mp2 came today 06:50, 1920 kB, 39 min ago. The log has no line of it since then.
Night: well. Due yesterday 02:30. night.mp2 came yesterday 02:30, 1920 kB, 28 h 59 min ago. The log has no line of it since then.
)"_s);
    EXPECT_TRUE(everything() == before);
    EXPECT_EQ(expectAt("2026-03-02 07:30:00,--quiet", 0, {}), QString());
    expect({u"--help"_s}, 0, u"exit status"_s);
}

TEST_F(Check, JudgesEachSituation)
{
    constexpr auto inTime = "2026-03-02 06:55:05";
    constexpr auto before = "2026-03-02 05:55:05";
    constexpr auto later = "2026-03-05 01:00:00";
    constexpr auto fetched = "02-03-26 06:55:05 - News - 1920 kB - 239.79 kB/s";
    constexpr auto refused = "02-03-26 06:55:21 - News - Can not connect";
    constexpr auto old = "01-03-26 01:00:00 - News - Disconnected";
    const QByteArray fullDisk = QByteArray(fetched) + "\n02-03-26 06:55:06 - File not found";
    const QByteArray years = QByteArray(3 << 20, 'x') + '\n' + refused;
    const std::tuple<const char *, const char *, const char *, const char *, int, const char *>
        situations[] = {
            // what it shows, when news.mp2 was written, the log, the moment and further options,
            // the status, part of the answer
            {"no success", before, refused, now, 1, "Ostravelin LATE: 4 tasks, 1 late (News)\n"},
            {"what is said", before, refused, now, 1,
             "News: LATE. Due today 06:55. news.mp2 is of today 05:55, 9000 kB, 1 h 34 min ago. "
             "The log says today 06:55:21: Can not connect.\n"},
            {"a full disk looks like a success", before, fullDisk, now, 1,
             "239.79 kB/s, then: File not found. So it was fetched, but did not get to its place"},
            {"no file", "", refused, now, 2, "Ostravelin MISSING: 4 tasks, 1 missing (News)\n"},
            {"an empty file", "empty", fetched, now, 2, ", EMPTY, "},
            {"due just now", before, old, "2026-03-02 07:05", 0,
             "News: well. Due today 05:55. news.mp2 came today 05:55, 9000 kB, 1 h 9 min ago. The "
             "log has no line of it since then. Its slot of today 06:55 is waited for until today "
             "07:10.\n"},
            {"less is allowed", before, old, "2026-03-02 07:05,--allow,9", 1, "News: LATE."},
            {"another's clock", "2026-03-02 06:54:10", fetched, now, 0, "News: well."},
            {"another download took its time", before,
             "02-03-26 06:58:00 - News - long - 20000 kB - 41.67 kB/s", now, 1,
             "since then. News - long, due today 06:50, was in hand until today 06:58:00:"},
            {"it had ended", before, "02-03-26 06:50:09 - News - long - 2 kB - 1.00 kB/s", now, 1,
             "The log has no line of it since then: the program was not running"},
            {"an unnamed error", before, "02-03-26 06:55:00 - Disk full", now, 1,
             "The log says at that time, without naming a task: Disk full."},
            {"a wrong time, and a success", later, fetched, now, 0, "News: well."},
            {"a wrong time", later, old, now, 1, "later than the moment of this check"},
            {"a log of later", before, refused, "2026-03-02 06:10:00", 0, "News: well."},
            {"a week", "2026-02-23 06:55:05", old, "2026-03-02 05:00", 0,
             "News: well. Due Monday 23-02-26 06:55."},
            {"a log of years", before, years, now, 1, "Can not connect"},
            {"no log", before, "", now, 1, "News: LATE."},
        };
    for (const auto &[what, file, lines, options, status, words] : situations) {
        SCOPED_TRACE(what);
        QFile::remove(at(u"audio/news.mp2"_s));
        if (*file != '\0')
            putFile(u"audio/news.mp2"_s, QString::fromLatin1(*file == 'e' ? inTime : file),
                    *file == 'e' ? 0 : 9'000'000);
        putLog("23-02-26 06:50:09 - News - long - 1 kB - 1.00 kB/s\n" + QByteArray(lines));
        if (*lines == '\0')
            QFile::remove(log);
        expectAt(options, status, QString::fromLatin1(words));
    }
}

TEST_F(Check, FollowsTheProgramsOwnRules)
{
    using Preparation = std::function<void()>;
    const std::tuple<const char *, Preparation, const char *, int, QString> rules[] = {
        // what it shows, what is prepared, the moment, the status, part of the answer
        {"summer time begins: 02:30 is run at 03:00",
         [&] { putFile(u"audio/night.mp2"_s, u"2026-03-22 02:30:07"_s); }, "2026-03-29 03:05", 1,
         u"Night: well. Due Sunday 22-03-26 02:30."_s},
        {"and is waited for no longer", [] {}, "2026-03-29 03:50", 1,
         u"Night: LATE. Due today 02:30."_s},
        {"the SPC copy",
         [&] {
             putSettings(true);
             putFile(u"spc/news.mp2"_s, u"2026-03-02 05:55:05"_s);
             putLog("02-03-26 06:55:05 - News - 9 kB - 9.00 kB/s\n"
                    "02-03-26 06:55:10 - News - SPC map niet gevonden");
         },
         now, 1,
         u"34 min ago. Its SPC copy in %1 is of today 05:55, 1920 kB, 1 h 34 min ago. The log "
         "says today 06:55:10: SPC map niet gevonden."_s.arg(at(u"spc/"_s))},
        {"none in the same folder", [&] { putSettings(true, u"audio"_s); }, now, 0, u"OK"_s},
        {"its folder is gone", [&] { putSettings(true, u"gone"_s); }, now, 2,
         u"3 missing (News, News - long, Night)"_s},
        {"the destination folder is gone", [&] { QFile::rename(at(u"audio"_s), at(u"away"_s)); },
         now, 2, u"The folder %1 is not there, or"_s.arg(at(u"audio/"_s))},
        {"its own name is deleted while it is fetched",
         [&] {
             QFile::rename(at(u"away"_s), at(u"audio"_s));
             QFile::remove(at(u"audio/long.mp2"_s));
             putLog("02-03-26 05:55:09 - News - 9 kB - 9.00 kB/s");
         },
         "2026-03-02 06:52", 0, u"There is no long.mp2 in "_s},
        {"the same slot",
         [&] {
             change(u"UPDATE Opdrachtgegevens SET Minuten = 55 WHERE Minuten = 50"_s);
             putFile(u"audio/long.mp2"_s, u"2026-02-23 06:55:05"_s);
         },
         now, 1, u"News has the same slot, and only one of them is fetched then."_s},
        {"a row that cannot be read",
         [&] { change(u"UPDATE Opdrachtgegevens SET Minuten = 'x' WHERE Minuten = 30"_s); }, now, 1,
         u"Night: LATE. It cannot be read (Type mismatch)"_s},
        {"a line break in a name",
         [&] {
             change(u"UPDATE Opdrachtgegevens SET Opdrachtnaam = 'Ne' || char(10) || 'w|s', "
                    "Filenaam = 'a' || char(10) || 'b' WHERE Opdrachtnaam = 'News'"_s);
             change(u"UPDATE Tijden SET Opdrachtnaam = 'Ne' || char(10) || 'w|s' "
                    "WHERE Opdrachtnaam = 'News'"_s);
             putLog("02-03-26 06:55:05 - Ne w|s - Some reason");
         },
         now, 2,
         u"Ne w/s: MISSING. The file name holds a line break or the like, so it is not fetched. "
         "Due today 06:55. There is no a b in %1. The log says today 06:55:05: Some reason.\n"_s
             .arg(at(u"audio/"_s))},
        {"nothing is active", [&] { change(u"UPDATE Opdrachtgegevens SET Aktief = 0"_s); }, now, 2,
         u"Ostravelin MISSING: no active task has hours, so nothing is fetched\n"_s},
    };
    for (const auto &[what, prepare, moment, status, words] : rules) {
        SCOPED_TRACE(what);
        putAllWell();
        prepare();
        expectAt(moment, status, words);
    }
}

TEST_F(Check, SaysWhatKeepsItFromChecking)
{
    for (const auto &[argument, words] : {std::pair(u"--folders"_s, u"Unknown option 'folders'"_s),
                                          {u"--at=noon"_s, u"not by noon"_s},
                                          {u"--allow=-1"_s, u"not by -1"_s},
                                          {u"now"_s, u"Not known: now"_s},
                                          {u"--folder=/no where"_s, u"no folder /no where"_s}})
        expect({argument}, 3, words);
    const QByteArray damage(4096, 'x');
    const std::tuple<const char *, std::function<void()>, QString> faults[] = {
        {"log", [&] { putLog("2026-03-02T06:55 INFO fetched"); },
         u"The log holds no line of this program: "_s + log},
        {"damage", [&] { makeFile(database, fileBytes(database).replace(0, 4096, damage)); },
         u"The file is not a database: "_s + database},
        {"no database", [&] { QFile::remove(database); },
         u"The database file was not found: "_s + database},
        {"no folder", [&] { makeFile(settings, "[Opties]\r\nSPC=0\r\n"); },
         u"The settings name no destination folder: "_s + settings},
        {"nothing", [&] { QFile::remove(settings); }, u"There are no settings: "_s + settings},
        {"a folder", [&] { QDir().mkpath(settings); },
         u"The settings file cannot be read: "_s + settings},
    };
    for (const auto &[what, prepare, words] : faults) {
        SCOPED_TRACE(what);
        prepare();
        expectAt(now, 3, u"Ostravelin NOT CHECKED: "_s + words);
    }
}

TEST_F(Check, LooksAtTheFoldersOfAnotherUserAndWhetherTheProgramRunsThere)
{
    const QString other = at(u"other"_s);
    QDir().mkpath(other);
    QFile::rename(folder + u"/database"_s, other + u"/database"_s);
    QFile::rename(at(u"config"_s), at(u"their config"_s));
    makeFile(other + u"/OstravelinLog.txt"_s, "02-03-26 03:00:10 - Overflow\r\n");
    const QStringList arguments{u"--at"_s, QString::fromLatin1(now), u"--folder"_s,
                                other,     u"--settings"_s,          at(u"their config"_s)};
    expect(arguments, 2,
           u"Ostravelin NOT RUNNING: 4 tasks, all well\nNo program runs from %1. The last line of "
           "the log, today 03:00:10: Overflow.\nJingles"_s.arg(other));
    running.emplace(other);
    expect(arguments, 0, {});
}
