#pragma once

#include "app/Module1.h"
#include "controls/DL/DL.h"
#include "store/Recordset.h"
#include "store/TaskStore.h"
#include "tests/support/Station.h"
#include "tests/support/Test.h"
#include "ui/main/MainForm.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <memory>

/// The main window on a database, settings and a station of its own. The clock starts on
/// Wednesday, 4 March 2026, 10:00:00 and stands until the test moves it.
class MainFormTest : public testing::Test
{
protected:
    MainFormTest()
    {
        QDir().mkpath(host.programFolder() + u"/database"_s);
        QDir().mkpath(destination({}));
        QFile::copy(QStringLiteral(EMPTY_DATABASE),
                    host.programFolder() + u"/database/ostravelin.mdb"_s);
        app::sBestemmingsmap = destination({});
        store::OpenDatabase(host.programFolder());
        host.clock = moment(2026, 3, 4, 10);
        host.onSleep = [this](auto length) {
            pauses << status() + u" for %1 ms"_s.arg(length.count());
        };
        station.routeHere();
    }

    ~MainFormTest() override
    {
        store::rsOpdrachten.reset();
        store::dbConnection.close();
        ui::ForcedDownload = Boolean::False;
    }

    static void execute(const QString &statement) { store::dbConnection.execute(statement); }

    static void addTask(const QString &name, const QString &address, const QString &fileName,
                        int minute = 0, bool active = true)
    {
        execute(u"INSERT INTO Opdrachtgegevens VALUES ('%1', '%2', '%3', %4, %5)"_s.arg(
            name, address, fileName, QString::number(minute), QString::number(active)));
    }

    static void addSlot(const QString &name, int day, int hour)
    {
        execute(u"INSERT INTO Tijden VALUES ('%1', %2, %3)"_s.arg(name).arg(day).arg(hour));
    }

    /// A task whose one slot is at a moment.
    static void addTaskAt(std::chrono::local_seconds slot, const QString &name, const QString &path,
                          const QString &fileName)
    {
        const auto day = std::chrono::floor<std::chrono::days>(slot);
        const int minutes = static_cast<int>((slot - day) / 1min);
        addTask(name, Station::url(path), fileName, minutes % 60);
        addSlot(name, static_cast<int>(std::chrono::weekday{day}.iso_encoding()), minutes / 60);
    }

    static void setTasks(const QString &to) { execute(u"UPDATE Opdrachtgegevens SET "_s + to); }

    static void removeAll()
    {
        execute(u"DELETE FROM Opdrachtgegevens"_s);
        execute(u"DELETE FROM Tijden"_s);
    }

    /// The rows of both tables, those of the tasks first, with "|" between their fields.
    static QStringList stored()
    {
        QStringList stored;
        store::Recordset rows(store::dbConnection);
        rows.setSource(
            u"SELECT Opdrachtnaam || '|' || Download_adres || '|' || Filenaam || '|' || "
            "Minuten || '|' || CASE WHEN Aktief THEN 'True' ELSE 'False' END FROM Opdrachtgegevens "
            "UNION ALL SELECT Opdrachtnaam || '|' || Dagen || '|' || Uren FROM Tijden"_s);
        for (rows.open(); !rows.atEnd(); rows.moveNext())
            stored << rows.value(0).toText();
        return stored;
    }

    /// By default with all menu entries, which then do nothing.
    void openForm(ui::MenuWindows windows = {[] {}, [] {}, [] {}, [] {}})
    {
        form = std::make_unique<ui::MainForm>(std::move(windows));
        countdownInterval = countdown()->interval();
        countdown()->setInterval(1h); // only the test makes it tick
        form->show();
    }

    template <typename Control>
    auto *formControl(const QString &name = {}) const
    {
        return form->findChild<Control *>(name);
    }

    QTimer *countdown() const { return formControl<QTimer>(u"Timer1"_s); }
    QTimer *recompute() const { return formControl<QTimer>(u"RecomputeLater"_s); }

    static void tick(QTimer *timer) { QMetaObject::invokeMethod(timer, "timeout"); }
    void tick() { tick(countdown()); }
    void trigger(const QString &entry) const { formControl<QAction>(entry)->trigger(); }

    QString labelText(const QString &name) const { return formControl<QLabel>(name)->text(); }
    QString status() const { return labelText(u"StatusBar1Panel1"_s); }

    void onProgress(const auto &act)
    {
        QObject::connect(formControl<controls::DL>(), &controls::DL::Progress, form.get(), act);
    }

    /// Looks up the next download a second before `due`, with nothing told so far.
    void lookUpBeforeDue()
    {
        host.clock = due - 1s;
        pauses.clear();
        form->ZoekVolgende();
    }

    /// Moves the clock to the pending moment, ticks, and waits until the download has ended and
    /// the next one was looked up.
    void runDownload()
    {
        QSignalSpy completed(formControl<controls::DL>(), &controls::DL::Completed);
        host.clock = form->DownloadEntry.DownloadTime;
        tick();
        if (completed.isEmpty())
            completed.wait();
        ASSERT_EQ(completed.size(), 1);
    }

    /// The log's lines without their time stamps.
    static QStringList log()
    {
        QStringList lines = QString::fromLocal8Bit(fileBytes(app::logFilePath())).split(u"\r\n"_s);
        lines.removeLast();
        for (QString &line : lines)
            line.remove(0, u"dd-mm-yy hh:mm:ss - "_s.size());
        return lines;
    }

    QString destination(const QString &name) const { return host.folder() + u"/audio/"_s + name; }
    QStringList destinationFiles() const { return filesIn(destination({})); }

    /// 11:30 on the day on which the clock starts.
    static constexpr auto due = moment(2026, 3, 4, 11, 30);

    FakeHost host;
    Station station;
    std::unique_ptr<ui::MainForm> form;
    int countdownInterval = 0; ///< milliseconds, as the window has it
    QStringList pauses;        ///< what the status line says in each, and its length
};
