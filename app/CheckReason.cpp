#include "app/CheckReason.h"

#include "app/CheckText.h"

#include <algorithm>

namespace app {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using std::chrono::local_seconds;

// What goes wrong with a file after its download is told in the log within this time.
static constexpr auto followsAtOnce = 60s;

// A download holds the program for some seconds more than the log shows.
static constexpr auto pauseBehindDownload = 10s;

// At the least speed that the downloader bears with, the largest file takes this time.
static constexpr auto longestDownload = 6h;

const LogEvent *latestEvent(const TaskCase &given)
{
    const auto found =
        std::find_if(given.log.rbegin(), given.log.rend(), [&](const LogEvent &event) {
            return event.moment >= given.due && event.task == given.task.name;
        });
    return found == given.log.rend() ? nullptr : &*found;
}

// A line of no task, neither one of today nor one that was deleted since.
static bool isOfNoTask(const LogEvent &event)
{
    return event.task.isEmpty() && !event.text.contains(u" - ");
}

// What the log says between two moments without naming a task.
static QStringList unnamed(const TaskCase &given, local_seconds from, local_seconds to)
{
    QStringList texts;
    for (const LogEvent &event : given.log)
        if (isOfNoTask(event) && event.moment >= from && event.moment <= to)
            texts += event.text;
    texts.removeDuplicates();
    return texts;
}

QStringList whatFollowed(const TaskCase &given, const LogEvent &event)
{
    const LogEvent *next = &event + 1;
    const LogEvent *end = given.log.data() + given.log.size();
    QStringList texts;
    for (; next < end && isOfNoTask(*next) && next->moment <= event.moment + followsAtOnce; ++next)
        texts += next->text;
    return texts;
}

// What another task's slot has to do with a slot that was passed over: one download runs at a time.
static QString passedOverFor(const TaskCase &given, const CheckedTask &other)
{
    const auto otherDue = latestMoment(other.slots, given.due);
    if (!otherDue)
        return {};
    if (*otherDue == given.due)
        return u"%1 has the same slot, and only one of them is fetched then."_s.arg(other.name);
    const auto ended = std::find_if(given.log.begin(), given.log.end(), [&](const LogEvent &event) {
        return event.moment >= *otherDue && event.task == other.name;
    });
    if (ended == given.log.end() || ended->isForced() ||
        ended->moment > *otherDue + longestDownload ||
        ended->moment + pauseBehindDownload < given.due)
        return {};
    return u"%1, due %2, was in hand until %3: slots that pass meanwhile are passed over."_s.arg(
        other.name, minuteText(*otherDue, given.localNow),
        secondText(ended->moment, given.localNow));
}

static QString whyThereIsNoLine(const TaskCase &given)
{
    const QStringList errors = unnamed(given, given.due, given.due + followsAtOnce);
    if (!errors.isEmpty())
        return u"The log says at that time, without naming a task: %1."_s.arg(
            errors.join(u", then: "_s));
    for (const CheckedTask &other : given.tasks)
        if (&other != &given.task)
            if (const QString reason = passedOverFor(given, other); !reason.isEmpty())
                return u"The log has no line of it since then. "_s + reason;
    return u"The log has no line of it since then: the program was not running, or its list of "
           "tasks was open, or the task was made or changed later."_s;
}

QString whatTheLogSays(const TaskCase &given, bool isWell)
{
    const LogEvent *event = latestEvent(given);
    if (!event)
        return isWell ? u"The log has no line of it since then."_s : whyThereIsNoLine(given);
    QStringList texts{event->text};
    texts += whatFollowed(given, *event);
    QString said = u"The log says %1: %2."_s.arg(secondText(event->moment, given.localNow),
                                                 texts.join(u", then: "_s));
    if (!isWell && event->tellsOfDownload())
        said += u" So it was fetched, but did not get to its place (is the disk full?), or the "
                "file was changed since."_s;
    return said;
}

} // namespace app
