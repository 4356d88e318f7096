#include "app/ErrorReport.h"
#include "app/Module1.h"
#include "platform/NativeHost.h"
#include "store/OpenRecordset.h"
#include "store/TaskStore.h"
#include "tests/support/FakeHost.h"
#include "tests/support/Station.h"
#include "ui/dialogs/frmOptions.h"
#include "ui/dialogs/frmSchedule.h"
#include "ui/main/MainForm.h"
#include "ui/main/SpcHeader.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QLineEdit>
#include <QNetworkProxyFactory>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QStorageInfo>

#include <csignal>
#include <random>
#include <thread>
#include <unistd.h>

// Kills the program at random moments of its work and looks at what is left.
// usage: trust_crash [KILLS-PER-OPERATION [SEED]]
//        trust_crash --victim OPERATION FOLDER FIRST COUNT   (what is killed: the real windows)

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using std::chrono::microseconds;
using testing_support::fileBytes;
using testing_support::makeFile;

// ---- the endless series of saves: a task is added, edited, renamed, and then the next one

static constexpr int keptTasks = 20;    // at the minutes below, never deleted
static constexpr int savesInRound = 99; // how many a round may make at most
static constexpr int contents = 60;     // of a station's file

static QString nameAfter(int save)
{
    return (save % 3 < 2 ? u"Task %1"_s : u"Renamed %1"_s).arg(save / 3);
}

static QString nameBefore(int save)
{
    return save % 3 == 0 ? QString() : nameAfter(save - 1);
}

static int minuteOf(int save)
{
    const int task = save / 3;
    return task < keptTasks ? task : keptTasks + task % 40;
}

static QString pathOf(int save)
{
    return u"/%1/latest.mp2"_s.arg(save);
}

static bool isTicked(int save, int box)
{
    return box % 24 == save % 24 || box == save % 168;
}

