#include "app/CheckLog.h"

#include "platform/LocalTime.h"
#include "platform/RuntimeError.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <optional>

namespace app {

using namespace Qt::StringLiterals;

// A log grows for years. The lines of a week, of 100 tasks that are fetched every hour, fit in this
// many bytes.
static constexpr qint64 endOfLog = 2 << 20;

static QByteArrayList lastLines(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw platform::RuntimeError(platform::ErrorNumber::PathFileAccess,
                                     u"The log cannot be read: "_s + path);
    const bool isCut = file.size() > endOfLog;
    if (isCut)
        file.seek(file.size() - endOfLog);
    QByteArrayList lines = file.readAll().split('\n');
    if (isCut)
        lines.removeFirst(); // half a line
    lines.removeIf([](const QByteArray &line) { return line.trimmed().isEmpty(); });
    return lines;
}

// "dd-mm-yy hh:mm:ss - message", the years being those of this century.
static std::optional<LogEvent> parsed(const QByteArray &line)
{
    static const QRegularExpression form(
        u"^(\\d\\d)-(\\d\\d)-(\\d\\d) (\\d\\d):(\\d\\d):(\\d\\d) - (.*)$"_s);
    const bool hasReturn = line.endsWith('\r');
    const auto match = form.match(QString::fromLocal8Bit(line.chopped(hasReturn ? 1 : 0)));
    if (!match.hasMatch())
        return std::nullopt;
    const auto number = [&](int part) { return match.capturedView(part).toInt(); };
    if (!QDate::isValid(2000 + number(3), number(2), number(1)))
        return std::nullopt;
    return LogEvent{.moment = platform::localMoment(2000 + number(3), number(2), number(1),
                                                    number(4), number(5), number(6)),
                    .task = {},
                    .text = match.captured(7)};
}

static void takeNameOff(LogEvent &event, const QStringList &taskNames)
{
    for (const QString &name : taskNames)
        if (name.size() > event.task.size() && event.text.startsWith(name + u" - "_s))
            event.task = name;
    if (!event.task.isEmpty())
        event.text.remove(0, event.task.size() + 3);
}

bool LogEvent::tellsOfDownload() const
{
    static const QRegularExpression form(u"^\\S+ kB - .+ kB/s( - Forced)?$"_s);
    return form.match(text).hasMatch();
}

bool LogEvent::isForced() const
{
    return text.endsWith(u" - Forced"_s);
}

std::vector<LogEvent> readLog(const QString &path, const QStringList &taskNames,
                              std::chrono::local_seconds upTo)
{
    std::vector<LogEvent> events;
    if (!QFileInfo::exists(path))
        return events;
    const QByteArrayList lines = lastLines(path);
    bool isOurs = lines.isEmpty();
    for (const QByteArray &line : lines) {
        auto event = parsed(line);
        if (!event)
            continue;
        isOurs = true;
        takeNameOff(*event, taskNames);
        if (event->moment <= upTo)
            events.push_back(*event);
    }
    if (!isOurs)
        throw platform::RuntimeError(platform::ErrorNumber::PathFileAccess,
                                     u"The log holds no line of this program: "_s + path);
    return events;
}

} // namespace app
