#pragma once

#include "app/CheckLog.h"
#include "app/NextSlot.h"

#include <QDateTime>

#include <optional>

// The judgement on one task: whether the file that the player reads is the one that it should be.
namespace app {

/// An active task.
struct CheckedTask
{
    QString name; ///< as it stands in the log
    QString address;
    QString fileName;
    std::vector<WeekSlot> slots; ///< without those of rows that cannot be read
    QString fault;               ///< why a row of it cannot be read; empty when all can
};

/// What stands, or does not, in a folder that gets a task's file.
struct FoundFile
{
    QString folder; ///< with a separator at its end
    bool folderExists = false;
    QDateTime writtenAt; ///< invalid when there is no such file
    qint64 size = 0;     ///< in bytes
};

/// The moment that the check is for.
struct CheckMoment
{
    QDateTime now;
    /// How long after its slot a file may come.
    std::chrono::minutes allowance;
};

enum class Verdict {
    Well,
    Late,   ///< the file is older than the latest slot that should have run
    Missing ///< no file, or an empty one
};

struct Judgement
{
    Verdict verdict;
    QString words; ///< one line for a person
};

/// Looks for the task's file. The folder ends in a separator.
FoundFile findFile(const QString &folder, const QString &fileName);

/// The local wall clock at an instant.
std::chrono::local_seconds localMoment(const QDateTime &instant);

/// Judges `tasks[index]` by the files that it should have (the one that the player reads, then the
/// copy in the SPC folder when there is to be one), and tells what the log says of it. The other
/// tasks may be the reason why a slot was passed over.
Judgement judge(const std::vector<CheckedTask> &tasks, std::size_t index,
                const std::vector<FoundFile> &files, const std::vector<LogEvent> &log,
                const CheckMoment &moment);

} // namespace app
