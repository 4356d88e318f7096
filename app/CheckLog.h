#pragma once

#include <QStringList>

#include <chrono>
#include <vector>

// The log as the check reads it.
namespace app {

/// A line of the log, taken apart.
struct LogEvent
{
    std::chrono::local_seconds moment;
    QString task; ///< the task that the line begins with; empty for a line of none
    QString text; ///< what stands behind the task's name

    bool tellsOfDownload() const; ///< a size and a speed: the whole file came from the web
    bool isForced() const;        ///< a download started by hand
};

/// The events at the end of a log, in its order, up to the moment. Of two task names that a line
/// may begin with, the longer one counts. What is no line of this program is passed over. A missing
/// log holds none. Raises PathFileAccess for a log that cannot be read, and for one without a
/// single line of this program.
std::vector<LogEvent> readLog(const QString &path, const QStringList &taskNames,
                              std::chrono::local_seconds upTo);

} // namespace app
