#include "app/ErrorReport.h"
#include "app/Module1.h"
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
#include <QEventLoop>
#include <QFileSystemWatcher>
#include <QLineEdit>
#include <QNetworkProxyFactory>
#include <QProcess>
#include <QPushButton>
#include <QStorageInfo>

#include <csignal>
#include <random>
#include <unistd.h>

// Kills the program at random moments of its work and looks at what is left.
// usage: trust_crash [KILLS-PER-OPERATION [SEED]]
//        trust_crash --victim OPERATION FOLDER FIRST COUNT    (what is killed: the real windows)

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using testing_support::fileBytes;
using testing_support::makeFile;
using testing_support::Station;

static constexpr int keptTasks = 20; // at the minutes below, never deleted
static constexpr int contents = 60;  // of the station's files

// The series of saves: a task is added, edited, renamed, then comes the next one. What a task holds
// follows from the number of its save, so that a mixture shows.
static QString nameAfter(int save)
{
    return (save % 3 < 2 ? u"Task %1"_s : u"Renamed %1"_s).arg(save / 3);
}

static int minuteOf(int save)
{
    return save / 3 < keptTasks ? save / 3 : keptTasks + save / 3 % 40;
}

static QString pathOf(int save)
{
    return u"/%1/latest.mp2"_s.arg(save);
}

static bool isTicked(int save, int box)
{
    return box % 24 == save % 24 || box == save % 168;
}

static QString rowOf(int save)
{
    QString row = u"%1|%2|news.spc|%3|1"_s.arg(nameAfter(save), Station::url(pathOf(save)))
                      .arg(minuteOf(save));
    for (int box = 0; box < 168; ++box)
        row += isTicked(save, box) ? u",%1"_s.arg(box) : QString();
    return row;
}

// The number of a file shows in its size and in every byte.
static QByteArray content(int number)
{
    return QByteArray(1'000'000 + 10'007 * number, static_cast<char>('A' + number));
}

static QByteArray header(int number)
{
    const QString seconds = ui::secondsText(content(number).size(), u'.');
    return ui::spcHeaderText(u"news.spc"_s, seconds).toLatin1().leftJustified(256, '\0');
}

namespace {

// The real services, but for a clock that jumps from slot to slot and pauses that take no time.
class VictimHost : public testing_support::FakeHost
{
public:
    QString folder;
    QString programFolder() const override { return folder + u"/program"_s; }
    QString settingsDirectory() const override { return folder + u"/settings"_s; }
    void endProgram(int status) override { std::_Exit(status); }
};

} // namespace

static void tell()
{
    if (write(STDOUT_FILENO, ".", 1) != 1)
        std::_Exit(EXIT_FAILURE);
}

static void saveTask(int save)
{
    store::bNieuweOpdracht = platform::toBoolean(save % 3 == 0);
    store::sOpdrachtnaam = save % 3 == 0 ? QString() : nameAfter(save - 1);
    ui::frmSchedule editor;
    editor.findChild<QLineEdit *>(u"txtOpdrachtnaam"_s)->setText(nameAfter(save));
    editor.findChild<QLineEdit *>(u"txtDownload_adres"_s)->setText(Station::url(pathOf(save)));
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
    options.findChild<QCheckBox *>(u"Check1"_s)->toggle();
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
            tell();
        if (started++ == count)
            return QCoreApplication::quit();
        host.clock = form.DownloadEntry.DownloadTime;
        QMetaObject::invokeMethod(countdown, "timeout");
    });
    driver.start();
    QApplication::exec();
}

// Tells that it is ready, then each finished operation.
static int runVictim(const QString &operation, const QString &folder, int first, int count)
{
    VictimHost host;
    host.folder = folder;
    host.clock = testing_support::moment(2026, 3, 2) + std::chrono::hours(first % 168);
    QNetworkProxyFactory::setUseSystemConfiguration(true);
    app::LoadSettings();
    app::handleEvent([&] {
        store::OpenDatabase(host.programFolder());
        tell();
        if (operation == u"fetch")
            return fetch(host, count);
        for (int number = first; number < first + count; ++number, tell())
            operation == u"save" ? saveTask(number) : saveOptions();
    });
    return EXIT_SUCCESS;
}

namespace {

/// One operation in folders of its own.
struct Trial
{
    const char *name;
    QString victim;
    bool isSpc;
    QString temporaryPlace; ///< a folder that is on another file system makes a move a copy
    std::mt19937 random;
    Station &station;

    QTemporaryDir folder{};
    QTemporaryDir temporary{temporaryPlace + u"/crash-XXXXXX"_s};
    QStringList folders{folder.filePath(u"audio"_s), folder.filePath(u"spc"_s),
                        folder.filePath(u"program/database"_s), temporary.path()};
    int lastFetched = -1;
    QMap<QString, int> left{}; ///< by how many kills

