#include "ui/main/DisplayText.h"

#include "platform/LocalTime.h"

namespace ui {

using namespace Qt::StringLiterals;

QString kilobytesText(qint32 bytes, const QLocale &locale)
{
    QLocale ungrouped = locale;
    ungrouped.setNumberOptions(QLocale::OmitGroupSeparator);
    return ungrouped.toString(bytes / 1000.0, 'f', QLocale::FloatingPointShortest);
}

QString speedText(double kilobytesPerSecond, const QLocale &locale)
{
    return locale.toString(kilobytesPerSecond, 'f', 2);
}

// The locale's short time has no seconds; its long one names the time zone as well.
static QString timeFormatWithSeconds(const QLocale &locale)
{
    QString format = locale.timeFormat(QLocale::ShortFormat);
    const qsizetype minutes = format.indexOf(u"mm"_s);
    if (minutes > 0 && !format.contains(u's'))
        format.insert(minutes + 2, format[minutes - 1] + u"ss"_s);
    return format;
}

QString momentText(std::chrono::local_seconds moment, const QLocale &locale)
{
    return locale.toString(platform::dateOf(moment), QLocale::ShortFormat) + u' ' +
           locale.toString(platform::timeOf(moment), timeFormatWithSeconds(locale));
}

QString twoDigits(qint64 number)
{
    return QString::number(number).rightJustified(2, u'0');
}

} // namespace ui
