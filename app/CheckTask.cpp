#include "app/CheckTask.h"

#include "app/DownloadRecord.h"
#include "platform/LocalTime.h"

#include <QFileInfo>
#include <QLocale>

#include <algorithm>

namespace app {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using std::chrono::local_seconds;

// A folder on another machine stamps its files with that machine's clock.
static constexpr auto clockDifference = 60s;

// What goes wrong with a file after its download is told in the log within this time.
static constexpr auto followsAtOnce = 60s;

// A download holds the program for some seconds more than the log shows.
static constexpr auto pauseBehindDownload = 10s;

// At the least speed that the downloader bears with, the largest file takes this time.
static constexpr auto longestDownload = 6h;

namespace {

// All that the judgement on a task is made of.
struct Case
{
    const std::vector<CheckedTask> &tasks;
    const CheckedTask &task;
    const std::vector<LogEvent> &log;
    QDateTime now;
    local_seconds localNow;
    local_seconds due; ///< the latest slot that should have run
};

} // namespace

local_seconds localMoment(const QDateTime &instant)
{
    const QDate date = instant.date();
    const QTime time = instant.time();
    return platform::localMoment(date.year(), date.month(), date.day(), time.hour(), time.minute(),
                                 time.second());
}

FoundFile findFile(const QString &folder, const QString &fileName)
{
    const QFileInfo place(folder);
    FoundFile found{.folder = folder,
                    .folderExists = place.isNativePath() && place.isAbsolute() && place.isDir(),
                    .writtenAt = {}};
    const QFileInfo file(folder + fileName);
    if (found.folderExists && file.isFile()) {
        found.writtenAt = file.lastModified();
        found.size = file.size();
    }
    return found;
}

// "today 06:55"
static QString momentText(local_seconds moment, local_seconds now, const QString &timeFormat)
{
    const QDate date = platform::dateOf(moment);
    const qint64 daysAgo = date.daysTo(platform::dateOf(now));
    const QString dayText = daysAgo == 0   ? u"today"_s
                            : daysAgo == 1 ? u"yesterday"_s
                                           : QLocale::c().toString(date, u"dddd dd-MM-yy"_s);
    return dayText + u' ' + platform::timeOf(moment).toString(timeFormat);
}

static QString minuteText(const Case &given, local_seconds moment)
{
    return momentText(moment, given.localNow, u"HH:mm"_s);
}

QString secondText(local_seconds moment, local_seconds now)
{
    return momentText(moment, now, u"HH:mm:ss"_s);
}

static QString ageText(qint64 seconds)
{
    const qint64 inMinutes = seconds / 60;
    if (inMinutes < 60)
        return u"%1 min ago"_s.arg(inMinutes);
    if (inMinutes < 48 * 60)
        return u"%1 h %2 min ago"_s.arg(inMinutes / 60).arg(inMinutes % 60);
    return u"%1 days ago"_s.arg(inMinutes / (24 * 60));
}

static QString sizeText(qint64 bytes)
{
    return bytes < 1000 ? u"%1 bytes"_s.arg(bytes) : u"%1 kB"_s.arg(bytes / 1000);
}

static bool isOfLaterThanNow(const Case &given, const FoundFile &file)
{
    return given.now.secsTo(file.writtenAt) > clockDifference.count();
}

static const LogEvent *latestOfTask(const Case &given)
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
static QStringList unnamed(const Case &given, local_seconds from, local_seconds to)
{
    QStringList texts;
    for (const LogEvent &event : given.log)
        if (isOfNoTask(event) && event.moment >= from && event.moment <= to)
            texts += event.text;
    texts.removeDuplicates();
    return texts;
}

// A success is told before the file gets its name, so that a full disk shows in the line behind.
static QStringList whatFollowed(const Case &given, const LogEvent &event)
{
    const LogEvent *next = &event + 1;
    const LogEvent *end = given.log.data() + given.log.size();
    QStringList texts;
    for (; next < end && isOfNoTask(*next) && next->moment <= event.moment + followsAtOnce; ++next)
        texts += next->text;
    return texts;
}

static bool isInTime(const Case &given, const FoundFile &file)
{
    if (!file.writtenAt.isValid() || file.size == 0)
        return false;
    if (!isOfLaterThanNow(given, file))
        return localMoment(file.writtenAt) + clockDifference >= given.due;
    const LogEvent *event = latestOfTask(given); // its time says nothing
    return event && event->tellsOfDownload() && whatFollowed(given, *event).isEmpty();
}

// What another task's slot has to do with a slot that was passed over: one download runs at a time.
static QString passedOverFor(const Case &given, const CheckedTask &other)
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
        other.name, minuteText(given, *otherDue), secondText(ended->moment, given.localNow));
}

