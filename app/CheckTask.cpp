#include "app/CheckTask.h"

#include "app/CheckReason.h"
#include "app/CheckText.h"
#include "app/DownloadRecord.h"
#include "platform/LocalTime.h"

#include <QFileInfo>

#include <algorithm>

namespace app {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using std::chrono::local_seconds;

// A folder on another machine stamps its files with that machine's clock.
static constexpr auto clockDifference = 60s;

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

static bool isOfLaterThanNow(const TaskCase &given, const FoundFile &file)
{
    return given.now.secsTo(file.writtenAt) > clockDifference.count();
}

static bool isInTime(const TaskCase &given, const FoundFile &file)
{
    if (!file.writtenAt.isValid() || file.size == 0)
        return false;
    if (!isOfLaterThanNow(given, file))
        return localMoment(file.writtenAt) + clockDifference >= given.due;
    const LogEvent *event = latestEvent(given); // its time says nothing
    return event && event->tellsOfDownload() && whatFollowed(given, *event).isEmpty();
}

static QString fileWords(const TaskCase &given, const FoundFile &file, bool isCopy)
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
                                      minuteText(localMoment(file.writtenAt), given.localNow),
                                      file.size == 0 ? u"EMPTY"_s : sizeText(file.size), age);
}

// The file is not there while it is fetched again, when it bears the address's own name.
static bool isBeingFetched(const TaskCase &given, const FoundFile &file)
{
    DownloadRecord record;
    record.takeTask(given.task.name, given.task.address, given.task.fileName);
    return file.folderExists && !file.writtenAt.isValid() && !record.Filenaam.isEmpty() &&
           record.Filenaam == record.spcFilenaam &&
           latestMoment(given.task.slots, given.localNow) > given.due;
}

static Verdict verdictOn(const TaskCase &given, const FoundFile &file)
{
    if (isInTime(given, file) || isBeingFetched(given, file))
        return Verdict::Well;
    return file.writtenAt.isValid() && file.size > 0 ? Verdict::Late : Verdict::Missing;
}

static QString dueJustNow(const TaskCase &given, const CheckMoment &moment, const FoundFile &file)
{
    const local_seconds latest = latestMoment(given.task.slots, given.localNow).value_or(given.due);
    if (latest == given.due || (file.writtenAt.isValid() && localMoment(file.writtenAt) >= latest))
        return {};
    return u"Its slot of %1 is waited for until %2."_s.arg(
        minuteText(latest, given.localNow), minuteText(latest + moment.allowance, given.localNow));
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

    const TaskCase given{tasks, task, log, moment.now, localMoment(moment.now), *due};
    sentences << u"Due %1."_s.arg(minuteText(*due, given.localNow));
    for (const FoundFile &file : files) {
        verdict = std::max(verdict, verdictOn(given, file));
        sentences << fileWords(given, file, &file != &files.front());
    }
    sentences << whatTheLogSays(given, verdict == Verdict::Well)
              << dueJustNow(given, moment, files.front());
    return {verdict, line(task, verdict, sentences)};
}

} // namespace app
