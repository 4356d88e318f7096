#pragma once

#include "app/CheckTask.h"

#include <QStringList>

// The check of all tasks of one program folder, that of the host in force.
namespace app {

/// What monitoring programs take for: well, a warning, an alarm, and "cannot say".
enum class Status { Well = 0, Late = 1, Missing = 2, NotChecked = 3 };

struct Report
{
    Status status;
    QString summary;   ///< one line in all
    QStringList lines; ///< one line a task, by name
};

/// Judges every active task. Writes nothing, and has left the task database before it looks for the
/// files. Raises what keeps it from judging: settings, task database or log that are not there or
/// cannot be read.
Report check(const CheckMoment &moment);

} // namespace app