    void run(int kills)
    {
        for (const QString &path : folders)
            QDir().mkpath(path);
        QFile::copy(QStringLiteral(EMPTY_DATABASE), folders[2] + u"/ostravelin.mdb"_s);
        makeFile(folder.filePath(u"settings/Ostravelin.ini"_s),
                 u"[Bestandsmappen]\nBestemmingsmap=%1\nSPCmap=%2\n[Opties]\nSPC=%3\npreXP=0\n"_s
                     .arg(folders[0], folders[1], isSpc ? u"1"_s : u"0"_s)
                     .toUtf8());
        runVictim(u"save"_s, 0, 3 * keptTasks);
        fetchOneMore();
        for (int round = 1; round <= kills; ++round)
            killAndRestart(3 * keptTasks + 99 * round);
        const bool isApart = QStorageInfo(temporary.path()) != QStorageInfo(folder.path());
        std::printf("%s, %s file system: %d kills, all whole. They left:\n", name,
                    isApart ? "from another" : "on one", kills);
        for (auto it = left.cbegin(); it != left.cend(); ++it)
            std::printf("%6d times %s\n", it.value(), qUtf8Printable(it.key()));
        checkThatLeftoversGo();
        checkLateWriter();
    }

    void check(bool holds, const char *what)
    {
        if (holds)
            return;
        folder.setAutoRemove(false);
        std::printf("FAILED at %s: %s. See %s\n", name, what, qUtf8Printable(folder.path()));
        std::exit(EXIT_FAILURE);
    }

    // Returns how many operations were told to be finished. A victim that is to be killed goes on
    // until it is: so many milliseconds after so many files came or went.
    int runVictim(const QString &what, int first, int count, bool isToBeKilled = false)
    {
        int changes = static_cast<int>(random() % 13);
        const int delay = static_cast<int>(random() % 6);
        int finished = -1;
        QProcess process;
        QFileSystemWatcher watcher(folders);
        QEventLoop untilItEnds;
        const auto watch = [&] {
            finished += static_cast<int>(process.readAll().size());
            if (isToBeKilled && finished >= 0 && changes-- == 0)
                QTimer::singleShot(delay, Qt::PreciseTimer, &process, &QProcess::kill);
        };
        QObject::connect(&process, &QProcess::readyRead, &process, watch);
        QObject::connect(&watcher, &QFileSystemWatcher::directoryChanged, &process, watch);
        QObject::connect(&process, &QProcess::finished, &untilItEnds, &QEventLoop::quit);
        QTimer::singleShot(60s, &process, [&] { check(false, "the program hangs"); });
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"TMPDIR"_s, temporary.path());
        process.setProcessEnvironment(environment);
        process.start(
            QCoreApplication::applicationFilePath(),
            {u"--victim"_s, what, folder.path(), QString::number(first), QString::number(count)});
        untilItEnds.exec();
        finished += static_cast<int>(process.readAll().size());
        const bool wasKilled = process.exitStatus() == QProcess::CrashExit;
        check(wasKilled == isToBeKilled && process.exitCode() == (wasKilled ? SIGKILL : 0) &&
                  (wasKilled || finished == count),
              "the program ended too soon");
        return finished;
    }

    // The state before the operation in whose middle the victim was, or the state after it.
    void killAndRestart(int first)
    {
        readDatabase(u"DELETE FROM Opdrachtgegevens WHERE Minuten >= %1"_s.arg(keptTasks));
        const QStringList stoodBefore = standing();
        const size_t requests = station.requests().size();
        const int finished = runVictim(victim, first, 96, true);
        QStringList kinds;
        for (const QString &path : standing())
            if (!stoodBefore.contains(path))
                kinds << u"."_s + QFileInfo(path).suffix() + u" in "_s +
                             path.section(u'/', -2, -2).section(u'-', 0, 0);
        kinds.sort();
        ++left[kinds.isEmpty() ? u"nothing"_s : kinds.join(u", "_s)];

        QStringList rows;
        for (int task = 0; task < keptTasks; ++task)
            rows << rowOf(3 * task + 2);
        QStringList rowsAfter = rows;
        if (victim == u"save") {
            // The next save comes before the look: the program itself has to mend the database.
            runVictim(victim, first + 96, 1);
            for (int save = first; save <= first + finished; ++save) {
                QStringList &changed = rowsAfter;
                if (save == first + finished)
                    rows = rowsAfter;
                if (save % 3 > 0)
                    changed.removeLast();
                changed << rowOf(save);
            }
            rows << rowOf(first + 96);
            rowsAfter << rowOf(first + 96);
        } else {
            checkFiles((QList{lastFetched} + fetchedSince(requests)).mid(finished, 2));
        }
        check(readDatabase(u"PRAGMA integrity_check"_s) == QStringList{u"ok"_s}, "the database");
        const QStringList found = readDatabase(
            u"SELECT Opdrachtnaam || '|' || Download_adres || '|' || Filenaam || '|' || Minuten || "
            "'|' || Aktief || ',' || (SELECT group_concat(Dagen * 24 + Uren - 24) FROM Tijden "
            "WHERE "
            "Tijden.Opdrachtnaam = Opdrachtgegevens.Opdrachtnaam) FROM Opdrachtgegevens"_s);
        check(found == rows || found == rowsAfter, "the tasks are neither those before nor after");
        fetchOneMore();
    }

