#include "ui/main/SpcHeader.h"

#include "app/Module1.h"

#include <QStringList>

namespace ui {

using namespace Qt::StringLiterals;

// A single-precision number with at most 7 significant digits.
static QString singleText(float number, QChar decimalPoint)
{
    return QString::number(static_cast<double>(number), 'G', 7).replace(u'.', decimalPoint);
}

QString secondsText(qint64 fileSize, QChar decimalPoint)
{
    constexpr double bytesPerSecond = 32001.747;
    constexpr qsizetype scanned = 5;

    QString text = singleText(static_cast<float>(static_cast<double>(fileSize) / bytesPerSecond),
                              decimalPoint);
    qsizetype mark = text.left(scanned).indexOf(u',');
    if (mark >= 0)
        text[mark] = u'.';
    else
        mark = scanned;
    QString seconds = text.left(mark + 3);
    if (mark >= text.size() || text[mark] != u'.')
        seconds += u".00"_s;
    return seconds;
}

QString spcHeaderText(const QString &spcFilenaam, const QString &seconds)
{
    const QStringList lines = {
        u"FILE: "_s + spcFilenaam,
        u"DESCRIPTION: NL "_s + app::versionText(),
        u"SAMPLE RATE: 48000"_s,
        u"FILTER CUTOFF: 0"_s,
        u"SAMPLE SIZE: 16 bits"_s,
        u"SAMPLE FORMAT: MPEG"_s,
        u"CHANNELS: 2"_s,
        u"SECONDS: "_s + seconds,
        u"SAMPLES PER BLOCK: 1152"_s,
        u"BYTES PER BLOCK: 768"_s,
        u"EXTRA INFO: L=2/M=st/Kb=128/E=0/C=0/O=1/Em=0/A=4"_s,
    };
    return lines.join(u"\r\n"_s) + QChar(0x1A);
}

} // namespace ui
