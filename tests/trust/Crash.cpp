#include "app/ErrorReport.h"
#include "tests/ui/dialogs/Editor.h"
#include "ui/dialogs/frmOptions.h"
#include "ui/main/SpcHeader.h"

#include <QEventLoop>
#include <QFileSystemWatcher>
#include <QNetworkProxyFactory>
#include <QProcess>

#include <csignal>
#include <filesystem>
#include <random>

// Kills the program at random moments of its work and looks at what is left.
// usage: trust_crash [KILLS-PER-OPERATION [SEED]]
//        trust_crash --victim OPERATION FOLDER FIRST COUNT    (what is killed: the real windows)
// where the operation is save, options, fetch or, to show what is saved, tasks

namespace {

constexpr int keptTasks = 20; // made by the first saves
constexpr int mostSaves = 180;

// The series of saves: a task is added, edited, renamed, then comes the next one. What a task holds
// follows from the number of its save, so that a mixture shows.
QString nameAfter(int save)
{
    return (save % 3 < 2 ? u"Task %1"_s : u"Renamed %1"_s).arg(save / 3);
}

QString addressAfter(int save)
{
    return Station::url(u"/%1/latest.mp2"_s.arg(save));
}

// What readTasks() is to give: seven slots, all at one hour.
QString rowAfter(int save)
{
    return u"%1|%2|%3|7|7|%4|%4"_s.arg(nameAfter(save), addressAfter(save))
        .arg(save / 3)
        .arg(save % 24);
}

QStringList rowsAfter(int save)
{
    QStringList rows;
    for (int first = 0; first <= save; first += 3)
        rows << rowAfter(std::min(first + 2, save));
    return rows;
}

// The file of a task's address: the number shows in its size and in every byte.
QByteArray file(int number, bool isSpc = false)
{
    const QByteArray audio(1'000'000 + 10'007 * number, static_cast<char>(number));
    const QString header = ui::spcHeaderText(u"news.spc"_s, ui::secondsText(audio.size(), u'.'));
    return (isSpc ? header.toLatin1().leftJustified(256, '\0') : QByteArray()) + audio;
}

// The real services, but for a clock that jumps from slot to slot and pauses that take no time.
class VictimHost : public FakeHost
{
public:
    QString folder;
    QString programFolder() const override { return folder + u"/program"_s; }
    QString settingsDirectory() const override { return folder + u"/settings"_s; }
    void endProgram(int status) override { std::_Exit(status); }
};

void tell()
{
    std::fputc('.', stdout);
    std::fflush(stdout);
}

void saveTask(int save)
{
    Hours hours;
    for (int day = 0; day < 7; ++day)
        hours << 24 * day + save % 24;
    store::bNieuweOpdracht = save % 3 == 0 ? Boolean::True : Boolean::False;
    store::sOpdrachtnaam = save % 3 == 0 ? QString() : nameAfter(save - 1);
    const Editor editor;
    editor.fill(
        {nameAfter(save), addressAfter(save), u"news.spc"_s, QString::number(save / 3), u"True"_s},
        hours);
    editor.save();
    if (editor.result() != QDialog::Accepted)
        std::_Exit(EXIT_FAILURE);
}

void saveOptions()
{
    ui::frmOptions options;
    options.findChild<QCheckBox *>(u"Check1"_s)->setChecked(app::sSPC.text() == u"0");
    options.findChild<QPushButton *>(u"cmdApply"_s)->click();
}

// Goes on to the next slot as soon as the window is at rest.
void fetch(VictimHost &host, int count)
{
    ui::MainForm form;
    auto *countdown = form.findChild<QTimer *>(u"Timer1"_s);
    auto *batchWatch = form.findChild<QTimer *>(u"Timer2"_s);
    countdown->setInterval(1h);
    batchWatch->setInterval(1ms);
    QTimer driver;
    int started = 0;
    QObject::connect(&driver, &QTimer::timeout, &form, [&] {
        if (form.DownloadEntry.DownloadFlag == Boolean::False || batchWatch->isActive())
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

// Each whole task, and whether the file is in order.
QStringList readTasks()
{
    QStringList texts;
    store::Recordset rows(store::dbConnection);
    for (const QString &statement :
         {u"SELECT Taak.Opdrachtnaam || '|' || Download_adres || '|' || Minuten || '|' || "
          "count(*) || '|' || count(DISTINCT Dagen) || '|' || min(Uren) || '|' || max(Uren) "
          "FROM Opdrachtgegevens Taak LEFT JOIN Tijden ON Tijden.Opdrachtnaam = "
          "Taak.Opdrachtnaam WHERE Aktief = 1 AND Filenaam = 'news.spc' GROUP BY Taak.rowid"_s,
          u"PRAGMA integrity_check"_s}) {
        for (store::OpenRecordset row(rows, statement); !row->atEnd(); row->moveNext())
            texts << row->value(0).toText();
    }
    return texts;
}

// Tells that it is ready, then each finished operation.
int runVictim(const QString &operation, const QString &folder, int first, int count)
{
    VictimHost host;
    host.folder = folder;
    host.clock = moment(2026, 3, 2) + std::chrono::hours(first % 168);
    QNetworkProxyFactory::setUseSystemConfiguration(true);
    app::LoadSettings();
    app::handleEvent([&] {
        store::OpenDatabase(host.programFolder());
        tell();
        if (operation == u"fetch")
            return fetch(host, count);
        if (operation == u"tasks")
            return void(std::puts(qUtf8Printable(readTasks().join(u'\n'))));
        for (int number = first; number < first + count; ++number, tell())
            operation == u"save" ? saveTask(number) : saveOptions();
    });
    return EXIT_SUCCESS;
}

/// One operation in folders of its own.
struct Trial
{
    const char *name;
    QString victim;
    bool isSpc;
    QString temporaryPlace; ///< a folder that is on another file system makes a move a copy
    std::mt19937 random;
    Station &station;

    QTemporaryDir folder{u"/var/tmp/crash-XXXXXX"_s};
    QTemporaryDir temporary{temporaryPlace + u"/crash-XXXXXX"_s};
    QStringList folders{folder.filePath(u"audio"_s), folder.filePath(u"spc"_s),
                        folder.filePath(u"program/database"_s), temporary.path()};
    QString database = folders[2] + u"/ostravelin.mdb"_s;
    int midway = 0; ///< kills that left something

    void run(int kills)
    {
        check(temporary.isValid(), "there is no place for temporary files");
        useTemporaryFolder(temporary.path());
        for (const QString &path : folders)
            QDir().mkpath(path);
        QFile::copy(QStringLiteral(EMPTY_DATABASE), database);
        makeFile(folder.filePath(u"settings/Ostravelin.ini"_s),
                 u"[Bestandsmappen]\nBestemmingsmap=%1\nSPCmap=%2\n[Opties]\nSPC=%3\npreXP=0\n"_s
                     .arg(folders[0], folders[1], isSpc ? u"1"_s : u"0"_s)
                     .toUtf8());
        runVictim(u"save"_s, 0, 3 * keptTasks);
        const QByteArray savedTasks = fileBytes(database);
        fetchOneMore();
        for (int round = 1; round <= kills; ++round) {
            killAndRestart();
            makeFile(database, savedTasks);
        }
        std::printf("%s, temporary files in %s: %d kills, all whole; %d left something behind\n",
                    name, qUtf8Printable(temporaryPlace), kills, midway);
        checkLeftovers();
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
        process.start(
            QCoreApplication::applicationFilePath(),
            {u"--victim"_s, what, folder.path(), QString::number(first), QString::number(count)});
        untilItEnds.exec();
        finished += static_cast<int>(process.readAll().size());
        check(isToBeKilled ? process.exitCode() == SIGKILL
                           : process.exitCode() == 0 && finished == count,
              "the program ended too soon");
        return finished;
    }

    // What is left is the state before the operation in whose middle the victim was, or after it.
    void killAndRestart()
    {
        constexpr int first = 3 * keptTasks;
        constexpr int another = mostSaves - 3;
        const QStringList stoodBefore = standing();
        const size_t requests = station.requests().size();
        const int finished = runVictim(victim, first, another - first, true);
        midway += standing() != stoodBefore;
        if (victim == u"save") {
            // The next save comes before the look: the program itself has to mend the database.
            runVictim(victim, another, 1);
            checkTasks(first + finished, rowAfter(another));
        } else {
            checkFiles(requests - 1 + static_cast<size_t>(finished), 2);
        }
        fetchOneMore();
    }

    void checkTasks(int interrupted, const QString &another)
    {
        store::OpenDatabase(folder.filePath(u"program"_s));
        const QStringList found = readTasks();
        store::dbConnection.close();
        const QStringList last = {another, u"ok"_s};
        check(found == rowsAfter(interrupted - 1) + last || found == rowsAfter(interrupted) + last,
              "the tasks are neither those before nor after");
    }

    void fetchOneMore()
    {
        const size_t before = station.requests().size();
        runVictim(u"fetch"_s, static_cast<int>(random() % 168), 1);
        check(station.requests().size() > before, "nothing is fetched any more");
        checkFiles(station.requests().size() - 1);
    }

    // Each is to be what one of so many requests brought.
    void checkFiles(size_t request, size_t count = 1)
    {
        QByteArrayList downloads;
        QByteArrayList kept;
        for (size_t i = request; i < std::min(request + count, station.requests().size()); ++i) {
            const int number = station.requests()[i].path().split('/')[1].toInt();
            downloads << file(number);
            kept << file(number, isSpc);
        }
        const QString raw = folders[0] + u"/latest.mp2"_s;
        check(!QFile::exists(raw) || downloads.contains(fileBytes(raw)), "a download is not whole");
        for (const QString &path : folders.first(isSpc ? 2 : 1))
            check(kept.contains(fileBytes(path + u"/news.spc"_s)), "a task's file is not whole");
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

    // What a killed program left goes once it is old enough to be nobody's.
    void checkLeftovers()
    {
        for (const QString &path : standing())
            std::filesystem::last_write_time(QFile::encodeName(path).constData(),
                                             std::filesystem::file_time_type::clock::now() - 48h);
        fetchOneMore();
        check(standing().isEmpty(), "leftovers stay for ever");
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
    const int kills = given.value(1, u"60"_s).toInt();
    const unsigned seed = given.size() > 2 ? given[2].toUInt() : std::random_device()();
    std::printf("%d kills for each operation, seed %u\n", kills, seed);
    Station station;
    qputenv("http_proxy", "http://127.0.0.1:" + QByteArray::number(station.port()));
    for (int save = 0; save < mostSaves; ++save)
        station.answer(u"/%1/latest.mp2"_s.arg(save), {.body = file(save)});
    const std::mt19937 random(seed);
    Trial{"saving a task", u"save"_s, false, u"/var/tmp"_s, random, station}.run(kills);
    for (const auto &at : {u"/var/tmp"_s, u"/dev/shm"_s}) {
        Trial{"a download", u"fetch"_s, false, at, random, station}.run(kills);
        Trial{"an SPC file", u"fetch"_s, true, at, random, station}.run(kills);
    }
    return EXIT_SUCCESS;
}
