#include "app/Check.h"

#include "app/CheckText.h"
#include "app/Module1.h"
#include "platform/FolderLock.h"
#include "platform/Host.h"
#include "platform/RuntimeError.h"
#include "store/ScheduleRow.h"
#include "store/TaskStore.h"

#include <QDir>

#include <algorithm>

namespace app {

using namespace Qt::StringLiterals;
using platform::ErrorNumber;
using platform::RuntimeError;

// The settings in force. The program would ask for the folder where there are none.
static void loadSettings()
{
    requireReadableSettings();
    LoadSettings();
    if (isConfigured() && !DestinationFolder().isEmpty())
        return;
    if (FileExists(settingsFilePath()))
        throw RuntimeError(ErrorNumber::PathNotFound,
                           u"The settings name no destination folder: "_s + settingsFilePath());
    throw RuntimeError(
        ErrorNumber::FileNotFound,
        u"There are no settings: "_s + settingsFilePath() +
            u" is not there. If the program runs as another user, name the folder of its "
            "Ostravelin.ini with --settings."_s);
}

static QStringList allTaskNames(store::Recordset &rows)
{
    QStringList names;
    for (const store::OpenRecordset tasks(rows, store::tasksSource()); !tasks->atEnd();
         tasks->moveNext())
        if (const store::Value name = tasks->value(u"Opdrachtnaam"); !name.isEmpty())
            names += onOneLine(name.toText());
    return names;
}

// A task with the one slot of its row.
static CheckedTask taskOfRow(const store::ScheduleRow &row)
{
    CheckedTask task{.name = {}, .address = {}, .fileName = {}, .slots = {}, .fault = {}};
    try {
        task.name = onOneLine(row.name()); // as in the log
        task.address = row.address();
        task.fileName = row.fileName();
        const int minute = row.minute();
        if (row.hasSlot())
            task.slots.push_back({row.day(), row.hour(), minute});
    } catch (const RuntimeError &error) {
        task.fault = error.description();
    }
    return task;
}

// Several tasks may bear one name after a rename.
static bool isOneTask(const CheckedTask &first, const CheckedTask &second)
{
    return first.name == second.name && first.address == second.address &&
           first.fileName == second.fileName;
}

// The active tasks by name, with their slots.
static std::vector<CheckedTask> activeTasks(store::Recordset &rows)
{
    std::vector<CheckedTask> tasks;
    const store::OpenRecordset schedule(rows, store::scheduleStatement());
    for (const store::ScheduleRow row(*schedule); !schedule->atEnd(); schedule->moveNext()) {
        const CheckedTask read = taskOfRow(row);
        const auto known = std::find_if(tasks.begin(), tasks.end(), [&](const CheckedTask &task) {
            return isOneTask(task, read);
        });
        if (known == tasks.end()) {
            tasks.push_back(read);
            continue;
        }
        known->slots.insert(known->slots.end(), read.slots.begin(), read.slots.end());
        if (known->fault.isEmpty())
            known->fault = read.fault;
    }
    std::sort(tasks.begin(), tasks.end(), [](const auto &first, const auto &second) {
        return first.name.compare(second.name, Qt::CaseInsensitive) < 0;
    });
    return tasks;
}

static std::vector<FoundFile> filesOf(const CheckedTask &task)
{
    std::vector files{findFile(DestinationFolder(), task.fileName)};
    if (makesSpcFiles() && copiesSpcFiles())
        files.push_back(findFile(SpcFolder(), task.fileName));
    return files;
}

static Status statusOf(Verdict verdict)
{
    switch (verdict) {
    case Verdict::Well:
        return Status::Well;
    case Verdict::Late:
        return Status::Late;
    case Verdict::Missing:
        break;
    }
    return Status::Missing;
}

// "1 late (Weather)", or nothing when there is none; of many names the first ones.
static QString named(const QStringList &tasks, const QString &word)
{
    constexpr int most = 5;
    if (tasks.isEmpty())
        return {};
    const QString rest = tasks.size() > most ? u", ..."_s : QString();
    return u", %1 %2 (%3)"_s.arg(tasks.size())
        .arg(word, tasks.first(std::min<qsizetype>(most, tasks.size())).join(u", "_s) + rest);
}

static QString summary(Status status, bool isRunning, qsizetype tasks, const QStringList &late,
                       const QStringList &missing)
{
    const QString word = !isRunning                  ? u"NOT RUNNING"_s
                         : status == Status::Missing ? u"MISSING"_s
                         : status == Status::Late    ? u"LATE"_s
                                                     : u"OK"_s;
    const QString counted = tasks == 0   ? u"no active task has hours, so nothing is fetched"_s
                            : tasks == 1 ? u"1 task"_s
                                         : u"%1 tasks"_s.arg(tasks);
    const QString found = late.isEmpty() && missing.isEmpty() && tasks > 0
                              ? u", all well"_s
                              : named(missing, u"missing"_s) + named(late, u"late"_s);
    return u"Ostravelin %1: %2%3"_s.arg(word, counted, found);
}

// What the log says at its end is mostly the reason why the program ended.
static QString whatIsNotRunning(const std::vector<LogEvent> &log, const CheckMoment &moment)
{
    QString said = u"No program runs from %1."_s.arg(
        QDir::toNativeSeparators(platform::host().programFolder()));
    if (log.empty())
        return said;
    const LogEvent &last = log.back();
    const QString task = last.task.isEmpty() ? QString() : last.task + u" - "_s;
    return said + u" The last line of the log, %1: %2."_s.arg(
                      secondText(last.moment, localMoment(moment.now)), task + last.text);
}

Report check(const CheckMoment &moment)
{
    loadSettings();
    store::OpenDatabaseForReading(platform::host().programFolder());
    store::Recordset rows(store::dbConnection);
    const auto tasks = activeTasks(rows);
    const QStringList names = allTaskNames(rows);
    store::dbConnection.close();
    const auto log = readLog(logFilePath(), names, localMoment(moment.now));

    Report report{Status::Well, {}, {}};
    QStringList late;
    QStringList missing;
    for (std::size_t i = 0; i < tasks.size(); ++i) {
        const auto judged = judge(tasks, i, filesOf(tasks[i]), log, moment);
        report.status = std::max(report.status, statusOf(judged.verdict));
        report.lines += judged.words;
        if (judged.verdict != Verdict::Well)
            (judged.verdict == Verdict::Late ? late : missing) += tasks[i].name;
    }
    const bool isRunning = platform::isFolderLocked(platform::host().programFolder());
    const bool nothingDue = std::all_of(tasks.begin(), tasks.end(),
                                        [](const auto &task) { return task.slots.empty(); });
    if (!isRunning || nothingDue)
        report.status = Status::Missing;
    const auto checked = nothingDue ? 0 : static_cast<qsizetype>(tasks.size());
    report.summary = summary(report.status, isRunning, checked, late, missing);
    if (!isRunning)
        report.lines.prepend(whatIsNotRunning(log, moment));
    return report;
}

} // namespace app
