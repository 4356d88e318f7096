#include "app/CheckText.h"

#include "platform/LocalTime.h"

#include <QLocale>

namespace app {

using namespace Qt::StringLiterals;
using std::chrono::local_seconds;

static QString momentText(local_seconds moment, local_seconds now, const QString &timeFormat)
{
    const QDate date = platform::dateOf(moment);
    const qint64 daysAgo = date.daysTo(platform::dateOf(now));
    const QString dayText = daysAgo == 0   ? u"today"_s
                            : daysAgo == 1 ? u"yesterday"_s
                                           : QLocale::c().toString(date, u"dddd dd-MM-yy"_s);
    return dayText + u' ' + platform::timeOf(moment).toString(timeFormat);
}

QString minuteText(local_seconds moment, local_seconds now)
{
    return momentText(moment, now, u"HH:mm"_s);
}

QString secondText(local_seconds moment, local_seconds now)
{
    return momentText(moment, now, u"HH:mm:ss"_s);
}

QString ageText(qint64 seconds)
{
    const qint64 inMinutes = seconds / 60;
    const qint64 inHours = inMinutes / 60;
    if (inHours < 1)
        return u"%1 min ago"_s.arg(inMinutes);
    if (inHours < 48)
        return u"%1 h %2 min ago"_s.arg(inHours).arg(inMinutes % 60);
    return u"%1 days ago"_s.arg(inHours / 24);
}

QString sizeText(qint64 bytes)
{
    return bytes < 1000 ? u"%1 bytes"_s.arg(bytes) : u"%1 kB"_s.arg(bytes / 1000);
}

} // namespace app