static QString whyThereIsNoLine(const Case &given)
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

static QString whatTheLogSays(const Case &given, bool isWell)
{
    const LogEvent *event = latestOfTask(given);
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

static QString fileWords(const Case &given, const FoundFile &file, bool isCopy)
{
    const QString name = isCopy ? u"Its SPC copy in "_s + file.folder : given.task.fileName;
    if (given.task.fileName.isEmpty())
        return u"It has no file name."_s;
    if (!file.folderExists)
        return u"The folder %1 is not there, or this user may not look into it."_s.arg(file.folder);
    if (!file.writtenAt.isValid())
        return isCopy ? name + u" is not there."_s
                      : u"There is no %1 in %2."_s.arg(name, file.folder);
    const QString age = isOfLaterThanNow(given, file)
                            ? u"which is later than the moment of this check"_s
                            : ageText(std::max<qint64>(0, file.writtenAt.secsTo(given.now)));
    return u"%1 %2 %3, %4, %5."_s.arg(name, isInTime(given, file) ? u"came"_s : u"is of"_s,
                                      minuteText(given, localMoment(file.writtenAt)),
                                      file.size == 0 ? u"EMPTY"_s : sizeText(file.size), age);
}

// The file is not there while it is fetched again, when it bears the address's own name.
static bool isBeingFetched(const Case &given, const FoundFile &file)
{
    DownloadRecord record;
    record.takeTask(given.task.name, given.task.address, given.task.fileName);
    return file.folderExists && !file.writtenAt.isValid() && !record.Filenaam.isEmpty() &&
           record.Filenaam == record.spcFilenaam &&
           latestMoment(given.task.slots, given.localNow) > given.due;
}

static Verdict verdictOn(const Case &given, const FoundFile &file)
{
    if (isInTime(given, file) || isBeingFetched(given, file))
        return Verdict::Well;
    return file.writtenAt.isValid() && file.size > 0 ? Verdict::Late : Verdict::Missing;
}

static QString dueJustNow(const Case &given, const CheckMoment &moment, const FoundFile &file)
{
    const local_seconds latest = latestMoment(given.task.slots, given.localNow).value_or(given.due);
    if (latest == given.due || (file.writtenAt.isValid() && localMoment(file.writtenAt) >= latest))
        return {};
    return u"Its slot of %1 is waited for until %2."_s.arg(
        minuteText(given, latest), minuteText(given, latest + moment.allowance));
}

static QString verdictWord(Verdict verdict)
{
    return verdict == Verdict::Well   ? u"well"_s
           : verdict == Verdict::Late ? u"LATE"_s
                                      : u"MISSING"_s;
}

static QString line(const CheckedTask &task, Verdict verdict, QStringList sentences)
{
    sentences.removeAll(QString());
    const QString name = task.name.isEmpty() ? u"(no name)"_s : task.name;
    return name + u": "_s + verdictWord(verdict) + u". "_s + sentences.join(u' ');
}

Judgement judge(const std::vector<CheckedTask> &tasks, std::size_t index,
                const std::vector<FoundFile> &files, const std::vector<LogEvent> &log,
                const CheckMoment &moment)
{
    const CheckedTask &task = tasks[index];
    Verdict verdict = Verdict::Well;
    QStringList sentences;
    if (!task.fault.isEmpty()) {
        verdict = Verdict::Late;
        sentences << u"It cannot be read (%1), and what cannot is passed over."_s.arg(task.fault);
    }
    if (const QString text = unusableText(task.address, task.fileName); !text.isEmpty()) {
        verdict = Verdict::Late;
        sentences << text + u" holds a line break or the like, so it is not fetched."_s;
    }
    const auto allowed = std::chrono::seconds{moment.allowance}.count();
    const auto due = latestMoment(task.slots, localMoment(moment.now.addSecs(-allowed)));
    if (!due) {
        sentences << u"It has no hours, so it is never due."_s;
        return {verdict, line(task, verdict, sentences)};
    }

    const Case given{tasks, task, log, moment.now, localMoment(moment.now), *due};
    sentences << u"Due %1."_s.arg(minuteText(given, *due));
    for (const FoundFile &file : files) {
        verdict = std::max(verdict, verdictOn(given, file));
        sentences << fileWords(given, file, &file != &files.front());
    }
    sentences << whatTheLogSays(given, verdict == Verdict::Well)
              << dueJustNow(given, moment, files.front());
    return {verdict, line(task, verdict, sentences)};
}

} // namespace app