// The number of a file shows in its size and in every byte.
static QByteArray content(int number)
{
    return QByteArray(1'000'000 + 10'007 * number, static_cast<char>('A' + number));
}

// ---- the victim

namespace {

// The real services, but for a clock that jumps from slot to slot and pauses that take no time.
class VictimHost : public platform::NativeHost
{
public:
    explicit VictimHost(const QString &folder)
        : m_folder(folder)
    {
        platform::installHost(*this);
    }
    std::chrono::local_seconds clock{};

    std::chrono::local_seconds now() const override { return clock; }
    void sleep(std::chrono::milliseconds /*duration*/) override {}
    QString programFolder() const override { return m_folder + u"/program"_s; }
    QString settingsDirectory() const override { return m_folder + u"/settings"_s; }
    void showMessage(const QString &, const QString &, platform::MessageIcon) override {}

private:
    QString m_folder;
};

} // namespace

static void tellLine()
{
    if (write(STDOUT_FILENO, "\n", 1) != 1)
        std::_Exit(EXIT_FAILURE);
}

static void saveTask(int save)
{
    store::sOpdrachtnaam = nameBefore(save);
    store::bNieuweOpdracht = platform::toBoolean(store::sOpdrachtnaam.isEmpty());
    ui::frmSchedule editor;
    editor.findChild<QLineEdit *>(u"txtOpdrachtnaam"_s)->setText(nameAfter(save));
    editor.findChild<QLineEdit *>(u"txtDownload_adres"_s)
        ->setText(testing_support::Station::url(pathOf(save)));
    editor.findChild<QLineEdit *>(u"txtFilenaam"_s)->setText(u"news.spc"_s);
    editor.findChild<QCheckBox *>(u"CheckAktief"_s)->setChecked(true);
    auto *minutes = editor.findChild<QComboBox *>(u"ComboMinuten"_s);
    minutes->setCurrentIndex(minutes->findText(QString::number(minuteOf(save))));
    for (int box = 0; box < 168; ++box)
        editor.findChild<QCheckBox *>(u"Check1_%1"_s.arg(box))->setChecked(isTicked(save, box));
    editor.findChild<QPushButton *>(u"Opslaan"_s)->click();
    if (editor.result() != QDialog::Accepted)
        std::_Exit(EXIT_FAILURE);
}

static void saveOptions()
{
    ui::frmOptions options;
    auto *spc = options.findChild<QCheckBox *>(u"Check1"_s);
    spc->setChecked(!spc->isChecked());
    options.findChild<QPushButton *>(u"cmdApply"_s)->click();
}

// Goes on to the next slot as soon as the window is at rest.
static void fetch(VictimHost &host, int count)
{
    ui::MainForm form;
    auto *countdown = form.findChild<QTimer *>(u"Timer1"_s);
    auto *batchWatch = form.findChild<QTimer *>(u"Timer2"_s);
    countdown->setInterval(1h);
    batchWatch->setInterval(1ms);
    QTimer driver;
    int started = 0;
    QObject::connect(&driver, &QTimer::timeout, &form, [&] {
        if (form.DownloadEntry.DownloadFlag == platform::Boolean::False || batchWatch->isActive())
            return;
        if (started > 0)
            tellLine();
        if (started++ == count)
            return QCoreApplication::quit();
        host.clock = form.DownloadEntry.DownloadTime;
        QMetaObject::invokeMethod(countdown, "timeout");
    });
    driver.start();
    QApplication::exec();
}

// Tells by a line that it is ready, and by one each that an operation is finished.
static int runVictim(const QString &operation, const QString &folder, int first, int count)
{
    VictimHost host(folder);
    host.clock = testing_support::moment(2026, 3, 2) + std::chrono::hours(first % 168);
    QNetworkProxyFactory::setUseSystemConfiguration(true);
    app::LoadSettings();
    app::handleEvent([&] {
        store::OpenDatabase(host.programFolder());
        tellLine();
        if (operation == u"fetch")
            return fetch(host, count);
        for (int number = first; number < first + count; ++number) {
            operation == u"save" ? saveTask(number) : saveOptions();
            tellLine();
        }
    });
    return EXIT_SUCCESS;
}

// ---- the trial

namespace {

struct Operation
{
    const char *name;
    const char *victim;
    bool isSpc = false;
    bool crossesFileSystems = false; ///< from the temporary folder to the destination
};

const Operation operations[] = {
    {"saving a task", "save"},
    {"a download", "fetch"},
    {"a download across file systems", "fetch", false, true},
    {"an SPC file", "fetch", true},
};

/// The rows of each task: its own first, then those of its slots.
using Tasks = QMap<QString, QStringList>;

void apply(Tasks &tasks, int save)
{
    tasks.remove(nameBefore(save));
    QStringList &rows = tasks[nameAfter(save)];
    rows = {u"%1|news.spc|%2|True"_s.arg(testing_support::Station::url(pathOf(save)))
                .arg(minuteOf(save))};
    for (int box = 0; box < 168; ++box)
        if (isTicked(save, box))
            rows << u"%1|%2"_s.arg(box / 24 + 1).arg(box % 24);
}

/// The folders of one operation, and the victims that work in them.
class Trial
{
public:
    Trial(const Operation &tried, testing_support::Station &sampleStation, unsigned seed)
        : operation(tried)
        , station(sampleStation)
        , temporary(tried.crossesFileSystems ? u"/dev/shm/trust-XXXXXX"_s
                                             : QDir::tempPath() + u"/trust-XXXXXX"_s)
        , random(seed)
    {
        for (const auto &name : {u"program/database"_s, u"audio"_s, u"spc"_s})
            QDir().mkpath(folder.filePath(name));
        QFile::copy(QStringLiteral(EMPTY_DATABASE), database);
        makeFile(folder.filePath(u"settings/Ostravelin.ini"_s),
                 u"[Bestandsmappen]\nBestemmingsmap=%1\nSPCmap=%2\n[Opties]\nSPC=%3\npreXP=0\n"_s
                     .arg(folder.filePath(u"audio"_s), folder.filePath(u"spc"_s))
                     .arg(operation.isSpc)
                     .toUtf8());
        const bool areApart = QStorageInfo(temporary.path()) != QStorageInfo(folder.path());
        check(areApart == operation.crossesFileSystems, u"the file systems are others"_s);
    }

    void run(int kills)
    {
        runVictim("save", 0, 3 * keptTasks);
        const auto longest = runVictim(operation.victim, 3 * keptTasks, 12).took / 12 * 2;
        fetchOneMore();
        std::uniform_int_distribution<qint64> moments(1, longest.count());
        for (int round = 1; round <= kills; ++round)
            killAndRestart(round, microseconds(moments(random)));
        std::printf("%s: %d kills within %lld us, all whole. Left behind:\n", operation.name, kills,
                    static_cast<long long>(longest.count()));
        for (auto it = seen.cbegin(); it != seen.cend(); ++it)
            std::printf("%6d times %s\n", it.value(), qUtf8Printable(it.key()));
        checkThatLeftoversGo();
        if (operation.isSpc)
            checkLateWriter();
    }

private:
    struct Run
    {
        int finished = -1; ///< operations
        microseconds took{};
    };

    void check(bool holds, const QString &what)
    {
        if (holds)
            return;
        folder.setAutoRemove(false);
        std::printf("FAILED at %s: %s\nThe folder stays: %s\n", operation.name,
                    qUtf8Printable(what), qUtf8Printable(folder.path()));
        std::exit(EXIT_FAILURE);
    }

    // Without `killAfter` it is to come to its own end. The station serves it meanwhile.
    Run runVictim(const char *what, int first, int count, microseconds killAfter = {})
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
        environment.insert(u"TMPDIR"_s, temporary.path());
        environment.insert(u"http_proxy"_s, u"http://127.0.0.1:%1"_s.arg(station.port()));

        QProcess victim;
        QEventLoop untilItEnds;
        QElapsedTimer sinceReady;
        std::thread killer;
        Run result;
        const auto read = [&] {
            result.finished += static_cast<int>(victim.readAllStandardOutput().size());
            if (result.finished < 0 || sinceReady.isValid())
                return;
            sinceReady.start();
            if (killAfter.count() > 0)
                killer = std::thread([killAfter, pid = static_cast<pid_t>(victim.processId())] {
                    std::this_thread::sleep_for(killAfter);
                    kill(pid, SIGKILL);
                });
        };
        QObject::connect(&victim, &QProcess::readyReadStandardOutput, &victim, read);
        QObject::connect(&victim, &QProcess::finished, &untilItEnds, &QEventLoop::quit);
        QTimer::singleShot(60s, &untilItEnds, &QEventLoop::quit); // a hung one
        victim.setProcessEnvironment(environment);
        victim.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        victim.start(QCoreApplication::applicationFilePath(),
                     {u"--victim"_s, QString::fromLatin1(what), folder.path(),
                      QString::number(first), QString::number(count)});
        untilItEnds.exec();
        if (killer.joinable())
            killer.join();
        check(victim.state() == QProcess::NotRunning, u"the program hangs"_s);
        read();
        result.took = microseconds(sinceReady.isValid() ? sinceReady.nsecsElapsed() / 1000 : 0);
        if (killAfter.count() > 0)
            check(victim.exitStatus() == QProcess::CrashExit && victim.exitCode() == SIGKILL,
                  u"the program ended before it was killed"_s);
        else
            check(victim.exitStatus() == QProcess::NormalExit && victim.exitCode() == 0 &&
                      result.finished == count,
                  u"the program did not do its work"_s);
        return result;
    }

    // Integrity is asked of the engine, page by page.
    Tasks readTasks()
    {
        Tasks tasks;
        store::OpenDatabase(folder.filePath(u"program"_s));
        store::Recordset records(store::dbConnection);
        for (const auto &source :
             {u"PRAGMA integrity_check"_s, u"Opdrachtgegevens"_s, u"Tijden"_s}) {
            for (const store::OpenRecordset rows(records, source); !rows->atEnd();
                 rows->moveNext()) {
                const QString name = rows->value(0).toText();
                QStringList fields;
                for (int field = 1; field < rows->fieldNames().size(); ++field)
                    fields << rows->value(field).toText();
                if (fields.isEmpty())
                    check(name == u"ok", u"the database is damaged: "_s + name);
                else if (fields.size() > 2 || tasks.contains(name)) // a rename leaves slots behind
                    tasks[name] << fields.join(u'|');
            }
        }
        store::dbConnection.close();
        return tasks;
    }

    void deleteTasksOfLastRound()
    {
        store::OpenDatabase(folder.filePath(u"program"_s));
        store::dbConnection.execute(
            u"DELETE FROM Opdrachtgegevens WHERE Minuten >= %1"_s.arg(keptTasks));
        store::dbConnection.close();
    }

    // The number of the whole content that stands there, or -1 for no file.
    int numberIn(const QString &name)
    {
        const QString path = folder.filePath(name);
        const QByteArray bytes = fileBytes(path);
        const bool hasHeader = operation.isSpc && name.endsWith(u".spc");
        for (int number = 0; number < contents; ++number) {
            const QByteArray audio = content(number);
            const QString header =
                ui::spcHeaderText(u"news.spc"_s, ui::secondsText(audio.size(), u'.'));
            if (bytes == (hasHeader
                              ? header.toLatin1().leftJustified(ui::spcHeaderSize, '\0') + audio
                              : audio))
                return number;
        }
        check(!QFile::exists(path),
              u"%1 has no whole file but %2 bytes"_s.arg(path).arg(bytes.size()));
        return -1;
    }

    void checkFiles(const QList<int> &allowed)
    {
        check((QList{-1} + allowed).contains(numberIn(u"audio/latest.mp2"_s)),
              u"an old file came back under the address's name"_s);
        check(allowed.contains(numberIn(u"audio/news.spc"_s)) &&
                  (!operation.isSpc || allowed.contains(numberIn(u"spc/news.spc"_s))),
              u"neither the file before nor the one after is there"_s);
    }

    QList<int> fetchedSince(size_t request) const
    {
        QList<int> numbers;
        for (; request < station.requests().size(); ++request)
            numbers << station.requests()[request].path().split('/')[1].toInt() % contents;
        return numbers;
    }

    void fetchOneMore()
    {
        const size_t requests = station.requests().size();
        runVictim("fetch", static_cast<int>(random() % 168), 1);
        lastFetched = fetchedSince(requests).value(0, -2);
        checkFiles({lastFetched});
    }

    // All files but those that are meant to stay.
    QStringList standing() const
    {
        QStringList paths;
        for (const auto &name :
             {folder.filePath(u"program/database"_s), folder.filePath(u"audio"_s),
              folder.filePath(u"spc"_s), temporary.path()})
            for (const QFileInfo &file : QDir(name).entryInfoList(QDir::Files | QDir::Hidden))
                if (file.fileName() != u"ostravelin.mdb" && file.fileName() != u"news.spc")
                    paths << file.filePath();
        return paths;
    }

    void noteWhatIsNew(const QStringList &before)
    {
        static const QRegularExpression changing(
            u"DL-[0-9a-f]+|ostravelin-[0-9]+|-[a-zA-Z]{6}(?=/)"_s);
        int news = 0;
        for (const QString &path : standing())
            if (!before.contains(path) && ++news > 0)
                ++seen[path.section(u'/', -2).replace(changing, u"*"_s)];
        seen[u"nothing"_s] += news == 0;
    }

    // The victim has finished some operations and was in the middle of the next, so that what is
    // left is the state before that one or the state after it.
    void killAndRestart(int round, microseconds killAfter)
    {
        deleteTasksOfLastRound();
        Tasks tasks = readTasks();
        Tasks after = tasks;
        const bool saves = qstrcmp(operation.victim, "save") == 0;
        const int first = 3 * keptTasks + round * savesInRound;
        const QStringList stoodBefore = standing();
        const size_t requests = station.requests().size();
        const int finished =
            runVictim(operation.victim, first, savesInRound - 3, killAfter).finished;
        noteWhatIsNew(stoodBefore);
        if (!saves) {
            checkFiles((QList{lastFetched} + fetchedSince(requests)).mid(finished, 2));
        } else {
            // The next save comes before the look: it is the program that has to mend the database.
            const int another = first + savesInRound - 3;
            runVictim("save", another, 1);
            for (int save = first; save < first + finished; ++save)
                apply(tasks, save);
            after = tasks;
            apply(after, first + finished);
            apply(tasks, another);
            apply(after, another);
        }
        const Tasks found = readTasks();
        check(found == tasks || found == after, u"the tasks are neither those before nor after"_s);
        fetchOneMore();
    }

    // What a killed program could not clear away goes once it is old enough to be nobody's.
    void checkThatLeftoversGo()
    {
        const QStringList left = standing();
        for (const QString &path : left) {
            QFile file(path);
            check(file.open(QIODevice::ReadWrite) &&
                      file.setFileTime(QDateTime::currentDateTime().addDays(-2),
                                       QFileDevice::FileModificationTime),
                  path);
        }
        fetchOneMore();
        std::printf("%6lld files still there at the end; %lld once they were two days old\n",
                    static_cast<long long>(left.size()), static_cast<long long>(standing().size()));
        check(standing().isEmpty(), u"leftovers stay for ever: "_s + standing().join(u' '));
    }

    // The concatenation of a killed program may write on while the next one is made.
    void checkLateWriter()
    {
        QFile late(folder.filePath(u"audio/.ostravelin-batch.part"_s));
        check(late.open(QIODevice::WriteOnly), late.fileName());
        fetchOneMore();
        late.write("late");
        late.close();
        checkFiles({lastFetched});
    }

    const Operation &operation;
    testing_support::Station &station;
    QTemporaryDir folder;
    QTemporaryDir temporary;
    const QString database = folder.filePath(u"program/database/ostravelin.mdb"_s);
    std::mt19937 random;
    int lastFetched = -1;
    QMap<QString, int> seen; ///< what the kills left, and how many of them
};

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "*.warning=false"); // of what a display would be for
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    const QApplication application(argc, argv);
    const QStringList given = QCoreApplication::arguments();
    if (given.size() == 6)
        return runVictim(given[2], given[3], given[4].toInt(), given[5].toInt());

    const int kills = given.value(1, u"80"_s).toInt();
    unsigned seed = given.size() > 2 ? given[2].toUInt() : std::random_device()();
    std::printf("%d kills for each operation, seed %u\n", kills, seed);
    testing_support::Station station;
    for (int save = 0; save <= 3 * keptTasks + (kills + 1) * savesInRound; ++save)
        station.answer(pathOf(save), {.body = content(save % contents)});
    for (const Operation &operation : operations)
        Trial(operation, station, seed++).run(kills);
    return EXIT_SUCCESS;
}
