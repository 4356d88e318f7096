#pragma once

#include "controls/DL/DL.h"
#include "tests/support/Station.h"
#include "tests/support/Test.h"
#include "ui/main/MainForm.h"

#include <QAction>
#include <QTest>
#include <QTimer>

#include <memory>

/// The main window on a database, settings and a station of its own. The clock starts on
/// Wednesday, 4 March 2026, 10:00:00 and stands until the test moves it.
class MainFormTest : public testing::Test
{
protected:
    MainFormTest();
    ~MainFormTest() override;

    /// Fills the database; before openForm or between computations.
    static void execute(const QString &statement);
    void addTask(const QString &name, const QString &address, const QString &fileName,
                 int minute = 0, bool active = true);
    void addSlot(const QString &name, int day, int hour);
    /// A task whose one slot is at a moment.
    void addTaskAt(std::chrono::local_seconds slot, const QString &name, const QString &path,
                   const QString &fileName);
    /// Changes fields of every task.
    void setTasks(const QString &assignments)
    {
        execute(u"UPDATE Opdrachtgegevens SET "_s + assignments);
    }
    static void removeAll();

    /// The rows of both tables, those of the tasks first, with "|" between their fields.
    static QStringList stored();

    /// By default with all menu entries, which then do nothing.
    void openForm(ui::MenuWindows windows = {[] {}, [] {}, [] {}, [] {}});

    template <typename Control>
    Control *formControl(const QString &name = {}) const
    {
        return form->findChild<Control *>(name);
    }
    /// What is to happen at each notice of the download's progress.
    void onProgress(std::function<void()> act);
    /// What the menu entry does.
    void trigger(const QString &entry) const { formControl<QAction>(entry)->trigger(); }

    /// One tick of the countdown.
    void tick();
    /// One run of the timer that repeats a failed computation, if it waits.
    void runRecomputeLater();
    /// Looks up the next download a second before `due`, with nothing told so far.
    void lookUpBeforeDue();
    /// Moves the clock to the pending moment, ticks, and waits until the download has ended and
    /// the next one was looked up.
    void runDownload();

    QString labelText(const QString &name) const;
    QString labelColour(const QString &name) const;
    QString status() const { return labelText(QStringLiteral("StatusBar1Panel1")); }
    bool canUse(const QString &entry) const;
    bool waitsForRecompute() const;

    /// The log's lines without their time stamps.
    QStringList log() const;
    QString destination(const QString &name) const;
    QStringList destinationFiles() const;

    /// 11:30 on the day on which the clock starts.
    static constexpr auto due = moment(2026, 3, 4, 11, 30);

    FakeHost host;
    Station station;
    std::unique_ptr<ui::MainForm> form;
    QStringList statusesDuringPauses;
};
