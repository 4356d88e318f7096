#pragma once

#include "app/CheckTask.h"

// What the log says of a task, and the reason that it knows for a slot that was passed over.
namespace app {

/// All that the judgement on a task is made of.
struct TaskCase
{
    const std::vector<CheckedTask> &tasks;
    const CheckedTask &task; ///< one of them
    const std::vector<LogEvent> &log;
    QDateTime now;
    std::chrono::local_seconds localNow;
    std::chrono::local_seconds due; ///< the latest slot that should have run
};

/// The latest line of the task since it was due, or null.
const LogEvent *latestEvent(const TaskCase &given);

/// What the lines right behind the event say without naming a task. A success is told before the
/// file gets its name, so that a full disk shows here.
QStringList whatFollowed(const TaskCase &given, const LogEvent &event);

/// A sentence or two for a person, with the reason when all is not well.
QString whatTheLogSays(const TaskCase &given, bool isWell);

} // namespace app