    // The statement's first column.
    QStringList readDatabase(const QString &statement)
    {
        QStringList texts;
        store::OpenDatabase(folder.filePath(u"program"_s));
        store::Recordset rows(store::dbConnection);
        for (rows.setSource(statement), rows.open(); !rows.atEnd(); rows.moveNext())
            texts << rows.value(0).toText();
        rows.close();
        store::dbConnection.close();
        return texts;
    }

    // The number of the whole content that stands there, or -1 for no file.
    int numberIn(const QString &path, bool hasHeader)
    {
        const QByteArray bytes = fileBytes(path);
        for (int number = 0; number < contents; ++number)
            if (bytes == (hasHeader ? header(number) : QByteArray()) + content(number))
                return number;
        check(!QFile::exists(path), "a file is not whole");
        return -1;
    }

    void checkFiles(const QList<int> &allowed)
    {
        check((QList{-1} + allowed).contains(numberIn(folders[0] + u"/latest.mp2"_s, false)),
              "an old file came back under the address's name");
        for (const QString &path : folders.first(isSpc ? 2 : 1))
            check(allowed.contains(numberIn(path + u"/news.spc"_s, isSpc)),
                  "neither the file before nor the one after is there");
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
        runVictim(u"fetch"_s, static_cast<int>(random() % 168), 1);
        lastFetched = fetchedSince(requests).value(0, -2);
        checkFiles({lastFetched});
    }

    // All files but those that are meant to stay.
    QStringList standing() const
    {
        QStringList paths;
        for (const QString &path : folders)
            for (const QFileInfo &file : QDir(path).entryInfoList(QDir::Files | QDir::Hidden))
                if (file.fileName() != u"ostravelin.mdb" && file.fileName() != u"news.spc")
                    paths << file.filePath();
        return paths;
    }

    // What a killed program could not clear away goes once it is old enough to be nobody's.
    void checkThatLeftoversGo()
    {
        const auto old = QDateTime::currentDateTime().addDays(-2);
        const qsizetype before = standing().size();
        for (const QString &path : standing()) {
            QFile file(path);
            check(file.open(QIODevice::ReadWrite) &&
                      file.setFileTime(old, QFileDevice::FileModificationTime),
                  "a file cannot be made older");
        }
        fetchOneMore();
        std::printf("%6d files were there at the end, %d once they were old\n",
                    static_cast<int>(before), static_cast<int>(standing().size()));
        check(standing().isEmpty(), "leftovers stay for ever");
    }

    // The concatenation of a killed program may write on while the next one is made.
    void checkLateWriter()
    {
        QFile late(folders[0] + u"/.ostravelin-batch.part"_s);
        check(late.open(QIODevice::WriteOnly), "no late writer");
        fetchOneMore();
        late.write("late");
        late.close();
        checkFiles({lastFetched});
    }
};

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "*.warning=false"); // of what a display would be for
    qputenv("LC_ALL", "C.UTF-8");
    const QApplication application(argc, argv);
    const QStringList given = QCoreApplication::arguments();
    if (given.size() == 6)
        return runVictim(given[2], given[3], given[4].toInt(), given[5].toInt());

    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    const int kills = given.value(1, u"80"_s).toInt();
    const unsigned seed = given.size() > 2 ? given[2].toUInt() : std::random_device()();
    std::printf("%d kills for each operation, seed %u\n", kills, seed);
    Station station;
    qputenv("http_proxy", "http://127.0.0.1:" + QByteArray::number(station.port()));
    for (int save = 0; save < 3 * keptTasks + 99 * (kills + 1); ++save)
        station.answer(pathOf(save), {.body = content(save % contents)});
    const QString disk = QDir::tempPath();
    Trial{"saving a task", u"save"_s, false, disk, std::mt19937(seed), station}.run(kills);
    Trial{"a download", u"fetch"_s, false, disk, std::mt19937(seed + 1), station}.run(kills);
    Trial{"a download", u"fetch"_s, false, u"/dev/shm"_s, std::mt19937(seed + 2), station}.run(
        kills);
    Trial{"an SPC file", u"fetch"_s, true, disk, std::mt19937(seed + 3), station}.run(kills);
    return EXIT_SUCCESS;
}
